// Workbooks written through LibXLExcel as the list export writes them: read back by our own
// reader and by independent readers (openpyxl for .xlsx, xlrd for .xls).
#include "ExcelFixtures.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "pixelToPoints.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace ExcelFixtures;

namespace {

ExcelFont font(const char* family, double size, bool bold, bool italic)
{
    ExcelFont f;
    f.family = QString::fromUtf8(family);
    f.pointSize = size;
    f.bold = bold;
    f.italic = italic;
    return f;
}

const QStringList Header = {"招标编码", "材料名称", "规格型号", "单位", "暂估单价"};

// A provisional-materials table as the export writes it: header in sheet row 1, data from row 2.
bool writeTable(LibXLExcel& book, int rows)
{
    LibXLExcelSheet* sheet = book.AddSheet("暂估材料");
    if (!sheet)
        return false;
    const int widths[] = {120, 200, 5, 60, 90};
    for (int c = 0; c < Header.size(); ++c) {
        const int w = widths[c];
        sheet->SetCol(c, c, w > 5 ? (w - 5) / 7.0 : 1);
        sheet->WriteStr(1, c, Header.at(c), font("黑体", 12, true, false),
                        Qt::AlignHCenter | Qt::AlignVCenter);
    }
    sheet->SetRow(1, pixelToPoints(32));
    for (int i = 0; i < rows; ++i) {
        const int r = i + 2;
        sheet->SetRow(r, pixelToPoints(24 + i % 3));
        sheet->WriteStr(r, 0, QStringLiteral("    0101%1").arg(i, 4, 10, QLatin1Char('0')),
                        font("宋体", 10, false, false), Qt::AlignLeft | Qt::AlignVCenter);
        sheet->WriteStr(r, 1,
                        i % 2 ? QStringLiteral("商品混凝土（C30）") : QStringLiteral("钢筋 Φ12"),
                        font("宋体", 10, i == 0, i == 1), Qt::AlignLeft | Qt::AlignTop);
        sheet->WriteStr(r, 2, QStringLiteral("HRB400×%1").arg(i), ExcelFont(), 0);
        sheet->WriteStr(r, 3, QStringLiteral("m³"), font("Arial", 9, false, false),
                        Qt::AlignCenter);
        sheet->WriteStr(r, 4, QString::number(4200.5 + i, 'f', 2), font("Arial", 9, false, false),
                        Qt::AlignRight | Qt::AlignBottom);
    }
    return true;
}

} // namespace

class tst_ExcelWriting : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path(const QString& name) const { return m_dir.filePath(name); }

