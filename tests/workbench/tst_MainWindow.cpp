#include "MainWindow.h"
#include "ModuleHost.h"
#include "ProjectTreeModel.h"
#include "RibbonWidget.h"

#include "DataManagement.h"
#include "InteractionSeam.h"
#include "MsgExplain.h"
#include "ProjectFile.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"
#include "zProTabWidget.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QComboBox>
#include <QMessageBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeView>
#include <QUndoStack>
#include <QtTest>

// The workbench as a user drives it: the module loaded as a host loads it, a project
// opened, a page edited, undone, saved and opened again, bad files refused.
class tst_MainWindow : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    static QTableView* currentGrid(MainWindow& window)
    {
        auto* tabs = window.moduleHost()->container()->findChild<zProTabWidget*>();
        return tabs->GetCurrentContentWidget()->findChild<QTableView*>(QStringLiteral("gridView"));
    }

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
    }

    void missingModuleIsReportedAndTheWindowStillWorks()
    {
        MainWindow window;
        QVERIFY(!window.loadModule(m_dir.filePath("libnothing.so")));
        QCOMPARE(InteractionSeam::lastShown().kind, QString("critical"));
        QVERIFY(InteractionSeam::lastShown().text.contains("libnothing.so"));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        QVERIFY(window.project());
        QVERIFY(!window.moduleHost()->container());
    }

    void sampleOpensWithSixPagesAndEditsUndoAndSave()
    {
        MainWindow window;
        QAbstractItemModelTester tester(window.tree()->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(window.loadModule(ModuleHost::defaultLibraryPath()));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        window.show();
        auto* tabs = window.moduleHost()->container()->findChild<zProTabWidget*>();
        QCOMPARE(tabs->count(), 6);
        QCOMPARE(window.ribbon()->config().page, QString("其他项目清单"));

        // The first unit project is shown: edit its 暂列金额.
        QTableView* grid = currentGrid(window);
        QVERIFY(grid->model()->rowCount() > 5);
        const QModelIndex amount = grid->model()->index(0, 3);
        const QString before = amount.data().toString();
        QVERIFY(grid->model()->setData(amount, "123456"));
        QCOMPARE(amount.data().toString(), QString("123456.00"));
        QVERIFY(window.project()->isProjectWorkChanged());

        auto* undo = window.findChild<QAction*>("undoAction");
        QCOMPARE(undo->text(), QString("撤销 修改其他项目清单行"));
        undo->trigger();
        QCOMPARE(grid->model()->index(0, 3).data().toString(), before);
        window.findChild<QAction*>("redoAction")->trigger();
        QCOMPARE(grid->model()->index(0, 3).data().toString(), QString("123456.00"));

        const QString file = m_dir.filePath("saved.tarvo");
        QVERIFY(window.saveAs(file));
        QVERIFY(!window.project()->isProjectWorkChanged());
        QVERIFY(window.openProject(file));
        QCOMPARE(currentGrid(window)->model()->index(0, 3).data().toString(), QString("123456.00"));
        QCOMPARE(RURecordControl::GetInstance()->undoStack()->count(), 0);

        // A tree click on a single project changes nothing in the grid.
        auto* model = static_cast<ProjectTreeModel*>(window.tree()->model());
        const QModelIndex single = model->index(0, 0, model->index(0, 0));
        window.tree()->clicked(single);
        QCOMPARE(currentGrid(window)->model()->index(0, 3).data().toString(), QString("123456.00"));
    }

    void feeTemplatesSwitchFromTheRibbon()
    {
        MainWindow window;
        QVERIFY(window.loadModule(ModuleHost::defaultLibraryPath()));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        window.show();
        window.moduleHost()->send(49, QVariant::fromValue(MsgExplain::ToChangeActivePageInfo{"规费税金清单"}));
        QCOMPARE(window.ribbon()->config().page, QString("规费税金清单"));
        auto* combo = window.ribbon()->itemWidget("模板选择")->findChild<QComboBox*>();
        QVERIFY(combo);
        QCOMPARE(combo->count(), 9); // the templates found in the template folder
        QCOMPARE(combo->currentText(), QString("2020定额规费税金清单-一般计税")); // the pricing model's

        QTableView* grid = currentGrid(window);
        const int taxRow = grid->model()->rowCount() - 1;
        emit window.ribbon()->comboChanged("模板选择", "2015定额规费税金清单-简易计税");
        QCOMPARE(grid->model()->index(taxRow, 4).data().toString(), QString("3%"));
        emit window.ribbon()->comboChanged("模板选择", "GB50500-2008规费税金清单");
        QCOMPARE(grid->model()->index(grid->model()->rowCount() - 1, 4).data().toString(), QString("3.48%"));
        window.findChild<QAction*>("undoAction")->trigger();
        QCOMPARE(grid->model()->index(taxRow, 4).data().toString(), QString("3%"));
    }

    void badFilesLeaveTheOpenProject()
    {
        MainWindow window;
        QVERIFY(window.loadModule(ModuleHost::defaultLibraryPath()));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        ProjectWorks* open = window.project();
        QFile junk(m_dir.filePath("junk.tarvo"));
        QVERIFY(junk.open(QIODevice::WriteOnly));
        junk.write("PK\x03\x04 not a project");
        junk.close();
        for (const QString& bad : {m_dir.filePath("junk.tarvo"), m_dir.filePath("missing.tarvo")}) {
            InteractionSeam::clear();
            QVERIFY(!window.openProject(bad));
            QCOMPARE(InteractionSeam::lastShown().title, QString("打开工程"));
            QVERIFY(InteractionSeam::lastShown().text.contains(QFileInfo(bad).fileName()));
            QCOMPARE(window.project(), open);
            QVERIFY(window.moduleHost()->container());
        }
    }

    void changedProjectAsksBeforeItIsReplaced()
    {
        MainWindow window;
        QVERIFY(window.loadModule(ModuleHost::defaultLibraryPath()));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        ProjectWorks* open = window.project();
        open->setProjectWorkChanged(true);
        InteractionSeam::pushAnswer(int(QMessageBox::Cancel));
        QVERIFY(!window.openProject(MainWindow::samplePath()));
        QCOMPARE(InteractionSeam::lastShown().text, QString("工程已修改，是否保存？"));
        QCOMPARE(window.project(), open);
        InteractionSeam::pushAnswer(int(QMessageBox::No));
        QVERIFY(window.openProject(MainWindow::samplePath()));
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
