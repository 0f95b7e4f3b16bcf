#include "ModelTesters.h"
#include "TestProject.h"

#include "GfQd/GfQdSjWidget.h"
#include "GfQd/GfQdWidget.h"
#include "LxGzXmQd/LxGzXmQdSjWidget.h"
#include "LxGzXmQd/LxGzXmQdWidget.h"
#include "QtXmQd/QtXmQdSjWidget.h"
#include "QtXmQd/QtXmQdWidget.h"
#include "ZbrClGzfQd/ZbrClGzfQdModel.h"
#include "common/MaterialGridServiceOf.h"
#include "common/MaterialSjWidget.h"

#include "BusinessFaultInjection.h"
#include "HostIds.h"
#include "InteractionSeam.h"
#include "ProcExceptionNew.h"
#include "VXProgressBar.h"
#include "ZbrClGzfQdBusiness.h"
#include "zTableView.h"

#include <QMessageBox>
#include <QSignalSpy>
#include <QUndoStack>
#include <QtTest>

#include <stdexcept>

namespace {

// The tenderer-purchased service that fails, once armed, right after it did its work: the
// command has then changed rows that must come back.
class FaultyService : public MaterialGridServiceOf<ZbrClGzfQdBusiness, ZbrClGzfQdTable>
{
public:
    using Base = MaterialGridServiceOf<ZbrClGzfQdBusiness, ZbrClGzfQdTable>;
    mutable bool armed = false;

    BaseDataItem* insertItem(GeneralTableBase* table, int index) const override
    {
        BaseDataItem* item = Base::insertItem(table, index);
        fail();
        return item;
    }
    bool moveRows(ConstructionWorks* works, GeneralTableBase* table, int from,
                  int to) const override
    {
        const bool moved = Base::moveRows(works, table, from, to);
        fail();
        return moved;
    }
    void recalculateList(ConstructionWorks* works, GeneralTableBase*) const override
    {
        ZbrClGzfQdBusiness::CalGzfQdTable(works);
        fail();
    }
    void recalculateRow(BaseDataItem* item) const override
    {
        ZbrClGzfQdBusiness::CalculateZbrClItemHJ(item);
    }

private:
    void fail() const
    {
        if (armed) {
            armed = false;
            throw std::runtime_error("磁盘已满");
        }
    }
};

class FaultyGrid : public MaterialSjWidget
{
public:
    FaultyGrid() : MaterialSjWidget(nullptr, nullptr)
    {
        auto service = std::make_unique<FaultyService>();
        faulty = service.get();
        initMaterials(new ZbrClGzfQdModel(this), std::move(service));
    }
    // A summary that fails half-way, after the host rebuilt part of the list.
    void Summarise()
    {
        runCommand("Summarise", QStringLiteral("汇总所有工程材料"), OperationKind::Summary, [&] {
            rebuildShowingFormerRows(QStringLiteral("正在汇总所有工程材料，请等待"),
                                     [&](VXProgressBar& progress) {
                                         ZbrClGzfQdBusiness::HzSyClToZbrCl(works(), &progress);
                                         throw QStringLiteral("汇总中断");
                                     });
        });
    }
    FaultyService* faulty = nullptr;

protected:
    QString sourceFile() const override { return QStringLiteral("ZbrClGzfQd\\FaultyGrid"); }
    QString className() const override { return QStringLiteral("FaultyGrid"); }
    QString listName() const override { return QStringLiteral("招标人材料购置费清单"); }
    QString ribbonFile() const override { return QString(); }
    QString moveLabel() const override { return QStringLiteral("招标人材料购置费清单移动行"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override
    {
        return works->getTenderInventory()->getZbrClGzfQdTable();
    }
};

// What every row of a table holds (fields 0 to 22, kind, block), to compare a table before
// and after a failed command.
using Snapshot = QList<QPair<BaseDataItem*, QVariantList>>;
Snapshot snapshot(const GeneralTableBase* table)
{
    Snapshot rows;
    for (BaseDataItem* item : table->items()) {
        QVariantList values{item->getKind(), item->IsBlock()};
        for (int field = 0; field <= 22; ++field)
            values << item->getValue(field);
        rows.append({item, values});
    }
    return rows;
}

} // namespace

// Every kind of command that fails half-way leaves the rows and the undo stack exactly as they
// were, is reported, and the page goes on.
class tst_CommandRollback : public QObject
{
    Q_OBJECT

private:
    RURecordControl* undo() { return RURecordControl::GetInstance(); }

