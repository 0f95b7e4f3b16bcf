#include "TestProject.h"

#include "BaseDataItemModel.h"
#include "InteractionSeam.h"
#include "SharedInterface.h"
#include "zTableView.h"

#include <QAbstractItemModelTester>
#include <QDialog>
#include <QHeaderView>
#include <QListWidget>
#include <QMouseEvent>
#include <QSignalSpy>
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
        // A malformed or missing header keeps the columns there are.
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

        // Saving under a name in use asks first; "否" keeps the old template.
        HeaderConfig renamed = view.headerConfig();
        renamed.columns[0].title = "编号";
        view.applyHeaderConfig(renamed);
        InteractionSeam::clear();
        InteractionSeam::pushAnswer(QString("宽表"));
        InteractionSeam::pushAnswer(QString("否"));
        zTableView::callSaveUserTemplateToJsonFilePanel(&view);
        QCOMPARE(InteractionSeam::lastShown().text, QString("表头模板“宽表”已存在，是否覆盖？"));
        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "宽表");
        QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QString("序号"));
        view.applyHeaderConfig(renamed);
        InteractionSeam::pushAnswer(QString("宽表"));
        InteractionSeam::pushAnswer(QString("是"));
        zTableView::callSaveUserTemplateToJsonFilePanel(&view);
        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "简洁");
        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "宽表");
        QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QString("编号"));

        // Names that cannot be a file name are refused with the reason.
        InteractionSeam::pushAnswer(QString("a:b"));
        zTableView::callSaveUserTemplateToJsonFilePanel(&view);
        QCOMPARE(InteractionSeam::lastShown().kind, QString("warning"));
        QCOMPARE(InteractionSeam::lastShown().text, QString("模板名称“a:b”无效，请重新输入。"));
        QCOMPARE(zTableView::getCurrentTableAllTemplateName(&view), QStringList({"简洁", "宽表"}));

        QString error;
        QVERIFY(!view.saveUserTemplate("a/b", &error));
        QVERIFY(!view.saveUserTemplate("默认表头", &error));
        QVERIFY(error.contains("无效"));
        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "默认表头");
    }

    // The panel starts from the configuration: one with no column shown, accepted as it is,
    // is refused (the refusal inside the panel only guards the user's own unchecking).
    void settingsPanelRefusesAConfigurationWithoutColumns()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        view.LoadTableHeader("测试清单");
        HeaderConfig hidden = view.headerConfig();
        for (HeaderColumn& column : hidden.columns)
            column.visible = false;
        view.applyHeaderConfig(hidden);
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        zTableView::callHeaderSettingsPanel(&view);
        QCOMPARE(InteractionSeam::lastShown().text, QString("请至少保留一列!"));
    }

    void brokenUserTemplatesAreReportedAndChangeNothing()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        view.LoadTableHeader("测试清单");
        QDir().mkpath(m_user.filePath("TableHeader/测试清单"));
        QFile bad(m_user.filePath("TableHeader/测试清单/坏模板.json"));
        QVERIFY(bad.open(QIODevice::WriteOnly));
        bad.write(R"({"columns":[{"field":2,"title":"名称","width":-5}]})");
        bad.close();

        zTableView::callSwitchTableHeaderConfig(&view, 1, 1, "坏模板");
        QCOMPARE(InteractionSeam::lastShown().kind, QString("warning"));
        QCOMPARE(InteractionSeam::lastShown().text,
                 QString("表头配置无效：/columns/0/width 的值 -5 小于允许的最小值"));
        QCOMPARE(model.columnCount(), 3);
        QCOMPARE(view.currentTemplateName(), QString("默认表头"));

        // A remembered template that went bad since falls back to the shipped header.
        QFile current(m_user.filePath("TableHeader/测试清单/.current"));
        QVERIFY(current.open(QIODevice::WriteOnly));
        current.write(QString("坏模板").toUtf8());
        current.close();
        zTableView other;
        QVERIFY(other.LoadTableHeader("测试清单"));
        QCOMPARE(other.currentTemplateName(), QString("默认表头"));
        QCOMPARE(other.headerConfig().columns.size(), 3);
        QFile::remove(bad.fileName());
        QFile::remove(current.fileName());
    }

    void currentColumnTitleIsChanged()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        view.LoadTableHeader("测试清单");
        view.setCurrentIndex(model.index(-1, -1));
        InteractionSeam::pushAnswer(QString("  名称 "));
        zTableView::callModifyCurrColNamePanel(&view); // no current cell: the first column
        QCOMPARE(InteractionSeam::lastShown().title, QString("修改当前列标题"));
        QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QString("名称"));

        InteractionSeam::pushAnswer(QString("   "));
        zTableView::callModifyCurrColNamePanel(&view);
        QCOMPARE(InteractionSeam::lastShown().text, QString("列标题不能为空!"));
        QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QString("名称"));
        zTableView::callModifyCurrColNamePanel(&view); // cancelled
        QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QString("名称"));
        QCOMPARE(view.headerConfig().columns.at(1).title, QString("项目名称"));
    }

    void settingsPanelHidesAndRenamesColumns()
    {
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        view.LoadTableHeader("测试清单");
        // The user unchecks every column, blanks one title and renames another.
        InteractionSeam::setModalHook([](QDialog* dialog) {
            auto* list = dialog->findChild<QListWidget*>();
            QVERIFY(list);
            QCOMPARE(list->count(), 3);
            for (int i = 0; i < list->count(); ++i)
                list->item(i)->setCheckState(Qt::Unchecked);
            list->item(1)->setText(QString());
            list->item(0)->setText("编号");
        });
        // The two refusals inside the dialog are answered before the dialog itself.
        InteractionSeam::pushAnswer(QString("确定"));
        InteractionSeam::pushAnswer(QString("确定"));
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        zTableView::callHeaderSettingsPanel(&view);

        QStringList texts;
        for (const InteractionSeam::Shown& s : InteractionSeam::shown())
            texts << s.text;
        QCOMPARE(texts,
                 QStringList({"HeaderSettingsDialog", "请至少保留一列!", "列标题不能为空!"}));
        QCOMPARE(InteractionSeam::shown().first().title, QString("表头高级设置"));
        const HeaderConfig& c = view.headerConfig();
        QCOMPARE(c.columns.at(0).title, QString("编号"));
        QCOMPARE(c.columns.at(1).title, QString("项目名称"));
        QVERIFY(!c.columns.at(0).visible);
        QVERIFY(!c.columns.at(1).visible);
        QVERIFY(c.columns.at(2).visible); // the last one unchecked came back
        QVERIFY(view.isColumnHidden(0));
        QVERIFY(!view.isColumnHidden(2));

        // Cancelled: nothing changes.
        InteractionSeam::setModalHook([](QDialog* dialog) {
            dialog->findChild<QListWidget*>()->item(0)->setCheckState(Qt::Checked);
        });
        zTableView::callHeaderSettingsPanel(&view);
        QVERIFY(view.isColumnHidden(0));
    }

    void rowsAreDraggedByTheRowHeader()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        for (int i = 0; i < 5; ++i)
            TestProject::row(t, 0, {{2, QString("第%1行").arg(i)}});
        zTableView view;
        BaseDataItemModel model;
        view.setModel(&model);
        view.LoadTableHeader("测试清单");
        model.setTableSource(p.current, t);
        view.resize(500, 400);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QSignalSpy moved(&view, &zTableView::signalMouseMoveRows);
        QWidget* rows = view.verticalHeader()->viewport();
        auto centre = [&view](int row) {
            return QPoint(view.verticalHeader()->width() / 2,
                          view.verticalHeader()->sectionViewportPosition(row) + 5);
        };
        QTest::mousePress(rows, Qt::LeftButton, {}, centre(1));
        QMouseEvent move(QEvent::MouseMove, centre(3), Qt::LeftButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(rows, &move);
        QTest::mouseRelease(rows, Qt::LeftButton, {}, centre(3));
        QVERIFY(!moved.isEmpty());
        QCOMPARE(moved.last(), QVariantList({1, 3, true}));
        QCOMPARE(moved.first().at(2).toBool(), false); // the move itself is not the end

        // Released on the row it started from: no move.
        moved.clear();
        QTest::mousePress(rows, Qt::LeftButton, {}, centre(2));
        QTest::mouseRelease(rows, Qt::LeftButton, {}, centre(2));
        QVERIFY(moved.isEmpty());
    }

    void modelFlagsFollowLocks()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        TestProject::row(t, 0, {{2, "暂列金额"}, {3, 1.5}});
        BaseDataItemModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
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
