#include "EvaluatedMaterialImport.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "SheetBuilder.h"

#include <QProcess>
#include <QtTest>

using Import = EvaluatedMaterialImport;

namespace {

QString sample(const QString& name)
{
    return QStringLiteral(SAMPLES_DIR "/") + name;
}

// "serial name" of every material row identify finds on the sheet's own header.
QStringList materialRows(const LibXLExcelSheet& sheet)
{
    const Import import(sheet);
    const Import::Layout layout = import.findLayout();
    const Import::Identification result = import.identify(layout.fields, layout.firstDataRow);
    QStringList rows;
    for (int row = 0; row < result.kinds.size(); ++row)
        if (result.kinds.at(row) == Import::MaterialRow)
            rows << import.cellText(row, layout.fields.indexOf(Import::Serial)).trimmed() + ' ' +
                        import.cellText(row, layout.fields.indexOf(Import::Name)).trimmed();
    return rows;
}

} // namespace

class tst_EvaluatedMaterialImport : public QObject
{
    Q_OBJECT
private slots:
    void matchHeader_data();
    void matchHeader();
    void headerRow();
    void twoRowHeader();
    void mappingMessages();
    void identifyRows();
    void recordsFromRows();
    void sampleWorkbooks_data();
    void sampleWorkbooks();
    void listSheetSkipsHiddenAndCover();
    void otherProgramsWorkbooks();
    void commandLine();
};

void tst_EvaluatedMaterialImport::matchHeader_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<int>("field");
    QTest::newRow("blanks between") << "序 号" << int(Import::Serial);
    QTest::newRow("full-width blank and tab") << "序\u3000\t号" << int(Import::Serial);
    QTest::newRow("line break") << "质量\n档次" << int(Import::Grade);
    QTest::newRow("招标编码") << "招标编码" << int(Import::Code);
    QTest::newRow("inside a longer caption") << "计量单位" << int(Import::Unit);
    QTest::newRow("two field words: first in table order")
        << "规格型号及材料名称" << int(Import::Name);
    QTest::newRow("序号 before 备注") << "备注/序号" << int(Import::Serial);
    QTest::newRow("repeated word") << "产地产地" << int(Import::Origin);
    QTest::newRow("part of a field word") << "名称" << int(Import::NoField);
    QTest::newRow("punctuation between words") << "规格、型号" << int(Import::NoField);
    QTest::newRow("编码 alone") << "编  码" << int(Import::NoField);
    QTest::newRow("empty") << "" << int(Import::NoField);
    QTest::newRow("blank only") << "  \n " << int(Import::NoField);
}

void tst_EvaluatedMaterialImport::matchHeader()
{
    QFETCH(QString, header);
    QFETCH(int, field);
    QCOMPARE(Import::matchHeader(header), field);
}

void tst_EvaluatedMaterialImport::headerRow()
{
    // Title rows (one merged over the header's width) above the header; the title's words
    // are not field words.
    auto sheet = makeSheet({{"需评审材料清单"},
                            {"工程名称：某住宅楼", "", "", "单 位：元"},
                            {"序号", "材料名称", "规格型号", "单位", "其他"},
                            {"=1", "钢筋", "HRB400 Φ12", "t"}},
                           {{0, 0, 0, 4}});
    Import::Layout layout = Import(*sheet).findLayout();
    // Row 1 maps 单位 only: not a header.
    QCOMPARE(layout.headerRow, 2);
    QCOMPARE(layout.headerRows, 1);
    QCOMPARE(layout.firstDataRow, 3);
    QCOMPARE(layout.fields, (QVector<int>{Import::Serial, Import::Name, Import::Spec, Import::Unit,
                                          Import::NoField}));

    // 材料名称 alone is enough, and so is 序号 alone.
    QCOMPARE(Import(*makeSheet({{"", "材料名称"}})).findLayout().headerRow, 0);
    QCOMPARE(Import(*makeSheet({{""}, {"序号", "名称"}})).findLayout().headerRow, 1);

    // Only the first 20 rows are searched.
    QVector<QStringList> deep(20, QStringList{"说明"});
    deep << QStringList{"序号", "材料名称"};
    layout = Import(*makeSheet(deep)).findLayout();
    QCOMPARE(layout.headerRow, -1);
    QCOMPARE(layout.firstDataRow, 0);
    QCOMPARE(layout.fields, (QVector<int>{Import::NoField, Import::NoField}));
    deep.removeFirst();
    QCOMPARE(Import(*makeSheet(deep)).findLayout().headerRow, 19);

    // A text left in a cell covered by a merge is not shown and not matched.
    sheet = makeSheet({{"清单", "序号"}, {"序号", "材料名称"}}, {{0, 0, 0, 1}});
    QCOMPARE(Import(*sheet).cellText(0, 1), QString());
    QCOMPARE(Import(*sheet).findLayout().headerRow, 1);
    QCOMPARE(Import(*makeSheet({})).findLayout().headerRow, -1);
}

