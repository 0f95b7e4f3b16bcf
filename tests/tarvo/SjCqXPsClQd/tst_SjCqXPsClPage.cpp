#include "ModulePages.h"
#include "Screenshots.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "SjCqXPsClQd/SjCqXPsClSjWidget.h"
#include "SjCqXPsClQd/SjCqXPsClWidget.h"
#include "ZgClQd/PopupDialog/XHAndBMFactorDialog.h"
#include "common/BillModel.h"

#include "BusinessFaultInjection.h"
#include "InteractionSeam.h"
#include "OperatingUIInfo.h"
#include "ProcExceptionNew.h"
#include "SjCqXPsClBusiness.h"
#include "TenderDocument.h"
#include "TenderExchange.h"
#include "zTableView.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QUndoStack>
#include <QtTest>

#include <stdexcept>
#include <tuple>

// The evaluated-materials page: gathering, appending, refreshing, numbering, deleting and
// clearing with the unit projects kept in step, and undo of each.
class tst_SjCqXPsClPage : public QObject
{
    Q_OBJECT

    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    using Page = ModulePage<SjCqXPsClWidget, SjCqXPsClSjWidget>;

    static SjCqXPsClTable* list(TestProject& p)
    {
        return p.project->works(0, 1)->getTenderInventory()->getSjCqXPsClHzTable();
    }

    // A unit project's material: flags are 11 provisional, 16 evaluated, 17 owner-supplied.
    static BaseDataItem* line(ConstructionWorks* unit, const QString& name, double price,
                              double quantity, int flag, const QString& origin = "四川")
    {
        BaseDataItem* item = TestProject::row(unit->getRcjHzTable(), 1,
                                              {{3, name},
                                               {4, "规格"},
                                               {5, "t"},
                                               {7, price},
                                               {9, quantity},
                                               {12, origin},
                                               {13, "厂家"}});
        if (flag > 0)
            item->loadValue(flag, true);
        return item;
    }

    static QStringList names(GeneralTableBase* t)
    {
        QStringList values;
        for (BaseDataItem* item : t->items())
            if (item->getKind() == 1 && !item->getValueStr(3).isEmpty())
                values << item->getValueStr(3);
        return values;
    }

    static bool evaluatedIn(ConstructionWorks* unit, const QString& name)
    {
        for (BaseDataItem* item : unit->getRcjHzTable()->items())
            if (item->getValueStr(3) == name && item->getValue(16).toBool())
                return true;
        return false;
    }

    // Every value of every row of the list and both unit projects, for comparing states.
    static QStringList snapshot(TestProject& p)
    {
        QStringList rows;
        for (GeneralTableBase* t : {static_cast<GeneralTableBase*>(list(p)),
                                    static_cast<GeneralTableBase*>(p.current->getRcjHzTable()),
                                    static_cast<GeneralTableBase*>(p.plain->getRcjHzTable())}) {
            for (BaseDataItem* item : t->items()) {
                QStringList values{QString::number(item->getKind()),
                                   QString::number(item->IsBlock())};
                for (int f = 0; f < item->fieldCount(); ++f)
                    if (item->getValue(f).isValid())
                        values << QString("%1=%2").arg(f).arg(item->getValue(f).toString());
                rows << values.join('|');
            }
            rows << "--";
        }
        return rows;
    }

    static QStringList texts(const QMenu* menu)
    {
        QStringList list;
        for (const QAction* a : menu->actions())
            list << (a->isSeparator() ? QString("-") : a->text());
        return list;
    }

    // Runs a command, checks its undo label, undoes it and checks the state came back whole.
    void undoRestores(TestProject& p, const std::function<void()>& command, const QString& label)
    {
        const QStringList before = snapshot(p);
        command();
        QCOMPARE(undo()->undoStack()->undoText(), label);
        QVERIFY(snapshot(p) != before);
        QVERIFY(undo()->Undo());
        QCOMPARE(snapshot(p), before);
    }

