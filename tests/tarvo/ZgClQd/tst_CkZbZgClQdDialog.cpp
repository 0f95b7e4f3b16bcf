#include "TestProject.h"

#include "ZgClQd/PopupDialog/CkZbZgClQdDialog.h"
#include "ZgClQd/PopupDialog/CkZbZgClQdModel.h"

#include "InteractionSeam.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "TenderDocument.h"
#include "TenderXmlWriter.h"
#include "ZgClZsItem.h"
#include "ZgjClHzTable.h"

#include "JfszTable.h"

#include <QAbstractItemModelTester>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

// The tender provisional list view: its grid, importing a tender file that fits
// or does not, and exporting what it shows.
class tst_CkZbZgClQdDialog : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    static ZgClZsItem* material(int id, int parent, const QString& code, const QString& name,
                                double price, int flag = 0)
    {
        auto* node = new ZgClZsItem(id, parent, ZgClZsItem::Material);
        auto* row = new ZgjClHzItem;
        row->loadValue(2, code);
        row->loadValue(3, name);
        row->loadValue(4, "HRB400 Φ12");
        row->loadValue(5, "t");
        row->loadValue(7, price);
        row->loadValue(12, "攀钢");
        row->loadValue(13, "攀钢集团");
        row->loadValue(8, "螺纹钢");
        row->loadValue(14, "一级");
        node->SetZgjClHzItem(row);
        node->SetFlag(flag);
        return node;
    }

    // A tender file for the test project's tree (教学楼: 建筑与装饰工程, 电气工程).
    QString tenderFile(const QString& name, const QString& secondUnit)
    {
        TenderDocument d;
        TenderSingleProject s;
        s.id = "S1";
        s.name = "教学楼";
        const QStringList units = {"电气工程", secondUnit};
        for (int u = 0; u < 2; ++u) {
            TenderUnitProject unit;
            unit.id = QString("U%1").arg(u);
            unit.name = units.at(u);
            for (int m = 0; m < 3; ++m) {
                TenderMaterial t;
                t.code = m == 2 ? QString() : QString("ZG%1%2").arg(u).arg(m);
                t.name = QString("材料%1").arg(m);
                t.unit = "m3";
                t.price = 100.5 + m;
                unit.provisional << t;
            }
            s.units << unit;
        }
        d.singles << s;
        const QString path = m_dir.filePath(name);
        QString error;
        return TenderXmlWriter::WriteFile(path, d, false, &error) ? path : QString();
    }

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
    }

    void gridShowsTheTreeAsSpecified()
    {
        QList<ZgClZsItem*> nodes;
        auto* unit = new ZgClZsItem(1, 0, ZgClZsItem::UnitProject);
        unit->SetZxGcName("建筑与装饰工程");
        nodes << unit << material(2, 1, "ZG001", "钢筋", 4280.5, 1)
              << material(4, 1, "", "中砂", 135) << material(3, 2, "ZG001-1", "箍筋", 4300)
              << new ZgClZsItem(5, 0, ZgClZsItem::UnitProject);
        CkZbZgClQdModel model;
        QAbstractItemModelTester tester(&model);
        JfszTable format;
        format.setDecimals(3, 2);
        model.setNodes(nodes, &format);

        QCOMPARE(model.rowCount(), 5);
        QCOMPARE(model.materialCount(), 3);
        QStringList first;
        for (int r = 0; r < model.rowCount(); ++r)
            first << model.index(r, 0).data().toString();
        // Children follow their parent; two spaces per ancestor.
        QCOMPARE(first,
                 (QStringList{"建筑与装饰工程", "  ZG001", "    ZG001-1", "缺少招标编码", ""}));
        // Every field in its column, the price with the project's three decimals.
        QStringList steel;
        for (int c = 0; c < model.columnCount(); ++c)
            steel << model.index(1, c).data().toString();
        QCOMPARE(steel, (QStringList{"  ZG001", "钢筋", "HRB400 Φ12", "攀钢", "攀钢集团", "螺纹钢",
                                     "一级", "t", "4280.500"}));
        QCOMPARE(model.index(0, CkZbZgClQdModel::eClMc).data().toString(), QString());

        QCOMPARE(model.index(3, 0).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
        QVERIFY(!model.index(1, 0).data(Qt::ForegroundRole).isValid());
        QCOMPARE(model.index(1, 5).data(Qt::BackgroundRole).value<QColor>(), QColor(215, 255, 215));
        QVERIFY(!model.index(2, 5).data(Qt::BackgroundRole).isValid());
        model.setKeywords("钢", "");
        QCOMPARE(model.index(1, CkZbZgClQdModel::eClMc).data(Qt::ForegroundRole).value<QColor>(),
                 QColor(255, 0, 0));
        QVERIFY(!model.index(3, CkZbZgClQdModel::eClMc).data(Qt::ForegroundRole).isValid());

        model.setNodes({});
        qDeleteAll(nodes);
    }

    void importFitsOrLeavesTheListAlone()
    {
        TestProject p;
        CkZbZgClQdDialog dialog(p.current);
        QCOMPARE(dialog.model()->rowCount(), 0);

        // Cancelled: nothing happens.
        InteractionSeam::pushAnswer(QString());
        dialog.slotImportCJZClicked_YN();
        QCOMPARE(InteractionSeam::shown().size(), 1);
        QCOMPARE(InteractionSeam::lastShown().kind, QString("open"));

        InteractionSeam::pushAnswer(tenderFile("other.YFJZ", "给排水工程"));
        dialog.slotImportCJZClicked_YN();
        QCOMPARE(InteractionSeam::lastShown().title, QString("操作提示"));
        QCOMPARE(InteractionSeam::lastShown().text,
                 QString("导入的招标文件工程树结构与当前工程不一致，请重新选择"));
        QVERIFY(!p.project->HasGcZbZgCl());

        InteractionSeam::clear();
        InteractionSeam::pushAnswer(tenderFile("fits.cjz", "建筑与装饰工程"));
        dialog.slotImportCJZClicked();
        QCOMPARE(InteractionSeam::shown().size(), 1); // only the file dialog
        QVERIFY(p.project->HasGcZbZgCl());
        // Unit projects in the project's order, each with its three materials.
        QCOMPARE(dialog.model()->rowCount(), 8);
        QCOMPARE(dialog.model()->index(0, 0).data().toString(), QString("建筑与装饰工程"));
        QCOMPARE(dialog.model()->index(1, 0).data().toString(), QString("  ZG10"));
        QCOMPARE(dialog.model()->index(3, 0).data().toString(), QString("缺少招标编码"));
        QCOMPARE(dialog.model()->index(4, 0).data().toString(), QString("电气工程"));
        QCOMPARE(dialog.model()->index(5, 0).data().toString(), QString("  ZG00"));

        // A damaged file is named with its problem; the stored list stays.
        const QString broken = m_dir.filePath("broken.cjz");
        QFile f(broken);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("<TenderFile version=\"9\" kind=\"tender\"/>");
        f.close();
        InteractionSeam::pushAnswer(broken);
        dialog.slotImportCJZClicked();
        QCOMPARE(
            InteractionSeam::lastShown().text,
            QString(
                "无法读取招标文件“broken.cjz”：第1行：标准版本“9”无法识别，本程序读取版本1.0。"));
        QCOMPARE(dialog.model()->rowCount(), 8);
        QList<ZgjClHzItem*> stored;
        QVERIFY(p.project->GetDwZbZgCl({p.index, 4}, stored));
        QCOMPARE(stored.size(), 3);

        // A read-only project keeps its list: the button is off and the import refuses.
        p.project->SetReadOnly(true);
        CkZbZgClQdDialog readOnly(p.current);
        QVERIFY(!readOnly.importButton()->isEnabled());
        QVERIFY(!CkZbZgClQdDialog::ImportTenderFile(&readOnly, p.current,
                                                    tenderFile("again.cjz", "建筑与装饰工程")));
        QVERIFY(p.project->GetDwZbZgCl({p.index, 4}, stored));
        QCOMPARE(stored.size(), 3);
    }

    void exportWritesWhatIsShown()
    {
        TestProject p;
        CkZbZgClQdDialog dialog(p.current);
        dialog.slotExportBtnClicked();
        QCOMPARE(InteractionSeam::lastShown().text, QString("当前表内无招标暂估材料数据"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("提示"));

        InteractionSeam::pushAnswer(tenderFile("fits.cjz", "建筑与装饰工程"));
        dialog.slotImportCJZClicked();
        p.project->SetLockExport(true);
        InteractionSeam::clear();
        dialog.slotExportBtnClicked();
        QCOMPARE(InteractionSeam::lastShown().text,
                 QString("当前工程只读保护设置中不允许报表及接口输出，不支持导出。"));
        QCOMPARE(InteractionSeam::shown().size(), 1);
        p.project->SetLockExport(false);

        dialog.view()->setColumnHidden(CkZbZgClQdModel::eCd, true);
        for (const QString name : {"list.xls", "list"}) {
            InteractionSeam::clear();
            InteractionSeam::pushAnswer(m_dir.filePath(name));
            dialog.slotExportBtnClicked();
            QCOMPARE(InteractionSeam::shown().at(0).kind, QString("save"));
            QCOMPARE(InteractionSeam::shown().at(0).title, QString("导出为招标暂估材料清单"));
            QCOMPARE(InteractionSeam::lastShown().text, QString("保存完毕！"));
            LibXLExcel book;
            const QString written = m_dir.filePath(name == "list" ? "list.xlsx" : name);
            QVERIFY2(book.Open(written), qPrintable(book.ErrorMessage()));
            LibXLExcelSheet* s = book.GetSheet(0);
            QCOMPARE(s->GetCellText(1, 0), QString("招标编码"));
            QCOMPARE(s->GetCellText(1, 3), QString("厂家")); // origin is hidden
            QCOMPARE(s->GetCellText(1, 5), QString("质里档次"));
            QCOMPARE(s->GetCellText(1, 7), QString("暂估单价"));
            QCOMPARE(s->GetCellText(2, 0), QString("建筑与装饰工程"));
            QCOMPARE(s->GetCellText(3, 0), QString("  ZG10"));
            QCOMPARE(s->GetCellText(3, 7), QString("100.50"));
        }

        InteractionSeam::clear();
        InteractionSeam::pushAnswer(m_dir.filePath("no/such/folder/list.xlsx"));
        dialog.slotExportBtnClicked();
        QCOMPARE(InteractionSeam::lastShown().text, QString("导出失败！"));
    }
};

QTEST_MAIN(tst_CkZbZgClQdDialog)
#include "tst_CkZbZgClQdDialog.moc"
