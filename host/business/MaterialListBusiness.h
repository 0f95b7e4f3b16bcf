#pragma once

#include "BusinessFaultInjection.h"
#include "TableOps.h"
#include "UnitProjectCalc.h"

#include "GeneralTableBase.h"

#include <QColor>
#include <QVariant>

class ConstructionWorks;

// The rules every materials list shares (tenderer-purchased, provisional, evaluated).
// Row kinds: 1 material, 2 total. Amount (10) = quantity (9) x unit price (7), in fen; the
// total row sums the amounts. Each list's service derives from this with its own table.
template <typename Table> class MaterialListBusiness
{
public:
    enum Kind { Material = 1, Total = 2 };

    static bool ProcColunmValueChanged(ConstructionWorks*, Table* table, int row, int field,
                                       const QVariant& value)
    {
        BusinessFaultInjection::check();
        return TableOps::materialValueChanged(table, row, field, value);
    }
    static bool CheckExistedTotalRow(Table* table, BaseDataItem** total = nullptr)
    {
        BaseDataItem* found = TableOps::findKind(table, Total);
        if (total)
            *total = found;
        return found != nullptr;
    }
    static bool CheckIsEmptyRow(BaseDataItem* item)
    {
        return item && item->getKind() != Total && TableOps::isBlank(item);
    }
    // Colours of inconsistent cells; an invalid colour leaves the grid's default.
    static QColor GetCellTextColor(Table*, int, int) { return QColor(); }
    static QColor GetCellBackgroundColor(Table*, int, int) { return QColor(); }
    static BaseDataItem* InsertItem(ConstructionWorks*, Table* table, int row)
    {
        if (!table)
            return nullptr;
        if (row < 0 || row > table->count())
            row = table->count();
        BaseDataItem* total = nullptr;
        if (CheckExistedTotalRow(table, &total))
            row = qMin(row, table->GetItemIndexInOrder(total)); // nothing goes below the total
        return TableOps::insertNew(table, row, Material);
    }
    static bool RemoveItem(ConstructionWorks*, Table* table, int row)
    {
        BaseDataItem* item = table ? table->at(row) : nullptr;
        if (!item || item->getKind() == Total)
            return false;
        table->BaseDataItemRemoveAt(row);
        TableOps::calculateMaterialList(table);
        UnitProjectCalc::RecalculateOwner(table);
        return true;
    }
    static bool GridRowCanMove(Table* table, int from, int to)
    {
        return TableOps::canMove(table, from, to, Total);
    }
    static bool GridRowMove(ConstructionWorks*, Table* table, int from, int to)
    {
        return GridRowCanMove(table, from, to) && table->BaseDataItemMove(from, to);
    }
};