    // Three evaluated materials, one provisional and one owner-supplied only; 水泥 is priced
    // differently in the two unit projects.
    static void fill(TestProject& p)
    {
        line(p.current, "钢筋", 4000, 2, 16);
        line(p.current, "水泥", 400, 10, 16);
        line(p.plain, "水泥", 450, 5, 0, "重庆");
        line(p.plain, "电缆", 30, 100, 16);
        line(p.current, "瓷砖", 80, 50, 11);
        line(p.plain, "防水卷材", 35, 20, 17);
        line(p.current, "铝合金窗", 500, 4, 17);
        line(p.plain, "铝合金窗", 520, 4, 0);
    }

private slots:
    void init() { beginScriptedSession(); }
    void cleanup() { endScriptedSession(); }

    // The shared materials menu with this page's own entries in their places.
    void contextMenuInItsOrder()
    {
        TestProject p;
        Page page(p.root);
        QCOMPARE(
            texts(page.grid()->contextMenu()),
            QStringList({"汇总工程所有材料", "追加工程所有暂估材料", "追加工程所有甲供材料",
                         "刷新材料价格、数量、金额", "清除问号标记", "重新生成材料序号及招标编码",
                         "根据招标约定对比整理投标需评审材料", "仅保留招标信息", "去除所有材料数量",
                         "去除所有材料价格", "去除定义块内材料数量", "去除定义块内材料价格",
                         "块定义", "排序", "插入行", "删除", "清除所有行"}));
    }

