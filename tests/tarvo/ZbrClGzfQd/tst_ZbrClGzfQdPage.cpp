#include "ModulePages.h"
#include "Screenshots.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "ZbrClGzfQd/PopupDialog/SummarySelectionDialog.h"
#include "ZbrClGzfQd/ZbrClGzfQdSjWidget.h"
#include "ZbrClGzfQd/ZbrClGzfQdSsModel.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"
#include "common/BillModel.h"
#include "common/BillSsWidget.h"
#include "common/RowsCountInputDialog.h"

#include "Communication.h"
#include "HostScreen.h"
#include "InteractionSeam.h"
#include "SkinManager.h"
#include "VXProgressBar.h"
#include "ZbrClGzfQdBusiness.h"
#include "zTableView.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QScrollBar>
#include <QTableView>
#include <QTextDocument>
#include <QUndoStack>
#include <QtTest>

// The tenderer-purchased materials list: block selection, deleting, keeping, sorting and
// summarising the unit projects' materials.
class tst_ZbrClGzfQdPage : public QObject
{
    Q_OBJECT

private:
    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    using Page = ModulePage<ZbrClGzfQdWidget, ZbrClGzfQdSjWidget>;

    static ZbrClGzfQdTable* list(TestProject& p)
    {
        return p.current->getTenderInventory()->getZbrClGzfQdTable();
    }

    static void material(GeneralTableBase* t, int serial, const QString& name, double price,
                         double quantity)
    {
        TestProject::row(
            t, 1,
            {{1, serial}, {3, name}, {5, "t"}, {7, price}, {9, quantity}, {10, price * quantity}});
    }

    static QStringList names(GeneralTableBase* t)
    {
        QStringList list;
        for (BaseDataItem* item : t->items())
            list << item->getValue(3).toString();
        return list;
    }

    static QList<int> block(GeneralTableBase* t)
    {
        QList<int> rows;
        for (int r = 0; r < t->count(); ++r)
            if (t->at(r)->IsBlock())
                rows << r;
        return rows;
    }

    static void unitMaterial(ConstructionWorks* works, const QString& name, double price,
                             double quantity, bool provisional = false,
                             const QString& origin = "四川")
    {
        TestProject::row(works->getRcjHzTable(), 1,
                         {{3, name},
                          {4, ""},
                          {5, "t"},
                          {7, price},
                          {9, quantity},
                          {11, provisional},
                          {12, origin}});
    }

private slots:
    void init() { beginScriptedSession(); }
    void cleanup() { endScriptedSession(); }

    void numbersTakeTheUnitProjectsDecimals()
    {
        TestProject p;
        ZbrClGzfQdTable* t = list(p);
        material(t, 1, "钢筋", 4200.5, 10.126);
        t->at(0)->setValue(2, "010101");
        t->at(0)->setValue(12, "四川");
        Page page(p.unit);
        BillModel* model = page.grid()->model();
        auto shown = [&](int field) { return model->index(0, model->columnOfField(field)).data(); };
        QCOMPARE(shown(7).toString(), QString("4200.50"));
        QCOMPARE(shown(9).toString(), QString("10.13"));
        QCOMPARE(shown(10).toString(), QString("42534.26"));
        // The unit project's number formats decide.
        p.current->getJfszTable()->setDecimals(3, 1);
        p.current->getJfszTable()->setQuantityDecimals(3);
        QCOMPARE(shown(7).toString(), QString("4200.500"));
        QCOMPARE(shown(9).toString(), QString("10.126"));
        QCOMPARE(shown(10).toString(), QString("42534.3"));
        // Editing shows the stored number, not the rounded one.
        QCOMPARE(model->index(0, model->columnOfField(9)).data(Qt::EditRole).toString(),
                 QString("10.126"));
    }

