#include "ModulePages.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "QtXmQd/QtXmQdSjWidget.h"
#include "QtXmQd/QtXmQdWidget.h"
#include "common/BillModel.h"

#include "FyBlBusiness.h"
#include "InteractionSeam.h"
#include "QtXmQdJJjbBusiness.h"
#include "zTableView.h"

#include "Communication.h"

#include <QAction>
#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>
#include <QUndoStack>
#include <QtTest>

// Row commands and attributes of the other items list, each one undo step.
class tst_QtXmQdPage : public QObject
{
    Q_OBJECT

private:
    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    using Page = ModulePage<QtXmQdWidget, QtXmQdSjWidget>;

    static QtXmQdHzTable* fill(TestProject& p, int ordinaryRows)
    {
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        for (int i = 0; i < ordinaryRows; ++i)
            TestProject::row(t, 0,
                             {{1, QString::number(i + 1)},
                              {2, QString("项目%1").arg(i + 1)},
                              {3, 100.0 * (i + 1)}});
        TestProject::row(t, 4, {{2, "合计"}});
        return t;
    }

    static QList<int> kinds(GeneralTableBase* t)
    {
        QList<int> list;
        for (BaseDataItem* item : t->items())
            list << item->getKind();
        return list;
    }

private slots:
    void init() { beginScriptedSession(); }
    void cleanup() { endScriptedSession(); }

    void clearingKeepsTheNumberOfRows()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p, 4);
        Page page(p.unit);
        InteractionSeam::pushAnswer(int(QMessageBox::No));
        page.grid()->ClearAllRows();
        QCOMPARE(InteractionSeam::lastShown().text, QString("你确定清除所有行内容吗?"));
        QCOMPARE(kinds(t), QList<int>({0, 0, 0, 0, 4}));
        QCOMPARE(undo()->undoStack()->count(), 0);

        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->ClearAllRows();
        QCOMPARE(kinds(t), QList<int>({1, 1, 1, 1, 4}));
        QCOMPARE(t->at(4)->getDouble(3), 0.0);
        QCOMPARE(undo()->undoStack()->count(), 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("清除所有行"));
        QVERIFY(undo()->Undo());
        QCOMPARE(kinds(t), QList<int>({0, 0, 0, 0, 4}));
        QCOMPARE(t->at(1)->getValue(2).toString(), QString("项目2"));
    }

    void clearingAnEmptyListAddsTheTotalOnly()
    {
        TestProject p;
        Page page(p.unit);
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->ClearAllRows();
        QCOMPARE(kinds(p.current->getTenderInventory()->getQtXmQdHzTable()), QList<int>({4}));
    }

    void insertAndDeleteAreOneStepEachAndSpareTheTotal()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p, 2);
        Page page(p.unit);
        page.focus(1);
        page.grid()->InsertRow();
        QCOMPARE(kinds(t), QList<int>({0, 1, 0, 4}));
        QCOMPARE(undo()->undoStack()->undoText(), QString("插入行"));
        page.focus(3);
        page.grid()->DeleteCurrentRow("招投标-删除行");
        QCOMPARE(t->count(), 4); // the total row stays
        page.focus(0);
        page.grid()->DeleteCurrentRow("招投标-删除行");
        QCOMPARE(kinds(t), QList<int>({1, 0, 4}));
        QCOMPARE(t->at(2)->getDouble(3), 200.0);
        QCOMPARE(undo()->undoStack()->count(), 2);
        QVERIFY(undo()->Undo());
        QCOMPARE(t->at(0)->getValue(2).toString(), QString("项目1"));
        QCOMPARE(t->at(3)->getDouble(3), 300.0);
    }

    void attributesToggleAndTheirTextsFollowTheRow()
    {
        TestProject p;
        FyBlBusiness::GetInstance()->setValue(p.current, "分部分项工程费", 10000.0);
        QtXmQdHzTable* t = fill(p, 2);
        Page page(p.unit);
        page.focus(0);
        QList<QAction*> actions = page.grid()->contextActions();
        QCOMPARE(actions.at(3)->text(), QString("置当前行\"小计\"属性"));
        QCOMPARE(actions.at(4)->text(), QString("置当前行\"计算\"属性"));
        actions.at(4)->trigger();
        QCOMPARE(t->at(0)->getKind(), 3);
        QCOMPARE(page.grid()->contextActions().at(4)->text(), QString("取消当前行\"计算\"属性"));
        QCOMPARE(t->at(0)->getDouble(6), 100.0); // the amount became the formula
        QCOMPARE(t->at(2)->getDouble(3), 300.0);
        actions.at(4)->trigger();
        QCOMPARE(t->at(0)->getKind(), 0);                 // twice restores the row
        QCOMPARE(t->at(0)->getValue(3), QVariant(100.0)); // with the formula's value
        QCOMPARE(t->at(2)->getDouble(3), 300.0);
        actions.at(3)->trigger();
        QCOMPARE(t->at(0)->getKind(), 2);
        QCOMPARE(page.grid()->contextActions().at(3)->text(), QString("取消当前行\"小计\"属性"));
        QCOMPARE(undo()->undoStack()->count(), 3);

        page.focus(2); // the total row takes no attribute
        actions = page.grid()->contextActions();
        QVERIFY(!actions.at(3)->isEnabled());
        QVERIFY(!actions.at(1)->isEnabled());
    }

    void typingOnACalculatedAmountNeverReachesItsFormula()
    {
        TestProject p;
        FyBlBusiness::GetInstance()->setValue(p.current, "分部分项工程费", 10000.0);
        QtXmQdHzTable* t = fill(p, 2);
        t->at(1)->loadState(3, false, 0, QString());
        t->at(1)->loadValue(3, QString("分部分项工程费*0.015"));
        QtXmQdJJjbBusiness::CalculateTable(p.current, t);
        QMainWindow window;
        Communication::GetInstance()->SetMainWindow(&window);
        Page page(p.unit);
        page.widget.show();
        zTableView* view = page.grid()->view();
        const int amountColumn = page.grid()->model()->columnOfField(3);
        view->setCurrentIndex(page.grid()->model()->index(1, amountColumn));
        QTest::keyClicks(view, "123");
        QCoreApplication::processEvents();
        QCOMPARE(t->at(1)->getValue(3).toString(), QString("分部分项工程费*0.015"));
        QCOMPARE(t->at(1)->getDouble(6), 150.0);
        QVERIFY(InteractionSeam::shown().isEmpty()); // no dialog: the keys were refused
        QCOMPARE(window.statusBar()->currentMessage(), QtXmQdSjWidget::CalculatedCellHint());
        QCOMPARE(undo()->undoStack()->count(), 0);
        Communication::GetInstance()->SetMainWindow(nullptr);
    }

    void ribbonCommandsReachThePage()
    {
        TestProject p;
        QtXmQdHzTable* t = fill(p, 1);
        Page page(p.unit);
        page.focus(0);
        QVariant insert("插入行");
        page.widget.ProcMsg(6, &insert);
        QCOMPARE(t->count(), 3);
        t->SetReadOnlyLocked(true);
        page.widget.ProcMsg(6, &insert);
        QCOMPARE(t->count(), 3);
    }
};

QTEST_MAIN(tst_QtXmQdPage)
#include "tst_QtXmQdPage.moc"