    static void fill(TestProject& p)
    {
        ZbrClGzfQdTable* t = p.current->getTenderInventory()->getZbrClGzfQdTable();
        for (int i = 0; i < 5; ++i)
            TestProject::row(t, 1,
                             {{1, i + 1},
                              {3, QString("材料%1").arg(i)},
                              {5, "t"},
                              {7, 10.0 * (i + 1)},
                              {9, 2.0},
                              {10, 20.0 * (i + 1)},
                              {22, i == 3}});
        TestProject::row(t, 2, {{3, "合计"}, {10, 300.0}});
        TestProject::row(p.current->getRcjHzTable(), 1,
                         {{3, "钢筋"}, {5, "t"}, {7, 4200.0}, {9, 3.0}});
        // One step already on the stack: a failure must leave it where it is.
        RURecordControl::Scope scope;
        t->at(0)->setValue(15, QStringLiteral("备注"));
        scope.commit(
            OperatingUIInfo(77, 0, 3, t->getId(), 8, QStringLiteral("修改招标人材料购置费清单行")));
    }

private slots:
    void init()
    {
        InteractionSeam::setScripted(true);
        InteractionSeam::clear();
        ClearExceptionReports();
        undo()->ForgetHistory();
    }

    void failedCommandLeavesNothing_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("tag");
        for (const auto& [command, tag] :
             {std::pair{"insert", "FaultyGrid::InsertRow"},
              std::pair{"delete", "FaultyGrid::DeleteRowsOrBlock"},
              std::pair{"block", "FaultyGrid::DeleteBlockRows"},
              std::pair{"clearAll", "FaultyGrid::ClearAllRows"},
              std::pair{"prices", "FaultyGrid::ClearQuantitiesOrPrices"},
              std::pair{"keep", "FaultyGrid::KeepFirstRows"},
              std::pair{"move", "FaultyGrid::slotMouseMoveRows"},
              std::pair{"summary", "FaultyGrid::Summarise"},
              std::pair{"edit", "ZbrClGzfQdModel::setData"}})
            QTest::newRow(command) << QString(command) << QString(tag);
    }

    void failedCommandLeavesNothing()
    {
        QFETCH(QString, command);
        QFETCH(QString, tag);
        TestProject p;
        fill(p);
        ZbrClGzfQdTable* t = p.current->getTenderInventory()->getZbrClGzfQdTable();
        FaultyGrid grid;
        QVariant node = QVariant::fromValue(p.unit);
        grid.ProcMsg(MsgId::NodeClicked, &node);
        attachModelTesters(&grid);
        grid.view()->setCurrentIndex(grid.model()->index(1, 0));
        t->at(1)->SetBlock(true);
        t->at(2)->SetBlock(true);
        const Snapshot before = snapshot(t);
        const int steps = undo()->undoStack()->count();

        grid.faulty->armed = true;
        if (command == "insert") {
            grid.InsertRow(false);
        } else if (command == "delete") {
            t->at(1)->SetBlock(false);
            t->at(2)->SetBlock(false);
            grid.DeleteRowsOrBlock();
            t->at(1)->SetBlock(true);
            t->at(2)->SetBlock(true);
        } else if (command == "block") {
            InteractionSeam::pushAnswer(int(QMessageBox::Yes));
            grid.DeleteRowsOrBlock();
        } else if (command == "clearAll") {
            InteractionSeam::pushAnswer(int(QMessageBox::Yes));
            grid.ClearAllRows();
        } else if (command == "prices") {
            InteractionSeam::pushAnswer(int(QMessageBox::Yes));
            grid.ClearQuantitiesOrPrices(true, false);
        } else if (command == "keep") {
            grid.KeepFirstRows(2);
        } else if (command == "move") {
            grid.slotMouseMoveRows(0, 3, true);
        } else if (command == "summary") {
            grid.Summarise();
            QCOMPARE(grid.model()->table(), t); // back on the list
        } else if (command == "edit") {
            grid.faulty->armed = false;
            BusinessFaultInjection::setFault([] { throw std::runtime_error("磁盘已满"); });
            grid.model()->setData(grid.model()->index(2, grid.model()->columnOfField(9)), "5");
        }
        grid.faulty->armed = false;
        QCOMPARE(snapshot(t), before);
        QCOMPARE(undo()->undoStack()->count(), steps);
        QCOMPARE(undo()->undoStack()->undoText(), QString("修改招标人材料购置费清单行"));
        QVERIFY(!undo()->IsRecording());
        QCOMPARE(RecentExceptionReports().size(), 1);
        QCOMPARE(RecentExceptionReports().first().tag, tag);
        QCOMPARE(grid.model()->rowCount(), t->count());

        // The page goes on: the same command now succeeds as one step, and undo still reaches
        // the step before the failure.
        grid.KeepFirstRows(1);
        QCOMPARE(undo()->undoStack()->count(), steps + 1);
        QVERIFY(undo()->Undo());
        QVERIFY(undo()->Undo());
        QVERIFY(!t->at(0)->getValue(15).isValid());
    }

