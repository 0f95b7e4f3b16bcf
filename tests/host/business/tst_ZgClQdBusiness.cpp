#include "TestProject.h"

#include "BusinessFaultInjection.h"
#include "ProgressSink.h"
#include "SampleProject.h"
#include "ZgClQdBusiness.h"
#include "ZgClZsItem.h"

#include <QUndoStack>
#include <QtTest>

#include <stdexcept>

namespace {

struct Progress : ProgressSink
{
    QList<int> values;
    void setValue(int value) override { values << value; }
};

// A provisional (or plain) material line of a unit project.
BaseDataItem* line(ConstructionWorks* unit, const QString& name, const QString& model,
                   const QString& u, double price, double quantity, bool provisional = true,
                   const QString& origin = QStringLiteral("攀钢"), const QString& code = QString())
{
    return TestProject::row(unit->getRcjHzTable(), 1,
                            {{3, name},
                             {4, model},
                             {5, u},
                             {6, price},
                             {7, price},
                             {9, quantity},
                             {10, price * quantity},
                             {11, provisional},
                             {12, origin},
                             {18, code}});
}

QStringList column(ZgjClHzTable* table, int field)
{
    QStringList list;
    for (const BaseDataItem* item : table->items())
        if (item->getKind() == 1)
            list << item->getValueStr(field);
    return list;
}

BaseDataItem* rowNamed(ZgjClHzTable* table, const QString& name)
{
    for (BaseDataItem* item : table->items())
        if (item->getValue(3).toString() == name)
            return item;
    return nullptr;
}

} // namespace

// The provisional-price list: summarising the unit projects, refreshing, numbering, and
// properties set once for every unit project.
class tst_ZgClQdBusiness : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestProject> p;
    ConstructionWorks* root = nullptr;
    ZgjClHzTable* list = nullptr;

