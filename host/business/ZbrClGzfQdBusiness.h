#pragma once

#include "MaterialListBusiness.h"
#include "UnitProjectCalc.h"

class ProgressSink;

#include "ZbrClGzfQdTable.h"

// Calculation of the tenderer-purchased materials fee list (招标人材料购置费清单).
class ZbrClGzfQdBusiness : public MaterialListBusiness<ZbrClGzfQdTable>
{
public:
    using MaterialListBusiness::CheckExistedTotalRow;
    using MaterialListBusiness::InsertItem;

    static void CalGzfQdTable(ConstructionWorks*, ZbrClGzfQdTable* table)
    {
        TableOps::calculateMaterialList(table);
        UnitProjectCalc::RecalculateOwner(table);
    }
    static void CalGzfQdTable(ConstructionWorks* works);
    static void CalculateZbrClItemHJ(BaseDataItem* item);
    // A new material row at index (before the total row at the latest).
    static BaseDataItem* InsertItem(ZbrClGzfQdTable* table, int index);
    static bool CheckExistedTotalRow(const QList<BaseDataItem*>& items, BaseDataItem*& total);
    // Keeps the first n material rows (and the total row).
    static void RemoveAllAndKeepNRow(ZbrClGzfQdTable* table, int n);
    static void RegenerateZbrClGzfQdXH(ConstructionWorks* works);

    // Summarising the unit projects' materials into the list.
    static void ClearBCzDyClBj(ConstructionWorks* works);
    static void HzSyClToZbrCl(ConstructionWorks* works, ProgressSink* progress);
    static void HzZgjClToZbrCl(ConstructionWorks* works, ProgressSink* progress);
    static void UpdateZbrClGzfQdSLAndTJ(ConstructionWorks* works, ProgressSink* progress);
    static void UpdateZbrClGzfQdZgjSLAndTJ(ConstructionWorks* works, ProgressSink* progress);
    static int GetTjByzClCount(ConstructionWorks* works);
    static int GetBCzDyClCount(ConstructionWorks* works);
    static void SetTjByzClBlock(ConstructionWorks* works);
    // Text colour red where prices differ; background where the provisional attribute
    // (name) or the origin differs between unit projects.
    static QColor GetCellTextColor(ZbrClGzfQdTable* table, int row, int field);
    static QColor GetCellBackgroundColor(ZbrClGzfQdTable* table, int row, int field);

private:
    static void summarise(ConstructionWorks* works, bool provisionalOnly, ProgressSink* progress);
    static void refresh(ConstructionWorks* works, bool provisionalOnly, ProgressSink* progress);
};