void tst_EvaluatedMaterialImport::twoRowHeader()
{
    // 序号 .. 单位 span both header rows; 品牌要求 spans three columns with their captions below.
    const QVector<ExcelRange> merges = {{0, 1, 0, 0}, {0, 1, 1, 1}, {0, 1, 2, 2}, {0, 0, 3, 5}};
    auto sheet = makeSheet({{"序号", "材料名称", "单位", "品牌要求"},
                            {"", "", "", "产地", "厂家", "品种"},
                            {"=1", "水泥", "t", "四川", "", "散装"}},
                           merges);
    Import::Layout layout = Import(*sheet).findLayout();
    QCOMPARE(layout.headerRow, 0);
    QCOMPARE(layout.headerRows, 2);
    QCOMPARE(layout.firstDataRow, 2);
    QCOMPARE(layout.fields, (QVector<int>{Import::Serial, Import::Name, Import::Unit,
                                          Import::Origin, Import::Manufacturer, Import::Variety}));

    // With merges in the header, a row under it holding a serial number is the first
    // material even when its texts contain field words.
    sheet = makeSheet(
        {{"序号", "材料名称", "单位", "说明"}, {"=1", "防水卷材（单位：m2）", "m2", "产地不限"}},
        {{0, 0, 3, 4}});
    layout = Import(*sheet).findLayout();
    QCOMPARE(layout.headerRows, 1);
    QCOMPARE(layout.firstDataRow, 1);

    // Without merges a header is one row.
    sheet = makeSheet({{"序号", "材料名称"}, {"", "", "产地"}, {"=1", "砂"}});
    QCOMPARE(Import(*sheet).findLayout().headerRows, 1);
}

void tst_EvaluatedMaterialImport::mappingMessages()
{
    using F = QVector<int>;
    const int none = Import::NoField;
    QCOMPARE(Import::duplicateFieldsMessage(
                 F{Import::Serial, Import::Name, Import::Unit, none, Import::Unit}),
             QString("存在多个\"单位\"列，请取消多余的对应关系。"));
    QCOMPARE(Import::duplicateFieldsMessage(
                 F{Import::Unit, Import::Serial, Import::Unit, Import::Serial, Import::Name}),
             QString("存在多个\"序号\"、\"单位\"列，请取消多余的对应关系。"));
    QCOMPARE(Import::duplicateFieldsMessage(F{none, none, Import::Serial}), QString());

    QCOMPARE(Import::missingFieldsMessage(F{none, Import::Unit}),
             QString("请先设置 \"序号\" 和 \"材料名称\" 列！"));
    QCOMPARE(Import::missingFieldsMessage(F{Import::Name}), QString("请先设置 \"序号\" 列！"));
    QCOMPARE(Import::missingFieldsMessage(F{Import::Serial}),
             QString("请先设置 \"材料名称\" 列！"));
    QCOMPARE(Import::missingFieldsMessage(F{Import::Name, Import::Serial}), QString());

    // Identify stops on either: duplicates leave the rows alone, a missing field marks every
    // row invalid.
    auto sheet = makeSheet({{"序号", "材料名称", "单位", "单位"}, {"=1", "砂", "m3", "m3"}});
    Import import(*sheet);
    Import::Identification result =
        import.identify(F{Import::Serial, Import::Name, Import::Unit, Import::Unit}, 1);
    QVERIFY(result.stopped);
    QCOMPARE(result.message, QString("存在多个\"单位\"列，请取消多余的对应关系。"));
    QVERIFY(result.kinds.isEmpty());
    result = import.identify(F{Import::Serial, none, Import::Unit}, 1);
    QVERIFY(result.stopped);
    QCOMPARE(result.message, QString("请先设置 \"材料名称\" 列！"));
    QCOMPARE(result.kinds, (QVector<quint8>{Import::InvalidRow, Import::InvalidRow}));
    QCOMPARE(result.materialRows, 0);
}

