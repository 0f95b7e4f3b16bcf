#pragma once

#include <QVariant>

class BaseDataItem;
class ConstructionWorks;
class GfSjQdTable;

// The statutory fees and taxes list (规费税金清单). Row kinds: 0 fee row, 1 heading row,
// 2 tax row. A row's base (6) is its calculation base (3), an expression over the unit
// project's fee variables; its amount (5) = base x rate (4) / 100. Fee rows are calculated
// first and published as the fee variable "规费合计", so that tax rows can name it in their base.
class GfQdBusiness
{
public:
    enum Kind { Fee = 0, Heading = 1, Tax = 2 };

    static bool ProcColunmValueChanged(ConstructionWorks* works, GfSjQdTable* table, int row,
                                       int field, const QVariant& value);
    static BaseDataItem* InsertItem(ConstructionWorks* works, GfSjQdTable* table, int index);
    static BaseDataItem* AppendItem(ConstructionWorks* works, GfSjQdTable* table);
    static bool RemoveItem(ConstructionWorks* works, GfSjQdTable* table, BaseDataItem* item);
    static bool IsEmptyItem(BaseDataItem* item);
    static bool GridRowCanMove(GfSjQdTable* table, int from, int to);
    static bool GridRowMove(GfSjQdTable* table, int from, int to);
    // Recalculates the unit project that owns the table (UnitProjectCalc).
    static void CalculateGfQdTable(ConstructionWorks* works, GfSjQdTable* table);
    // What the rate column stores for a typed rate (in percent); false when it does not read.
    static bool RateValue(const QVariant& value, QVariant& stored);
    // Replaces the list's rows by copies of the source's rows (journalled on the list).
    static void ReplaceTableContentFromOther(GfSjQdTable* target, const GfSjQdTable* source);
};
