// Workbooks of every kind a reader meets, made here: prefixed and strict XML, missing optional
// parts, every cell type, sparse sheets, BIFF5; and every kind of bad file, each refused with its
// own message.
#include "CompoundFileWriter.h"
#include "ExcelFixtures.h"
#include "ExcelText.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

using namespace ExcelFixtures;

class tst_ExcelReading : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return path(name);
    }
    QString refusal(const QString& file) const
    {
        LibXLExcel book;
        if (book.Open(file))
            return QStringLiteral("opened");
        if (book.SheetCount() != 0)
            return QStringLiteral("sheets left behind");
        return book.ErrorMessage();
    }

private slots:
    void textsAsAnEstimatorSeesThem()
    {
        QCOMPARE(ExcelText::number(12), "12");
        QCOMPARE(ExcelText::number(-3.5), "-3.5");
        QCOMPARE(ExcelText::number(0.1 + 0.2), "0.3");
        QCOMPARE(ExcelText::number(1234567.891), "1234567.891");
        QCOMPARE(ExcelText::number(0.000125), "0.000125");
        QCOMPARE(ExcelText::number(1e20), "1e+20");
        QCOMPARE(ExcelText::dateText(1, false), "1900-01-01");
        QCOMPARE(ExcelText::dateText(60, false), "1900-02-29");
        QCOMPARE(ExcelText::dateText(61, false), "1900-03-01");
        QCOMPARE(ExcelText::dateText(45000.5, false), "2023-03-15 12:00:00");
        QCOMPARE(ExcelText::dateText(0.75, false), "18:00:00");
        QCOMPARE(ExcelText::dateText(1, true), "1904-01-02");
        QCOMPARE(ExcelText::dateText(-1, false), QString());
        QVERIFY(ExcelText::isDateFormat(14, QString()));
        QVERIFY(ExcelText::isDateFormat(57, QString())); // a Chinese year-month format
        QVERIFY(ExcelText::isDateFormat(176, "yyyy\"年\"m\"月\"d\"日\""));
        QVERIFY(ExcelText::isDateFormat(177, "[h]:mm"));
        QVERIFY(!ExcelText::isDateFormat(178, "0.00%"));
        QVERIFY(!ExcelText::isDateFormat(179, "[Red]#,##0.00\"元\""));
        QVERIFY(!ExcelText::isDateFormat(180, "\"m\"0"));
    }

    void prefixedElementsRichRunsAndEveryCellType()
    {
        const QByteArray ns = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
        const QByteArray sheet =
            "<?xml version='1.0'?><x:worksheet xmlns:x='" + ns +
            "'><x:cols><x:col min='2' max='3' width='18.5' customWidth='1'/></x:cols><x:sheetData>"
            "<x:row r='1' ht='30' customHeight='1'><x:c r='A1' t='s'><x:v>0</x:v></x:c><x:c r='B1' "
            "t='s'><x:v>1</x:v></x:c>"
            "<x:c r='C1' t='b'><x:v>1</x:v></x:c><x:c r='D1' t='e'><x:v>#DIV/0!</x:v></x:c>"
            "<x:c r='E1' t='str'><x:f>A1&amp;'m'</x:f><x:v>钢筋m</x:v></x:c><x:c r='F1' "
            "s='1'><x:v>45000</x:v></x:c>"
            "<x:c r='G1' s='2'><x:v>45000.25</x:v></x:c><x:c r='H1' "
            "s='3'><x:v>0.125</x:v></x:c><x:c r='I1' s='1'/></x:row>"
            "<x:row><x:c><x:v>7</x:v></x:c><x:c "
            "t='inlineStr'><x:is><x:r><x:t>甲</x:t></x:r><x:r><x:t xml:space='preserve'> "
            "乙</x:t></x:r></x:is></x:c></x:row>"
            "</x:sheetData><x:mergeCells count='1'><x:mergeCell "
            "ref='A3:C4'/></x:mergeCells></x:worksheet>";
        const QByteArray shared =
            "<?xml version='1.0'?><s:sst xmlns:s='" + ns +
            "'><s:si><s:t>钢筋</s:t></s:si><s:si><s:r><s:rPr><s:b/></s:rPr><s:t>C30</s:t></"
            "s:r><s:r><s:t>混凝土_x000D_</s:t></s:r>"
            "<s:rPh sb='0' eb='2'><s:t>コンクリート</s:t></s:rPh></s:si></s:sst>";
        const QByteArray styles =
            "<?xml version='1.0'?><st:styleSheet xmlns:st='" + ns +
            "'><st:numFmts><st:numFmt numFmtId='170' "
            "formatCode='yyyy&quot;年&quot;m&quot;月&quot;d&quot;日&quot; hh:mm'/></st:numFmts>"
            "<st:cellXfs><st:xf numFmtId='0'/><st:xf numFmtId='14'/><st:xf numFmtId='170'/><st:xf "
            "numFmtId='10'/></st:cellXfs></st:styleSheet>";
        QVERIFY(writeZip(path("prefixed.xlsx"), package({{"清单", "", sheet},
                                                         {"Hid", "hidden", sheetXml("")},
                                                         {"Very", "veryHidden", sheetXml("")}},
                                                        shared, styles)));
        LibXLExcel book;
        QVERIFY2(book.Open(path("prefixed.xlsx")), qPrintable(book.ErrorMessage()));
        QCOMPARE(book.SheetCount(), 3);
        const LibXLExcelSheet* s = book.GetSheet(0);
        QCOMPARE(s->GetName(), "清单");
        QCOMPARE(s->GetCellText(0, 0), "钢筋");
        QCOMPARE(s->GetCellText(0, 1), "C30混凝土\r");
        QCOMPARE(s->GetCellType(0, 2), LibXLExcelSheet::CellBoolean);
        QCOMPARE(s->GetCellText(0, 2), "TRUE");
        QCOMPARE(s->GetCellValue(0, 2), QVariant(true));
        QCOMPARE(s->GetCellType(0, 3), LibXLExcelSheet::CellError);
        QCOMPARE(s->GetCellText(0, 3), "#DIV/0!");
        QCOMPARE(s->GetCellText(0, 4), "钢筋m");
        QCOMPARE(s->GetCellType(0, 5), LibXLExcelSheet::CellDate);
        QCOMPARE(s->GetCellText(0, 5), "2023-03-15");
        QCOMPARE(s->GetCellValue(0, 5), QVariant(QDate(2023, 3, 15)));
        QCOMPARE(s->GetCellText(0, 6), "2023-03-15 06:00:00");
        QCOMPARE(s->GetCellType(0, 7), LibXLExcelSheet::CellNumber);
        QCOMPARE(s->GetCellText(0, 7), "0.125");
        QCOMPARE(s->GetCellType(0, 8), LibXLExcelSheet::CellEmpty);
        QCOMPARE(s->GetCellText(1, 0), "7");
        QCOMPARE(s->GetCellText(1, 1), "甲 乙");
        QCOMPARE(s->GetMerges(), QVector<ExcelRange>({{2, 3, 0, 2}}));
        QCOMPARE(s->GetColWidth(1), 18.5);
        QCOMPARE(s->GetColWidth(0), -1.0);
        QCOMPARE(s->GetRowHeight(0), 30.0);
        QCOMPARE(book.GetSheet(1)->GetState(), LibXLExcelSheet::SheetHidden);
        QCOMPARE(book.GetSheet(2)->GetState(), LibXLExcelSheet::SheetVeryHidden);
    }

    void strictMacroEnabledAndSparse()
    {
        const QByteArray strict = "http://purl.oclc.org/ooxml/officeDocument/relationships";
        QMap<QString, QByteArray> parts;
        parts.insert("[Content_Types].xml", contentTypes());
        parts.insert("_rels/.rels", rootRels(strict));
        parts.insert("xl/workbook.xml",
                     "<workbook xmlns='http://purl.oclc.org/ooxml/spreadsheetml/main' xmlns:r='" +
                         strict +
                         "'><workbookPr date1904='true'/><sheets><sheet name='S' sheetId='1' "
                         "r:id='rId1'/></sheets></workbook>");
        parts.insert("xl/_rels/workbook.xml.rels",
                     "<Relationships "
                     "xmlns='http://schemas.openxmlformats.org/package/2006/"
                     "relationships'><Relationship Id='rId1' Type='" +
                         strict + "/worksheet' Target='/xl/worksheets/s.xml'/></Relationships>");
        parts.insert(
            "xl/worksheets/s.xml",
            "<worksheet xmlns='http://purl.oclc.org/ooxml/spreadsheetml/main'><sheetData><row "
            "r='1'><c r='A1' t='d'><v>2024-02-29T00:00:00Z</v></c></row>"
            "<row r='1048576'><c r='XFD1048576'><v>-1.5</v></c></row></sheetData></worksheet>");
        parts.insert("xl/vbaProject.bin", QByteArray(64, 'v'));
        QVERIFY(writeZip(path("strict.xlsm"), parts));
        LibXLExcel book;
        QVERIFY2(book.Open(path("strict.xlsm")), qPrintable(book.ErrorMessage()));
        QVERIFY(book.Is1904());
        const LibXLExcelSheet* s = book.GetSheet(0);
        QCOMPARE(s->GetCellType(0, 0), LibXLExcelSheet::CellDate);
        QCOMPARE(s->GetCellText(0, 0), "2024-02-29");
        QCOMPARE(s->RowCount(), 1048576);
        QCOMPARE(s->ColCount(), 16384);
        QCOMPARE(s->CellCount(), 2);
        QCOMPARE(s->GetCellText(1048575, 16383), "-1.5");
        // A sparse sheet is walked by its cells.
        int row = -1;
        int col = -1;
        QVERIFY(s->GetCellPosition(1, &row, &col));
        QCOMPARE(row, 1048575);
        QCOMPARE(col, 16383);
        QVERIFY(!s->GetCellPosition(2, &row, &col));
    }

    void formatIsToldByContentNotSuffix()
    {
        QVERIFY(
            writeZip(path("real.xlsx"),
                     package({{"A", "", sheetXml("<row r='1'><c r='A1'><v>1</v></c></row>")}})));
        QVERIFY(QFile::copy(path("real.xlsx"), path("renamed.xls")));
        LibXLExcel fromXls;
        QVERIFY2(fromXls.Open(path("renamed.xls")), qPrintable(fromXls.ErrorMessage()));
        QCOMPARE(fromXls.GetBookKind(), int(LibXLExcel::BookXlsx));
        QCOMPARE(fromXls.GetSheet(0)->GetCellText(0, 0), "1");

        LibXLExcel written(LibXLExcel::BookXls);
        written.AddSheet("X")->WriteStr(0, 0, "x");
        QVERIFY(written.Save(path("written.xlsx")));
        LibXLExcel fromXlsx;
        QVERIFY2(fromXlsx.Open(path("written.xlsx")), qPrintable(fromXlsx.ErrorMessage()));
        QCOMPARE(fromXlsx.GetBookKind(), int(LibXLExcel::BookXls));
        QCOMPARE(fromXlsx.GetSheet(0)->GetCellText(0, 0), "x");
    }

    // An Excel 5/95 workbook: a "Book" stream of BIFF5 records, texts in the GBK code page.
    void biff5WithChineseCodePage()
    {
        QTextCodec* gbk = QTextCodec::codecForName("GBK");
        QVERIFY(gbk);
        auto bof = [](quint16 kind) -> QByteArray {
            return le16(0x0500) + le16(kind) + le16(0x0DBB) + le16(0x07CC);
        };
        QByteArray globals;
        record(globals, 0x0809, bof(0x0005));
        record(globals, 0x0042, le16(936));
        for (int i = 0; i < 4; ++i)
            record(globals, 0x0031,
                   le16(200) + le16(0) + le16(0x7FFF) + le16(400) + le16(0) + QByteArray(3, '\0') +
                       QByteArray(1, '\0') + QByteArray(1, char(5)) + QByteArray("Arial"));
        for (int i = 0; i < 16; ++i)
            record(globals, 0x00E0,
                   le16(0) + le16(0) + le16(i < 15 ? 0xFFF5 : 0x0001) + QByteArray(10, '\0'));
        const QByteArray name = gbk->fromUnicode(QStringLiteral("材料表"));
        QByteArray bound = le32(0) + QByteArray(2, '\0') + QByteArray(1, char(name.size())) + name;
        const int offsetAt = globals.size() + 4;
        record(globals, 0x0085, bound);
        record(globals, 0x000A, QByteArray());
        QByteArray sheet;
        record(sheet, 0x0809, bof(0x0010));
        record(sheet, 0x0200, le16(0) + le16(2) + le16(0) + le16(2) + le16(0));
        const QByteArray text = gbk->fromUnicode(QStringLiteral("商品混凝土 C30"));
        record(sheet, 0x0204, le16(0) + le16(0) + le16(15) + le16(quint16(text.size())) + text);
        QByteArray number = le16(1) + le16(1) + le16(15);
        double value = 412.5;
        number.append(reinterpret_cast<const char*>(&value), 8);
        record(sheet, 0x0203, number);
        record(sheet, 0x000A, QByteArray());
        QByteArray stream = globals + sheet;
        qToLittleEndian(quint32(globals.size()), stream.data() + offsetAt);
        write("biff5.xls", CompoundFileWriter::build("Book", stream));

        LibXLExcel book;
        QVERIFY2(book.Open(path("biff5.xls")), qPrintable(book.ErrorMessage()));
        QCOMPARE(book.GetSheet(0)->GetName(), "材料表");
        QCOMPARE(book.GetSheet(0)->GetCellText(0, 0), "商品混凝土 C30");
        QCOMPARE(book.GetSheet(0)->GetCellText(1, 1), "412.5");
    }

    void badFilesAreRefusedEachWithItsReason()
    {
        write("empty.xls", QByteArray());
        QCOMPARE(refusal(path("empty.xls")),
                 "empty.xls: the file is empty (0 bytes), not an Excel file");
        write("notes.xls", "材料名称\t单位\n钢筋\tt\n");
        QCOMPARE(refusal(path("notes.xls")),
                 "notes.xls: not an Excel file (its first bytes are neither an .xlsx package nor "
                 "an .xls compound file)");
        write("page.xls", "<html><body><table><tr><td>1</td></tr></table></body></html>");
        QCOMPARE(refusal(path("page.xls")),
                 "page.xls: a web page saved under a workbook's name, not an Excel file");
        QCOMPARE(refusal(path("missing.xlsx")), "missing.xlsx: the file does not exist");
        QCOMPARE(refusal(m_dir.path()),
                 QFileInfo(m_dir.path()).fileName() + ": this is a folder, not a file");

        QVERIFY(writeZip(path("archive.xlsx"), {{"readme.txt", "hello"}}));
        QCOMPARE(refusal(path("archive.xlsx")),
                 "archive.xlsx: a zip archive, but not an Excel workbook (it has no workbook "
                 "part)");
        QVERIFY(writeZip(path("letter.xlsx"), {{"word/document.xml", "<w/>"}}));
        QCOMPARE(refusal(path("letter.xlsx")),
                 "letter.xlsx: this is a Word document, not an Excel workbook");

        QMap<QString, QByteArray> parts =
            package({{"A", "", sheetXml("")}, {"B", "", sheetXml("")}});
        parts.remove("xl/worksheets/sheet2.xml");
        QVERIFY(writeZip(path("lost.xlsx"), parts));
        QCOMPARE(refusal(path("lost.xlsx")),
                 "lost.xlsx: sheet \"B\" is part xl/worksheets/sheet2.xml, which the package does "
                 "not have");
        parts = package({{"A", "", sheetXml("")}}, "<sst/>");
        parts.remove("xl/sharedStrings.xml");
        QVERIFY(writeZip(path("nostrings.xlsx"), parts));
        QCOMPARE(refusal(path("nostrings.xlsx")),
                 "nostrings.xlsx: the workbook names the shared strings part xl/sharedStrings.xml, "
                 "but the package has no such part");

        QVERIFY(writeZip(path("broken.xlsx"),
                         package({{"A", "", sheetXml("<row r='1'><c r='A1'><v>1</v></row>")}})));
        QVERIFY(refusal(path("broken.xlsx"))
                    .startsWith("broken.xlsx: part xl/worksheets/sheet1.xml is not well-formed XML "
                                "(line 1: "));

        QVERIFY(
            writeZip(path("far.xlsx"),
                     package({{"A", "", sheetXml("<row r='1'><c r='XFE1'><v>1</v></c></row>")}})));
        QCOMPARE(refusal(path("far.xlsx")),
                 "far.xlsx: sheet \"A\" (part xl/worksheets/sheet1.xml): cell reference \"XFE1\" "
                 "is not a cell of a sheet (1048576 rows x 16384 columns at most)");
        QVERIFY(writeZip(path("rows.xlsx"), package({{"A", "", sheetXml("<row r='99999999'/>")}})));
        QCOMPARE(refusal(path("rows.xlsx")),
                 "rows.xlsx: sheet \"A\" (part xl/worksheets/sheet1.xml): row number \"99999999\" "
                 "is not a row of a sheet (1 to 1048576)");
        QVERIFY(
            writeZip(path("index.xlsx"),
                     package({{"A", "", sheetXml("<row r='1'><c r='B1' t='s'><v>5</v></c></row>")}},
                             "<sst><si><t>a</t></si></sst>")));
        QCOMPARE(refusal(path("index.xlsx")),
                 "index.xlsx: sheet \"A\" (part xl/worksheets/sheet1.xml): cell B1 refers to "
                 "shared string \"5\", but the workbook has 1 shared strings");
        QVERIFY(
            writeZip(path("word.xlsx"),
                     package({{"A", "", sheetXml("<row r='1'><c r='C1'><v>十二</v></c></row>")}})));
        QCOMPARE(refusal(path("word.xlsx")),
                 "word.xlsx: sheet \"A\" (part xl/worksheets/sheet1.xml): cell C1 is a number cell "
                 "whose value \"十二\" is not a number");

        // A password-protected .xlsx is a compound file holding the encrypted package.
        write("locked.xlsx", CompoundFileWriter::build("EncryptedPackage", QByteArray(100, 'e')));
        QCOMPARE(refusal(path("locked.xlsx")),
                 "locked.xlsx: the workbook is encrypted (protected by a password to open); "
                 "remove the password in Excel and save it again");
        write("memo.xls", CompoundFileWriter::build("WordDocument", QByteArray(100, 'w')));
        QCOMPARE(refusal(path("memo.xls")),
                 "memo.xls: this is a Word document, not an Excel workbook");
    }

    // Sheet and shared-string parts go through our own scanner: what is not well-formed XML is
    // refused with what is wrong, and what is (however unusual) reads as any XML reader reads it.
    void sheetXmlIsReadOrRefusedAsXml()
    {
        const QVector<QPair<QByteArray, QByteArray>> bad = {
            {"<row r='1'><c r='A1'><v>1</c></row>", "closing tag </c> does not match <v>"},
            {"<row r='1'><c r='A1'><v>1</v></c>", "closing tag </sheetData> does not match <row>"},
            {"<row r='1'><c r=A1><v>1</v></c></row>", "the value of attribute r is not quoted"},
            {"<row r='1'><c r='A<1'/></row>", "'<' inside an attribute value"},
            {"<row r='1'><c r='A1'><v>&bogus;</v></c></row>", "unknown entity reference"},
            {"<row r='1'><c r='A1'><v>&#0;</v></c></row>", "unknown entity reference"},
            {"<row r='1'rr='2'/>", "a malformed attribute in <row>"},
            {"</x>", "closing tag </x> does not match <sheetData>"},
            {"<1row/>", "a tag without a valid name"},
        };
        for (const auto& [data, what] : bad) {
            QVERIFY(writeZip(path("bad.xlsx"), package({{"A", "", sheetXml(data)}})));
            const QString message = refusal(path("bad.xlsx"));
            QVERIFY2(message.startsWith("bad.xlsx: part xl/worksheets/sheet1.xml is not "
                                        "well-formed XML (line 1: ") &&
                         message.contains(QString::fromUtf8(what)),
                     qPrintable(message));
        }
        const QVector<QPair<QByteArray, QByteArray>> badParts = {
            {"<!DOCTYPE w [<!ENTITY a 'aaaa'>]><worksheet><sheetData/></worksheet>",
             "a document type declaration"},
            {"<worksheet/><worksheet/>", "a second root element"},
            {"<worksheet/>text", "text outside the root element"},
            {"<worksheet><sheetData><row r='1'><c r='A1'", "the part ends inside a tag"},
            {"<worksheet><sheetData>", "the part ends inside element <sheetData>"},
            {"<!-- only a comment -->", "the part has no root element"},
            {QByteArray("\xFF\xFE<\0w\0/\0>\0", 10), "UTF-16"},
        };
        for (const auto& [xml, what] : badParts) {
            QVERIFY(writeZip(path("part.xlsx"), package({{"A", "", xml}})));
            const QString message = refusal(path("part.xlsx"));
            QVERIFY2(message.contains(QString::fromUtf8(what)), qPrintable(message));
        }
        QVERIFY(
            writeZip(path("sst.xlsx"), package({{"A", "", sheetXml("")}}, "<sst><si><t>a</si>")));
        QVERIFY(refusal(path("sst.xlsx")).contains("part xl/sharedStrings.xml is not well-formed"));

        // Unusual but well-formed: a byte-order mark, comments and instructions anywhere, CDATA,
        // character references, '>' in a value, cells without a value, a formula written by a
        // program that never calculated it (an empty <v>), blanks around numbers.
        const QByteArray sheet =
            "\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- made by hand --><worksheet xmlns='x'>"
            "<sheetData><?page break?><row r='1' spans=\"1:4\" x:odd='a>b'>"
            "<c r='A1' t='inlineStr'><is><t><![CDATA[<钢筋>]]>&#x20;&#38;&amp;&lt;</t></is></c>"
            "<c r='B1'><f>A1*2</f><v></v></c><c r='C1'><v/></c><c r='D1' s='0'>"
            "<!-- c --><v> 12.5 </v></c><c r='E1' t='s'><v>\n0\n</v></c></row></sheetData>"
            "</worksheet>\n<!-- after -->\n";
        QVERIFY(writeZip(path("odd.xlsx"),
                         package({{"A", "", sheet}}, "<sst><si><t>甲</t><t/></si></sst>")));
        LibXLExcel book;
        QVERIFY2(book.Open(path("odd.xlsx")), qPrintable(book.ErrorMessage()));
        const LibXLExcelSheet* s = book.GetSheet(0);
        QCOMPARE(s->GetCellText(0, 0), "<钢筋> &&<");
        QCOMPARE(s->GetCellType(0, 1), LibXLExcelSheet::CellEmpty);
        QCOMPARE(s->GetCellType(0, 2), LibXLExcelSheet::CellEmpty);
        QCOMPARE(s->GetCellText(0, 3), "12.5");
        QCOMPARE(s->GetCellText(0, 4), "甲");
        QCOMPARE(s->CellCount(), 3);
    }

    void truncatedFilesAreSaidToBeTruncated()
    {
        LibXLExcel xls(LibXLExcel::BookXls);
        LibXLExcel xlsx(LibXLExcel::BookXlsx);
        for (LibXLExcel* book : {&xls, &xlsx}) {
            LibXLExcelSheet* sheet = book->AddSheet("清单");
            for (int r = 0; r < 3000; ++r)
                sheet->WriteStr(r, 0, QStringLiteral("材料%1").arg(r));
        }
        QVERIFY(xls.Save(path("whole.xls")));
        QVERIFY(xlsx.Save(path("whole.xlsx")));
        for (const QString& name : {QStringLiteral("whole.xls"), QStringLiteral("whole.xlsx")}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            for (int keep : {bytes.size() / 2, bytes.size() - 600, 600}) {
                const QString cut = write("cut-" + name, bytes.left(keep));
                const QString message = refusal(cut);
                QVERIFY2(message.contains("truncated"), qPrintable(message));
            }
        }
    }

    // One sheet of every cell record a BIFF8 writer uses, shared strings split over CONTINUE
    // records (the character width changing at the split), a far corner cell, a cell given out
    // of order and one given twice. Read as written and with the stream's sectors reordered,
    // which makes the reader copy the stream instead of reading it where it lies.
    void everyXlsCellRecordWhereverTheStreamLies()
    {
        auto wide = [](const QString& text) {
            QByteArray out;
            for (QChar c : text)
                out += le16(c.unicode());
            return out;
        };
        auto number = [](double value) {
            return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
        };
        const QByteArray bof =
            le16(0x0600) + le16(0x0005) + le32(0) + le32(0) + le32(6); // globals; kind patched
        QByteArray globals;
        record(globals, 0x0809, bof);
        for (quint16 format : {0, 14}) // XF 0 general, XF 1 a date
            record(globals, 0x00E0, le16(0) + le16(format) + QByteArray(16, '\0'));
        record(globals, 0x00EB, QByteArray(700, 'x')); // a drawing group: the rest lies further
        // "HRB钢筋" starts narrow and goes on wide; "水泥P.O42.5" the other way round.
        record(globals, 0x00FC, le32(4) + le32(3) + le16(5) + QByteArray(1, 0) + QByteArray("HRB"));
        record(globals, 0x003C,
               QByteArray(1, 1) + wide("钢筋") + le16(2) + QByteArray(1, 1) + wide("合计") +
                   le16(9) + QByteArray(1, 1) + wide("水泥"));
        record(globals, 0x003C, QByteArray(1, 0) + QByteArray("P.O42.5"));
        const int offsetAt = globals.size() + 4;
        record(globals, 0x0085,
               le32(0) + QByteArray(2, '\0') + QByteArray(1, 1) + QByteArray(1, 0) + "S");
        record(globals, 0x000A, QByteArray());
        QByteArray sheet;
        QByteArray sheetBof = bof;
        qToLittleEndian(quint16(0x0010), sheetBof.data() + 2);
        record(sheet, 0x0809, sheetBof);
        record(sheet, 0x0200, le32(0) + le32(65536) + le16(0) + le16(256) + le16(0));
        record(sheet, 0x00FD, le16(0) + le16(0) + le16(0) + le32(0));            // A1 "HRB钢筋"
        record(sheet, 0x027E, le16(0) + le16(1) + le16(0) + le32(100 << 2 | 2)); // B1 100
        record(sheet, 0x00BD,
               le16(1) + le16(0) + le16(0) + le32(12345 << 2 | 3) + le16(0) + le32(0x3FF80000) +
                   le16(1) + le32(45000 << 2 | 2) + le16(2)); // A2 123.45, B2 1.5, C2 a date
        record(sheet, 0x00BE, le16(2) + le16(0) + le16(0) + le16(0) + le16(0) + le16(3));
        record(sheet, 0x0203, le16(3) + le16(0) + le16(1) + number(45000.5)); // A4 date, time
        record(sheet, 0x0006, le16(4) + le16(0) + le16(0) + number(7.25) + QByteArray(8, '\0'));
        record(sheet, 0x0006,
               le16(4) + le16(1) + le16(0) + QByteArray(6, '\0') + le16(0xFFFF) +
                   QByteArray(6, '\0'));
        record(sheet, 0x0207, le16(3) + QByteArray(1, 1) + wide("小计费"));
        record(sheet, 0x0006,
               le16(4) + le16(2) + le16(0) + QByteArray(1, 1) + QByteArray(1, 0) +
                   QByteArray(1, 1) + QByteArray(3, '\0') + le16(0xFFFF) + QByteArray(6, '\0'));
        record(sheet, 0x0006,
               le16(4) + le16(3) + le16(0) + QByteArray(1, 2) + QByteArray(1, 0) +
                   QByteArray(1, 0x07) + QByteArray(3, '\0') + le16(0xFFFF) + QByteArray(6, '\0'));
        record(sheet, 0x0205, le16(5) + le16(0) + le16(0) + QByteArray(1, 1) + QByteArray(1, 0));
        record(sheet, 0x0205, le16(5) + le16(1) + le16(0) + QByteArray(1, 0x2A) + QByteArray(1, 1));
        record(sheet, 0x00FD, le16(65535) + le16(255) + le16(0) + le32(2)); // IV65536
        record(sheet, 0x00FD, le16(1) + le16(5) + le16(0) + le32(1));       // F2, out of order
        record(sheet, 0x00FD, le16(0) + le16(0) + le16(0) + le32(1));       // A1 again
        record(sheet, 0x00E5, le16(1) + le16(6) + le16(7) + le16(0) + le16(3));
        record(sheet, 0x000A, QByteArray());
        QByteArray stream = globals + sheet;
        qToLittleEndian(quint32(globals.size()), stream.data() + offsetAt);
        const QByteArray inOrder = CompoundFileWriter::build("Workbook", stream);
        write("records.xls", inOrder);

        // The stream's first two sectors swapped in the file, its chain told so.
        QByteArray shuffled = inOrder;
        const int sector = 512;
        shuffled.replace(sector, sector, inOrder.mid(2 * sector, sector));
        shuffled.replace(2 * sector, sector, inOrder.mid(sector, sector));
        const int dirAt = int(qFromLittleEndian<quint32>(inOrder.constData() + 48) + 1) * sector;
        const int fatAt = int(qFromLittleEndian<quint32>(inOrder.constData() + 76) + 1) * sector;
        qToLittleEndian(quint32(1), shuffled.data() + dirAt + 128 + 116); // starts at sector 1
        qToLittleEndian(quint32(0), shuffled.data() + fatAt + 4);         // 1 -> 0
        qToLittleEndian(quint32(2), shuffled.data() + fatAt);             // 0 -> 2
        write("shuffled.xls", shuffled);

        for (const QString& file :
             {QStringLiteral("records.xls"), QStringLiteral("shuffled.xls")}) {
            LibXLExcel book;
            QVERIFY2(book.Open(path(file)), qPrintable(book.ErrorMessage()));
            const LibXLExcelSheet* s = book.GetSheet(0);
            QCOMPARE(s->GetCellText(0, 0), "合计"); // given twice: the last one holds
            QCOMPARE(s->GetCellValue(0, 1), QVariant(100.0));
            QCOMPARE(s->GetCellText(1, 0), "123.45");
            QCOMPARE(s->GetCellText(1, 1), "1.5");
            QCOMPARE(s->GetCellType(1, 2), LibXLExcelSheet::CellDate);
            QCOMPARE(s->GetCellText(1, 2), "2023-03-15");
            QCOMPARE(s->GetCellText(1, 5), "合计");
            QCOMPARE(s->GetCellType(2, 0), LibXLExcelSheet::CellEmpty); // blanks hold nothing
            QCOMPARE(s->GetCellText(3, 0), "2023-03-15 12:00:00");
            QCOMPARE(s->GetCellValue(4, 0), QVariant(7.25));
            QCOMPARE(s->GetCellText(4, 1), "小计费");
            QCOMPARE(s->GetCellValue(4, 2), QVariant(true));
            QCOMPARE(s->GetCellText(4, 3), "#DIV/0!");
            QCOMPARE(s->GetCellText(5, 0), "TRUE");
            QCOMPARE(s->GetCellType(5, 1), LibXLExcelSheet::CellError);
            QCOMPARE(s->GetCellText(5, 1), "#N/A");
            QCOMPARE(s->GetCellText(65535, 255), "水泥P.O42.5");
            QCOMPARE(s->RowCount(), 65536);
            QCOMPARE(s->ColCount(), 256);
            QCOMPARE(s->CellCount(), 14);
            ExcelRange merge;
            QVERIFY(s->MergeAt(7, 2, &merge));
            QCOMPARE(merge, (ExcelRange{6, 7, 0, 3}));
            int row = -1, col = -1;
            QVERIFY(s->GetCellPosition(13, &row, &col));
            QCOMPARE(row, 65535);
        }
    }

    void absurdDimensionsInXlsRecordsAreRefused()
    {
        QByteArray globals;
        record(globals, 0x0809, le16(0x0600) + le16(0x0005) + le32(0) + le32(0) + le32(6));
        const int offsetAt = globals.size() + 4;
        record(globals, 0x0085,
               le32(0) + QByteArray(2, '\0') + QByteArray(1, 1) + QByteArray(1, 0) + "S");
        record(globals, 0x000A, QByteArray());
        QByteArray sheet;
        record(sheet, 0x0809, le16(0x0600) + le16(0x0010) + le32(0) + le32(0) + le32(6));
        record(sheet, 0x0200, le32(0) + le32(0x7FFFFFFF) + le16(0) + le16(0xFFFF) + le16(0));
        record(sheet, 0x000A, QByteArray());
        QByteArray stream = globals + sheet;
        qToLittleEndian(quint32(globals.size()), stream.data() + offsetAt);
        write("huge.xls", CompoundFileWriter::build("Workbook", stream));
        QCOMPARE(refusal(path("huge.xls")),
                 "huge.xls: sheet \"S\" claims 2147483647 rows and 65535 columns, beyond what an "
                 ".xls sheet can hold (65536 x 256): the file is damaged");
    }
};

QTEST_GUILESS_MAIN(tst_ExcelReading)
#include "tst_ExcelReading.moc"
