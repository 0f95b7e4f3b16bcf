#include "Screenshots.h"

#include "MainWindow.h"
#include "ModuleHost.h"
#include "ProjectTreeModel.h"
#include "RibbonWidget.h"

#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "HostScreen.h"
#include "InteractionSeam.h"
#include "MsgExplain.h"
#include "OperatingUIInfo.h"
#include "ProjectFile.h"
#include "ProjectPropertiesDialog.h"
#include "ProjectRegion.h"
#include "ProjectWorks.h"
#include "QtXmQdHzTable.h"
#include "RURecordControl.h"
#include "TenderInventory.h"
#include "zProTabWidget.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
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

    // Shows a page as the host does (message 49); its ribbon's template box, if it has one.
    static QComboBox* showPage(MainWindow& window, const char* page)
    {
        window.moduleHost()->send(
            49, QVariant::fromValue(MsgExplain::ToChangeActivePageInfo{QString(page)}));
        QWidget* box = window.ribbon()->itemWidget("模板选择");
        return box ? box->findChild<QComboBox*>() : nullptr;
    }

    // The module loaded and the bundled sample opened, the window shown.
    static bool openSample(MainWindow& window)
    {
        if (!window.loadModule(ModuleHost::defaultLibraryPath()) ||
            !window.openProject(MainWindow::samplePath()))
            return false;
        window.show();
        return true;
    }

    static QTableView* currentGrid(MainWindow& window)
    {
        auto* tabs = window.moduleHost()->container()->findChild<zProTabWidget*>();
        return tabs->GetCurrentContentWidget()->findChild<QTableView*>(QStringLiteral("gridView"));
    }

