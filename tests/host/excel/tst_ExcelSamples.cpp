// Real workbooks written by Excel, WPS and other programs: each gives what the samples' README
// says a reader should give.
#include "CompoundFileReader.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "XlsBookReader.h"

#include <QDir>
#include <QProcess>
#include <QtTest>

class tst_ExcelSamples : public QObject
{
    Q_OBJECT

private:
    QString sample(const char* name) const { return QDir(EXCEL_SAMPLES_DIR).filePath(name); }
    QStringList cells(const LibXLExcel& book) const
    {
        QStringList out;
        for (const LibXLExcelSheet* sheet : book.GetSheets())
            for (int r = 0; r < sheet->RowCount(); ++r)
                for (int c = 0; c < sheet->ColCount(); ++c)
                    out << QStringLiteral("%1!%2,%3:%4:%5")
                               .arg(sheet->GetName())
                               .arg(r)
                               .arg(c)
                               .arg(sheet->GetCellType(r, c))
                               .arg(sheet->GetCellText(r, c));
        return out;
    }

private slots:
    void initTestCase()
    {
        if (!QDir(EXCEL_SAMPLES_DIR).exists())
            QSKIP("the shared workbook samples (../shared/excel-samples) are not beside this "
                  "source tree");
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("message");
        QTest::newRow("junk named .xls")
            << "calamine__too_small.xls"
            << "calamine__too_small.xls: not an Excel file (its first bytes are neither an .xlsx "
               "package nor an .xls compound file)";
        QTest::newRow("truncated download")
            << "derived__truncated_datasets.xlsx"
            << "derived__truncated_datasets.xlsx: the file is corrupt or truncated: its zip "
               "directory cannot be read (Not a zip archive)";
        QTest::newRow("password to open")
            << "sheetjs__password_2002_40_xor.xls"
            << "sheetjs__password_2002_40_xor.xls: the workbook is encrypted (protected by a "
               "password to open); remove the password in Excel and save it again";
    }
    void refusals()
    {
        QFETCH(QString, file);
        QFETCH(QString, message);
        LibXLExcel book;
        QVERIFY(!book.Open(sample(file.toUtf8().constData())));
        QCOMPARE(book.ErrorMessage(), message);
        QCOMPARE(book.SheetCount(), 0);
    }

    void whitespaceIsKeptInInlineAndSharedStrings()
    {
        LibXLExcel book;
        QVERIFY2(book.Open(sample("calamine__whitespace_trim.xlsx")),
                 qPrintable(book.ErrorMessage()));
        QCOMPARE(book.SheetCount(), 2);
        const LibXLExcelSheet* inlined = book.GetSheet(0);
        const LibXLExcelSheet* shared = book.GetSheet(1);
        QCOMPARE(inlined->GetName(), "inlineStr");
        QCOMPARE(shared->GetName(), "SharedStrings");
        QCOMPARE(inlined->GetCellText(0, 0), "  trimmed value  ");
        QCOMPARE(inlined->GetCellText(0, 1), "\t\n value with tabs \n");
        QCOMPARE(inlined->GetCellText(0, 2), " \t\n");
        QCOMPARE(inlined->GetCellText(1, 0), "  line1\nline2  ");
        QCOMPARE(inlined->GetCellText(2, 0), "日期 时间");
        QCOMPARE(shared->GetCellText(0, 0), "  trimmed value");
        QCOMPARE(shared->GetCellText(0, 1), "  preserved value  ");
        QCOMPARE(shared->GetCellText(0, 2), " \t\n");
        QCOMPARE(shared->GetCellType(0, 3), LibXLExcelSheet::CellString);
    }

    void chineseTemplateWithMergedTitle()
    {
        LibXLExcel book;
        QVERIFY2(book.Open(sample("easyexcel__t01.xls")), qPrintable(book.ErrorMessage()));
        QCOMPARE(book.GetBookKind(), int(LibXLExcel::BookXls));
        const LibXLExcelSheet* sheet = book.GetSheet(0);
        QCOMPARE(sheet->GetName(), "产品数据");
        QCOMPARE(sheet->GetMerges(), QVector<ExcelRange>({{0, 0, 0, 17}}));
        QVERIFY(sheet->GetCellText(0, 0).startsWith("紧密产品同步执行导入模板\n1、材质：必填，\n"));
        const QStringList header = {"材质*", "等级",      "标准号*",   "规格*",
                                    "品名*", "表面处理*", "计量单位*", "单重"};
        for (int c = 0; c < header.size(); ++c)
            QCOMPARE(sheet->GetCellText(1, c), header.at(c));
        QCOMPARE(sheet->GetCellText(2, 0), "Q235(碳钢)");
        QCOMPARE(sheet->GetCellText(2, 2), "DIN9021");
        QCOMPARE(sheet->GetCellText(2, 4), "加大平垫圈");
        QCOMPARE(sheet->GetCellText(2, 6), "千支");
        QCOMPARE(sheet->GetCellText(2, 7), "5.5千克");
        QCOMPARE(sheet->GetCellType(2, 7), LibXLExcelSheet::CellString);
        QCOMPARE(sheet->GetCellText(2, 9), "通润春（TRC）");
        QCOMPARE(sheet->GetCellText(2, 12), "200");
        QCOMPARE(sheet->GetCellValue(2, 12), QVariant(200.0));
    }