private slots:
    void init()
    {
        p = std::make_unique<TestProject>();
        root = p->project->works(0, 1);
        list = root->getTenderInventory()->getZgjClHzTable();
    }
    void cleanup()
    {
        RURecordControl::GetInstance()->ForgetHistory();
        p.reset();
    }

    void summaryGathersOneRowPerMaterialWithItsDisagreements()
    {
        // The same steel in both unit projects at two prices; trailing blanks do not matter.
        line(p->current, "钢筋", "HRB400 Φ12", "t", 4280, 10);
        line(p->plain, " 钢筋", "HRB400 Φ12 ", "t", 4300, 30);
        line(p->current, "钢筋", "HRB400 Φ12", "t", 4300, 5);
        // Cement provisional in one, plain in the other; origin differs.
        line(p->current, "水泥", "P.O 42.5", "t", 480, 100);
        line(p->plain, "水泥", "P.O 42.5", "t", 480, 50, false, "拉法基");
        // Another unit is another material; a material never provisional stays out.
        line(p->current, "钢筋", "HRB400 Φ12", "kg", 4.3, 1000);
        line(p->plain, "中砂", "", "m3", 135, 12, false);
        Progress progress;
        ZgClQdBusiness::RegenerateZgjClHzb(root, &progress, 50, 50);
        QCOMPARE(column(list, 3), QStringList({"钢筋", "水泥", "钢筋"}));
        QCOMPARE(column(list, 5), QStringList({"t", "t", "kg"}));
        QCOMPARE(column(list, 9), QStringList({"45", "100", "1000"}));
        // The price that carries most of the quantity.
        QCOMPARE(column(list, 7), QStringList({"4300", "480", "4.3"}));
        QCOMPARE(column(list, 1), QStringList({"1", "2", "3"}));
        QCOMPARE(list->at(0)->getDouble(10), 193500.0);
        QCOMPARE(list->at(list->count() - 1)->getKind(), 2);
        QCOMPARE(list->at(list->count() - 1)->getDouble(10), 193500.0 + 48000.0 + 4300.0);
        QCOMPARE(progress.values.last(), 100);
        QVERIFY(progress.values.first() >= 50);

        QCOMPARE(ZgClQdBusiness::GetCellTextColor(list, 0, 7), QColor(220, 0, 0));
        QVERIFY(!ZgClQdBusiness::GetCellTextColor(list, 1, 7).isValid());
        QCOMPARE(ZgClQdBusiness::GetCellBackgroundColor(list, 1, 3), QColor(255, 214, 214));
        QCOMPARE(ZgClQdBusiness::GetCellBackgroundColor(list, 1, 12), QColor(255, 242, 184));
        QVERIFY(!ZgClQdBusiness::GetCellBackgroundColor(list, 0, 3).isValid());
        QVERIFY(!ZgClQdBusiness::GetCellBackgroundColor(list, 0, 12).isValid());
        QCOMPARE(ZgClQdBusiness::GetTjByzClCount(root), 1);
    }

    void emptyProjectsGiveAnEmptyList()
    {
        line(p->current, "中砂", "", "m3", 135, 12, false);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        QCOMPARE(column(list, 3), QStringList());
        QCOMPARE(ZgClQdBusiness::GetTjByzClCount(root), 0);
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(root), 0);

        ProjectWorks bare(5, "空工程");
        bare.AddNode(nullptr, 1, ProTreeNode::WorksNode, "空工程");
        ConstructionWorks* bareRoot = bare.ensureWorks(0, 1);
        ZgClQdBusiness::RegenerateZgjClHzb(bareRoot, nullptr, 100, 0);
        ZgClQdBusiness::UpdateZgjClHzbSLAndTJ(bareRoot, nullptr);
        QCOMPARE(bareRoot->getTenderInventory()->getZgjClHzTable()->count(), 1); // the total
        ZgClQdBusiness::RegenerateZgjClHzb(nullptr, nullptr, 100, 0);
    }

    void tenderCodesComeFromTheUnitsOrSurviveASecondSummary()
    {
        line(p->current, "钢筋", "Φ12", "t", 4280, 10, true, "攀钢", "ZG-A");
        line(p->current, "水泥", "P.O", "t", 480, 10);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        QCOMPARE(column(list, 2), QStringList({"ZG-A", ""}));
        rowNamed(list, "水泥")->setValue(2, "ZG-B");
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        QCOMPARE(column(list, 2), QStringList({"ZG-A", "ZG-B"}));
    }

    void refreshReportsDifferingPricesAndMissingMaterials()
    {
        const QStringList names = {"钢筋", "水泥", "碎石", "中砂", "砌块", "电缆", "涂料"};
        for (const QString& name : names)
            line(p->current, name, "", "t", 100, 1);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        // Afterwards three prices come to differ and two materials vanish from the units.
        for (const char* name : {"水泥", "中砂", "涂料"})
            line(p->plain, name, "", "t", 120, 1);
        RcjHzTable* units = p->current->getRcjHzTable();
        for (const QString name : {"碎石", "电缆"})
            for (int i = 0; i < units->count(); ++i)
                if (units->at(i)->getValue(3).toString() == name)
                    units->BaseDataItemRemoveAt(i);
        ZgClQdBusiness::UpdateZgjClHzbSLAndTJ(root, nullptr);
        QCOMPARE(ZgClQdBusiness::GetTjByzClCount(root), 3);
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(root), 2);
        QStringList marked, differing;
        ZgClQdBusiness::SetTjByzClBlock(root);
        for (const BaseDataItem* item : list->items()) {
            if (item->getValue(22).toBool())
                marked << item->getValue(3).toString();
            if (item->IsBlock())
                differing << item->getValue(3).toString();
        }
        QCOMPARE(marked, QStringList({"碎石", "电缆"}));
        QCOMPARE(differing, QStringList({"水泥", "中砂", "涂料"}));
        QCOMPARE(rowNamed(list, "水泥")->getDouble(9), 2.0);

        ZgClQdBusiness::ClearBCzDyClBj(root);
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(root), 0);
        // A summary drops the vanished materials and their marks.
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        QCOMPARE(column(list, 3), QStringList({"钢筋", "水泥", "中砂", "砌块", "涂料"}));
    }

    void aPropertySetInTheListReachesEveryUnitAndUndoesInOneStep()
    {
        BaseDataItem* a = line(p->current, "钢筋", "Φ12", "t", 4280, 10);
        BaseDataItem* b = line(p->plain, "钢筋", "Φ12", "t", 4300, 30, true, "德胜");
        BaseDataItem* other = line(p->plain, "钢筋", "Φ16", "t", 4100, 3);
        BaseDataItem* submitted = line(p->submitted, "钢筋", "Φ12", "t", 4000, 1);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        QCOMPARE(list->at(0)->getValue(30).toInt(),
                 int(ZgClQdBusiness::PriceDiffers | ZgClQdBusiness::OriginDiffers));

        RURecordControl* undo = RURecordControl::GetInstance();
        undo->BeginRecord();
        QVERIFY(ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 7, QString("4350")));
        undo->EndRecord(OperatingUIInfo(77, 0, 1, ZgjClHzTable::Type, 8, "修改暂估价材料清单行"));
        QCOMPARE(a->getDouble(7), 4350.0);
        QCOMPARE(b->getDouble(7), 4350.0);
        QCOMPARE(b->getDouble(10), 130500.0);
        QCOMPARE(other->getDouble(7), 4100.0);     // another model is another material
        QCOMPARE(submitted->getDouble(7), 4000.0); // the submitted version is not touched
        QCOMPARE(list->at(0)->getDouble(10), 40 * 4350.0);
        QCOMPARE(list->at(0)->getValue(30).toInt(), int(ZgClQdBusiness::OriginDiffers));
        QVERIFY(!ZgClQdBusiness::GetCellTextColor(list, 0, 7).isValid());

        undo->BeginRecord();
        QVERIFY(ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 12, QString("攀钢")));
        QVERIFY(ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 11, QString("否")));
        undo->EndRecord(OperatingUIInfo(77, 0, 1, ZgjClHzTable::Type, 8, "修改暂估价材料清单行"));
        QCOMPARE(b->getValue(12).toString(), "攀钢");
        QVERIFY(!a->getValue(11).toBool() && !b->getValue(11).toBool());
        QVERIFY(other->getValue(11).toBool());

        QCOMPARE(undo->undoStack()->count(), 2);
        QVERIFY(undo->Undo());
        QCOMPARE(b->getValue(12).toString(), "德胜");
        QVERIFY(a->getValue(11).toBool() && b->getValue(11).toBool());
        QVERIFY(undo->Undo());
        QCOMPARE(a->getDouble(7), 4280.0);
        QCOMPARE(b->getDouble(7), 4300.0);
        QCOMPARE(b->getDouble(10), 4300.0 * 30);
        QCOMPARE(list->at(0)->getDouble(7), 4300.0);
        QCOMPARE(list->at(0)->getValue(30).toInt(),
                 int(ZgClQdBusiness::PriceDiffers | ZgClQdBusiness::OriginDiffers));
    }

    void theQuantityIsTheListsOwn()
    {
        BaseDataItem* a = line(p->current, "钢筋", "Φ12", "t", 4280, 10);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        QVERIFY(ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 9, QString("12")));
        QCOMPARE(a->getDouble(9), 10.0);
        QCOMPARE(list->at(0)->getDouble(10), 12 * 4280.0);
    }

    void badValuesChangeNothing()
    {
        BaseDataItem* a = line(p->current, "钢筋", "Φ12", "t", 4280, 10);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        QVERIFY(!ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 7, QString("abc")));
        QVERIFY(!ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 9, QString("1,5")));
        QVERIFY(!ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 11, QString("也许")));
        QVERIFY(!ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 30, 0));
        QVERIFY(!ZgClQdBusiness::ProcColunmValueChanged(root, list, 1, 7, 1.0)); // the total
        QVERIFY(!ZgClQdBusiness::ProcColunmValueChanged(root, list, 9, 7, 1.0));
        QCOMPARE(list->at(0)->getDouble(7), 4280.0);
        QCOMPARE(a->getDouble(7), 4280.0);
        QVERIFY(a->getValue(11).toBool());
        // An emptied price clears the field and the amount, here and in the units.
        QVERIFY(ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 7, QString(" ")));
        QVERIFY(!list->at(0)->getValue(7).isValid());
        QVERIFY(!a->getValue(7).isValid());
        QCOMPARE(a->getDouble(10), 0.0);
        // A code that looks like a number stays text.
        QVERIFY(ZgClQdBusiness::ProcColunmValueChanged(root, list, 0, 2, QString("007")));
        QCOMPARE(a->getValue(18).toString(), "007");
    }

    void numbersAndCodes()
    {
        for (const char* name : {"钢筋", "水泥", "碎石"})
            line(p->current, name, "", "t", 100, 1);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        ZgClQdBusiness::InsertItem(list, 1); // an empty row takes neither number nor code
        list->at(0)->setValue(1, 9);
        ZgClQdBusiness::RegenerateZgjClHzbBM(root, "ZG", 1, 3);
        QCOMPARE(column(list, 2), QStringList({"ZG001", "", "ZG002", "ZG003"}));
        QCOMPARE(column(list, 1), QStringList({"9", "", "2", "3"})); // codes leave numbers alone
        ZgClQdBusiness::RegenerateZgjClHzbXH(root);
        QCOMPARE(column(list, 1), QStringList({"1", "", "2", "3"}));
        QCOMPARE(p->current->getRcjHzTable()->at(2)->getValue(18).toString(), "ZG003");
        ZgClQdBusiness::RegenerateZgjClHzbBM(root, "", 98, 0);
        QCOMPARE(column(list, 2), QStringList({"98", "", "99", "100"}));
        ZgClQdBusiness::RegenerateZgjClHzbBM(root, "A@_", 7, 2);
        QCOMPARE(column(list, 2), QStringList({"A@_07", "", "A@_08", "A@_09"}));
    }

    void keepingClearingPadding()
    {
        for (int i = 0; i < 5; ++i)
            line(p->current, QStringLiteral("材料%1").arg(i), "", "t", 10, 1);
        ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0);
        ZgClQdBusiness::RemoveAllAndKeepNRow(list, 3);
        QCOMPARE(column(list, 3), QStringList({"材料0", "材料1", "材料2"}));
        QCOMPARE(list->at(list->count() - 1)->getDouble(10), 30.0);
        ZgClQdBusiness::RemoveAllAndKeepNRow(list, 30);
        QCOMPARE(list->count(), 4);
        QVERIFY(!ZgClQdBusiness::CheckIsEmptyRow(list->at(0)));
        QVERIFY(!ZgClQdBusiness::CheckIsEmptyRow(list->at(3))); // the total is never "empty"
        ZgClQdBusiness::CompleteEmptyRows(list);
        QCOMPARE(list->count(), ZgClQdBusiness::MinimumRows + 1);
        QVERIFY(ZgClQdBusiness::CheckIsEmptyRow(list->at(3)));
        QCOMPARE(list->at(list->count() - 1)->getKind(), 2);
        // A list without a total row gets one.
        list->Clear();
        ZgClQdBusiness::CompleteEmptyRows(list);
        QCOMPARE(list->count(), ZgClQdBusiness::MinimumRows + 1);
        QCOMPARE(list->at(ZgClQdBusiness::MinimumRows)->getValue(3).toString(), "合计");
        // Clearing a price recomputes the amount.
        BaseDataItem* item = list->at(0);
        item->setValue(9, 3.0);
        item->setValue(7, 2.5);
        ZgClQdBusiness::CalculateZgjClItemHJ(item);
        QCOMPARE(item->getDouble(10), 7.5);
        item->setValue(7, 0.0);
        ZgClQdBusiness::CalculateZgjClItemHJ(item);
        QCOMPARE(item->getDouble(10), 0.0);
    }

    void unitSettingsSideBySide()
    {
        line(p->current, "钢筋", "Φ12", "t", 4280, 10, true, "攀钢", "ZG001");
        line(p->current, "水泥", "P.O", "t", 480, 10, true, "峨胜", "ZG002");
        line(p->plain, "钢筋", "Φ12", "t", 4280, 30, true, "攀钢", "");
        line(p->plain, "水泥", "P.O", "t", 480, 5, true, "拉法基", "ZG002");
        line(p->plain, "中砂", "", "m3", 135, 12, false);
        p->project->AddNode(p->single, 9, ProTreeNode::WorksNode, "空的单位工程");
        p->project->ensureWorks(0, 9);
        QList<ZgClZsItem*> nodes;
        Progress progress;
        ZgClQdBusiness::GetGcZgSz(root, nodes, &progress);
        QCOMPARE(nodes.size(), 3 + 4);
        QCOMPARE(nodes.at(0)->GetZgClZsItemType(), 0);
        QCOMPARE(nodes.at(0)->GetZxGcName(), "建筑与装饰工程");
        QCOMPARE(nodes.at(1)->GetParentId(), nodes.at(0)->GetId());
        QCOMPARE(nodes.at(1)->GetZgjClHzItem()->getValue(3).toString(), "钢筋");
        QCOMPARE(nodes.at(1)->GetOwnZbBm(), "ZG001");
        QCOMPARE(nodes.at(4)->GetOwnZbBm(), ""); // the plain unit's steel has no code
        QCOMPARE(nodes.at(6)->GetZxGcName(), "空的单位工程");
        // Steel agrees everywhere; cement's origin differs.
        QCOMPARE(nodes.at(1)->GetFlag(), 0);
        QCOMPARE(nodes.at(2)->GetFlag(), 1);
        QCOMPARE(nodes.at(5)->GetFlag(), 1);
        QCOMPARE(progress.values.last(), 100);
        qDeleteAll(nodes);
    }

    void theSampleProjectShowsEveryDisagreement()
    {
        std::unique_ptr<ProjectWorks> sample = BuildSampleProject();
        ConstructionWorks* sampleRoot = sample->GetConstructionWorksNode();
        ZgjClHzTable* sampleList = sampleRoot->getTenderInventory()->getZgjClHzTable();
        int seen = 0;
        for (const BaseDataItem* item : sampleList->items())
            seen |= item->getValue(30).toInt();
        QCOMPARE(seen, 31); // price, attribute, origin, manufacturer and remark all occur
        QList<ZgClZsItem*> nodes;
        ZgClQdBusiness::GetGcZgSz(sampleRoot, nodes, nullptr);
        int uncoded = 0, flagged = 0;
        for (const ZgClZsItem* node : nodes) {
            uncoded += node->GetZgClZsItemType() == 1 && node->GetOwnZbBm().isEmpty() ? 1 : 0;
            flagged += node->GetFlag();
        }
        qDeleteAll(nodes);
        QVERIFY(uncoded > 0);
        QVERIFY(flagged > 0);
        ZgClQdBusiness::UpdateZgjClHzbSLAndTJ(sampleRoot, nullptr);
        QVERIFY(ZgClQdBusiness::GetTjByzClCount(sampleRoot) > 0);
        QCOMPARE(ZgClQdBusiness::GetBCzDyClCount(sampleRoot), 2);
    }

    void aFailingServiceThrowsBeforeChangingAnything()
    {
        line(p->current, "钢筋", "Φ12", "t", 4280, 10);
        BusinessFaultInjection::setFault([] { throw std::runtime_error("主机故障"); });
        QVERIFY_EXCEPTION_THROWN(ZgClQdBusiness::RegenerateZgjClHzb(root, nullptr, 100, 0),
                                 std::runtime_error);
        QCOMPARE(list->count(), 0);
        BusinessFaultInjection::clear();
    }
};

QTEST_GUILESS_MAIN(tst_ZgClQdBusiness)
#include "tst_ZgClQdBusiness.moc"