private slots:
    void pointsFromPixels()
    {
        QCOMPARE(pixelToPoints(20), 15.0);
        QCOMPARE(pixelToPoints(20, 1.25), 12.0);
        QCOMPARE(pixelToPoints(32, 0), 24.0);
    }

    void ownReaderGetsBackWhatWasWritten_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("file");
        QTest::newRow("xlsx") << int(LibXLExcel::BookXlsx) << "table.xlsx";
        QTest::newRow("xls") << int(LibXLExcel::BookXls) << "table.xls";
    }
    void ownReaderGetsBackWhatWasWritten()
    {
        QFETCH(int, kind);
        QFETCH(QString, file);
        LibXLExcel book(kind);
        QCOMPARE(book.GetBookKind(), kind);
        QVERIFY(writeTable(book, 50));
        QVERIFY2(book.Save(path(file)), qPrintable(book.ErrorMessage()));

        LibXLExcel read;
        QVERIFY2(read.Open(path(file)), qPrintable(read.ErrorMessage()));
        QCOMPARE(read.GetBookKind(), kind);
        const LibXLExcelSheet* sheet = read.GetSheet(0);
        QCOMPARE(sheet->GetName(), "暂估材料");
        QCOMPARE(sheet->RowCount(), 52);
        QCOMPARE(sheet->GetCellType(0, 0), LibXLExcelSheet::CellEmpty);
        for (int c = 0; c < Header.size(); ++c)
            QCOMPARE(sheet->GetCellText(1, c), Header.at(c));
        QCOMPARE(sheet->GetCellText(2, 0), "    01010000");
        QCOMPARE(sheet->GetCellText(3, 1), "商品混凝土（C30）");
        QCOMPARE(sheet->GetCellText(51, 2), "HRB400×49");
        QCOMPARE(sheet->GetCellText(51, 3), "m³");
        QCOMPARE(sheet->GetCellType(51, 4), LibXLExcelSheet::CellString);
        QCOMPARE(sheet->GetCellText(51, 4), "4249.50");
        // .xlsx stores widths with the padding Excel adds to a character count.
        QVERIFY(qAbs(sheet->GetColWidth(1) - 195 / 7.0) < 1);
        QVERIFY(qAbs(sheet->GetColWidth(2) - 1) < 1);
        QCOMPARE(sheet->GetRowHeight(1), 24.0);
        QCOMPARE(sheet->GetRowHeight(3), 18.75);
    }

    void openpyxlReadsTheXlsxWithFontsAlignmentAndSizes()
    {
        LibXLExcel book(LibXLExcel::BookXlsx);
        QVERIFY(writeTable(book, 3));
        QVERIFY(book.Save(path("check.xlsx")));
        const QString out = python(QStringLiteral(R"PY(
import json, openpyxl
s = openpyxl.load_workbook(%1).worksheets[0]
def cell(ref):
    c = s[ref]
    return [c.value, c.font.name, c.font.sz, bool(c.font.b), bool(c.font.i),
            c.alignment.horizontal, c.alignment.vertical]
print(json.dumps({"title": s.title, "B2": cell("B2"), "B3": cell("B3"), "B4": cell("B4"),
                  "E5": cell("E5"), "C3": cell("C3"), "wB": s.column_dimensions["B"].width,
                  "h2": s.row_dimensions[2].height, "h4": s.row_dimensions[4].height},
                 ensure_ascii=False))
)PY")
                                       .arg(QStringLiteral("'") + path("check.xlsx") + "'"));
        QVERIFY2(!out.startsWith("ERROR"), qPrintable(out));
        const QJsonObject o = QJsonDocument::fromJson(out.toUtf8()).object();
        QCOMPARE(o["title"].toString(), "暂估材料");
        QCOMPARE(o["B2"].toArray(),
                 QJsonArray({"材料名称", "黑体", 12, true, false, "center", "center"}));
        QCOMPARE(o["B3"].toArray(),
                 QJsonArray({"钢筋 Φ12", "宋体", 10, true, false, "left", "top"}));
        QCOMPARE(o["B4"].toArray(),
                 QJsonArray({"商品混凝土（C30）", "宋体", 10, false, true, "left", "top"}));
        // Bottom is the workbook's default vertical alignment, so it is not written out.
        QCOMPARE(o["E5"].toArray(),
                 QJsonArray({"4202.50", "Arial", 9, false, false, "right", QJsonValue()}));
        QCOMPARE(o["C3"].toArray(),
                 QJsonArray({"HRB400×0", "宋体", 11, false, false, QJsonValue(), QJsonValue()}));
        QVERIFY(qAbs(o["wB"].toDouble() - 195 / 7.0) < 1);
        QCOMPARE(o["h2"].toDouble(), 24.0);
        QCOMPARE(o["h4"].toDouble(), 18.75);
    }

    void xlrdReadsTheXlsWithFontsAlignmentAndSizes()
    {
        LibXLExcel book(LibXLExcel::BookXls);
        QVERIFY(writeTable(book, 3));
        QVERIFY(book.Save(path("check.xls")));
        const QString out = python(QStringLiteral(R"PY(
import json, xlrd
b = xlrd.open_workbook(%1, formatting_info=True)
s = b.sheet_by_index(0)
def cell(r, c):
    xf = b.xf_list[s.cell_xf_index(r, c)]
    f = b.font_list[xf.font_index]
    return [s.cell_value(r, c), f.name, f.height / 20, f.weight >= 700, bool(f.italic),
            xf.alignment.hor_align, xf.alignment.vert_align]
print(json.dumps({"title": s.name, "B2": cell(1, 1), "B3": cell(2, 1), "B4": cell(3, 1),
                  "E5": cell(4, 4), "C3": cell(2, 2), "wB": s.colinfo_map[1].width / 256,
                  "wC": s.colinfo_map[2].width / 256, "h2": s.rowinfo_map[1].height / 20,
                  "h4": s.rowinfo_map[3].height / 20}, ensure_ascii=False))
)PY")
                                       .arg(QStringLiteral("'") + path("check.xls") + "'"));
        QVERIFY2(!out.startsWith("ERROR"), qPrintable(out));
        const QJsonObject o = QJsonDocument::fromJson(out.toUtf8()).object();
        QCOMPARE(o["title"].toString(), "暂估材料");
        // xlrd's alignment codes: 1 left, 2 centre, 3 right; vertical 0 top, 1 centre, 2 bottom.
        QCOMPARE(o["B2"].toArray(), QJsonArray({"材料名称", "黑体", 12, true, false, 2, 1}));
        QCOMPARE(o["B3"].toArray(), QJsonArray({"钢筋 Φ12", "宋体", 10, true, false, 1, 0}));
        QCOMPARE(o["B4"].toArray(),
                 QJsonArray({"商品混凝土（C30）", "宋体", 10, false, true, 1, 0}));
        QCOMPARE(o["E5"].toArray(), QJsonArray({"4202.50", "Arial", 9, false, false, 3, 2}));
        QCOMPARE(o["C3"].toArray(), QJsonArray({"HRB400×0", "宋体", 11, false, false, 0, 2}));
        QVERIFY(qAbs(o["wB"].toDouble() - 195 / 7.0) < 1 / 256.0);
        QCOMPARE(o["wC"].toDouble(), 1.0);
        QCOMPARE(o["h2"].toDouble(), 24.0);
        QCOMPARE(o["h4"].toDouble(), 18.75);
    }

    // Many distinct and long strings: the shared string table runs over many CONTINUE records.
    void longAndManyStringsSurviveBothFormats()
    {
        const QString longText = QString(9000, QChar(0x94A2)) + "end";
        for (int kind : {int(LibXLExcel::BookXls), int(LibXLExcel::BookXlsx)}) {
            const QString file = path(kind == LibXLExcel::BookXls ? "many.xls" : "many.xlsx");
            LibXLExcel book(kind);
            LibXLExcelSheet* sheet = book.AddSheet("S");
            for (int r = 0; r < 20000; ++r)
                sheet->WriteStr(r, 0, QStringLiteral("材料%1-%2").arg(r).arg(QString(r % 50, 'x')));
            sheet->WriteStr(20000, 1, QString(5000, 'a') + "尾");
            sheet->WriteStr(20001, 1, longText);
            QVERIFY(book.Save(file));
            LibXLExcel read;
            QVERIFY2(read.Open(file), qPrintable(read.ErrorMessage()));
            QCOMPARE(read.GetSheet(0)->GetCellText(19999, 0),
                     QString(QStringLiteral("材料19999-") + QString(49, 'x')));
            QCOMPARE(read.GetSheet(0)->GetCellText(20000, 1), QString(QString(5000, 'a') + "尾"));
            QCOMPARE(read.GetSheet(0)->GetCellText(20001, 1), longText);
        }
        const QString out =
            python(QStringLiteral(
                       "import xlrd; s = xlrd.open_workbook('%1').sheet_by_index(0); "
                       "print(s.nrows, s.cell_value(19999, 0)[:8], len(s.cell_value(20001, 1)))")
                       .arg(path("many.xls")));
        QCOMPARE(out, "20002 材料19999- 9003");

        // A text of over 4000 characters followed by others: FreeXL garbles such a table, so
        // the cells come from our own walk over the records.
        LibXLExcel book(LibXLExcel::BookXls);
        LibXLExcelSheet* sheet = book.AddSheet("长文本");
        sheet->WriteStr(0, 0, longText);
        sheet->WriteStr(1, 0, "after");
        QVERIFY(book.Save(path("long.xls")));
        LibXLExcel read;
        QVERIFY2(read.Open(path("long.xls")), qPrintable(read.ErrorMessage()));
        QCOMPARE(read.GetSheet(0)->GetCellText(0, 0), longText);
        QCOMPARE(read.GetSheet(0)->GetCellText(1, 0), "after");
    }

    void namesAndLimits()
    {
        LibXLExcel book(LibXLExcel::BookXls);
        QCOMPARE(book.AddSheet("材料[1]/2")->GetName(), "材料_1__2");
        QCOMPARE(book.AddSheet("材料_1__2")->GetName(), "材料_1__2(2)");
        QCOMPARE(book.AddSheet(QString(40, 'n'))->GetName(), QString(31, 'n'));
        QCOMPARE(book.AddSheet(" ")->GetName(), "Sheet");
        LibXLExcelSheet* sheet = book.GetSheet(0);
        QVERIFY(!sheet->WriteStr(65536, 0, "x"));
        QVERIFY(!sheet->WriteStr(0, 256, "x"));
        QVERIFY(!sheet->SetCol(3, 2, 10));
        QVERIFY(sheet->WriteStr(65535, 255, "corner"));
        QVERIFY(!book.Save(path("no/such/folder/x.xls")));
        QVERIFY(book.ErrorMessage().startsWith(path("no/such/folder/x.xls") +
                                               ": the file cannot be written"));
        QVERIFY(book.Save(path("names.xls")));

        LibXLExcel xlsx;
        QVERIFY(!xlsx.Save(path("nothing.xlsx")));
        QCOMPARE(xlsx.ErrorMessage(),
                 path("nothing.xlsx") + ": nothing to save; add a sheet first");
        QVERIFY(!xlsx.AddSheet("S")->WriteStr(1048576, 0, "x"));

        LibXLExcel opened;
        QVERIFY(opened.Open(path("names.xls")));
        QCOMPARE(opened.GetSheet(0)->GetCellText(65535, 255), "corner");
        QVERIFY(!opened.AddSheet("more"));
        QCOMPARE(opened.ErrorMessage(),
                 "an opened workbook is read only; create a new one to write");
        QVERIFY(!opened.GetSheet(0)->WriteStr(0, 0, "x"));
    }

    // read -> write -> read through the tool, both ways, with a Chinese workbook.
    void toolConvertsBothWays()
    {
        const QString source = QDir(EXCEL_SAMPLES_DIR).filePath("easyexcel__t01.xls");
        if (!QFile::exists(source))
            QSKIP("the shared workbook samples are not beside this source tree");
        for (const QString& target : {path("t01.xlsx"), path("t01-again.xls")}) {
            QProcess tool;
            tool.start(TARVO_XL,
                       {"convert", target.endsWith("xls") ? path("t01.xlsx") : source, target});
            QVERIFY(tool.waitForFinished(60000));
            QCOMPARE(tool.exitCode(), 0);
        }
        LibXLExcel original;
        LibXLExcel twice;
        QVERIFY(original.Open(source));
        QVERIFY2(twice.Open(path("t01-again.xls")), qPrintable(twice.ErrorMessage()));
        const LibXLExcelSheet* a = original.GetSheet(0);
        const LibXLExcelSheet* b = twice.GetSheet(0);
        QCOMPARE(b->GetName(), "产品数据");
        QCOMPARE(b->RowCount(), a->RowCount());
        for (int r = 0; r < a->RowCount(); ++r)
            for (int c = 0; c < a->ColCount(); ++c)
                QCOMPARE(b->GetCellText(r, c), a->GetCellText(r, c));
        for (int c = 0; c < a->ColCount(); ++c)
            if (a->GetColWidth(c) >= 0)
                QVERIFY(qAbs(b->GetColWidth(c) - a->GetColWidth(c)) < 1);
    }
};

QTEST_GUILESS_MAIN(tst_ExcelWriting)
#include "tst_ExcelWriting.moc"
