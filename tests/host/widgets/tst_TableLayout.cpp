#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "TableLayout.h"
#include "TableLayoutExport.h"
#include "pixelToPoints.h"

#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

// The table-layout description of a shown grid and its writing into a workbook: visible
// columns in shown order, widths, heights, fonts and alignments, header in sheet row 1 and
// data from row 2, read back by our reader, by openpyxl and by tarvo-xl.
class tst_TableLayout : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_view = nullptr;

    static QString python(const QString& code)
    {
        QProcess p;
        p.start("/usr/bin/python3", {"-c", code});
        if (!p.waitForFinished(120000) || p.exitCode() != 0)
            return "ERROR " + QString::fromUtf8(p.readAllStandardError());
        return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
    }

private slots:
    void init()
    {
        // Columns: 0 code, 1 name, 2 a hidden one, 3 unit (5 px), 4 price; price shown second.
        m_model = new QStandardItemModel(3, 5, this);
        m_model->setHorizontalHeaderLabels({"招标编码", "材料名称", "隐藏", "单位", "暂估单价"});
        m_model->setHeaderData(4, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter),
                               Qt::TextAlignmentRole);
        const QStringList codes = {"教学楼", "  ZG001", "    ZG001-1"};
        for (int r = 0; r < 3; ++r) {
            m_model->setItem(r, 0, new QStandardItem(codes.at(r)));
            m_model->setItem(r, 1, new QStandardItem(QString("材料%1").arg(r)));
            m_model->setItem(r, 2, new QStandardItem("不导出"));
            auto* unit = new QStandardItem("t");
            unit->setTextAlignment(Qt::AlignCenter);
            m_model->setItem(r, 3, unit);
            auto* price = new QStandardItem(QString::number(4280.5 + r, 'f', 2));
            price->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_model->setItem(r, 4, price);
        }
        QFont bold("SimSun", 11);
        bold.setWeight(QFont::DemiBold);
        bold.setItalic(true);
        m_model->item(1, 1)->setFont(bold);
        m_view = new QTableView;
        m_view->setFont(QFont("SimSun", 9));
        m_view->setModel(m_model);
        m_view->setColumnWidth(0, 152);
        m_view->setColumnWidth(1, 110);
        m_view->setColumnWidth(3, 5);
        m_view->setColumnWidth(4, 75);
        m_view->setColumnHidden(2, true);
        m_view->horizontalHeader()->moveSection(4, 1); // the price shown second
        m_view->setRowHeight(0, 30);
        m_view->setRowHeight(1, 24);
        m_view->setRowHeight(2, 40);
        m_view->horizontalHeader()->setFixedHeight(32);
        QFont headerFont("SimSun", 10);
        headerFont.setStyle(QFont::StyleOblique);
        m_view->horizontalHeader()->setFont(headerFont);
        m_view->resize(800, 400);
    }
    void cleanup()
    {
        delete m_view;
        delete m_model;
    }

    void describesTheGridAsShown()
    {
        const QJsonObject layout = TableLayout::Describe(m_view);
        const QJsonObject header = layout["header"].toObject();
        QCOMPARE(header["height"].toInt(), 32);
        QVERIFY(QRegularExpression("^#[0-9a-f]{6}$").match(header["color"].toString()).hasMatch());
        QCOMPARE(header["font"].toObject()["style"].toString(), QString("StyleOblique"));
        QCOMPARE(header["font"].toObject()["italic"].toBool(), true);
        QCOMPARE(header["font"].toObject()["font-size"].toInt(), 10);
        const QJsonArray columns = header["Columns"].toArray();
        QCOMPARE(columns.size(), 4); // the hidden column is not there
        QList<int> ids;
        for (const QJsonValue& c : columns)
            ids << c.toObject()["column"].toInt();
        QCOMPARE(ids, (QList<int>{0, 4, 1, 3}));
        QCOMPARE(columns[1].toObject()["name"].toString(), QString("暂估单价"));
        QCOMPARE(columns[1].toObject()["width"].toInt(), 75);
        QCOMPARE(columns[1].toObject()["textAlignment"].toInt(),
                 int(Qt::AlignRight | Qt::AlignVCenter));
        QCOMPARE(layout["count"].toInt(), 3);
        const QJsonArray rows = layout["Table"].toArray();
        const QJsonObject second = rows[1].toObject();
        QCOMPARE(second["row"].toInt(), 1);
        QCOMPARE(second["rowHeight"].toInt(), 24);
        QCOMPARE(second["0"].toString(), QString("  ZG001"));
        QVERIFY(!second.contains("2") && !second.contains("2-font"));
        const QJsonObject font = second["1-font"].toObject();
        QCOMPARE(font["family"].toString(), QString("SimSun"));
        QCOMPARE(font["font-size"].toInt(), 11);
        QCOMPARE(font["bold"].toBool(), true); // demi-bold counts as bold
        QCOMPARE(font["italic"].toBool(), true);
        QVERIFY(!font.contains("style"));
        QCOMPARE(second["3-alignment"].toInt(), int(Qt::AlignCenter));
        // Every row has exactly its own keys, and a cell's font is not the row's before.
        QStringList keys = {"row", "rowHeight"};
        for (const QString c : {"0", "1", "3", "4"})
            keys << c << c + "-font" << c + "-alignment";
        keys.sort();
        for (const QJsonValue& row : rows)
            QCOMPARE(row.toObject().keys(), keys);
        QCOMPARE(rows[2].toObject()["1-font"].toObject()["font-size"].toInt(), 9);
        QCOMPARE(rows[2].toObject()["1"].toString(), QString("材料2"));
        // Rows are made from one another's pattern: nothing of a row leaks into the next.
        m_model->item(1, 4)->setText(QString());
        m_model->item(1, 4)->setFont(QFont("Arial", 12));
        m_model->item(1, 4)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        m_model->item(2, 0)->setFont(QFont("Arial", 12));
        const QJsonArray again = TableLayout::Describe(m_view)["Table"].toArray();
        QCOMPARE(again[1].toObject()["4"].toString(), QString());
        QCOMPARE(again[1].toObject()["4-alignment"].toInt(), int(Qt::AlignLeft | Qt::AlignVCenter));
        QCOMPARE(again[1].toObject()["4-font"].toObject()["family"].toString(), QString("Arial"));
        QCOMPARE(again[1].toObject()["1-font"].toObject()["bold"].toBool(), true);
        QCOMPARE(again[2].toObject()["4"].toString(), QString("4282.50"));
        QCOMPARE(again[2].toObject()["4-alignment"].toInt(),
                 int(Qt::AlignRight | Qt::AlignVCenter));
        QCOMPARE(again[2].toObject()["4-font"].toObject()["family"].toString(), QString("SimSun"));
        QCOMPARE(again[2].toObject()["0-font"].toObject()["family"].toString(), QString("Arial"));
        QCOMPARE(again[2].toObject()["1-font"].toObject()["bold"].toBool(), false);

        // A hidden row is left out and the rows after it count on.
        m_view->setRowHidden(1, true);
        const QJsonArray shown = TableLayout::Describe(m_view)["Table"].toArray();
        QCOMPARE(shown.size(), 2);
        QCOMPARE(shown[1].toObject()["row"].toInt(), 1);
        QCOMPARE(shown[1].toObject()["0"].toString(), QString("    ZG001-1"));
    }

    void bookKindAndWidths()
    {
        QCOMPARE(TableLayoutExport::BookKindFor("/a/清单.xls"), int(LibXLExcel::BookXls));
        QCOMPARE(TableLayoutExport::BookKindFor("/a/清单.XLS"), int(LibXLExcel::BookXlsx));
        QCOMPARE(TableLayoutExport::BookKindFor("/a/清单.Xls"), int(LibXLExcel::BookXlsx));
        QCOMPARE(TableLayoutExport::BookKindFor("/a/清单.xlsx"), int(LibXLExcel::BookXlsx));
        QCOMPARE(TableLayoutExport::BookKindFor("/a/清单"), int(LibXLExcel::BookXlsx));
        QCOMPARE(TableLayoutExport::ColumnWidth(152), 21.0);
        QCOMPARE(TableLayoutExport::ColumnWidth(6), 1.0 / 7.0);
        QCOMPARE(TableLayoutExport::ColumnWidth(5), 1.0);
        QCOMPARE(TableLayoutExport::ColumnWidth(0), 1.0);
        QCOMPARE(TableLayoutExport::ColumnWidth(-3), 1.0);
    }

    void writtenWorkbookReadsBack_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("magic");
        QTest::newRow("xlsx") << "list.xlsx" << QByteArray("PK");
        QTest::newRow("xls") << "list.xls" << QByteArray("\xD0\xCF\x11\xE0", 4);
        QTest::newRow("XLS in capitals is xlsx") << "LIST.XLS" << QByteArray("PK");
    }
    void writtenWorkbookReadsBack()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, magic);
        const QString path = m_dir.filePath(name);
        QString error;
        QVERIFY2(TableLayoutExport::Save(TableLayout::Describe(m_view), path, 1.0, &error),
                 qPrintable(error));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.read(magic.size()), magic);
        f.close();

        LibXLExcel book;
        QVERIFY2(book.Open(path), qPrintable(book.ErrorMessage()));
        LibXLExcelSheet* s = book.GetSheet(0);
        QVERIFY(s);
        // Row 0 stays empty, the header is row 1, data from row 2; price second, no hidden column.
        QCOMPARE(s->GetCellText(0, 0), QString());
        QCOMPARE(s->GetCellText(1, 0), QString("招标编码"));
        QCOMPARE(s->GetCellText(1, 1), QString("暂估单价"));
        QCOMPARE(s->GetCellText(1, 2), QString("材料名称"));
        QCOMPARE(s->GetCellText(1, 3), QString("单位"));
        QCOMPARE(s->GetCellText(1, 4), QString());
        QCOMPARE(s->GetCellText(2, 0), QString("教学楼"));
        QCOMPARE(s->GetCellText(4, 0), QString("    ZG001-1"));
        QCOMPARE(s->GetCellText(3, 1), QString("4281.50"));
        QCOMPARE(s->GetCellType(3, 1), LibXLExcelSheet::CellString);
        // Widths in characters as asked, give or take the padding the file formats add.
        QVERIFY2(qAbs(s->GetColWidth(0) - 21.0) < 1.0,
                 qPrintable(QString::number(s->GetColWidth(0))));
        QVERIFY(s->GetColWidth(3) < s->GetColWidth(1));
        QVERIFY(qAbs(s->GetRowHeight(1) - pixelToPoints(32)) < 0.3);
        QVERIFY(qAbs(s->GetRowHeight(4) - pixelToPoints(40)) < 0.3);
        // openpyxl goes by the suffix, so it reads only the one named .xlsx.
        if (!name.endsWith(".xlsx"))
            return;
        const QString out = python(QStringLiteral(R"PY(
import json, openpyxl
s = openpyxl.load_workbook('%1').worksheets[0]
c = s['C4']
print(json.dumps([s['A2'].value, s['B2'].value, s['A4'].value, c.value, c.font.name, c.font.sz,
                  bool(c.font.b), bool(c.font.i), s['B4'].alignment.horizontal,
                  s['D4'].alignment.horizontal, round(s.column_dimensions['B'].width)],
                 ensure_ascii=False))
)PY")
                                       .arg(path));
        QCOMPARE(out, QString(R"(["招标编码", "暂估单价", "  ZG001", "材料1", "SimSun", 11.0, )"
                              R"(true, true, "right", "center", 11])"));
        QProcess dump;
        dump.start(TARVO_XL, {"dump", path});
        QVERIFY(dump.waitForFinished(60000));
        QCOMPARE(dump.exitCode(), 0);
        const QString dumped = QString::fromUtf8(dump.readAllStandardOutput());
        QVERIFY2(dumped.contains("招标编码") && dumped.contains("    ZG001-1"), qPrintable(dumped));
    }

    // A large list is written while its description is let go row by row; every row still
    // arrives, in order, and a description the caller keeps is left whole.
    void largeListArrivesWhole()
    {
        const int rows = 10050;
        QStandardItemModel model(rows, 2);
        for (int r = 0; r < rows; ++r) {
            model.setItem(r, 0, new QStandardItem(QString("ZG%1").arg(r)));
            model.setItem(r, 1, new QStandardItem(QString("材料%1").arg(r)));
        }
        model.item(rows - 1, 1)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        QTableView view;
        view.setModel(&model);
        view.setRowHidden(5, true);
        const QJsonObject kept = TableLayout::Describe(&view);
        const QString path = m_dir.filePath("large.xlsx");
        QString error;
        QVERIFY2(TableLayoutExport::Save(kept, path, 1.0, &error), qPrintable(error));
        QCOMPARE(kept["Table"].toArray().size(), rows - 1);
        QCOMPARE(kept["Table"].toArray().last().toObject()["1"].toString(),
                 QString("材料%1").arg(rows - 1));
        QVERIFY2(TableLayoutExport::Save(TableLayout::Describe(&view), path, 1.0, &error),
                 qPrintable(error));
        LibXLExcel book;
        QVERIFY2(book.Open(path), qPrintable(book.ErrorMessage()));
        LibXLExcelSheet* s = book.GetSheet(0);
        QCOMPARE(s->RowCount(), rows + 1); // empty row 0, header, the shown rows
        QCOMPARE(s->GetCellText(2, 0), QString("ZG0"));
        QCOMPARE(s->GetCellText(7, 0), QString("ZG6")); // the hidden row 5 is left out
        QCOMPARE(s->GetCellText(rows, 1), QString("材料%1").arg(rows - 1));
        const QString out = python(QStringLiteral(R"PY(
import openpyxl
s = openpyxl.load_workbook('%1').worksheets[0]
print(s.max_row, s.cell(%2, 2).value, s.cell(%2, 2).alignment.horizontal)
)PY")
                                       .arg(path)
                                       .arg(rows + 1));
        QCOMPARE(out, QString("%1 材料%2 right").arg(rows + 1).arg(rows - 1));
    }
};

QTEST_MAIN(tst_TableLayout)
#include "tst_TableLayout.moc"