private slots:
    // The recent-files list goes to a test location, not the user's settings.
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
    }

    void missingModuleIsReportedAndTheWindowStillWorks()
    {
        MainWindow window;
        QVERIFY(!window.loadModule(m_dir.filePath("libnothing.so")));
        QCOMPARE(InteractionSeam::shown().size(), 1);
        QCOMPARE(InteractionSeam::lastShown().kind, QString("warning"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("加载模块"));
        QVERIFY(InteractionSeam::lastShown().text.contains("libnothing.so"));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        QVERIFY(window.project());
        QVERIFY(!window.moduleHost()->container());
        // The tree still works; clicks simply reach no module.
        QCOMPARE(window.tree()->model()->rowCount(), 1);
        window.selectNode(window.project()->unitProjectNodes().first());
        QVERIFY(!window.ribbon()->config().isValid());
    }

    void sampleOpensWithSixPagesAndEditsUndoAndSave()
    {
        MainWindow window;
        QAbstractItemModelTester tester(window.tree()->model(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(openSample(window));
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
        // The saved file heads the recent list; the bundled sample never enters it.
        const QList<QAction*> recent = window.findChild<QMenu*>("recentMenu")->actions();
        QCOMPARE(recent.first()->text(), file);
        QVERIFY(std::none_of(recent.begin(), recent.end(), [](const QAction* a) {
            return a->text() == MainWindow::samplePath();
        }));
        QCOMPARE(RURecordControl::GetInstance()->undoStack()->count(), 0);

        // A tree click on a single project changes nothing in the grid.
        auto* model = static_cast<ProjectTreeModel*>(window.tree()->model());
        const QModelIndex single = model->index(0, 0, model->index(0, 0));
        window.tree()->clicked(single);
        QCOMPARE(currentGrid(window)->model()->index(0, 3).data().toString(), QString("123456.00"));
    }

    void hostMessagesReachThePages()
    {
        MainWindow window;
        QVERIFY(openSample(window));
        QSignalSpy sent(window.moduleHost(), &ModuleHost::sent);

        // A click on another unit project loads its rows into the current page.
        const QList<ProTreeNode*> units = window.project()->unitProjectNodes();
        QVERIFY(units.size() >= 2);
        ProTreeNode* second = units.at(1);
        auto* model = static_cast<ProjectTreeModel*>(window.tree()->model());
        window.tree()->clicked(model->indexOf(second));
        QCOMPARE(sent.first().at(0).toInt(), 74);
        QCOMPARE(sent.first().at(1).value<ProTreeNode*>(), second);
        QtXmQdHzTable* table =
            DataManagement::getInstance()
                ->GetProObjectForDisplay(ProTreeNode::ProjectIndex(second),
                                         ProTreeNode::AuditVersion(second), ProTreeNode::Id(second))
                ->getTenderInventory()
                ->getQtXmQdHzTable();
        QTableView* grid = currentGrid(window);
        QCOMPARE(grid->model()->rowCount(), table->count());

        // A ribbon button is message 6 with its text; the row lands in that unit project.
        sent.clear();
        auto* insert = qobject_cast<QToolButton*>(window.ribbon()->itemWidget("插入行"));
        QVERIFY(insert);
        grid->setCurrentIndex(grid->model()->index(0, 1));
        const int rows = table->count();
        insert->click();
        QCOMPARE(sent.first().at(0).toInt(), 6);
        QCOMPARE(sent.first().at(1).toString(), QString("插入行"));
        QCOMPARE(table->count(), rows + 1);
        QVERIFY(window.windowTitle().endsWith(" *"));

        // Undo from the Edit menu: the pages follow their table by themselves (no refresh
        // message), then learn which record was replayed (606).
        const QString label = RURecordControl::GetInstance()->undoStack()->undoText();
        sent.clear();
        window.findChild<QAction*>("undoAction")->trigger();
        QCOMPARE(table->count(), rows);
        QCOMPARE(grid->model()->rowCount(), rows);
        QCOMPARE(sent.size(), 1);
        QCOMPARE(sent.at(0).at(0).toInt(), 606);
        QCOMPARE(sent.at(0).at(1).value<OperatingUIInfo>().text, label);
        QCOMPARE(window.findChild<QAction*>("redoAction")->text(), QString("重做 %1").arg(label));

        // Saving tells the pages where the project went.
        const QString file = m_dir.filePath("messages.tarvo");
        sent.clear();
        QVERIFY(window.saveAs(file));
        QCOMPARE(sent.last().at(0).toInt(), 31);
        QCOMPARE(sent.last().at(1).toString(), file);
        QVERIFY(!window.windowTitle().endsWith(" *"));
    }

    void ribbonFollowsTheCurrentPage()
    {
        MainWindow window;
        QVERIFY(openSample(window));
        auto show = [&](const char* page) {
            showPage(window, page);
            QCOMPARE(window.ribbon()->config().page, QString(page));
        };

        // The total row of the other items list cannot take insert or delete (message 47).
        QTableView* grid = currentGrid(window);
        QWidget* insert = window.ribbon()->itemWidget("插入行");
        grid->setCurrentIndex(grid->model()->index(grid->model()->rowCount() - 1, 1));
        QVERIFY(!insert->isEnabled());
        QVERIFY(!window.ribbon()->itemWidget("招投标-删除行")->isEnabled());
        grid->setCurrentIndex(grid->model()->index(1, 1));
        QVERIFY(insert->isEnabled());

        // The materials page puts its own menus on its drop-downs; they stay its own.
        show("招标人材料购置费清单");
        auto* del = qobject_cast<QToolButton*>(window.ribbon()->itemWidget("招投标-删除行"));
        QVERIFY(del && del->menu());
        QCOMPARE(del->menu()->actions().first()->text(), QString("删除当前行/块"));
        QMenu* pageMenu = del->menu();
        QVERIFY(window.ribbon()->itemWidget("插入行")->isEnabled());
        show("暂估材料(工程设备)清单");
        del = qobject_cast<QToolButton*>(window.ribbon()->itemWidget("招投标-删除行"));
        QVERIFY(del->menu() != pageMenu);
        QCOMPARE(del->menu()->actions().size(), 2);
        show("其他项目清单");
        QVERIFY(!qobject_cast<QToolButton*>(window.ribbon()->itemWidget("招投标-删除行"))->menu());
        // The ribbon keeps one height on every page: the window never jumps.
        QSet<int> heights;
        for (const char* page : {"其他项目清单", "招标人材料购置费清单", "零星工作项目人工单价清单",
                                 "规费税金清单", "需评审的材料清单", "暂估材料(工程设备)清单"}) {
            show(page);
            QApplication::processEvents();
            heights.insert(window.ribbon()->height());
            QVERIFY2(window.ribbon()->sizeHint().height() <= window.ribbon()->height(), page);
        }
        QCOMPARE(heights.size(), 1);
        QVERIFY(window.statusBar()->findChildren<QLabel*>().size() >= 2);
    }

    void headerTemplateCommandsComeBackToThePage()
    {
        MainWindow window;
        QVERIFY(openSample(window));
        auto* tabs = window.moduleHost()->container()->findChild<zProTabWidget*>();
        QSignalSpy sent(window.moduleHost(), &ModuleHost::sent);
        // 7006 goes out, comes back, the page answers 7000, which comes back to the tab strip.
        emit tabs->signalTabMenuAboutToShow();
        QList<int> ids;
        for (const QList<QVariant>& message : sent)
            ids << message.at(0).toInt();
        QCOMPARE(ids, QList<int>({7000, 7006}));
        QCOMPARE(tabs->tableHeaderTempList().value(0), QString("默认表头"));
        sent.clear();
        emit tabs->sigHeaderTemplateChanged("默认表头");
        QCOMPARE(sent.size(), 1);
        QCOMPARE(sent.first().at(0).toInt(), 7002);
        QCOMPARE(sent.first().at(1).toString(), QString("默认表头"));
    }

    // The template box shows each page's template in use; a fee template chosen on the ribbon
    // rewrites the list (one undo step), stays the unit project's through page changes and
    // saving, and the other unit project keeps its own.
    void templatesFromTheRibbon()
    {
        MainWindow window;
        QVERIFY(openSample(window));
        QCOMPARE(showPage(window, "其他项目清单")->currentText(), QString("2020定额其他项目清单"));
        QCOMPARE(showPage(window, "零星工作项目人工单价清单")->currentText(),
                 QString("2020定额零星工作项目人工单价清单模板"));
        QComboBox* combo = showPage(window, "规费税金清单");
        QCOMPARE(combo->count(), 9); // the templates found in the template folder
        QCOMPARE(combo->currentText(), QString("2020定额规费税金清单-一般计税"));

        QTableView* grid = currentGrid(window);
        const int taxRow = grid->model()->rowCount() - 1;
        QSignalSpy sent(window.moduleHost(), &ModuleHost::sent);
        emit window.ribbon()->comboChanged("模板选择", "2015定额规费税金清单-简易计税");
        QCOMPARE(sent.first().at(0).toInt(), 5);
        QCOMPARE(sent.first().at(1).value<MsgExplain::MenuComboInfo>().strText,
                 QString("2015定额规费税金清单-简易计税"));
        QCOMPARE(grid->model()->index(taxRow, 4).data().toString(), QString("3%"));
        emit window.ribbon()->comboChanged("模板选择", "GB50500-2008规费税金清单");
        QCOMPARE(grid->model()->index(grid->model()->rowCount() - 1, 4).data().toString(),
                 QString("3.48%"));
        window.findChild<QAction*>("undoAction")->trigger();
        QCOMPARE(grid->model()->index(taxRow, 4).data().toString(), QString("3%"));

        showPage(window, "其他项目清单");
        QCOMPARE(showPage(window, "规费税金清单")->currentText(),
                 QString("2015定额规费税金清单-简易计税"));
        const QString file = m_dir.filePath("template.tarvo");
        QVERIFY(window.saveAs(file));
        QVERIFY(window.openProject(file));
        QCOMPARE(showPage(window, "规费税金清单")->currentText(),
                 QString("2015定额规费税金清单-简易计税"));
        window.selectNode(window.project()->unitProjectNodes().at(1));
        QCOMPARE(showPage(window, "规费税金清单")->currentText(),
                 QString("2020定额规费税金清单-一般计税"));
    }

    void titleMarkFollowsTheSavedState()
    {
        MainWindow window;
        QVERIFY(window.loadModule(ModuleHost::defaultLibraryPath()));
        const QString file = m_dir.filePath("title.tarvo");
        QVERIFY(window.openProject(MainWindow::samplePath()));
        window.show();
        QVERIFY(window.saveAs(file));
        QVERIFY(!window.windowTitle().endsWith(" *"));
        QTableView* grid = currentGrid(window);
        QVERIFY(grid->model()->setData(grid->model()->index(0, 3), "777"));
        QVERIFY(window.windowTitle().endsWith(" *"));
        auto* undo = window.findChild<QAction*>("undoAction");
        auto* redo = window.findChild<QAction*>("redoAction");
        undo->trigger();
        QVERIFY2(!window.windowTitle().endsWith(" *"), qPrintable(window.windowTitle()));
        redo->trigger();
        QVERIFY(window.windowTitle().endsWith(" *"));
        QVERIFY(window.save());
        undo->trigger(); // away from what the file holds
        QVERIFY(window.windowTitle().endsWith(" *"));
        redo->trigger();
        QVERIFY(!window.windowTitle().endsWith(" *"));
    }

    // 工程属性 shows the project's region and takes a new one: the project is then changed and
    // the saved file holds the region; cancelling changes nothing.
    void projectPropertiesSetTheRegion()
    {
        MainWindow window;
        QVERIFY(window.openProject(MainWindow::samplePath()));
        QCOMPARE(ProjectRegion::Of(window.project()), QString("成都市区"));
        QString shown;
        InteractionSeam::setModalHook([&](QDialog* d) {
            auto* edit = d->findChild<QLineEdit*>("regionEdit");
            shown = edit->text();
            edit->setText(" 绵阳市 ");
        });
        InteractionSeam::pushAnswer(int(QDialog::Rejected));
        QVERIFY(!window.editProjectProperties());
        QCOMPARE(shown, QString("成都市区"));
        QCOMPARE(ProjectRegion::Of(window.project()), QString("成都市区"));
        QVERIFY(!window.windowTitle().endsWith(" *"));

        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        QVERIFY(window.editProjectProperties());
        InteractionSeam::setModalHook(nullptr);
        QCOMPARE(InteractionSeam::lastShown().title, QString("工程属性"));
        QCOMPARE(ProjectRegion::Of(window.project()), QString("绵阳市"));
        QVERIFY(window.windowTitle().endsWith(" *"));
        const QString file = m_dir.filePath("region.tarvo");
        QVERIFY(window.saveAs(file));
        QString error;
        std::unique_ptr<ProjectWorks> saved = ProjectFile::Open(file, &error);
        QVERIFY2(saved, qPrintable(error));
        QCOMPARE(ProjectRegion::Of(saved.get()), QString("绵阳市"));
    }

    void windowSizeAndStateAreRemembered()
    {
        {
            MainWindow window;
            window.show();
            window.resize(760, 560);
            QVERIFY(window.close());
        }
        MainWindow again;
        again.restoreWindowState();
        QCOMPARE(again.size(), QSize(760, 560));
    }

    void qtDialogsSpeakChinese()
    {
        QVERIFY(HostScreen::InstallQtTranslations(qApp));
        QCOMPARE(QCoreApplication::translate("QFileDialog", "Look in:"), QString("查找范围："));
        QFileDialog dialog(nullptr, QStringLiteral("打开工程"), m_dir.path(),
                           QStringLiteral("Tarvo 工程文件 (*.tarvo)"));
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.resize(720, 440);
        saveShot(&dialog, "file-dialog");
    }

    void badFilesLeaveTheOpenProject()
    {
        MainWindow window;
        QVERIFY(openSample(window));
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
        QVERIFY(openSample(window));
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
