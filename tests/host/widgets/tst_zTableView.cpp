#include "TestProject.h"

#include "BaseDataItemModel.h"
#include "InteractionSeam.h"
#include "SharedInterface.h"
#include "zTableView.h"

#include <QAbstractItemModelTester>
#include <QDialog>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QtTest>

// Table-header configurations, user templates and the grid's base model.
class tst_zTableView : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_user;
    QTemporaryDir m_app;

    void writeHeader(const QString& list, const QByteArray& json)
    {
        QDir().mkpath(m_app.filePath("Config/TableHeader"));
        QFile file(m_app.filePath("Config/TableHeader/" + list + ".json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(json);
    }

private slots:
    void initTestCase()
    {
        SharedInterface::SetUserDataPath(m_user.path());
        SharedInterface::SetAppPath(m_app.path());
        InteractionSeam::setScripted(true);
        writeHeader("测试清单", R"({"listName":"测试清单","rowHeight":30,"columns":[
            {"field":1,"title":"序号","width":50,"align":"center"},
            {"field":2,"title":"项目名称","width":200},
            {"field":3,"title":"金额","width":100,"align":"right"}]})");
        writeHeader("坏清单", "{ not json");
    }

    void init() { InteractionSeam::clear(); }

    void loadsColumnsIntoTheModel()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        QVERIFY(view.LoadTableHeader("测试清单"));
        QCOMPARE(model.columnCount(), 3);
        QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QString("项目名称"));
        QCOMPARE(view.fieldOfColumn(2), 3);
        QCOMPARE(view.columnOfField(2), 1);
        QCOMPARE(view.columnWidth(1), 200);
        QCOMPARE(view.verticalHeader()->defaultSectionSize(), 30);
        QCOMPARE(view.currentTemplateName(), QString("默认表头"));
    }

    void malformedHeaderKeepsTheColumns()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        QVERIFY(view.LoadTableHeader("测试清单"));
        QVERIFY(!view.LoadTableHeader("坏清单"));
        QVERIFY(!view.LoadTableHeader("不存在的清单"));
        QCOMPARE(model.columnCount(), 3);
    }

    void userTemplatesSaveSwitchAndList()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        view.LoadTableHeader("测试清单");
        QCOMPARE(zTableView::getCurrentTableAllTemplateName(&view), QStringList());

        HeaderConfig narrow = view.headerConfig();
        narrow.columns[2].title = "金额(万元)";
        view.applyHeaderConfig(narrow);
        InteractionSeam::pushAnswer(QString("简洁"));
        zTableView::callSaveUserTemplateToJsonFilePanel(&view);
        InteractionSeam::pushAnswer(QString("宽表"));
        zTableView::callSaveUserTemplateToJsonFilePanel(&view);
        QCOMPARE(zTableView::getCurrentTableAllTemplateName(&view), QStringList({"简洁", "宽表"}));

        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "默认表头");
        QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), QString("金额"));
        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "简洁");
        QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), QString("金额(万元)"));

        // The choice is remembered for the next grid of the same list.
        zTableView other;
        other.LoadTableHeader("测试清单");
        QCOMPARE(other.currentTemplateName(), QString("简洁"));

        QString error;
        QVERIFY(!view.saveUserTemplate("a/b", &error));
        QVERIFY(!view.saveUserTemplate("默认表头", &error));
        QVERIFY(error.contains("无效"));
        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "默认表头");
    }

    void settingsPanelKeepsAtLeastOneColumn()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        view.LoadTableHeader("测试清单");
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        zTableView::callHeaderSettingsPanel(&view);
        QCOMPARE(InteractionSeam::shown().first().kind, QString("modal"));
        QCOMPARE(InteractionSeam::shown().first().title, QString("表头高级设置"));
        QCOMPARE(view.headerConfig().columns.size(), 3);

        // The panel starts from the configuration; accepted with no column shown it is
        // refused (as when the user unchecks the last column).
        HeaderConfig hidden = view.headerConfig();
        for (HeaderColumn& column : hidden.columns)
            column.visible = false;
        view.applyHeaderConfig(hidden);
        InteractionSeam::clear();
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        zTableView::callHeaderSettingsPanel(&view);
        QCOMPARE(InteractionSeam::lastShown().text, QString("请至少保留一列!"));
    }

    void modelFlagsFollowLocks()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        TestProject::row(t, 0, {{2, "暂列金额"}, {3, 1.5}});
        BaseDataItemModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setColumns({HeaderColumn{2, "名称"}, HeaderColumn{3, "金额"}});
        model.setTableSource(p.current, t);
        QCOMPARE(model.data(model.index(0, 1)).toString(), QString("1.5"));
        QVERIFY(model.flags(model.index(0, 0)) & Qt::ItemIsEditable);
        QVERIFY(!model.setData(model.index(0, 0), "x"));
        t->SetReadOnlyLocked(true);
        QVERIFY(!(model.flags(model.index(0, 0)) & Qt::ItemIsEditable));
        t->SetReadOnlyLocked(false);
        p.project->SetReadOnly(true);
        QVERIFY(!(model.flags(model.index(0, 0)) & Qt::ItemIsEditable));
    }
};

QTEST_MAIN(tst_zTableView)
#include "tst_zTableView.moc"
