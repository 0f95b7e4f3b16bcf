#include "ZbrClGzfQdBusiness.h"
#include "UnitProjectCalc.h"

#include "MaterialGridRules.h"
#include "MaterialSummary.h"
#include "ProgressSink.h"

#include "ConstructionWorks.h"

#include <cmath>

namespace {

ZbrClGzfQdTable* listOf(ConstructionWorks* works)
{
    return works ? works->getTenderInventory()->getZbrClGzfQdTable() : nullptr;
}

int inconsistency(const BaseDataItem* item)
{
    return item ? item->getValue(MaterialSummary::InconsistencyField).toInt() : 0;
}

} // namespace

void ZbrClGzfQdBusiness::CalGzfQdTable(ConstructionWorks* works)
{
    TableOps::calculateMaterialList(listOf(works));
    UnitProjectCalc::RecalculateOwner(listOf(works));
}

void ZbrClGzfQdBusiness::CalculateZbrClItemHJ(BaseDataItem* item)
{
    if (item && item->getKind() == Material)
        item->setValue(10, std::round(item->getDouble(9) * item->getDouble(7) * 100.0) / 100.0);
}

BaseDataItem* ZbrClGzfQdBusiness::InsertItem(ZbrClGzfQdTable* table, int index)
{
    return MaterialListBusiness::InsertItem(nullptr, table, index);
}

bool ZbrClGzfQdBusiness::CheckExistedTotalRow(const QList<BaseDataItem*>& items,
                                              BaseDataItem*& total)
{
    total = nullptr;
    for (BaseDataItem* item : items)
        if (item->getKind() == Total) {
            total = item;
            return true;
        }
    return false;
}

void ZbrClGzfQdBusiness::RemoveAllAndKeepNRow(ZbrClGzfQdTable* table, int n)
{
    MaterialGridRules::keepFirstRows(table, n);
}

void ZbrClGzfQdBusiness::RegenerateZbrClGzfQdXH(ConstructionWorks* works)
{
    if (ZbrClGzfQdTable* table = listOf(works))
        TableOps::renumber(table, Material);
}

void ZbrClGzfQdBusiness::ClearBCzDyClBj(ConstructionWorks* works)
{
    if (ZbrClGzfQdTable* table = listOf(works))
        for (BaseDataItem* item : table->items())
            if (item->getValue(22).toBool())
                item->setValue(22, false);
}

void ZbrClGzfQdBusiness::summarise(ConstructionWorks* works, bool provisionalOnly,
                                   ProgressSink* progress)
{
    ZbrClGzfQdTable* table = listOf(works);
    if (!table)
        return;
    const QList<MaterialSummary::Entry> entries =
        MaterialSummary::Gather(works, provisionalOnly, progress);
    table->Clear();
    int serial = 0;
    for (const MaterialSummary::Entry& e : entries) {
        BaseDataItem* item = table->CreateItem();
        item->loadState(Material, false, 0, QString());
        item->loadValue(1, ++serial);
        item->loadValue(2, e.code);
        item->loadValue(3, e.name);
        item->loadValue(4, e.model);
        item->loadValue(5, e.unit);
        item->loadValue(7, e.price);
        item->loadValue(9, e.quantity);
        item->loadValue(12, e.origin);
        item->loadValue(MaterialSummary::InconsistencyField, e.flags);
        table->BaseDataItemAppend(item);
    }
    BaseDataItem* total = table->CreateItem();
    total->loadState(Total, false, 0, QString());
    total->loadValue(3, QStringLiteral("合计"));
    table->BaseDataItemAppend(total);
    TableOps::calculateMaterialList(table);
    UnitProjectCalc::RecalculateOwner(table);
    if (progress)
        progress->setValue(100);
}

void ZbrClGzfQdBusiness::refresh(ConstructionWorks* works, bool provisionalOnly,
                                 ProgressSink* progress)
{
    ZbrClGzfQdTable* table = listOf(works);
    if (!table)
        return;
    QHash<QString, MaterialSummary::Entry> byKey;
    for (const MaterialSummary::Entry& e :
         MaterialSummary::Gather(works, provisionalOnly, progress)) {
        BaseDataItem probe;
        probe.loadValue(3, e.name);
        probe.loadValue(4, e.model);
        probe.loadValue(5, e.unit);
        byKey.insert(MaterialSummary::Key(&probe), e);
    }
    for (BaseDataItem* item : table->items()) {
        if (item->getKind() != Material || TableOps::isBlank(item))
            continue;
        const auto it = byKey.constFind(MaterialSummary::Key(item));
        if (it == byKey.cend()) {
            item->setValue(22, true); // nothing corresponds in the unit projects
            continue;
        }
        item->setValue(22, false);
        item->setValue(7, it->price);
        item->setValue(9, it->quantity);
        item->setValue(MaterialSummary::InconsistencyField, it->flags);
    }
    TableOps::calculateMaterialList(table);
    UnitProjectCalc::RecalculateOwner(table);
    if (progress)
        progress->setValue(100);
}

void ZbrClGzfQdBusiness::HzSyClToZbrCl(ConstructionWorks* works, ProgressSink* progress)
{
    summarise(works, false, progress);
}

void ZbrClGzfQdBusiness::HzZgjClToZbrCl(ConstructionWorks* works, ProgressSink* progress)
{
    summarise(works, true, progress);
}

void ZbrClGzfQdBusiness::UpdateZbrClGzfQdSLAndTJ(ConstructionWorks* works, ProgressSink* progress)
{
    refresh(works, false, progress);
}

void ZbrClGzfQdBusiness::UpdateZbrClGzfQdZgjSLAndTJ(ConstructionWorks* works,
                                                    ProgressSink* progress)
{
    refresh(works, true, progress);
}

int ZbrClGzfQdBusiness::GetTjByzClCount(ConstructionWorks* works)
{
    int count = 0;
    if (ZbrClGzfQdTable* table = listOf(works))
        for (const BaseDataItem* item : table->items())
            count +=
                item->getKind() == Material && (inconsistency(item) & MaterialSummary::PriceDiffers)
                    ? 1
                    : 0;
    return count;
}

int ZbrClGzfQdBusiness::GetBCzDyClCount(ConstructionWorks* works)
{
    int count = 0;
    if (ZbrClGzfQdTable* table = listOf(works))
        for (const BaseDataItem* item : table->items())
            count += item->getValue(22).toBool() ? 1 : 0;
    return count;
}

void ZbrClGzfQdBusiness::SetTjByzClBlock(ConstructionWorks* works)
{
    if (ZbrClGzfQdTable* table = listOf(works))
        for (BaseDataItem* item : table->items())
            item->SetBlock(item->getKind() == Material &&
                           (inconsistency(item) & MaterialSummary::PriceDiffers));
}

QColor ZbrClGzfQdBusiness::GetCellTextColor(ZbrClGzfQdTable* table, int row, int field)
{
    const int flags = inconsistency(table ? table->at(row) : nullptr);
    return field == 7 && (flags & MaterialSummary::PriceDiffers) ? QColor(220, 0, 0) : QColor();
}

QColor ZbrClGzfQdBusiness::GetCellBackgroundColor(ZbrClGzfQdTable* table, int row, int field)
{
    const int flags = inconsistency(table ? table->at(row) : nullptr);
    if (field == 3 && (flags & MaterialSummary::ProvisionalDiffers))
        return QColor(255, 214, 214);
    if (field == 12 && (flags & MaterialSummary::OriginDiffers))
        return QColor(255, 242, 184);
    return QColor();
}