    void sortsPutBlanksLastAndKeepOtherRowsAfter()
    {
        TestProject p;
        ZbrClGzfQdTable* t = list(p);
        material(t, 1, "钢筋", 4200, 10);
        material(t, 2, "水泥", 480, 0); // zero quantity: blank, last by quantity
        material(t, 3, "电梯", 285000, 2);
        material(t, 4, "安全网", 12, 500);
        TestProject::row(t, 2, {{3, "合计"}});
        Page page(p.unit);
        page.grid()->Sort(ZbrClGzfQdSjWidget::ByQuantity);
        QCOMPARE(names(t), QStringList({"安全网", "钢筋", "电梯", "水泥", "合计"}));
        QCOMPARE(page.grid()
                     ->model()
                     ->index(3, page.grid()->model()->columnOfField(9))
                     .data()
                     .toString(),
                 QString());
        QCOMPARE(undo()->undoStack()->undoText(), QString("排序.数量"));
        page.grid()->Sort(ZbrClGzfQdSjWidget::ByName); // pinyin order
        QCOMPARE(names(t), QStringList({"安全网", "电梯", "钢筋", "水泥", "合计"}));
        page.grid()->Sort(ZbrClGzfQdSjWidget::ByAmount);
        QCOMPARE(names(t).first(), QString("电梯"));
        QCOMPARE(undo()->undoStack()->count(), 3);
        QVERIFY(undo()->Undo());
        QVERIFY(undo()->Undo());
        QVERIFY(undo()->Undo());
        QCOMPARE(names(t), QStringList({"钢筋", "水泥", "电梯", "安全网", "合计"}));
    }

    void blockHeadTailAndInversion()
    {
        TestProject p;
        ZbrClGzfQdTable* t = list(p);
        for (int i = 0; i < 6; ++i)
            material(t, i + 1, QString("材料%1").arg(i), 10, 1);
        TestProject::row(t, 1, {}); // an empty row
        Page page(p.unit);
        page.focus(2);
        page.grid()->DefineBlockHead();
        QCOMPARE(block(t), QList<int>({2}));
        page.focus(4);
        page.grid()->DefineBlockTail();
        QCOMPARE(block(t), QList<int>({2, 3, 4}));
        page.focus(1); // a head above the block reaches down to it
        page.grid()->DefineBlockHead();
        QCOMPARE(block(t), QList<int>({1, 2, 3, 4}));
        page.focus(3);
        page.grid()->DefineBlockTail(); // rows below the tail leave
        QCOMPARE(block(t), QList<int>({1, 2, 3}));
        page.grid()->InvertBlock(); // the empty row stays out
        QCOMPARE(block(t), QList<int>({0, 4, 5}));
        page.grid()->CancelBlock();
        QVERIFY(block(t).isEmpty());
        QCOMPARE(undo()->undoStack()->count(), 0); // block changes are no undo steps
        QCOMPARE(page.grid()->action("全选")->shortcutContext(), Qt::WidgetWithChildrenShortcut);
    }

    void deletingRowsOrTheBlock()
    {
        TestProject p;
        ZbrClGzfQdTable* t = list(p);
        for (int i = 0; i < 5; ++i)
            material(t, i + 1, QString("材料%1").arg(i), 10, 1);
        Page page(p.unit);
        page.focus(1);
        page.grid()->DeleteRowsOrBlock(); // empty block: the focused row only, no question
        QCOMPARE(names(t), QStringList({"材料0", "材料2", "材料3", "材料4"}));
        QVERIFY(InteractionSeam::shown().isEmpty());
        t->at(0)->SetBlock(true);
        t->at(2)->SetBlock(true);
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->DeleteRowsOrBlock();
        QCOMPARE(InteractionSeam::lastShown().text, QString("你确定要删除定义块内的材料行吗?"));
        QCOMPARE(names(t), QStringList({"材料2", "材料4"}));
        QCOMPARE(undo()->undoStack()->count(), 2);
    }