    void chineseBalanceSheet()
    {
        LibXLExcel book;
        QVERIFY2(book.Open(sample("poi__61287.xls")), qPrintable(book.ErrorMessage()));
        const LibXLExcelSheet* sheet = book.GetSheet(0);
        QCOMPARE(sheet->GetName(), "第一页");
        QCOMPARE(sheet->RowCount(), 40);
        QCOMPARE(sheet->ColCount(), 8);
        QCOMPARE(sheet->GetMerges().size(), 6);
        QCOMPARE(sheet->GetCellText(0, 0), "资产负债表");
        QCOMPARE(sheet->GetCellText(4, 3), "编制日期：2017-06-30");
        ExcelRange range;
        QVERIFY(sheet->MergeAt(1, 4, &range));
        QCOMPARE(range, (ExcelRange{0, 2, 0, 7}));
        QVERIFY(!sheet->MergeAt(5, 5, nullptr));
    }

    void xlsAndXlsxTwinsHoldTheSameCells()
    {
        LibXLExcel xls;
        LibXLExcel xlsx;
        QVERIFY2(xls.Open(sample("readxl__datasets.xls")), qPrintable(xls.ErrorMessage()));
        QVERIFY2(xlsx.Open(sample("readxl__datasets.xlsx")), qPrintable(xlsx.ErrorMessage()));
        QCOMPARE(xls.SheetCount(), 3);
        QCOMPARE(xlsx.SheetCount(), 3);
        QCOMPARE(xls.GetSheet(2)->GetName(), "quakes");
        QCOMPARE(xls.GetSheet(2)->RowCount(), 1001);
        QCOMPARE(xls.GetSheet(0)->GetCellText(1, 5), "2.62");
        QCOMPARE(xls.GetSheet(1)->GetCellText(1, 1), "horsebean");
        const QStringList a = cells(xls);
        const QStringList b = cells(xlsx);
        QCOMPARE(a.size(), 33 * 11 + 72 * 2 + 1001 * 5);
        QCOMPARE(a, b);
    }

    void emptySheetAndHeaderOnlySheet()
    {
        LibXLExcel book;
        QVERIFY2(book.Open(sample("readxl__empty-sheets.xlsx")), qPrintable(book.ErrorMessage()));
        QCOMPARE(book.SheetCount(), 2);
        QCOMPARE(book.GetSheet(0)->RowCount(), 0);
        QCOMPARE(book.GetSheet(0)->GetCellText(0, 0), QString());
        QCOMPARE(book.GetSheet(0)->GetCellType(5, 5), LibXLExcelSheet::CellEmpty);
        QCOMPARE(book.GetSheet(1)->RowCount(), 1);
        QCOMPARE(book.GetSheet(1)->GetCellText(0, 1), "var2");
    }