    // The other lists' commands, each failing after it changed rows: the list, its unit
    // project's variables and the undo stack are as before, the failure is reported with the
    // command's tag, and the page goes on.
    void otherListsCommandsRollBack_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("command");
        for (const char* command :
             {"InsertRow", "DeleteCurrentRow", "ClearAllRows", "template", "move", "setData"})
            for (const char* page : {"QtXmQd", "GfQd", "LxGzXmQd"})
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(page, command)))
                    << page << command;
        for (const char* command :
             {"slotAcSetToCalculation", "slotAcSetToSubTotal", "slotAcExtractSporadicWorkItemFees"})
            QTest::newRow(qPrintable(QStringLiteral("QtXmQd %1").arg(command)))
                << QString("QtXmQd") << QString(command);
        QTest::newRow("LxGzXmQd slotSelectSporadicItem")
            << QString("LxGzXmQd") << QString("slotSelectSporadicItem");
    }

    void otherListsCommandsRollBack()
    {
        QFETCH(QString, page);
        QFETCH(QString, command);
        TestProject p;
        TenderInventory* inventory = p.current->getTenderInventory();
        // Daywork rows feed the other items' daywork line, so extracting changes something.
        LxGzXmRgDjQdTable* daywork = inventory->getLxGzXmRgDjQdTable();
        TestProject::row(daywork, 1, {{1, "一"}, {2, "人工"}});
        TestProject::row(daywork, 0,
                         {{1, "1"}, {2, "普工"}, {3, "工日"}, {4, 120.0}, {6, 10.0}, {7, 1200.0}});
        TestProject::row(daywork, 0,
                         {{1, "2"}, {2, "技工"}, {3, "工日"}, {4, 180.0}, {6, 5.0}, {7, 900.0}});
        QtXmQdHzTable* others = inventory->getQtXmQdHzTable();
        TestProject::row(others, 0, {{1, "1"}, {2, "暂列金额"}, {3, 50000.0}});
        TestProject::row(others, 0, {{1, "2"}, {2, "计日工"}, {3, 0.0}});
        TestProject::row(others, 1, {});
        TestProject::row(others, 4, {{2, "合计"}, {3, 50000.0}});
        GfSjQdTable* fees = inventory->getGfSjQdTable();
        TestProject::row(fees, 0, {{1, "1"}, {2, "规费"}, {4, 3.41}});
        TestProject::row(fees, 0, {{1, "2"}, {2, "税金"}, {4, 9.0}});
        TestProject::row(fees, 0, {{1, "3"}, {2, "环境保护税"}, {4, 0.1}});

        std::unique_ptr<BillPageWidget> widget;
        if (page == "QtXmQd")
            widget = std::make_unique<QtXmQdWidget>();
        else if (page == "GfQd")
            widget = std::make_unique<GfQdWidget>();
        else
            widget = std::make_unique<LxGzXmQdWidget>();
        QVariant node = QVariant::fromValue(p.unit);
        widget->ProcMsg(MsgId::NodeClicked, &node);
        attachModelTesters(widget.get());
        BillSjWidget* grid = widget->sjWidget();
        GeneralTableBase* t = grid->table();
        grid->view()->setCurrentIndex(grid->model()->index(1, 1));
        grid->view()->selectionModel()->select(grid->model()->index(2, 1),
                                               QItemSelectionModel::Select);
        const Snapshot before = snapshot(t);
        const QVariant total = p.current->getXtBl(2);
        const int steps = undo()->undoStack()->count();

        BusinessFaultInjection::setFault([] { throw std::runtime_error("磁盘已满"); });
        auto* others_ = qobject_cast<QtXmQdSjWidget*>(grid);
        auto* fees_ = qobject_cast<GfQdSjWidget*>(grid);
        auto* daywork_ = qobject_cast<LxGzXmQdSjWidget*>(grid);
        InteractionSeam::pushAnswer(int(fees_ ? QMessageBox::Ok : QMessageBox::Yes));
        QString tag = command;
        if (command == "InsertRow") {
            others_ ? others_->InsertRow() : fees_ ? fees_->InsertRow() : daywork_->InsertRow();
        } else if (command == "DeleteCurrentRow") {
            others_ ? others_->DeleteCurrentRow("删除当前行")
            : fees_ ? fees_->DeleteCurrentRow("删除当前行")
                    : daywork_->DeleteCurrentRow("删除当前行");
        } else if (command == "ClearAllRows") {
            others_ ? others_->ClearAllRows()
            : fees_ ? fees_->ClearAllRows()
                    : daywork_->ClearAllRows();
        } else if (command == "template") {
            if (others_) {
                others_->CurQtXmQdTemplateChanged("2015定额其他项目清单");
                tag = "CurQtXmQdTemplateChanged";
            } else if (fees_) {
                fees_->CurGfSjTamplateChanged("规费税金清单");
                tag = "CurGfSjTamplateChanged";
            } else {
                daywork_->CurSporadicWorksTempChanged("零星工作项目人工单价清单模板");
                tag = "CurSporadicWorksTempChanged";
            }
        } else if (command == "move") {
            grid->slotMouseMoveRows(0, 1, true);
            tag = "slotMouseMoveRows";
        } else if (command == "setData") {
            grid->model()->setData(grid->model()->index(1, 1), "改过的");
        } else if (command == "slotAcSetToCalculation") {
            others_->slotAcSetToCalculation();
        } else if (command == "slotAcSetToSubTotal") {
            others_->slotAcSetToSubTotal();
        } else if (command == "slotAcExtractSporadicWorkItemFees") {
            others_->slotAcExtractSporadicWorkItemFees();
        } else if (command == "slotSelectSporadicItem") {
            daywork_->slotSelectSporadicItem(200.0);
        }
        BusinessFaultInjection::clear();
        QCOMPARE(snapshot(t), before);
        QCOMPARE(p.current->getXtBl(2), total);
        QCOMPARE(undo()->undoStack()->count(), steps);
        QVERIFY(!undo()->IsRecording());
        QCOMPARE(RecentExceptionReports().size(), 1);
        const QString modelTag = QString::fromLatin1(grid->model()->metaObject()->className()) +
                                 QStringLiteral("::setData");
        QCOMPARE(RecentExceptionReports().first().tag,
                 command == "setData" ? modelTag
                                      : QString::fromLatin1(grid->metaObject()->className()) +
                                            QStringLiteral("::") + tag);
        QCOMPARE(grid->model()->rowCount(), t->count());

        // The page goes on: the same list takes an insert as one step.
        grid->view()->setCurrentIndex(grid->model()->index(0, 1));
        others_ ? others_->InsertRow() : fees_ ? fees_->InsertRow() : daywork_->InsertRow();
        QCOMPARE(undo()->undoStack()->count(), steps + 1);
        QCOMPARE(t->count(), before.size() + 1);
    }

    // Undo and redo reach the grid through its table: a changed cell is redrawn, changed
    // rows rebuild the model, with no message from the host.
    void undoReachesTheGridThroughTheData()
    {
        TestProject p;
        fill(p);
        ZbrClGzfQdTable* t = p.current->getTenderInventory()->getZbrClGzfQdTable();
        FaultyGrid grid;
        QVariant node = QVariant::fromValue(p.unit);
        grid.ProcMsg(MsgId::NodeClicked, &node);
        attachModelTesters(&grid);
        BillModel* model = grid.model();
        QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
        QSignalSpy reset(model, &QAbstractItemModel::modelReset);
        const QModelIndex quantity = model->index(2, model->columnOfField(9));
        QVERIFY(model->setData(quantity, "5"));
        QCOMPARE(reset.count(), 0); // a cell edit redraws, it does not rebuild
        QCOMPARE(changed.count(), 1);
        // The row and the total row below it.
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 2);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), t->count() - 1);
        QVERIFY(undo()->Undo());
        QCOMPARE(changed.count(), 2);
        QCOMPARE(model->data(quantity).toString(), QString("2.00"));
        grid.view()->setCurrentIndex(model->index(1, 0));
        grid.InsertRow(false);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(model->rowCount(), 7);
        QVERIFY(undo()->Undo());
        QCOMPARE(reset.count(), 2);
        QCOMPARE(model->rowCount(), 6);
        QVERIFY(undo()->Redo());
        QCOMPARE(model->rowCount(), 7);
    }
};

QTEST_MAIN(tst_CommandRollback)
#include "tst_CommandRollback.moc"
