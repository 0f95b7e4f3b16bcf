#include "ModulePages.h"
#include "ScriptedSession.h"
#include "TestProject.h"

#include "ZgClQd/PopupDialog/XHAndBMFactorDialog.h"
#include "ZgClQd/ZgClQdSjWidget.h"
#include "ZgClQd/ZgClQdWidget.h"
#include "common/BillModel.h"

#include "Communication.h"
#include "InteractionSeam.h"
#include "MsgExplain.h"
#include "ZgClQdBusiness.h"
#include "zTableView.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QUndoStack>
#include <QtTest>

// The provisional materials page: gathering the unit projects' provisional materials, the
// refresh report, numbering, properties set for every unit project, and the keep menu.
class tst_ZgClQdPage : public QObject
{
    Q_OBJECT

    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    using Page = ModulePage<ZgClQdWidget, ZgClQdSjWidget>;

    static ZgjClHzTable* list(TestProject& p)
    {
        return p.project->works(0, 1)->getTenderInventory()->getZgjClHzTable();
    }

    static BaseDataItem* unitLine(ConstructionWorks* unit, const QString& name, double price,
                                  const QString& origin = "四川", bool provisional = true)
    {
        return TestProject::row(
            unit->getRcjHzTable(), 1,
            {{3, name}, {4, ""}, {5, "t"}, {7, price}, {9, 2.0}, {11, provisional}, {12, origin}});
    }

    static QStringList column(GeneralTableBase* t, int field)
    {
        QStringList values;
        for (BaseDataItem* item : t->items())
            if (item->getKind() == 1)
                values << item->getValueStr(field);
        return values;
    }

    static int columnOf(BillModel* model, int field)
    {
        for (int c = 0; c < model->columnCount(); ++c)
            if (model->fieldOfColumn(c) == field)
                return c;
        return -1;
    }

private slots:
    void init() { beginScriptedSession(); }
    void cleanup() { endScriptedSession(); }

    void activationAnnouncesTheRibbonAndTheTenderItems()
    {
        TestProject p;
        Page page(p.root);
        QSignalSpy sent(Communication::GetInstance(), &Communication::signalMsg);
        QVariant none;
        page.widget.ProcMsg(12, &none);
        QStringList states;
        bool ribbon = false;
        for (const QList<QVariant>& m : sent) {
            if (m.at(0).toInt() != 4)
                continue;
            if (m.at(1).toInt() == 15)
                ribbon = m.at(2).toString() == "XiangMu-ZanGuCaiLiaoQingDan.json";
            if (m.at(1).toInt() == 47) {
                const auto info = m.at(2).value<MsgExplain::ToChangeMenuItemInfo>();
                states << info.strText + "=" + QString::number(info.nState);
            }
        }
        QVERIFY(ribbon);
        QVERIFY(states.contains("查看招标暂估材料=0"));
        QVERIFY(states.contains("对应整理投标暂估材料=0"));
        p.project->SetDqdZdSd(true);
        sent.clear();
        page.widget.ProcMsg(12, &none);
        bool lockedState = false;
        for (const QList<QVariant>& m : sent)
            if (m.at(1).toInt() == 47) {
                const auto info = m.at(2).value<MsgExplain::ToChangeMenuItemInfo>();
                lockedState |= info.strText == "对应整理投标暂估材料" && info.nState == 3;
            }
        QVERIFY(lockedState);
    }