    void clearingKeepingAndClearingQuantities()
    {
        TestProject p;
        ZbrClGzfQdTable* t = list(p);
        for (int i = 0; i < 5; ++i)
            material(t, i + 1, QString("材料%1").arg(i), 10, i + 1);
        Page page(p.unit);
        InteractionSeam::pushAnswer(int(QMessageBox::No));
        page.grid()->ClearQuantitiesOrPrices(false, false);
        QCOMPARE(InteractionSeam::lastShown().text, QString("确定去除所有材料数量信息吗?"));
        QCOMPARE(t->at(4)->getDouble(9), 5.0);
        t->at(4)->SetBlock(true);
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->ClearQuantitiesOrPrices(true, true);
        QCOMPARE(InteractionSeam::lastShown().text, QString("确定去除定义块内的材料价格信息吗?"));
        QVERIFY(!t->at(4)->getValue(7).isValid());
        QCOMPARE(t->at(4)->getDouble(10), 0.0);
        QCOMPARE(t->at(3)->getDouble(7), 10.0);

        // 5 rows: nothing to remove, but the list is recalculated and the step recorded.
        const int steps = undo()->undoStack()->count();
        t->at(0)->setValue(10, 1.0); // a stale amount, outside any record
        page.grid()->KeepFirstRows(30);
        QCOMPARE(t->count(), 5);
        QCOMPARE(t->at(0)->getDouble(10), 10.0);
        QCOMPARE(undo()->undoStack()->count(), steps + 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("保留前30行,其余删除"));
        page.grid()->KeepFirstRows(3);
        QCOMPARE(t->count(), 3);
        QCOMPARE(undo()->undoStack()->undoText(), QString("保留前30行,其余删除"));
        InteractionSeam::setModalHook(
            [](QDialog* d) { static_cast<RowsCountInputDialog*>(d)->setRowsCount(2); });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        page.grid()->KeepFirstRowsAsked();
        QCOMPARE(t->count(), 2);
        QCOMPARE(undo()->undoStack()->undoText(), QString("保留前2行,其余删除"));
        InteractionSeam::setModalHook(
            [](QDialog* d) { static_cast<RowsCountInputDialog*>(d)->setRowsCount(0); });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        page.grid()->KeepFirstRowsAsked();
        QCOMPARE(t->count(), 2); // n = 0 removes nothing

        // Clearing all rows asks; "否" keeps them, "是" leaves one empty row fewer.
        InteractionSeam::pushAnswer(int(QMessageBox::No));
        page.grid()->ClearAllRows();
        QCOMPARE(t->count(), 2);
        const int before = undo()->undoStack()->count();
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->ClearAllRows();
        QCOMPARE(t->count(), 1);
        QVERIFY(ZbrClGzfQdBusiness::CheckIsEmptyRow(t->at(0)));
        QCOMPARE(undo()->undoStack()->count(), before + 1);
    }

