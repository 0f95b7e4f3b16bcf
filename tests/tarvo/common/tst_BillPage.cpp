#include "ModulePages.h"
#include "Screenshots.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "GfQd/GfQdModel.h"
#include "GfQd/GfQdWidget.h"
#include "QtXmQd/QtXmQdModel.h"
#include "QtXmQd/QtXmQdWidget.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"
#include "common/BillSjWidget.h"
#include "common/BillSsWidget.h"
#include "common/MaterialListModel.h"

#include "AuditBusiness.h"
#include "BusinessFaultInjection.h"
#include "Communication.h"
#include "FyBlBusiness.h"
#include "InteractionSeam.h"
#include "MsgExplain.h"
#include "ProcExceptionNew.h"
#include "SkinManager.h"
#include "zTableView.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QTextDocument>
#include <QUndoStack>
#include <QtTest>

namespace {
QStringList g_log;
void captureLog(QtMsgType, const QMessageLogContext&, const QString& text)
{
    g_log << text;
}
} // namespace

// The anatomy every bill page shares, told on the other items page, plus the display rules
// of the pages whose cells carry them.
class tst_BillPage : public QObject
{
    Q_OBJECT

private:
    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    static void fillOtherItems(ConstructionWorks* works)
    {
        FyBlBusiness::GetInstance()->setValue(works, "分部分项工程费", 100000.0);
        QtXmQdHzTable* t = works->getTenderInventory()->getQtXmQdHzTable();
        TestProject::row(t, 0, {{1, "1"}, {2, "暂列金额"}, {3, 50000.0}});
        TestProject::row(t, 2, {{1, "2"}, {2, "暂估价"}});
        TestProject::row(t, 0, {{1, "2.1"}, {2, "专业工程暂估价"}, {3, 20000.0}});
        TestProject::row(t, 3,
                         {{1, "3"}, {2, "总承包服务费"}, {3, "分部分项工程费*0.015"}, {6, 1500.0}});
        TestProject::row(t, 1, {});
        TestProject::row(t, 4, {{2, "合计"}, {3, 71500.0}});
    }

    static void load(BillPageWidget& page, ProTreeNode* node, int id = 74)
    {
        QVariant payload = QVariant::fromValue(node);
        page.ProcMsg(id, &payload);
        attachModelTesters(&page);
    }

    static QModelIndex cell(BillModel* model, int row, int field)
    {
        return model->index(row, model->columnOfField(field));
    }

private slots:
    void init() { beginScriptedSession(); }
    void cleanup() { endScriptedSession(); }

    void submittedGridOnlyForNodesThatHaveOne()
    {
        TestProject p;
        QtXmQdWidget page;
        load(page, p.plainUnit);
        QVERIFY(!page.ssWidget());
        QVERIFY(page.ssHolder()->layout() == nullptr); // the holder stays empty
        load(page, p.unit);
        QVERIFY(page.ssWidget());
        QVERIFY(page.audit()->isOpen());
        fillOtherItems(p.current);
        TestProject::row(p.submitted->getTenderInventory()->getQtXmQdHzTable(), 0,
                         {{1, "1"}, {2, "暂列金额"}, {3, 45000.0}});
        load(page, p.unit);
        QCOMPARE(page.ssWidget()->model()->rowCount(), 1);
        QCOMPARE(page.audit()->rowState(0), AuditBusiness::Changed);
        QCOMPARE(page.audit()->rowState(1), AuditBusiness::Added);
    }