    void dates1904ShiftedInBothFormats_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("xls") << "sheetjs__1904.xls";
        QTest::newRow("xlsx") << "sheetjs__1904.xlsx";
    }
    void dates1904ShiftedInBothFormats()
    {
        QFETCH(QString, file);
        LibXLExcel book;
        QVERIFY2(book.Open(sample(file.toUtf8().constData())), qPrintable(book.ErrorMessage()));
        QVERIFY(book.Is1904());
        const LibXLExcelSheet* sheet = book.GetSheet(0);
        const QStringList dates = {"1904-01-02", "1904-01-12", "1904-04-21", "1907-01-16",
                                   "1934-06-03"};
        for (int r = 0; r < dates.size(); ++r) {
            QCOMPARE(sheet->GetCellType(r, 1), LibXLExcelSheet::CellDate);
            QCOMPARE(sheet->GetCellText(r, 1), dates.at(r));
            // The TEXT() and T() formulas give their cached string results.
            QCOMPARE(sheet->GetCellType(r, 2), LibXLExcelSheet::CellString);
            QCOMPARE(sheet->GetCellText(r, 2), dates.at(r));
            QCOMPARE(sheet->GetCellText(r, 3), dates.at(r));
        }
        QCOMPARE(sheet->GetCellValue(0, 1), QVariant(QDate(1904, 1, 2)));
        QCOMPARE(sheet->GetCellText(4, 0), "11111");
    }

    void mergedRangesInBothFormats_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("xls") << "sheetjs__merge_cells.xls";
        QTest::newRow("xlsx") << "sheetjs__merge_cells.xlsx";
    }
    void mergedRangesInBothFormats()
    {
        QFETCH(QString, file);
        LibXLExcel book;
        QVERIFY2(book.Open(sample(file.toUtf8().constData())), qPrintable(book.ErrorMessage()));
        const LibXLExcelSheet* sheet = book.GetSheet(0);
        QVector<ExcelRange> merges = sheet->GetMerges();
        std::sort(merges.begin(), merges.end(), [](const ExcelRange& a, const ExcelRange& b) {
            return qMakePair(a.firstRow, a.firstCol) < qMakePair(b.firstRow, b.firstCol);
        });
        QCOMPARE(merges,
                 QVector<ExcelRange>(
                     {{0, 1, 0, 1}, {0, 1, 2, 2}, {0, 1, 3, 3}, {2, 2, 0, 1}, {3, 3, 0, 1}}));
        QCOMPARE(sheet->GetCellText(0, 0), "A1:B2");
        QCOMPARE(sheet->GetCellText(2, 0), "A3:B3");
    }

    void hiddenSheetsAndFormulaValues()
    {
        LibXLExcel book;
        QVERIFY2(book.Open(sample("sheetjs__sheet_visibility.xls")),
                 qPrintable(book.ErrorMessage()));
        QCOMPARE(book.SheetCount(), 3);
        QCOMPARE(book.GetSheet(0)->GetState(), LibXLExcelSheet::SheetVisible);
        QCOMPARE(book.GetSheet(1)->GetState(), LibXLExcelSheet::SheetHidden);
        QCOMPARE(book.GetSheet(2)->GetState(), LibXLExcelSheet::SheetVeryHidden);
        QCOMPARE(book.GetSheet(2)->GetName(), "VeryHidden");
        // Row 2 holds CODE() of row 1, some through shared formulas: all with cached values.
        for (const LibXLExcelSheet* sheet : book.GetSheets())
            for (int c = 0; c < sheet->ColCount(); ++c) {
                QCOMPARE(sheet->GetCellType(1, c), LibXLExcelSheet::CellNumber);
                QCOMPARE(sheet->GetCellText(1, c),
                         QString::number(sheet->GetCellText(0, c).at(0).unicode()));
            }
    }

    // Every .xls sample gives the same cells, merges, widths and heights through FreeXL as
    // through our own record walk, which opens workbooks.
    void ownRecordWalkAgreesWithFreeXl()
    {
        const QStringList files = QDir(EXCEL_SAMPLES_DIR).entryList({"*.xls"}, QDir::Files);
        int compared = 0;
        for (const QString& file : files) {
            const QString path = QDir(EXCEL_SAMPLES_DIR).filePath(file);
            LibXLExcel own;
            if (!own.Open(path))
                continue;
            QFile raw(path);
            QVERIFY(raw.open(QIODevice::ReadOnly));
            CompoundFileReader compound;
            QString error;
            QVERIFY(compound.open(raw.readAll(), &error));
            const QByteArray stream = compound.stream("Workbook", &error);
            LibXLExcel freexl;
            QVERIFY2(XlsBookReader::read(path, stream, &freexl, &error, false), qPrintable(error));
            QCOMPARE(cells(own), cells(freexl));
            for (int i = 0; i < freexl.SheetCount(); ++i) {
                const LibXLExcelSheet* a = own.GetSheet(i);
                const LibXLExcelSheet* b = freexl.GetSheet(i);
                QCOMPARE(a->GetMerges(), b->GetMerges());
                for (int c = 0; c < b->ColCount(); ++c)
                    QCOMPARE(a->GetColWidth(c), b->GetColWidth(c));
                for (int r = 0; r < b->RowCount(); ++r)
                    QCOMPARE(a->GetRowHeight(r), b->GetRowHeight(r));
            }
            ++compared;
        }
        QCOMPARE(compared, 6);
    }

    // The dump of the command-line tool reads every sample without a crash.
    void toolDumpsEverySample()
    {
        const QStringList files =
            QDir(EXCEL_SAMPLES_DIR).entryList({"*.xls", "*.xlsx"}, QDir::Files, QDir::Name);
        QVERIFY(files.size() >= 14);
        for (const QString& file : files) {
            QProcess tool;
            tool.start(TARVO_XL, {"dump", QDir(EXCEL_SAMPLES_DIR).filePath(file)});
            QVERIFY(tool.waitForFinished(60000));
            QCOMPARE(tool.exitStatus(), QProcess::NormalExit);
            QVERIFY2(tool.exitCode() == 0 || tool.exitCode() == 1, qPrintable(file));
        }
        QProcess tool;
        tool.start(TARVO_XL, {"dump", sample("sheetjs__merge_cells.xlsx"), "Merge"});
        QVERIFY(tool.waitForFinished(60000));
        const QString out = QString::fromUtf8(tool.readAllStandardOutput());
        QVERIFY2(out.contains("  merged A1:B2\n") && out.contains("  C1 string \"C1:C2\"\n"),
                 qPrintable(out));
    }
};

QTEST_GUILESS_MAIN(tst_ExcelSamples)
#include "tst_ExcelSamples.moc"