    void summariseTakesTheEvaluatedMaterialsWithoutAChoice()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        QSignalSpy pushed(undo(), &RURecordControl::signalRecordPushed);
        undoRestores(
            p,
            [&] {
                page.grid()->slotAcHzXPsCl();
                // No choice dialog: the progress bar is all that shows.
                QCOMPARE(InteractionSeam::shown().size(), 1);
                QCOMPARE(InteractionSeam::lastShown().kind, QString("progress"));
                QCOMPARE(InteractionSeam::lastShown().text,
                         QString("正在汇总工程所有需评审材料，请等待"));
                QCOMPARE(names(list(p)), QStringList({"钢筋", "水泥", "电缆"}));
                QCOMPARE(pushed.last().at(0).value<OperatingUIInfo>().operType, 10);
                // 水泥: 15 t over both unit projects at the price of the larger share.
                BaseDataItem* cement = list(p)->at(1);
                QCOMPARE(cement->getDouble(9), 15.0);
                QCOMPARE(cement->getDouble(7), 400.0);
                QCOMPARE(cement->getDouble(10), 6000.0);
                QCOMPARE(cement->getValue(1).toInt(), 2);
                QCOMPARE(SjCqXPsClBusiness::GetTjByzClCount(p.project->works(0, 1)), 1);
                QCOMPARE(list(p)->at(list(p)->count() - 1)->getKind(), 2);
            },
            "汇总工程所有需评审材料");
        // A new summary clears the marks of an earlier refresh.
        page.grid()->slotAcHzXPsCl();
        list(p)->at(0)->loadValue(22, true);
        page.grid()->slotAcHzXPsCl();
        QCOMPARE(SjCqXPsClBusiness::GetBCzDyClCount(p.project->works(0, 1)), 0);
        QVERIFY(RecentExceptionReports().isEmpty());
    }

    void appendingAddsOnlyWhatIsMissingAndReports()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        page.grid()->slotAcHzXPsCl();
        InteractionSeam::clear();
        page.grid()->slotAcZjZgCl();
        QCOMPARE(InteractionSeam::shown().at(0).text, QString("正在追加工程所有暂估材料，请等待"));
        QCOMPARE(names(list(p)), QStringList({"钢筋", "水泥", "电缆", "瓷砖"}));
        QCOMPARE(undo()->undoStack()->undoText(), QString("追加工程所有暂估材料"));
        QVERIFY(evaluatedIn(p.current, "瓷砖")); // the unit projects follow the list
        // Appending again adds nothing.
        page.grid()->slotAcZjZgCl();
        QCOMPARE(names(list(p)), QStringList({"钢筋", "水泥", "电缆", "瓷砖"}));

        // Owner-supplied materials: 铝合金窗 is priced differently, and so is 水泥 already.
        InteractionSeam::clear();
        page.grid()->slotAcZjJgCl();
        const QList<InteractionSeam::Shown> shown = InteractionSeam::shown();
        QCOMPARE(shown.size(), 2);
        QCOMPARE(shown.at(0).text, QString("正在追加工程所有甲供材料，请等待"));
        QCOMPARE(shown.at(1).kind, QString("information"));
        QCOMPARE(shown.at(1).text, MaterialSjWidget::RefreshReport(2, 0));
        QCOMPARE(names(list(p)),
                 QStringList({"钢筋", "水泥", "电缆", "瓷砖", "铝合金窗", "防水卷材"}));
        QStringList block;
        for (const BaseDataItem* item : list(p)->items())
            if (item->IsBlock())
                block << item->getValueStr(3);
        QCOMPARE(block, QStringList({"水泥", "铝合金窗"}));
        page.widget.resize(1200, 500);
        saveShot(&page.widget, "SjCqXPsClPage");
        QCOMPARE(undo()->undoStack()->undoText(), QString("追加工程所有甲供材料"));
        QVERIFY(undo()->Undo());
        QCOMPARE(names(list(p)), QStringList({"钢筋", "水泥", "电缆", "瓷砖"}));
        QVERIFY(!evaluatedIn(p.plain, "防水卷材"));

        undoRestores(
            p, [&] { page.grid()->slotAcZjJgCl(); }, "追加工程所有甲供材料");
    }

    void refreshMarksWhatTheUnitProjectsNoLongerHold()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        page.grid()->slotAcHzXPsCl();
        RcjHzTable* units = p.plain->getRcjHzTable();
        for (int i = units->count() - 1; i >= 0; --i)
            if (units->at(i)->getValueStr(3) == "电缆")
                units->BaseDataItemRemoveAt(i);
        undo()->ForgetHistory();
        InteractionSeam::clear();
        page.grid()->slotAcSxXPsCl();
        const QList<InteractionSeam::Shown> shown = InteractionSeam::shown();
        QCOMPARE(shown.at(0).text, QString("正在刷新材料价格、数量、金额，请等待"));
        QCOMPARE(shown.at(1).text, MaterialSjWidget::RefreshReport(1, 1));
        QVERIFY(list(p)->at(2)->getValue(22).toBool());
        QCOMPARE(page.grid()->model()->headerData(2, Qt::Vertical, 5256).toInt(), 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("刷新材料价格、数量、金额"));

        // One mark dismissed by a double-click, under its own label.
        undoRestores(
            p, [&] { page.grid()->ClearQuestionMark(2); }, "去除文号标记");
        undoRestores(
            p, [&] { page.grid()->slotAcQcWh(); }, "清除问号标记");
    }

    void numberingAndTenderCodes()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        page.grid()->slotAcHzXPsCl();
        InteractionSeam::setModalHook([](QDialog* d) {
            auto* dialog = static_cast<XHAndBMFactorDialog*>(d);
            dialog->codeGroup()->setChecked(true);
            dialog->prefixEdit()->setText("PS");
            dialog->startEdit()->setText("1");
            dialog->digitsEdit()->setText("3");
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        undoRestores(
            p,
            [&] {
                page.grid()->slotAcCxScXhBm();
                QCOMPARE(list(p)->at(2)->getValueStr(2), QString("PS003"));
            },
            "重新生成材料序号及招标编码");

        // Numbered after the tender's list: 电缆 and 钢筋 are listed there, 水泥 is not.
        QList<SjCqXPsClItem*> tender;
        for (const auto& [serial, code, name] :
             {std::tuple{"1", "ZB-01", "电缆"}, std::tuple{"2", "ZB-02", "钢筋"}}) {
            auto* row = new SjCqXPsClItem;
            TenderEvaluatedMaterial m;
            m.serial = serial;
            m.code = code;
            m.name = name;
            m.spec = "规格";
            m.unit = "t";
            TenderExchange::ToEvaluatedRow(m, row);
            tender << row;
        }
        p.project->SetGcZbXPsCl(p.project->GetSjId(), tender);
        undoRestores(
            p,
            [&] {
                page.grid()->slotAcDbZbQdScXh();
                QCOMPARE(list(p)->at(0)->getValue(1).toInt(), 2);
                QCOMPARE(list(p)->at(0)->getValueStr(2), QString("ZB-02"));
                QCOMPARE(list(p)->at(1)->getValue(1).toInt(), 3);
                QCOMPARE(list(p)->at(2)->getValue(1).toInt(), 1);
                QCOMPARE(list(p)->at(2)->getValueStr(2), QString("ZB-01"));
            },
            "对比材料招标清单生成相应序号");
        // The tender codes sort the list; a row without one stays after the sorted rows.
        page.grid()->slotAcDbZbQdScXh();
        page.grid()->Sort(MaterialSjWidget::ByTenderCode);
        QCOMPARE(names(list(p)), QStringList({"电缆", "钢筋", "水泥"}));
        QCOMPARE(undo()->undoStack()->undoText(), QString("排序.招标编码"));
    }

    void keepingTenderInformationOnly()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        page.grid()->slotAcHzXPsCl();
        undoRestores(
            p,
            [&] {
                page.grid()->slotAcJblZbXx();
                BaseDataItem* steel = list(p)->at(0);
                QCOMPARE(steel->getValueStr(3), QString("钢筋"));
                QCOMPARE(steel->getValueStr(12), QString("四川"));
                QVERIFY(!steel->getValue(7).isValid());
                QVERIFY(!steel->getValue(9).isValid());
                QVERIFY(!steel->getValue(10).isValid());
            },
            "仅保留招标信息");
    }

    void deletingCarriesTheChangeToTheUnitProjects()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        page.grid()->slotAcHzXPsCl();
        undo()->ForgetHistory();

        // One row: its material is no longer evaluated anywhere.
        page.focus(0);
        InteractionSeam::clear();
        undoRestores(
            p,
            [&] {
                page.grid()->DeleteRowsOrBlock();
                QVERIFY(!evaluatedIn(p.current, "钢筋"));
                QVERIFY(evaluatedIn(p.current, "水泥"));
                QCOMPARE(InteractionSeam::lastShown().text,
                         QString("正在同步需评审材料到子工程，请等待"));
            },
            "删除行");

        // A block: asked first, then synchronised and topped up with empty rows.
        list(p)->at(1)->SetBlock(true);
        list(p)->at(2)->SetBlock(true);
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        undoRestores(
            p,
            [&] {
                page.grid()->DeleteRowsOrBlock();
                QCOMPARE(names(list(p)), QStringList({"钢筋"}));
                QVERIFY(!evaluatedIn(p.current, "水泥"));
                QVERIFY(!evaluatedIn(p.plain, "电缆"));
                QCOMPARE(list(p)->count(), SjCqXPsClBusiness::MinimumRows + 1);
            },
            "删除行");
    }

    void clearingAllRowsLeavesEmptyRowsAfterTheSynchronisation()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        page.grid()->slotAcHzXPsCl();
        undo()->ForgetHistory();
        InteractionSeam::pushAnswer(int(QMessageBox::No));
        page.grid()->ClearAllRows();
        QCOMPARE(names(list(p)).size(), 3);
        QCOMPARE(undo()->undoStack()->count(), 0);

        InteractionSeam::clear();
        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        undoRestores(
            p,
            [&] {
                page.grid()->ClearAllRows();
                QCOMPARE(InteractionSeam::shown().at(0).text, QString("你确定清除所有行内容吗?"));
                QCOMPARE(InteractionSeam::shown().at(1).text,
                         QString("正在同步需评审材料到子工程，请等待"));
                QVERIFY(names(list(p)).isEmpty());
                QCOMPARE(list(p)->count(), SjCqXPsClBusiness::MinimumRows + 1);
                for (const char* name : {"钢筋", "水泥"})
                    QVERIFY(!evaluatedIn(p.current, name));
            },
            "清除所有行");
    }

    void aFailingHostCallLeavesEverythingAsItWas()
    {
        TestProject p;
        fill(p);
        Page page(p.root);
        page.grid()->slotAcHzXPsCl();
        const QStringList before = snapshot(p);
        const int steps = undo()->undoStack()->count();
        BusinessFaultInjection::setFault([] { throw std::runtime_error("主机故障"); });
        page.grid()->slotAcZjJgCl();
        BusinessFaultInjection::clear();
        QCOMPARE(RecentExceptionReports().size(), 1);
        QCOMPARE(undo()->undoStack()->count(), steps);
        QCOMPARE(snapshot(p), before);
        QCOMPARE(page.grid()->model()->rowCount(), list(p)->count());
    }
};

QTEST_MAIN(tst_SjCqXPsClPage)
#include "tst_SjCqXPsClPage.moc"