    void summariseThenRefreshReportsBothKinds()
    {
        TestProject p;
        const QStringList names = {"钢筋", "水泥", "碎石", "中砂", "砌块", "电缆", "涂料"};
        for (const QString& name : names)
            unitLine(p.current, name, 100);
        Page page(p.root);
        QSignalSpy pushed(undo(), &RURecordControl::signalRecordPushed);
        page.grid()->slotAcHzZgCl();
        QCOMPARE(InteractionSeam::lastShown().kind, QString("progress"));
        QCOMPARE(InteractionSeam::lastShown().title, QString("提示"));
        QCOMPARE(InteractionSeam::lastShown().text, QString("正在汇总工程所有暂估材料，请等待"));
        QCOMPARE(column(list(p), 3), names);
        QCOMPARE(page.grid()->model()->rowCount(), names.size() + 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("汇总工程所有暂估材料"));
        QCOMPARE(pushed.last().at(0).value<OperatingUIInfo>().operType, 10);

        // Three prices come to differ, two materials vanish from the unit projects.
        for (const char* name : {"水泥", "中砂", "涂料"})
            unitLine(p.plain, name, 120);
        RcjHzTable* units = p.current->getRcjHzTable();
        for (const QString name : {"碎石", "电缆"})
            for (int i = 0; i < units->count(); ++i)
                if (units->at(i)->getValue(3).toString() == name)
                    units->BaseDataItemRemoveAt(i);
        InteractionSeam::clear();
        page.grid()->slotAcSxZgCl();
        const QList<InteractionSeam::Shown> shown = InteractionSeam::shown();
        QCOMPARE(shown.size(), 2);
        QCOMPARE(shown.at(0).text, QString("正在汇总工程所有暂估材料，请等待"));
        QCOMPARE(shown.at(1).kind, QString("information"));
        QCOMPARE(shown.at(1).text, MaterialSjWidget::RefreshReport(3, 2));
        QCOMPARE(shown.at(1).size, QSize(360, 140));
        QStringList block, marked;
        for (const BaseDataItem* item : list(p)->items()) {
            if (item->IsBlock())
                block << item->getValue(3).toString();
            if (item->getValue(22).toBool())
                marked << item->getValue(3).toString();
        }
        QCOMPARE(block, QStringList({"水泥", "中砂", "涂料"}));
        QCOMPARE(marked, QStringList({"碎石", "电缆"}));
        QCOMPARE(page.grid()->model()->headerData(2, Qt::Vertical, 5256).toInt(), 1);
        QCOMPARE(undo()->undoStack()->undoText(), QString("刷新材料价格、数量、金额"));
        const int cement = columnOf(page.grid()->model(), 7);
        QCOMPARE(page.grid()->model()->index(1, cement).data(Qt::ForegroundRole).isValid(), true);

        // Double-clicking one mark dismisses it; the command clears the rest.
        page.grid()->ClearQuestionMark(2);
        QVERIFY(!list(p)->at(2)->getValue(22).toBool());
        page.grid()->slotAcQcWh();
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(p.project->works(0, 1)), 0);
        QCOMPARE(undo()->undoStack()->undoText(), QString("清除文号号标记"));