void tst_EvaluatedMaterialImport::identifyRows()
{
    // Blank rows, a subtotal, a serial without a name, a name without a serial, blanks only,
    // a note merged over the row, serials as numbers and texts.
    auto sheet = makeSheet({{"序号", "材料名称", "单位"},
                            {"=1", "钢筋", "t"},
                            {},
                            {"", "小计", ""},
                            {"2", "", "t"},
                            {" ", " 水泥 ", "t"},
                            {"1.0", "砂", "m3"},
                            {"一", "碎石", "m3"},
                            {"=3.5", "  卵石", ""},
                            {"注：本表材料由投标人报价", "", ""}},
                           {{9, 9, 0, 2}});
    Import import(*sheet);
    const QVector<int> fields{Import::Serial, Import::Name, Import::Unit};
    const Import::Identification result = import.identify(fields, 1);
    QVERIFY(!result.stopped);
    QVERIFY(result.message.isEmpty());
    const QVector<quint8> expected{0, 1, 0, 0, 0, 0, 1, 1, 1, 0};
    QCOMPARE(result.kinds, expected);
    QCOMPARE(result.materialRows, 4);
    QCOMPARE(import.cellText(8, 0), QString("3.5"));
    // Rows above the first data row are never material rows.
    QCOMPARE(import.identify(fields, 7).materialRows, 2);

    const Import::Identification empty = Import(*makeSheet({{"序号", "材料名称"}, {"合计"}}))
                                             .identify({Import::Serial, Import::Name}, 1);
    QVERIFY(!empty.stopped);
    QCOMPARE(empty.message, QString("当前表内不存在有效招标需评审材料数据。"));
    QCOMPARE(empty.materialRows, 0);
}

void tst_EvaluatedMaterialImport::recordsFromRows()
{
    auto sheet = makeSheet({{"备注", "材料名称", "序号", "规格型号", "单位", "单价"},
                            {"  含运费 ", "钢筋", "=1", "HRB400 Φ12", "t", "=4200"},
                            {"", "商品混凝土", "=2", "C30", "m3", "=520"}});
    Import import(*sheet);
    const QVector<int> fields = import.findLayout().fields;
    QCOMPARE(fields, (QVector<int>{Import::Remark, Import::Name, Import::Serial, Import::Spec,
                                   Import::Unit, Import::NoField}));
    const QVector<TenderEvaluatedMaterial> records = import.records(fields, {2, 1});
    QCOMPARE(records.size(), 2);
    QCOMPARE(Import::values(records.at(0)),
             (QStringList{"2", "", "商品混凝土", "C30", "m3", "", "", "", "", ""}));
    QCOMPARE(Import::values(records.at(1)),
             (QStringList{"1", "", "钢筋", "HRB400 Φ12", "t", "", "", "", "", "含运费"}));
    QVERIFY(!records.at(0).price.has_value());
    QCOMPARE(Import::fieldNames(), (QStringList{"序号", "招标编码", "材料名称", "规格型号", "单位",
                                                "产地", "厂家", "品种", "质量档次", "备注"}));
}

