// A bounded mutation run over both readers: damaged workbooks open or are refused with a
// message, and never crash or hang. Mutations reach the XML and BIFF records themselves (the
// parts are mutated before they are zipped or wrapped), as well as the containers' bytes.
// Run under the sanitizer build (CMake preset asan) for memory errors.
#include "CompoundFileReader.h"
#include "CompoundFileWriter.h"
#include "ExcelFixtures.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "Mutator.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace ExcelFixtures;

class tst_ExcelFuzz : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_opened = 0;
    int m_refused = 0;

    void check(const QString& file)
    {
        LibXLExcel book;
        if (book.Open(file)) {
            ++m_opened;
            // Touch everything a grid would ask for.
            for (const LibXLExcelSheet* sheet : book.GetSheets()) {
                const int rows = qMin(sheet->RowCount(), 200);
                const int cols = qMin(sheet->ColCount(), 50);
                for (int r = 0; r < rows; ++r)
                    for (int c = 0; c < cols; ++c)
                        sheet->GetCellValue(r, c), sheet->GetCellText(r, c);
                sheet->GetMerges();
            }
        } else {
            ++m_refused;
            QVERIFY2(book.ErrorMessage().startsWith(QFileInfo(file).fileName() + ": "),
                     qPrintable(book.ErrorMessage()));
            QCOMPARE(book.SheetCount(), 0);
        }
    }

    // Seeds: a written workbook of each kind, plus the shared real-world samples when present.
    QVector<QMap<QString, QByteArray>> xlsxSeeds()
    {
        QVector<QMap<QString, QByteArray>> seeds;
        seeds.append(package(
            {{"清单", "",
              sheetXml("<row r='1' ht='20' customHeight='1'><c r='A1' t='s'><v>0</v></c>"
                       "<c r='B1' s='1'><v>45000</v></c><c r='C1' t='b'><v>1</v></c>"
                       "<c r='D1' t='inlineStr'><is><r><t>甲</t></r><r><t>乙</t></r></is></c></row>"
                       "<row r='3'><c r='A3' t='str'><f>1</f><v>x</v></c><c r='E3' "
                       "t='e'><v>#N/A</v></c></row>",
                       "<mergeCells><mergeCell ref='A1:B2'/></mergeCells>")},
             {"隐藏", "hidden", sheetXml("<row><c><v>1.5</v></c></row>")}},
            "<sst><si><t>钢筋</t></si><si><r><t>a</t></r><rPh><t>b</t></rPh></si></sst>",
            "<styleSheet><numFmts><numFmt numFmtId='170' formatCode='yyyy-mm-dd'/></numFmts>"
            "<cellXfs><xf numFmtId='0'/><xf numFmtId='170'/></cellXfs></styleSheet>",
            "<workbookPr date1904='1'/>"));
        return seeds;
    }

    QVector<QByteArray> xlsStreams()
    {
        QVector<QByteArray> streams;
        LibXLExcel book(LibXLExcel::BookXls);
        LibXLExcelSheet* sheet = book.AddSheet("材料");
        sheet->SetCol(0, 2, 12);
        sheet->SetRow(1, 20);
        for (int r = 0; r < 40; ++r)
            sheet->WriteStr(r, r % 3, QStringLiteral("钢筋%1").arg(r), ExcelFont(),
                            Qt::AlignCenter);
        sheet->WriteStr(41, 0, QString(5000, QChar(0x4E2D)));
        book.AddSheet("二");
        book.Save(m_dir.filePath("seed.xls"));
        QStringList files = {m_dir.filePath("seed.xls")};
        for (const QString& name : QDir(EXCEL_SAMPLES_DIR).entryList({"*.xls"}, QDir::Files))
            files << QDir(EXCEL_SAMPLES_DIR).filePath(name);
        for (const QString& file : files) {
            QFile raw(file);
            if (!raw.open(QIODevice::ReadOnly))
                continue;
            CompoundFileReader compound;
            QString error;
            if (!compound.open(raw.readAll(), &error))
                continue;
            const QByteArray stream = compound.stream("Workbook", &error);
            if (!stream.isEmpty())
                streams.append(stream);
        }
        return streams;
    }

private slots:
    void mutatedXlsxParts()
    {
        QRandomGenerator random(17);
        const auto seeds = xlsxSeeds();
        for (int i = 0; i < 400; ++i) {
            QMap<QString, QByteArray> parts = seeds.at(i % seeds.size());
            const QStringList names = parts.keys();
            const QString target = names.at(random.bounded(names.size()));
            parts[target] = mutate(parts.value(target), random, 8);
            if (random.bounded(10) == 0)
                parts.remove(names.at(random.bounded(names.size())));
            const QString file = m_dir.filePath(QStringLiteral("m%1.xlsx").arg(i));
            QVERIFY(writeZip(file, parts));
            check(file);
            QFile::remove(file);
        }
        QVERIFY(m_opened > 0 && m_refused > 0);
    }

    // A mutated workbook stream that sent FreeXL through a bad pointer: opened or refused, never
    // a crash.
    void workbookThatCrashedFreeXl()
    {
        const int before = m_opened + m_refused;
        check(QStringLiteral(TARVO_SOURCE_DIR "/tests/data/fuzz/workbook/freexl-bad-pointer.xls"));
        QCOMPARE(m_opened + m_refused, before + 1);
    }

    void mutatedXlsRecords()
    {
        QRandomGenerator random(29);
        const QVector<QByteArray> streams = xlsStreams();
        QVERIFY(!streams.isEmpty());
        for (int i = 0; i < 500; ++i) {
            const QByteArray stream = mutate(streams.at(i % streams.size()), random, 8);
            const QString file = m_dir.filePath(QStringLiteral("m%1.xls").arg(i));
            QFile out(file);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(CompoundFileWriter::build("Workbook", stream));
            out.close();
            check(file);
            QFile::remove(file);
        }
    }

    void mutatedFileBytes()
    {
        QRandomGenerator random(43);
        QVERIFY(writeZip(m_dir.filePath("seed.xlsx"), xlsxSeeds().constFirst()));
        xlsStreams();
        QStringList files = {m_dir.filePath("seed.xlsx"), m_dir.filePath("seed.xls")};
        for (const QString& name :
             QDir(EXCEL_SAMPLES_DIR).entryList({"*.xls", "*.xlsx"}, QDir::Files))
            files << QDir(EXCEL_SAMPLES_DIR).filePath(name);
        QVector<QByteArray> seeds;
        for (const QString& file : files) {
            QFile raw(file);
            if (raw.open(QIODevice::ReadOnly))
                seeds.append(raw.readAll());
        }
        for (int i = 0; i < 400; ++i) {
            const QByteArray& seed = seeds.at(i % seeds.size());
            // Keep the magic mostly intact so that the container readers are reached.
            QByteArray bytes = mutate(seed.mid(8), random, 8);
            bytes.prepend(seed.left(8));
            const QString file = m_dir.filePath(
                QStringLiteral("b%1.%2").arg(i).arg(seed.startsWith("PK") ? "xlsx" : "xls"));
            QFile out(file);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(bytes);
            out.close();
            check(file);
            QFile::remove(file);
        }
    }
};

QTEST_GUILESS_MAIN(tst_ExcelFuzz)
#include "tst_ExcelFuzz.moc"