    void closingAProjectReleasesItsRowsOnly()
    {
        auto closing = std::make_unique<TestProject>();
        TestProject other;
        fillOtherItems(closing->current);
        fillOtherItems(closing->submitted);
        fillOtherItems(other.current);
        QtXmQdWidget shown, kept;
        load(shown, closing->unit);
        load(kept, other.unit);
        QVERIFY(shown.ssWidget() && shown.ssWidget()->table());
        QCOMPARE(shown.sjWidget()->model()->rowCount(), 6);

        closing.reset(); // the host closes the project and frees its rows
        QVERIFY(!shown.sjWidget()->node());
        QVERIFY(!shown.sjWidget()->table());
        QVERIFY(!shown.audit()->tableSource());
        QVERIFY(!shown.ssWidget()->table());
        QCOMPARE(shown.sjWidget()->model()->rowCount(), 0);
        QCOMPARE(shown.ssWidget()->model()->rowCount(), 0);
        QVariant none;
        shown.ProcMsg(41, &none); // a refresh reads nothing that is gone
        QCOMPARE(shown.sjWidget()->model()->rowCount(), 0);
        QCOMPARE(kept.sjWidget()->model()->rowCount(), 6); // another project stays shown
        QCOMPARE(kept.sjWidget()->table(), other.current->getTenderInventory()->getQtXmQdHzTable());
    }

    void nodeOfAnotherTypeIsLoggedAndIgnored()
    {
        TestProject p;
        fillOtherItems(p.current);
        QtXmQdWidget page;
        load(page, p.unit);
        QCOMPARE(page.sjWidget()->model()->rowCount(), 6);
        g_log.clear();
        QtMessageHandler previous = qInstallMessageHandler(captureLog);
        load(page, p.single, 79);
        qInstallMessageHandler(previous);
        QVERIFY(g_log.contains("节点类型错误！node: 教学楼, type: 1, code: 79"));
        QCOMPARE(page.sjWidget()->table(), p.current->getTenderInventory()->getQtXmQdHzTable());
        QCOMPARE(page.sjWidget()->model()->rowCount(), 6);
    }

    void unitWithoutDataGivesAnEmptyGrid()
    {
        TestProject p;
        fillOtherItems(p.current);
        ProTreeNode* bare =
            p.project->AddNode(p.single, 9, ProTreeNode::WorksNode, "无数据单位工程");
        QtXmQdWidget page;
        load(page, p.unit);
        load(page, bare);
        QCOMPARE(page.sjWidget()->model()->rowCount(), 0);
        QVERIFY(!page.audit()->tableSource());
    }

    // An amount typed is one step and the total follows; letters are refused without a step,
    // and an empty amount is taken.
    void cellEditIsOneUndoStepOrRefused()
    {
        TestProject p;
        fillOtherItems(p.current);
        QtXmQdWidget page;
        load(page, p.unit);
        BillModel* model = page.sjWidget()->model();
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        QVERIFY(model->setData(cell(model, 0, 3), "五万元"));
        QCOMPARE(InteractionSeam::lastShown().text, QString("请正确输入实数或计算表达式!"));
        QCOMPARE(t->at(0)->getDouble(3), 50000.0);
        QCOMPARE(undo()->undoStack()->count(), 0);

        QVERIFY(model->setData(cell(model, 0, 3), "60000"));
        QCOMPARE(t->at(0)->getDouble(3), 60000.0);
        QCOMPARE(t->at(5)->getDouble(3), 81500.0); // the total follows
        QCOMPARE(undo()->undoStack()->count(), 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("修改其他项目清单行"));
        QVERIFY(p.project->isProjectWorkChanged());
        QVERIFY(undo()->Undo());
        QCOMPARE(t->at(0)->getDouble(3), 50000.0);
        QCOMPARE(t->at(5)->getDouble(3), 71500.0);

        // A new empty row becomes an ordinary row with its first edit.
        QVERIFY(model->setData(cell(model, 4, 2), "计日工"));
        QCOMPARE(t->at(4)->getKind(), 0);
        InteractionSeam::clear();
        QVERIFY(model->setData(cell(model, 0, 3), ""));
        QVERIFY(InteractionSeam::shown().isEmpty());
        QCOMPARE(undo()->undoStack()->count(), 2);
    }