void tst_EvaluatedMaterialImport::sampleWorkbooks_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<int>("headerRow");
    QTest::addColumn<int>("headerRows");
    QTest::addColumn<QVector<int>>("fields");
    QTest::addColumn<QStringList>("rows");
    QVector<int> all;
    for (int field = 0; field < Import::FieldCount; ++field)
        all << field;
    QTest::newRow("simple xlsx") << "需评审材料-简单.xlsx"
                                 << "需评审材料" << 0 << 1 << all
                                 << QStringList{"1 钢筋",
                                                "2 钢筋",
                                                "3 钢筋",
                                                "4 商品混凝土",
                                                "5 商品混凝土",
                                                "6 蒸压加气混凝土砌块",
                                                "7 SBS改性沥青防水卷材",
                                                "8 镀锌钢管",
                                                "9 铜芯电力电缆",
                                                "10 乳胶漆",
                                                "11 陶瓷地砖",
                                                "12 铝合金型材"};
    QVector<int> titled = all;
    titled[Import::Code] = Import::NoField; // "编  码" names no field
    QTest::newRow("xls with titles, two-row header, subtotals")
        << "需评审材料-标题与双行表头.xls"
        << "材料表" << 2 << 2 << titled
        << QStringList{"1 钢筋",        "2 钢筋",     "3 钢筋",     "1.0 型钢",    "一 商品混凝土",
                       "二 商品混凝土", "7 预拌砂浆", "8 镀锌钢管", "9 PPR给水管", "10 铜芯电线"};
    QTest::newRow("several sheets, hidden one, notes")
        << "需评审材料-多工作表.xlsx"
        << "需评审材料清单" << 2 << 1 << all
        << QStringList{"1 钢筋", "2 钢绞线", "3 商品混凝土", "4 水泥",
                       "5 中砂", "6 碎石",   "8 防水涂料",   "9 岩棉板"};
}

void tst_EvaluatedMaterialImport::sampleWorkbooks()
{
    QFETCH(QString, file);
    QFETCH(QString, sheet);
    QFETCH(int, headerRow);
    QFETCH(int, headerRows);
    QFETCH(QVector<int>, fields);
    QFETCH(QStringList, rows);
    LibXLExcel book;
    QVERIFY2(book.Open(sample(file)), qPrintable(book.ErrorMessage()));
    const int index = Import::findListSheet(book);
    QVERIFY(index >= 0);
    const LibXLExcelSheet& list = *book.GetSheet(index);
    QCOMPARE(list.GetName(), sheet);
    const Import::Layout layout = Import(list).findLayout();
    QCOMPARE(layout.headerRow, headerRow);
    QCOMPARE(layout.headerRows, headerRows);
    QCOMPARE(layout.fields, fields);
    QCOMPARE(materialRows(list), rows);
}

void tst_EvaluatedMaterialImport::listSheetSkipsHiddenAndCover()
{
    // The hidden sheet holds an older list; it is taken only when no visible sheet has one.
    LibXLExcel book;
    QVERIFY(book.Open(sample("需评审材料-多工作表.xlsx")));
    QCOMPARE(book.GetSheet(1)->GetState(), LibXLExcelSheet::SheetHidden);
    QCOMPARE(materialRows(*book.GetSheet(1)), (QStringList{"1 钢筋", "2 商品混凝土"}));
    QCOMPARE(Import::findListSheet(book), 3);

    // Every record of the chosen sheet, fields in column order.
    const LibXLExcelSheet& list = *book.GetSheet(3);
    Import import(list);
    const QVector<int> fields = import.findLayout().fields;
    QCOMPARE(
        Import::values(import.record(fields, 8)),
        (QStringList{"5", "ZB-005", "中砂", "", "m3", "本地", "", "机制砂", "合格", "含泥量≤3%"}));

    if (!QDir(QStringLiteral(EXCEL_SAMPLES_DIR)).exists())
        QSKIP("the shared workbook samples (../shared/excel-samples) are not beside this tree");
    LibXLExcel none;
    QVERIFY(none.Open(QStringLiteral(EXCEL_SAMPLES_DIR "/sheetjs__sheet_visibility.xls")));
    QCOMPARE(Import::findListSheet(none), 0);
}