    // Both versions keep their total row in a footer under the rows: scrolling either pane to
    // its end leaves the footer where it was, showing the total, level with the other's; the
    // longer list scrolls to its last row although the submitted one is shorter.
    void bothPanesKeepTheTotalInSight()
    {
        TestProject p;
        const QList<QPair<ConstructionWorks*, int>> versions = {{p.current, 40}, {p.submitted, 34}};
        for (const auto& [works, rows] : versions) {
            ZbrClGzfQdTable* t = works->getTenderInventory()->getZbrClGzfQdTable();
            for (int i = 0; i < rows; ++i)
                material(t, i + 1, QString("材料%1").arg(i), 10, i + 1);
            TestProject::row(t, 2, {{3, "合计"}, {10, 8200.0}});
        }
        Page page(p.unit);
        QVERIFY(page.widget.hasSsVersion());
        page.widget.resize(1000, 320);
        page.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page.widget));
        const QList<zTableView*> grids = {page.grid()->view(), page.widget.ssWidget()->view()};
        QList<int> footerTops;
        for (int g = 0; g < 2; ++g) {
            zTableView* grid = grids.at(g);
            const int total = versions.at(g).second;
            QCOMPARE(grid->footerRow(), total);
            QVERIFY(grid->isRowHidden(total));
            QTableView* footer = grid->footerView();
            QVERIFY(footer && footer->isVisible());
            const int top = grid->viewport()->geometry().bottom() + 1;
            QCOMPARE(footer->geometry().top(), top);
            grid->verticalScrollBar()->setValue(grid->verticalScrollBar()->maximum());
            QVERIFY(grid->verticalScrollBar()->maximum() > 0);
            QCOMPARE(footer->geometry().top(), top);
            QCOMPARE(footer->indexAt(QPoint(5, 5)).row(), total);
            // The last material row is in sight above the footer, not behind it.
            const int last = total - 1;
            QVERIFY2(grid->rowViewportPosition(last) >= 0 &&
                         grid->rowViewportPosition(last) + grid->rowHeight(last) <=
                             grid->viewport()->height(),
                     qPrintable(QString("grid %1: row at %2, rows %3 high")
                                    .arg(g)
                                    .arg(grid->rowViewportPosition(last))
                                    .arg(grid->viewport()->height())));
            footerTops << footer->mapTo(&page.widget, QPoint(0, 0)).y();
        }
        QCOMPARE(footerTops.at(0), footerTops.at(1));
    }

    // What the page shows around the grid: the delete key on the ribbon's delete entry, the
    // three-line colour legend, the audit grid's focused row, and no editor left open when
    // the page is hidden.
    void pageFurniture()
    {
        TestProject p;
        ZbrClGzfQdTable* t = list(p);
        for (int i = 0; i < 3; ++i)
            material(t, i + 1, QString("材料%1").arg(i), 10, i + 1);
        Page page(p.unit);
        QMenu* del = page.grid()->ribbonMenu("招投标-删除行");
        QVERIFY(del);
        QCOMPARE(del->actions().first()->shortcut(), QKeySequence(Qt::Key_Delete));

        auto* legend = page.grid()->findChild<QLabel*>("legend");
        QVERIFY(legend);
        QTextDocument doc;
        doc.setHtml(legend->text());
        QCOMPARE(doc.toPlainText().split('\n'),
                 QStringList({"说明：颜色配置方案：", "背景表示各单位工程暂估属性设置不一致",
                              "前景表示各单位工程调价不一致", "背景表示各单位工程产地等不一致"}));

        // The audit grid's focused row takes the skin's "SelectedRowTextColor".
        ZbrClGzfQdSsModel audit;
        zTableView auditView;
        auditView.LoadTableHeader("招标人材料购置费清单");
        auditView.setModel(&audit);
        audit.setTableSource(p.current, t);
        QAbstractItemModelTester tester(&audit,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QVariant plain = audit.data(audit.index(1, 1), Qt::ForegroundRole);
        audit.setFocusedRow(1);
        const QColor focused =
            SkinManager::getInstance()->getVXColor("SelectedRowTextColor", QColor(0, 0, 255));
        QCOMPARE(audit.data(audit.index(1, 1), Qt::ForegroundRole).value<QColor>(), focused);
        QCOMPARE(audit.data(audit.index(0, 1), Qt::ForegroundRole), plain);

        // Hiding the page commits and closes an open editor.
        page.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&page.widget));
        zTableView* view = page.grid()->view();
        const QModelIndex name = view->model()->index(0, view->columnOfField(3));
        view->setCurrentIndex(name);
        view->edit(name);
        QVERIFY(view->isEditing());
        page.widget.hide();
        QVERIFY(!view->isEditing());
    }

    void cancelledSummaryChangesNothing()
    {
        TestProject p;
        ZbrClGzfQdTable* t = list(p);
        material(t, 1, "电梯", 285000, 2);
        t->at(0)->loadValue(22, true);
        Page page(p.unit);
        InteractionSeam::pushAnswer(int(QDialog::Rejected));
        page.grid()->slotAcHzZgCl();
        QCOMPARE(InteractionSeam::lastShown().title, QString("选择"));
        QCOMPARE(names(t), QStringList{"电梯"});
        QVERIFY(t->at(0)->getValue(22).toBool());
        QCOMPARE(undo()->undoStack()->count(), 0);
    }

    void refreshReportsAndMarks()
    {
        TestProject p;
        ConstructionWorks* second = p.plain;
        // Three materials priced differently in the two unit projects, one alike.
        for (const char* name : {"钢筋", "水泥", "中砂"}) {
            unitMaterial(p.current, QString::fromUtf8(name), 100, 10);
            unitMaterial(second, QString::fromUtf8(name), 110, 5);
        }
        unitMaterial(p.current, "碎石", 120, 8);
        unitMaterial(second, "碎石", 120, 2);
        ZbrClGzfQdTable* t = list(p);
        for (const char* name : {"钢筋", "水泥", "中砂", "碎石", "电梯", "变压器"})
            material(t, t->count() + 1, QString::fromUtf8(name), 1, 1);
        Page page(p.unit);
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        // The bar stands over the main window at its fixed height while the report is shown.
        QWidget mainWindow;
        Communication::GetInstance()->SetMainWindow(&mainWindow);
        HostScreen::SetResolutionRatio(1.5);
        QWidget* barOwner = nullptr;
        int barHeight = 0;
        QSize dialogSize;
        InteractionSeam::setModalHook([&](QDialog* d) {
            dialogSize = d->size(); // fixed 280 by 220, scaled
            static_cast<SummarySelectionDialog*>(d)->choose(1);
        });
        InteractionSeam::setShownHook([&](const InteractionSeam::Shown& shown) {
            if (shown.kind == "information" && VXProgressBar::Current()) {
                barOwner = VXProgressBar::Current()->ownerWindow();
                barHeight = VXProgressBar::Current()->fixedHeight();
            }
        });
        page.grid()->slotAcSxZgCl();
        InteractionSeam::setShownHook(nullptr);
        HostScreen::SetResolutionRatio(0);
        Communication::GetInstance()->SetMainWindow(nullptr);
        QCOMPARE(barOwner, &mainWindow);
        QCOMPARE(barHeight, 186);
        QCOMPARE(dialogSize, QSize(420, 330));
        QVERIFY(!VXProgressBar::Current());
        QCOMPARE(InteractionSeam::lastShown().text,
                 QString("有3条材料在单位工程中的价格不统一(该类材料由定义块选中！)\n"
                         "有2条材料在单位工程中没有对应数据(该类材料固定列加有问号标记，双击?"
                         "号可以取消标注！)"));
        QCOMPARE(block(t), QList<int>({0, 1, 2}));
        QCOMPARE(t->at(4)->getValue(22).toBool(), true);
        QCOMPARE(t->at(5)->getValue(22).toBool(), true);
        QCOMPARE(t->at(3)->getDouble(9), 10.0); // quantities summed over the unit projects
        QCOMPARE(undo()->undoStack()->undoText(), QString("刷新所有工程材料"));
        QCOMPARE(ZbrClGzfQdSjWidget::RefreshReport(0, 0), QString());
        page.widget.resize(1100, 360);
        saveShot(&page.widget, "materials-refreshed");

        // A double-click on the mark dismisses it; a row without one changes nothing.
        page.grid()->ClearQuestionMark(0);
        QCOMPARE(undo()->undoStack()->count(), 1);
        page.grid()->ClearQuestionMark(4);
        QVERIFY(!t->at(4)->getValue(22).toBool());
        QCOMPARE(undo()->undoStack()->count(), 2);

        // Summarising starts from no marks and rebuilds the list from the unit projects.
        InteractionSeam::setModalHook(
            [](QDialog* d) { static_cast<SummarySelectionDialog*>(d)->choose(1); });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        // While the host rebuilds, the grid shows the former rows.
        const int former = t->count();
        BillModel* model = page.grid()->model();
        bool sawCopy = false;
        InteractionSeam::setShownHook([&](const InteractionSeam::Shown& shown) {
            if (shown.kind == "progress")
                sawCopy = model->table() != t && model->rowCount() == former;
        });
        page.grid()->slotAcHzZgCl();
        QVERIFY(sawCopy);
        QCOMPARE(model->table(), t);
        QCOMPARE(names(t), QStringList({"钢筋", "水泥", "中砂", "碎石", "合计"}));
        QCOMPARE(ZbrClGzfQdBusiness::GetBCzDyClCount(p.current), 0);
        QCOMPARE(undo()->undoStack()->undoText(), QString("汇总所有工程材料"));
        QVERIFY(undo()->Undo());
        QCOMPARE(t->count(), former);
    }
};

QTEST_MAIN(tst_ZbrClGzfQdPage)
#include "tst_ZbrClGzfQdPage.moc"