    void typingIntoTheGridCommitsThroughTheModel()
    {
        TestProject p;
        fillOtherItems(p.current);
        QtXmQdWidget page;
        page.resize(900, 500);
        page.show();
        load(page, p.unit);
        zTableView* view = page.sjWidget()->view();
        BillModel* model = page.sjWidget()->model();
        const QModelIndex amount = cell(model, 2, 3);
        view->setCurrentIndex(amount);
        view->edit(amount);
        auto* editor = view->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, "25000*2");
        // What the delegate does when the user confirms the cell.
        emit view->itemDelegate()->commitData(editor);
        // An ordinary row keeps what the expression comes to; its subtotal follows.
        QCOMPARE(p.current->getTenderInventory()->getQtXmQdHzTable()->at(2)->getValue(3),
                 QVariant(50000.0));
        QCOMPARE(p.current->getTenderInventory()->getQtXmQdHzTable()->at(1)->getDouble(3), 50000.0);
        QCOMPARE(view->currentIndex().row(), 2); // the user keeps their place
        QCOMPARE(undo()->undoStack()->count(), 1);
    }

    void spreadsheetBlockPastesAsOneUndoStep()
    {
        TestProject p;
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        for (int r = 0; r < 4; ++r)
            TestProject::row(t, 0, {{1, QString::number(r + 1)}, {2, "旧"}, {3, 1.0}});
        TestProject::row(t, 4, {{2, "合计"}, {3, 4.0}});
        QtXmQdWidget page;
        page.resize(900, 500);
        page.show();
        load(page, p.unit);
        zTableView* view = page.sjWidget()->view();
        BillModel* model = page.sjWidget()->model();
        // Three rows of four cells as a spreadsheet copies them (CRLF, last line break),
        // from the 名称 cell of the second row on: 名称, the next two columns, 金额's neighbour.
        const int first = model->columnOfField(2);
        view->setCurrentIndex(model->index(1, first));
        const QString block = "甲\t项\t100\t备一\r\n乙\t个\t200\t备二\r\n丙\tm\t300\t备三\r\n";
        view->pasteText(block);
        QCOMPARE(undo()->undoStack()->count(), 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("修改其他项目清单行"));
        const QStringList names = {"甲", "乙", "丙"};
        for (int r = 0; r < 3; ++r) {
            QCOMPARE(t->at(r + 1)->getValueStr(2), names.at(r));
            QCOMPARE(t->at(r + 1)->getDouble(3), 100.0 * (r + 1));
            QCOMPARE(model->index(r + 1, first + 3).data().toString(),
                     "备" + QString("一二三").mid(r, 1));
        }
        QCOMPARE(t->at(0)->getValueStr(2), QString("旧")); // above the block: untouched
        QCOMPARE(t->at(4)->getDouble(3), 601.0);           // the total follows, once
        saveShot(&page, "pasted-block");
        QVERIFY(undo()->Undo());
        for (int r = 0; r < 4; ++r)
            QCOMPARE(t->at(r)->getValueStr(2), QString("旧"));
        QCOMPARE(t->at(4)->getDouble(3), 4.0);

        // A block running past the last row or into the total row leaves those out.
        undo()->ForgetHistory();
        view->setCurrentIndex(model->index(3, model->columnOfField(3)));
        view->pasteText("7\n8\n9");
        QCOMPARE(t->at(3)->getDouble(3), 7.0);
        QCOMPARE(t->at(4)->getDouble(3), 10.0);
        // A value that is refused pastes nothing.
        view->setCurrentIndex(model->index(0, model->columnOfField(3)));
        view->pasteText("5\n五万元");
        QCOMPARE(InteractionSeam::lastShown().text, QString("请正确输入实数或计算表达式!"));
        QCOMPARE(t->at(0)->getDouble(3), 1.0);
        QCOMPARE(undo()->undoStack()->count(), 1);

        // One value goes into every selected cell.
        view->selectionModel()->select(
            QItemSelection(model->index(0, first), model->index(2, first)),
            QItemSelectionModel::ClearAndSelect);
        view->pasteText("同名\n");
        for (int r = 0; r < 3; ++r)
            QCOMPARE(t->at(r)->getValueStr(2), QString("同名"));
        QCOMPARE(undo()->undoStack()->count(), 2);

        // Ctrl+C gives the selection back as tab-separated lines; Ctrl+V reads them again.
        view->selectionModel()->select(
            QItemSelection(model->index(0, first), model->index(1, model->columnOfField(3))),
            QItemSelectionModel::ClearAndSelect);
        const QString copied = view->selectionText();
        QCOMPARE(copied.count('\n'), 1);
        QCOMPARE(copied.section('\n', 0, 0).section('\t', 0, 0), QString("同名"));
        QCOMPARE(zTableView::parseCellBlock(copied).size(), 2);
        QCOMPARE(zTableView::parseCellBlock("\"a\tb\"\"c\"\td\n").value(0),
                 QStringList({"a\tb\"c", "d"}));
    }

    void submittedHolderKeepsItsPlace()
    {
        TestProject p;
        QtXmQdWidget page;
        page.resize(1000, 500);
        page.show();
        load(page, p.plainUnit);
        QVERIFY(page.ssHolder()->isVisible());
        QCOMPARE(page.ssHolder()->width(), 200);
        load(page, p.unit);
        QVERIFY(page.ssWidget()->isVisible());
        QVERIFY(page.ssHolder()->width() > 400); // side by side, half each
        auto* title = page.sjWidget()->findChild<QLabel*>("sjTitle");
        QVERIFY(title && title->isVisible() && title->text().contains("与送审版本不同"));
        // The swatch is drawn: a run of blanks that rich text keeps, in the difference colour.
        QTextDocument doc;
        doc.setHtml(title->text());
        const QColor difference =
            SkinManager::getInstance()->getVXColor("Xxj_BgSsGjzYs", QColor(255, 242, 204));
        int swatch = 0;
        for (QTextBlock b = doc.begin(); b.isValid(); b = b.next())
            for (auto it = b.begin(); !it.atEnd(); ++it)
                if (it.fragment().charFormat().background().color() == difference)
                    swatch += it.fragment().length();
        QVERIFY2(swatch >= 4, qPrintable(title->text()));
        for (int c = 0; c < page.sjWidget()->model()->columnCount(); ++c)
            QCOMPARE(page.sjWidget()->view()->columnWidth(c),
                     page.ssWidget()->view()->columnWidth(c));
        load(page, p.plainUnit);
        QVERIFY(page.ssHolder()->isVisible());
        QVERIFY(!page.ssWidget()->isVisible()); // another node's submitted rows are not shown
        QVERIFY(!title->isVisible());
    }

    void otherItemsDisplayRules()
    {
        TestProject p;
        fillOtherItems(p.current);
        QtXmQdWidget page;
        load(page, p.unit);
        BillModel* model = page.sjWidget()->model();
        QCOMPARE(model->data(cell(model, 0, 3), Qt::TextAlignmentRole).toInt(), 130);
        QCOMPARE(model->data(cell(model, 0, 1), Qt::TextAlignmentRole).toInt(), 132);
        QCOMPARE(model->data(cell(model, 0, 2), Qt::TextAlignmentRole).toInt(), 129);
        QCOMPARE(model->data(cell(model, 5, 2), Qt::TextAlignmentRole).toInt(), 132);
        QCOMPARE(model->data(cell(model, 1, 2), Qt::BackgroundRole).value<QColor>(),
                 QColor(255, 236, 255));
        QCOMPARE(model->data(cell(model, 3, 3), Qt::BackgroundRole).value<QColor>(),
                 QColor(217, 217, 217));
        QCOMPARE(model->data(cell(model, 3, 3), Qt::EditRole).toString(),
                 QString("分部分项工程费*0.015"));
        QCOMPARE(model->data(cell(model, 0, 2), Qt::FontRole).value<QFont>().family(),
                 QString("SimSun"));
        QCOMPARE(int(model->flags(cell(model, 5, 3))), 33); // total row
        QCOMPARE(int(model->flags(cell(model, 0, 3))), 35);
        QVERIFY(!model->setData(cell(model, 5, 2), "合计行")); // the total row is never edited
        p.current->getTenderInventory()->getQtXmQdHzTable()->SetReadOnlyLocked(true);
        QCOMPARE(int(model->flags(cell(model, 0, 3))), 33);
        // The model itself refuses a locked table, whoever writes (a paste, a delegate).
        QVERIFY(!model->setData(cell(model, 0, 3), "1"));
        QCOMPARE(p.current->getTenderInventory()->getQtXmQdHzTable()->at(0)->getDouble(3), 50000.0);
        p.current->getTenderInventory()->getQtXmQdHzTable()->SetReadOnlyLocked(false);
        p.project->SetDqdZdSd(true);
        QCOMPARE(int(model->flags(cell(model, 0, 3))), 33);
        QVERIFY(!model->setData(cell(model, 0, 2), "改名"));
        QCOMPARE(undo()->undoStack()->count(), 0);
    }

    void rowMovesAreRecordedAndRefusedAtTheTotal()
    {
        TestProject p;
        fillOtherItems(p.current);
        QtXmQdWidget page;
        load(page, p.unit);
        QtXmQdHzTable* t = p.current->getTenderInventory()->getQtXmQdHzTable();
        BaseDataItem* first = t->at(0);
        zTableView* view = page.sjWidget()->view();
        page.sjWidget()->slotMouseMoveRows(0, 2, false); // still dragging: offered
        QCOMPARE(t->at(0), first);
        QCOMPARE(view->moveTarget(), 2);
        QVERIFY(view->moveAllowed());
        QCOMPARE(view->viewport()->cursor().shape(), Qt::DragMoveCursor);
        page.sjWidget()->slotMouseMoveRows(0, 5, false); // over the total row: refused
        QCOMPARE(view->moveTarget(), 5);
        QVERIFY(!view->moveAllowed());
        QCOMPARE(view->viewport()->cursor().shape(), Qt::ForbiddenCursor);
        page.sjWidget()->slotMouseMoveRows(0, 5, true); // onto the total row
        QCOMPARE(view->moveTarget(), -1);               // the drag is over
        QCOMPARE(t->at(0), first);
        QCOMPARE(undo()->undoStack()->count(), 0);
        page.sjWidget()->slotMouseMoveRows(0, 2, true);
        QCOMPARE(t->at(2), first);
        QCOMPARE(undo()->undoStack()->undoText(), QString("其他项目清单移动行"));
        QVERIFY(undo()->Undo());
        QCOMPARE(t->at(0), first);
    }

    void ribbonStatesFollowTheFocusedRow()
    {
        TestProject p;
        fillOtherItems(p.current);
        QtXmQdWidget page;
        load(page, p.unit);
        QSignalSpy sent(Communication::GetInstance(), &Communication::signalMsg);
        page.sjWidget()->ChangeDelAndInsAcState(5);
        QCOMPARE(sent.count(), 2);
        for (const QList<QVariant>& call : sent) {
            QCOMPARE(call.at(1).toInt(), 47);
            QCOMPARE(call.at(2).value<MsgExplain::ToChangeMenuItemInfo>().nState, 3);
        }
        QCOMPARE(sent.at(0).at(2).value<MsgExplain::ToChangeMenuItemInfo>().strText,
                 QString("招投标-删除行"));
        QCOMPARE(sent.at(1).at(2).value<MsgExplain::ToChangeMenuItemInfo>().strText,
                 QString("插入行"));
        sent.clear();
        page.sjWidget()->ChangeDelAndInsAcState(-1);
        p.current->getTenderInventory()->getQtXmQdHzTable()->SetReadOnlyLocked(true);
        page.sjWidget()->ChangeDelAndInsAcState(1);
        QCOMPARE(sent.count(), 0);
    }

    void businessFailureIsReportedAndThePageGoesOn()
    {
        TestProject p;
        fillOtherItems(p.current);
        QtXmQdWidget page;
        load(page, p.unit);
        BillModel* model = page.sjWidget()->model();
        BusinessFaultInjection::setFault([] { throw std::runtime_error("数据库连接已断开"); });
        QVERIFY(!model->setData(cell(model, 0, 3), "1")); // failed: the view keeps the edit

        const QList<ExceptionReport> reports = RecentExceptionReports();
        QCOMPARE(reports.size(), 1);
        QCOMPARE(reports.first().what, QString("数据库连接已断开"));
        // The record was closed and the page still works.
        BusinessFaultInjection::setFault([] { throw "C string"; });
        QVERIFY(!model->setData(cell(model, 0, 3), "2"));
        BusinessFaultInjection::setFault([] { throw 42; });
        QVERIFY(!model->setData(cell(model, 0, 3), "3"));
        QCOMPARE(RecentExceptionReports().at(1).what, QString("C string"));
        QCOMPARE(RecentExceptionReports().at(2).what, QString("未知异常"));
        QVERIFY(model->setData(cell(model, 0, 3), "70000"));
        QCOMPARE(p.current->getTenderInventory()->getQtXmQdHzTable()->at(0)->getDouble(3), 70000.0);
    }

    void feeRateDisplay_data()
    {
        QTest::addColumn<QVariant>("rate");
        QTest::addColumn<QString>("shown");
        QTest::newRow("zero") << QVariant(0.0) << QString();
        QTest::newRow("positive") << QVariant(3.41) << QString("3.41%");
        QTest::newRow("already percent") << QVariant(QString("3.41%")) << QString("3.41%");
        QTest::newRow("negative") << QVariant(-1.5) << QString("-1.5");
        QTest::newRow("empty") << QVariant(QString()) << QString();
        QTest::newRow("text") << QVariant(QString("按实")) << QString("按实");
    }

    void feeRateDisplay()
    {
        QFETCH(QVariant, rate);
        QFETCH(QString, shown);
        QCOMPARE(GfQdModel::rateText(rate), shown);
    }

    void materialsDisplayAndExpressions()
    {
        TestProject p;
        ZbrClGzfQdTable* t = p.current->getTenderInventory()->getZbrClGzfQdTable();
        TestProject::row(t, 1, {{1, 1}, {3, "电梯"}, {7, 285000.0}, {9, 0.0}, {22, true}});
        TestProject::row(t, 2, {{3, "合计"}});
        ZbrClGzfQdWidget page;
        load(page, p.unit);
        BillModel* model = page.sjWidget()->model();
        QAbstractItemModelTester tester(model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model->data(cell(model, 0, 9)).toString(), QString()); // zero quantity is blank
        QCOMPARE(model->headerData(0, Qt::Vertical, MaterialListModel::IconShownRole).toInt(), 1);
        QVERIFY(model->headerData(0, Qt::Vertical, MaterialListModel::IconImageRole)
                    .toByteArray()
                    .contains("<svg"));
        QVERIFY(!model->headerData(1, Qt::Vertical, MaterialListModel::IconShownRole).isValid());
        QVERIFY(model->setData(cell(model, 0, 9), "2*3.5"));
        QCOMPARE(t->at(0)->getDouble(9), 7.0);
        QCOMPARE(t->at(0)->getDouble(10), 1995000.0);
        QCOMPARE(undo()->undoStack()->undoText(), QString("修改招标人材料购置费清单行"));
        QVERIFY(model->setData(cell(model, 0, 7), "abc"));
        QCOMPARE(t->at(0)->getDouble(7), 285000.0);
        QCOMPARE(int(model->flags(cell(model, 1, 3))), 33);
    }
};

QTEST_MAIN(tst_BillPage)
#include "tst_BillPage.moc"