void tst_EvaluatedMaterialImport::otherProgramsWorkbooks()
{
    if (!QDir(QStringLiteral(EXCEL_SAMPLES_DIR)).exists())
        QSKIP("the shared workbook samples (../shared/excel-samples) are not beside this tree");
    // Workbooks of other programs with no list: no header, so identify asks for both columns.
    for (const char* name : {"easyexcel__t01.xls", "readxl__datasets.xlsx", "poi__61287.xls",
                             "sheetjs__merge_cells.xlsx", "readxl__empty-sheets.xlsx"}) {
        LibXLExcel book;
        QVERIFY2(book.Open(QStringLiteral(EXCEL_SAMPLES_DIR "/") + QLatin1String(name)), name);
        for (const LibXLExcelSheet* sheet : book.GetSheets()) {
            const Import import(*sheet);
            const Import::Layout layout = import.findLayout();
            QCOMPARE(layout.headerRow, -1);
            const Import::Identification result = import.identify(layout.fields, 0);
            QVERIFY(result.stopped);
            QCOMPARE(result.message, QString("请先设置 \"序号\" 和 \"材料名称\" 列！"));
            QCOMPARE(result.kinds.size(), sheet->RowCount());
        }
    }
    LibXLExcel product;
    QVERIFY(product.Open(QStringLiteral(EXCEL_SAMPLES_DIR "/easyexcel__t01.xls")));
    const LibXLExcelSheet& sheet = *product.GetSheet(0);
    // Its captions mapped as they stand: 计量单位* and three 包装单位 columns, 备注.
    QVector<int> fields;
    for (int col = 0; col < sheet.ColCount(); ++col)
        fields << Import::matchHeader(sheet.GetCellText(1, col));
    QCOMPARE(fields.count(Import::Unit), 4);
    QCOMPARE(fields.count(Import::Remark), 1);
    const Import::Identification result = Import(sheet).identify(fields, 2);
    QVERIFY(result.stopped);
    QCOMPARE(result.message, QString("存在多个\"单位\"列，请取消多余的对应关系。"));
}

void tst_EvaluatedMaterialImport::commandLine()
{
    QProcess xl;
    xl.start(QStringLiteral(TARVO_XL),
             {QStringLiteral("materials"), sample(QStringLiteral("需评审材料-多工作表.xlsx"))});
    QVERIFY(xl.waitForFinished(30000));
    QCOMPARE(xl.exitCode(), 0);
    const QStringList lines = QString::fromUtf8(xl.readAllStandardOutput()).split('\n');
    QCOMPARE(lines.mid(0, 4), (QStringList{"# sheet 需评审材料清单", "# header row 3",
                                           "# column A 序号", "# column B 招标编码"}));
    QCOMPARE(lines.at(11), QString("# column J 备注"));
    QCOMPARE(lines.at(12),
             QString("1\tZB-001\t钢筋\tHRB400E Φ20\tt\t四川\t川威集团\t螺纹钢\t一级\t"));
    QCOMPARE(lines.at(19), QString("9\tZB-009\t岩棉板\t100mm 140kg/m3\tm2\t河北\t\t憎水\tA级\t"
                                   "燃烧性能A级"));
    QCOMPARE(lines.size(), 21); // and the final line break

    // A named sheet, here the hidden one; a sheet without a list says why and fails.
    xl.start(QStringLiteral(TARVO_XL),
             {QStringLiteral("materials"), sample(QStringLiteral("需评审材料-多工作表.xlsx")),
              QStringLiteral("封面")});
    QVERIFY(xl.waitForFinished(30000));
    QCOMPARE(xl.exitCode(), 1);
    QVERIFY(xl.readAllStandardOutput().startsWith("# sheet 封面\n# header row none\n"));
    QCOMPARE(QString::fromUtf8(xl.readAllStandardError()).trimmed(),
             QString("请先设置 \"序号\" 和 \"材料名称\" 列！"));
}

QTEST_GUILESS_MAIN(tst_EvaluatedMaterialImport)
#include "tst_EvaluatedMaterialImport.moc"
