#include "Screenshots.h"

#include "MainWindow.h"
#include "ModuleHost.h"
#include "RibbonWidget.h"

#include "ConstructionWorks.h"
#include "InteractionSeam.h"
#include "MsgExplain.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"
#include "TenderInventory.h"
#include "ZgClQd/PopupDialog/CkZbZgClQdDialog.h"
#include "ZgClQd/PopupDialog/DbZbZgClDialog.h"
#include "ZgClQd/PopupDialog/DbZbZgSyClDialog.h"
#include "ZgClQd/PopupDialog/TbZbZgClDialog.h"
#include "ZgClZsItem.h"

#include <QAction>
#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QUndoStack>
#include <QtTest>

namespace {

const QString kSamples = QStringLiteral(TEST_DATA_DIR "/../../appdir/Samples/");
const QString kNotFitting = QStringLiteral("导入的招标文件工程树结构与当前工程不一致，请重新选择");

// A message box as the user would see the last one shown.
void shotLastMessage(const QString& name)
{
    const InteractionSeam::Shown last = InteractionSeam::lastShown();
    QMessageBox box(QMessageBox::Information, last.title, last.text);
    saveShot(&box, name);
}

void showProvisionalPage(MainWindow& window)
{
    window.moduleHost()->send(49, QVariant::fromValue(MsgExplain::ToChangeActivePageInfo{
                                      QStringLiteral("暂估材料(工程设备)清单")}));
}

void clickRibbon(MainWindow& window, const char* text)
{
    auto* button = qobject_cast<QToolButton*>(window.ribbon()->itemWidget(text));
    QVERIFY2(button && button->isEnabled(), text);
    button->click();
}

// What matching and applying may change: every unit project's material prices, amounts,
// provisional marks and tender codes, and the provisional list built from them.
QList<QVariantList> snapshot(ProjectWorks* project)
{
    QList<QVariantList> all;
    for (ProTreeNode* unit : project->unitProjectNodes())
        for (const BaseDataItem* m :
             project->works(0, ProTreeNode::Id(unit))->getRcjHzTable()->items())
            all.append({m->getValue(7), m->getValue(10), m->getValue(11), m->getValue(18)});
    for (const BaseDataItem* m :
         project->GetConstructionWorksNode()->getTenderInventory()->getZgjClHzTable()->items())
        all.append({m->getValue(3), m->getValue(7), m->getValue(9), m->getValue(11)});
    return all;
}

int counted(const QLabel* counter, int part)
{
    static const QRegularExpression re(
        QStringLiteral("^招标材料共(\\d+)条，已对应(\\d+)条，还需对应(\\d+)条$"));
    const QRegularExpressionMatch m = re.match(counter->text());
    return m.hasMatch() ? m.captured(part).toInt() : -1;
}

} // namespace

