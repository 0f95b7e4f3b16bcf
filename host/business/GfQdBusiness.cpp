#include "GfQdBusiness.h"

#include "BusinessFaultInjection.h"
#include "FyBlBusiness.h"
#include "TableOps.h"
#include "UnitProjectCalc.h"

#include "ConstructionWorks.h"

bool GfQdBusiness::ProcColunmValueChanged(ConstructionWorks* works, GfSjQdTable* table, int row,
                                          int field, const QVariant& value)
{
    BusinessFaultInjection::check();
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item)
        return false;
    QVariant stored = field == 3 ? QVariant(value.toString()) : TableOps::normalise(value);
    if (field == 4 && !RateValue(value, stored))
        return false;
    const QVariant old = item->getValue(field);
    item->setValue(field, stored);
    if (!UnitProjectCalc::RecalculateOwner(table, works).ok) {
        item->setValue(field, old); // a base that closes a cycle is refused
        return false;
    }
    return true;
}

bool GfQdBusiness::RateValue(const QVariant& value, QVariant& stored)
{
    if (value.userType() != QMetaType::QString)
        return TableOps::numericValue(value, stored);
    // The rate column is in percent: "3.41%" and "3.41" are both 3.41, "9‰" is 0.9.
    QString text = value.toString().trimmed();
    double scale = 1;
    if (text.endsWith(QLatin1Char('%')) || text.endsWith(QChar(0xFF05))) {
        text.chop(1);
    } else if (text.endsWith(QChar(0x2030))) {
        text.chop(1);
        scale = 0.1;
    }
    if (!TableOps::numericValue(text, stored))
        return false;
    if (stored.isValid())
        stored = stored.toDouble() * scale;
    return true;
}

BaseDataItem* GfQdBusiness::InsertItem(ConstructionWorks* works, GfSjQdTable* table, int index)
{
    Q_UNUSED(works)
    return TableOps::insertNew(table, index, Fee);
}

BaseDataItem* GfQdBusiness::AppendItem(ConstructionWorks* works, GfSjQdTable* table)
{
    return InsertItem(works, table, table ? table->count() : 0);
}

bool GfQdBusiness::RemoveItem(ConstructionWorks* works, GfSjQdTable* table, BaseDataItem* item)
{
    const int row = table ? table->GetItemIndexInOrder(item) : -1;
    if (row < 0)
        return false;
    table->BaseDataItemRemoveAt(row);
    UnitProjectCalc::RecalculateOwner(table, works);
    return true;
}

bool GfQdBusiness::IsEmptyItem(BaseDataItem* item)
{
    return TableOps::isBlank(item);
}

bool GfQdBusiness::GridRowCanMove(GfSjQdTable* table, int from, int to)
{
    return TableOps::canMove(table, from, to, -1);
}

bool GfQdBusiness::GridRowMove(GfSjQdTable* table, int from, int to)
{
    if (!GridRowCanMove(table, from, to) || !table->BaseDataItemMove(from, to))
        return false;
    UnitProjectCalc::RecalculateOwner(table); // a rate is taken from the first row of its name
    return true;
}

void GfQdBusiness::CalculateGfQdTable(ConstructionWorks* works, GfSjQdTable* table)
{
    // Fees feed taxes and both feed fee variables: the whole unit project follows.
    UnitProjectCalc::RecalculateOwner(table, works);
}

void GfQdBusiness::ReplaceTableContentFromOther(GfSjQdTable* target, const GfSjQdTable* source)
{
    TableOps::replaceRows(target, source);
    UnitProjectCalc::RecalculateOwner(target);
}