        // Undo step by step: marks, the single mark, the refresh.
        QVERIFY(undo()->Undo());
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(p.project->works(0, 1)), 1);
        QVERIFY(undo()->Undo());
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(p.project->works(0, 1)), 2);
        QVERIFY(undo()->Undo());
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(p.project->works(0, 1)), 0);
        QCOMPARE(ZgClQdBusiness::GetTjByzClCount(p.project->works(0, 1)), 0);
    }

    void refreshReportsOnlyWhatThereIs()
    {
        TestProject p;
        unitLine(p.current, "钢筋", 100);
        unitLine(p.current, "水泥", 100);
        Page page(p.root);
        page.grid()->slotAcHzZgCl();
        list(p)->at(1)->SetBlock(true);
        InteractionSeam::clear();
        page.grid()->slotAcSxZgCl();
        QCOMPARE(InteractionSeam::shown().size(), 1); // the progress bar only
        QVERIFY(list(p)->at(1)->IsBlock());           // the block stays as it was

        p.current->getRcjHzTable()->BaseDataItemRemoveAt(0);
        InteractionSeam::clear();
        page.grid()->slotAcSxZgCl();
        QCOMPARE(InteractionSeam::lastShown().text, MaterialSjWidget::RefreshReport(0, 1));
        QVERIFY(!InteractionSeam::lastShown().size.isValid()); // the default size
        QVERIFY(list(p)->at(1)->IsBlock());
    }

    void aPriceSetInTheListReachesTheUnitsAndUndoesInOneStep()
    {
        TestProject p;
        BaseDataItem* a = unitLine(p.current, "钢筋", 4280);
        BaseDataItem* b = unitLine(p.plain, "钢筋", 4300, "重庆");
        Page page(p.root);
        page.grid()->slotAcHzZgCl();
        BillModel* model = page.grid()->model();
        const int price = columnOf(model, 7);
        QSignalSpy pushed(undo(), &RURecordControl::signalRecordPushed);
        QVERIFY(model->setData(model->index(0, price), "4300+50"));
        QCOMPARE(a->getDouble(7), 4350.0);
        QCOMPARE(b->getDouble(7), 4350.0);
        QCOMPARE(undo()->undoStack()->undoText(), QString("修改暂估价材料清单行"));
        QCOMPARE(pushed.last().at(0).value<OperatingUIInfo>().operType, 10);
        QVERIFY(!model->index(0, price).data(Qt::ForegroundRole).isValid());

        // Letters: the warning, the old value kept, no step.
        const int steps = undo()->undoStack()->count();
        model->setData(model->index(0, price), "abc");
        QCOMPARE(InteractionSeam::lastShown().text, QString("请正确输入实数或计算表达式!"));
        QCOMPARE(a->getDouble(7), 4350.0);
        QCOMPARE(undo()->undoStack()->count(), steps);

        const int attribute = columnOf(model, 11);
        QCOMPARE(model->index(0, attribute).data().toString(), QString("是"));
        QVERIFY(model->setData(model->index(0, attribute), "否"));
        QVERIFY(!a->getValue(11).toBool() && !b->getValue(11).toBool());

        QVERIFY(undo()->Undo());
        QVERIFY(a->getValue(11).toBool() && b->getValue(11).toBool());
        QVERIFY(undo()->Undo());
        QCOMPARE(a->getDouble(7), 4280.0);
        QCOMPARE(b->getDouble(7), 4300.0);
        QCOMPARE(b->getValue(12).toString(), QString("重庆"));
    }

    void numberingThroughTheDialog()
    {
        TestProject p;
        for (const char* name : {"钢筋", "水泥", "碎石"})
            unitLine(p.current, name, 100);
        Page page(p.root);
        page.grid()->slotAcHzZgCl();
        list(p)->at(0)->setValue(1, 7);
        // Codes only: the numbers stay.
        InteractionSeam::setModalHook([](QDialog* d) {
            auto* dialog = static_cast<XHAndBMFactorDialog*>(d);
            dialog->sequenceGroup()->setChecked(false);
            dialog->prefixEdit()->setText("ZG");
            dialog->startEdit()->setText("1");
            dialog->digitsEdit()->setText("3");
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        page.grid()->slotAcCxScXhBm();
        QCOMPARE(column(list(p), 2), QStringList({"ZG001", "ZG002", "ZG003"}));
        QCOMPARE(column(list(p), 1), QStringList({"7", "2", "3"}));
        QCOMPARE(undo()->undoStack()->undoText(), QString("重新生成材料序号及招标编码"));
        QCOMPARE(p.current->getRcjHzTable()->at(1)->getValue(18).toString(), QString("ZG002"));

        InteractionSeam::setModalHook([](QDialog* d) {
            auto* dialog = static_cast<XHAndBMFactorDialog*>(d);
            dialog->codeGroup()->setChecked(false);
        });
        InteractionSeam::pushAnswer(int(QDialog::Accepted));
        page.grid()->slotAcCxScXhBm();
        QCOMPARE(column(list(p), 1), QStringList({"1", "2", "3"}));
        QCOMPARE(column(list(p), 2), QStringList({"ZG001", "ZG002", "ZG003"}));

        // Cancelled: nothing changes and no step is left.
        const int steps = undo()->undoStack()->count();
        InteractionSeam::setModalHook(nullptr);
        InteractionSeam::pushAnswer(int(QDialog::Rejected));
        page.grid()->slotAcCxScXhBm();
        QCOMPARE(undo()->undoStack()->count(), steps);
    }

    void clearingKeepingAndDeleting()
    {
        TestProject p;
        for (int i = 0; i < 5; ++i)
            unitLine(p.current, QString("材料%1").arg(i), 10.0 + i);
        Page page(p.root);
        page.grid()->slotAcHzZgCl();
        ZgjClHzTable* t = list(p);
        ZgClQdBusiness::InsertItem(t, 2); // an empty row stays untouched
        t->at(3)->SetBlock(true);
        t->at(4)->SetBlock(true);

        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->ClearQuantitiesOrPrices(true, true);
        QCOMPARE(column(t, 7), QStringList({"10", "11", "", "", "", "14"}));
        QCOMPARE(t->at(3)->getDouble(10), 0.0);
        QCOMPARE(undo()->undoStack()->undoText(), QString("清除块内价格"));

        InteractionSeam::pushAnswer(int(QMessageBox::No));
        page.grid()->ClearQuantitiesOrPrices(false, false); // answered "否"
        QCOMPARE(undo()->undoStack()->undoText(), QString("清除块内价格"));

        page.grid()->KeepFirstRows(60);
        // Nothing removed, yet recalculated and recorded.
        QCOMPARE(undo()->undoStack()->undoText(), QString("保留前60行,其余删除"));
        page.grid()->KeepFirstRows(4, false);
        QCOMPARE(t->count(), 5);
        QCOMPARE(undo()->undoStack()->undoText(), QString("保留前4行,其余删除"));

        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->DeleteRowsOrBlock();
        QCOMPARE(undo()->undoStack()->undoText(), QString("删除行"));
        QCOMPARE(t->count(), 4); // the block kept one row of the first four

        InteractionSeam::pushAnswer(int(QMessageBox::Yes));
        page.grid()->ClearAllRows();
        QCOMPARE(t->count(), ZgClQdBusiness::MinimumRows + 1);
        for (int r = 0; r < ZgClQdBusiness::MinimumRows; ++r)
            QVERIFY(ZgClQdBusiness::CheckIsEmptyRow(t->at(r)));
        QCOMPARE(undo()->undoStack()->undoText(), QString("清除所有行"));
        QVERIFY(undo()->Undo());
        QCOMPARE(t->count(), 4);
        QCOMPARE(t->at(0)->getValue(3).toString(), QString("材料0"));
    }

    void lockedListRefusesAndTheKeepMenuFollows()
    {
        TestProject p;
        unitLine(p.current, "钢筋", 100);
        Page page(p.root);
        page.grid()->slotAcHzZgCl();
        emit page.grid()->keepTenderMenu()->aboutToShow();
        QVERIFY(page.grid()->action("去除所有材料数量")->isEnabled());
        QVERIFY(!page.grid()->action("去除定义块内材料数量")->isEnabled()); // no block
        list(p)->at(0)->SetBlock(true);
        emit page.grid()->keepTenderMenu()->aboutToShow();
        QVERIFY(page.grid()->action("去除定义块内材料数量")->isEnabled());

        p.project->SetDqdZdSd(true);
        emit page.grid()->keepTenderMenu()->aboutToShow();
        QVERIFY(!page.grid()->action("去除所有材料数量")->isEnabled());
        const int steps = undo()->undoStack()->count();
        page.grid()->slotAcHzZgCl();
        page.grid()->InsertRow(false);
        QCOMPARE(undo()->undoStack()->count(), steps);
        QVERIFY(
            !(page.grid()->model()->flags(page.grid()->model()->index(0, 2)) & Qt::ItemIsEditable));
    }

    void theSettingsCheckOpensOverTheProject()
    {
        TestProject p;
        unitLine(p.current, "钢筋", 100);
        Page page(p.root);
        InteractionSeam::pushAnswer(int(QDialog::Rejected));
        page.grid()->slotAcCkDwGcZgSz();
        const QList<InteractionSeam::Shown> shown = InteractionSeam::shown();
        QCOMPARE(shown.size(), 2);
        QCOMPARE(shown.at(0).text, QString("正在汇总所有工程暂估材料，请等待"));
        QCOMPARE(shown.at(1).kind, QString("modal"));
        QCOMPARE(shown.at(1).title, QString("查看单位工程暂估设置"));
    }
};

QTEST_MAIN(tst_ZgClQdPage)
#include "tst_ZgClQdPage.moc"