// The two errands an estimator runs with the tenderer's file, through the real main window,
// its ribbon and the module's dialogs: view the tender's provisional list, import the sample
// tender file, export the list to .xlsx and .xls, refuse a file that does not fit; then match
// the bid's materials with it, apply with every option and take it all back in one undo step.
// Written so that the sample's exact materials do not matter.
class tst_TenderWalkthrough : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString outputDir() const
    {
        const QString dir = qEnvironmentVariable("TARVO_SCREENSHOT_DIR");
        return dir.isEmpty() ? m_dir.path() : dir;
    }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        InteractionSeam::setScripted(true);
        QVERIFY(QFileInfo::exists(kSamples + QStringLiteral("示例工程-招标文件.cjz")));
    }
    void init() { InteractionSeam::clear(); }
    void cleanup()
    {
        InteractionSeam::setModalHook(nullptr);
        RURecordControl::GetInstance()->ForgetHistory();
    }

    void viewImportExportAndRefuseTheTenderList()
    {
        MainWindow window;
        window.resize(1400, 900);
        QVERIFY(window.loadModule(ModuleHost::defaultLibraryPath()));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        window.show();
        window.selectNode(window.project()->root());
        showProvisionalPage(window);
        saveShot(&window, QStringLiteral("12-1-provisional-page"));

        const QString xlsx = outputDir() + QStringLiteral("/招标暂估材料.xlsx");
        const QString xls = outputDir() + QStringLiteral("/招标暂估材料.xls");
        QFile::remove(xlsx);
        QFile::remove(xls);
        int rowsAfterImport = -1;
        bool seen = false;
        InteractionSeam::setModalHook([&](QDialog* dialog) {
            auto* d = qobject_cast<CkZbZgClQdDialog*>(dialog);
            QVERIFY(d);
            seen = true;
            d->resize(1200, 700);
            saveShot(d, QStringLiteral("12-2-list-before-import"));
            auto* view = d->findChild<QTableView*>();
            QVERIFY(view);

            InteractionSeam::pushAnswer(
                QString(kSamples + QStringLiteral("示例工程-招标文件.cjz")));
            d->slotImportCJZClicked();
            rowsAfterImport = view->model()->rowCount();
            QVERIFY(rowsAfterImport > 0);
            saveShot(d, QStringLiteral("12-3-list-imported"));

            for (const QString& path : {xlsx, xls}) {
                InteractionSeam::pushAnswer(path);
                d->slotExportBtnClicked();
                QVERIFY2(QFileInfo(path).size() > 0, qPrintable(path));
            }

            InteractionSeam::pushAnswer(
                QString(kSamples + QStringLiteral("其他工程-招标文件.cjz")));
            d->slotImportCJZClicked();
            QCOMPARE(InteractionSeam::lastShown().text, kNotFitting);
            QCOMPARE(view->model()->rowCount(), rowsAfterImport); // the list stays
            shotLastMessage(QStringLiteral("12-4-not-fitting-message"));
        });
        clickRibbon(window, "查看招标暂估材料");
        QVERIFY(seen);
        QVERIFY(window.project()->HasGcZbZgCl());
    }

    void matchApplyWithEveryOptionAndUndoInOneStep()
    {
        MainWindow window;
        window.resize(1400, 900);
        QVERIFY(window.loadModule(ModuleHost::defaultLibraryPath()));
        QVERIFY(window.openProject(MainWindow::samplePath()));
        ProjectWorks* project = window.project();
        QVERIFY(
            CkZbZgClQdDialog::ImportTenderFile(nullptr, project->GetConstructionWorksNode(),
                                               kSamples + QStringLiteral("示例工程-招标文件.cjz")));
        window.show();
        window.selectNode(project->root());
        showProvisionalPage(window);
        const QList<QVariantList> before = snapshot(project);
        QUndoStack* stack = RURecordControl::GetInstance()->undoStack();
        const int steps = stack->count();

        bool optionsSeen = false;
        InteractionSeam::setModalHook([&](QDialog* dialog) {
            if (auto* options = qobject_cast<TbZbZgClDialog*>(dialog)) {
                optionsSeen = true;
                for (int i = 0; i < 3; ++i)
                    if (options->box(i)->isEnabled())
                        options->box(i)->setChecked(true);
                saveShot(options, QStringLiteral("14-6-save-options"));
                return;
            }
            if (auto* all = qobject_cast<DbZbZgSyClDialog*>(dialog)) {
                all->slotAutoMatchBtnClicked();
                saveShot(all, QStringLiteral("14-2-all-materials-matched"));
                InteractionSeam::pushAnswer(int(QDialog::Accepted));
                return;
            }
            auto* d = qobject_cast<DbZbZgClDialog*>(dialog);
            QVERIFY(d);
            d->resize(1300, 820);
            const int total = counted(d->counter(), 1);
            QVERIFY2(total > 0, qPrintable(d->counter()->text()));
            saveShot(d, QStringLiteral("14-1-opened"));

            // Automatic matching over all materials, carried into the unit projects.
            d->slotHzClAndMatch();
            QCOMPARE(counted(d->counter(), 1), total);
            const int matchedAuto = counted(d->counter(), 2);
            QVERIFY(matchedAuto > 0);

            saveShot(d, QStringLiteral("14-5-before-saving"));

            InteractionSeam::pushAnswer(int(QDialog::Accepted)); // the options: "保存"
            d->slotBtnAccept();
            InteractionSeam::pushAnswer(int(QDialog::Accepted)); // the dialog itself
        });
        clickRibbon(window, "对应整理投标暂估材料");
        QVERIFY(optionsSeen);
        QCOMPARE(stack->count(), steps + 1);
        QCOMPARE(stack->undoText(), QStringLiteral("对应整理投标暂估材料"));
        QVERIFY(snapshot(project) != before);
        saveShot(&window, QStringLiteral("14-7-list-rebuilt"));

        auto* undo = window.findChild<QAction*>(QStringLiteral("undoAction"));
        QCOMPARE(undo->text(), QStringLiteral("撤销 对应整理投标暂估材料"));
        undo->trigger();
        QCOMPARE(stack->count(), steps + 1); // one record, now undone
        QCOMPARE(stack->index(), steps);
        QVERIFY(snapshot(project) == before);
        saveShot(&window, QStringLiteral("14-8-undone"));
    }
};

QTEST_MAIN(tst_TenderWalkthrough)
#include "tst_TenderWalkthrough.moc"
