#include "TestProject.h"

#include "ZgClQd/PopupDialog/CkDwGcZgClSzModel.h"
#include "ZgClQd/PopupDialog/CkDwGcZgSzDialog.h"
#include "ZgClQd/PopupDialog/XHAndBMFactorDialog.h"

#include "BusinessFaultInjection.h"
#include "InteractionSeam.h"
#include "ZgClZsItem.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QGroupBox>
#include <QLineEdit>
#include <QTreeView>
#include <QtTest>

#include <stdexcept>

// The numbering dialog and the unit projects' provisional settings side by side.
class tst_ZgClQdDialogs : public QObject
{
    Q_OBJECT

    static void material(ConstructionWorks* unit, const QString& name, double price,
                         const QString& origin, const QString& code)
    {
        TestProject::row(unit->getRcjHzTable(), 1,
                         {{3, name},
                          {4, "Φ12"},
                          {5, "t"},
                          {6, 4000.0},
                          {7, price},
                          {9, 2.5},
                          {10, price * 2.5},
                          {11, true},
                          {12, origin},
                          {18, code}});
    }

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
    }

    void numberingInputIsCheckedInOrder_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("digits");
        QTest::addColumn<QString>("refusal");
        const QString prefix = "前缀只能是大写字母、小写字母、数字、@符号、_符号的组合!";
        const QString notInteger = "开始序号不是整数!", digitsNotInteger = "序号位数不是整数!";
        const QList<QStringList> rows = {
            {"minus", "ZG-", "1", "3", prefix},
            {"space", "Z G", "", "", prefix}, // the prefix is tested first
            {"chinese", "暂估", "1", "3", prefix},
            {"empty prefix", "", "1", "3", ""},
            {"all signs", "aZ9@_", "1", "3", ""},
            {"no start", "ZG", "", "x", "开始序号不能为空!"},
            {"negative start", "ZG", "-1", "3", notInteger},
            {"start with a blank", "ZG", " 1", "3", notInteger},
            {"start beyond the counter", "ZG", "99999999999", "3", notInteger},
            {"no digits", "ZG", "1", "", "序号位数不能为空!"},
            {"digits x", "ZG", "1", "x", digitsNotInteger},
            {"digits 0", "ZG", "1", "0", ""},
            {"digits 2.5", "ZG", "1", "2.5", digitsNotInteger}};
        for (const QStringList& r : rows)
            QTest::newRow(qPrintable(r.at(0))) << r.at(1) << r.at(2) << r.at(3) << r.at(4);
    }
    void numberingInputIsCheckedInOrder()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, start);
        QFETCH(QString, digits);
        QFETCH(QString, refusal);
        QCOMPARE(XHAndBMFactorDialog::Validate(prefix, start, digits), refusal);

        XHAndBMFactorDialog dialog;
        dialog.prefixEdit()->setText(prefix);
        dialog.startEdit()->setText(start);
        dialog.digitsEdit()->setText(digits);
        dialog.open();
        dialog.accept();
        if (refusal.isEmpty()) {
            QCOMPARE(dialog.result(), int(QDialog::Accepted));
            QVERIFY(InteractionSeam::shown().isEmpty());
        } else {
            QVERIFY(dialog.isVisible()); // stays open for a correction
            QCOMPARE(InteractionSeam::shown().size(), 1);
            QCOMPARE(InteractionSeam::lastShown().text, refusal);
            QCOMPARE(InteractionSeam::lastShown().title, "提示");
        }
    }

    void anUncheckedCodeGroupIsNotTested()
    {
        XHAndBMFactorDialog dialog;
        dialog.codeGroup()->setChecked(false);
        dialog.startEdit()->setText("-1");
        dialog.open();
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(InteractionSeam::shown().isEmpty());
        QVERIFY(dialog.sequenceChecked());
        QVERIFY(!dialog.codeChecked());

        XHAndBMFactorDialog values;
        values.prefixEdit()->setText("ZG");
        values.startEdit()->setText("0012");
        values.digitsEdit()->setText("3");
        QCOMPARE(values.startNumber(), 12);
        QCOMPARE(values.digits(), 3);
    }

    void settingsSideBySide()
    {
        TestProject p;
        material(p.current, "钢筋", 4280, "攀钢", "ZG001");
        material(p.current, "水泥", 480.5, "峨胜", "");
        material(p.plain, "钢筋", 4300, "攀钢", "ZG001");
        p.project->AddNode(p.single, 9, ProTreeNode::WorksNode, "空的单位工程");
        p.project->ensureWorks(0, 9);
        ConstructionWorks* root = p.project->works(0, 1);
        root->getJfszTable()->setDecimals(3, 2);

        CkDwGcZgSzDialog dialog(root);
        QAbstractItemModelTester tester(dialog.model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        dialog.Load();
        QCOMPARE(InteractionSeam::shown().size(), 1);
        QCOMPARE(InteractionSeam::lastShown().kind, "progress");
        QCOMPARE(InteractionSeam::lastShown().title, "提示");
        QCOMPARE(InteractionSeam::lastShown().text, "正在汇总所有工程暂估材料，请等待");

        CkDwGcZgClSzModel* m = dialog.model();
        QCOMPARE(m->rowCount(), 3);
        const QModelIndex first = m->index(0, 0);
        QCOMPARE(first.data().toString(), "建筑与装饰工程");
        QCOMPARE(m->rowCount(first), 2);
        const QModelIndex empty = m->index(2, 0);
        QCOMPARE(empty.data().toString(), "空的单位工程");
        QCOMPARE(m->rowCount(empty), 0);

        const QModelIndex steel = m->index(0, 0, first);
        QCOMPARE(steel.data().toString(), "ZG001");
        QVERIFY(!steel.data(Qt::ForegroundRole).isValid());
        QCOMPARE(m->index(0, CkDwGcZgClSzModel::eClMc, first).data().toString(), "钢筋");
        QCOMPARE(m->index(0, CkDwGcZgClSzModel::eJj, first).data().toString(), "4000.000");
        QCOMPARE(m->index(0, CkDwGcZgClSzModel::eTj, first).data().toString(), "4280.000");
        QCOMPARE(m->index(0, CkDwGcZgClSzModel::eHj, first).data().toString(), "10700.00");
        // The steel's price differs from the other unit's: green; cement has no code: red.
        QCOMPARE(steel.data(Qt::BackgroundRole).value<QColor>(), QColor(215, 255, 215));
        const QModelIndex cement = m->index(1, 0, first);
        QCOMPARE(cement.data().toString(), "缺少招标编码");
        QCOMPARE(cement.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
        QVERIFY(!cement.data(Qt::BackgroundRole).isValid());
        QVERIFY(!first.data(Qt::BackgroundRole).isValid());
        QVERIFY(!m->index(0, CkDwGcZgClSzModel::eClMc).data().isValid() ||
                m->index(0, CkDwGcZgClSzModel::eClMc).data().toString().isEmpty());

        // Loading again replaces the tree.
        dialog.Load();
        QCOMPARE(m->rowCount(), 3);
    }

    void aFailingGatheringLeavesAnEmptyTreeAndAReport()
    {
        TestProject p;
        material(p.current, "钢筋", 4280, "攀钢", "ZG001");
        CkDwGcZgSzDialog dialog(p.project->works(0, 1));
        BusinessFaultInjection::setFault([] { throw std::runtime_error("主机故障"); });
        dialog.Load();
        BusinessFaultInjection::clear();
        QCOMPARE(dialog.model()->rowCount(), 0);
        dialog.Load();
        QCOMPARE(dialog.model()->rowCount(), 2);
    }
};

QTEST_MAIN(tst_ZgClQdDialogs)
#include "tst_ZgClQdDialogs.moc"
