#pragma once

#include "MaterialGridService.h"

#include "MaterialGridRules.h"
#include "TableOps.h"

// The operations that every materials business service (a MaterialListBusiness over its own
// table class) offers under the same names. A page derives from this and adds the
// recalculations its service names in its own way.
template <typename Business, typename Table>
class MaterialGridServiceOf : public MaterialGridService
{
public:
    BaseDataItem* insertItem(GeneralTableBase* table, int index) const override
    {
        return Business::InsertItem(nullptr, page(table), index);
    }
    bool removeItem(ConstructionWorks* works, GeneralTableBase* table, int row) const override
    {
        return Business::RemoveItem(works, page(table), row);
    }
    bool isEmptyRow(BaseDataItem* item) const override { return Business::CheckIsEmptyRow(item); }
    bool hasTotalRow(GeneralTableBase* table) const override
    {
        return Business::CheckExistedTotalRow(page(table), nullptr);
    }
    bool canMoveRows(GeneralTableBase* table, int from, int to) const override
    {
        return Business::GridRowCanMove(page(table), from, to);
    }
    bool moveRows(ConstructionWorks* works, GeneralTableBase* table, int from,
                  int to) const override
    {
        return Business::GridRowMove(works, page(table), from, to);
    }
    std::unique_ptr<GeneralTableBase> newTable() const override
    {
        return std::make_unique<Table>();
    }
    void recalculateList(ConstructionWorks*, GeneralTableBase* table) const override
    {
        TableOps::calculateMaterialList(table);
    }
    void recalculateRow(BaseDataItem*) const override {}
    void keepFirstRows(GeneralTableBase* table, int n) const override
    {
        MaterialGridRules::keepFirstRows(table, n);
    }
    // n rows become n - 1 empty rows.
    void clearAllRows(GeneralTableBase* table) const override
    {
        MaterialGridRules::clearAllRows(table);
    }

protected:
    static Table* page(GeneralTableBase* table) { return static_cast<Table*>(table); }
};
