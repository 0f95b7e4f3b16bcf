#pragma once

#include <memory>

class BaseDataItem;
class ConstructionWorks;
class GeneralTableBase;

// What the shared materials grid asks of a page's business service. The page hands one to
// MaterialSjWidget; MaterialGridServiceOf maps the operations every materials service shares,
// the page overrides the few that carry its service's own names.
class MaterialGridService
{
public:
    virtual ~MaterialGridService() = default;

    // A new material row at index (before the total row at the latest).
    virtual BaseDataItem* insertItem(GeneralTableBase* table, int index) const = 0;
    // Removes a row (never the total row); false when nothing was removed.
    virtual bool removeItem(ConstructionWorks* works, GeneralTableBase* table, int row) const = 0;
    virtual bool isEmptyRow(BaseDataItem* item) const = 0;
    virtual bool hasTotalRow(GeneralTableBase* table) const = 0;
    virtual bool canMoveRows(GeneralTableBase* table, int from, int to) const = 0;
    virtual bool moveRows(ConstructionWorks* works, GeneralTableBase* table, int from,
                          int to) const = 0;
    // An empty table of the page's class: the grid shows a copy in it while the host rebuilds.
    virtual std::unique_ptr<GeneralTableBase> newTable() const = 0;

    // Recalculates the whole list (amounts and total) after a bulk change.
    virtual void recalculateList(ConstructionWorks* works, GeneralTableBase* table) const = 0;
    // Recalculates one row's amount after its quantity or price was cleared.
    virtual void recalculateRow(BaseDataItem* item) const = 0;
    // Keeps the first n material rows and the total row.
    virtual void keepFirstRows(GeneralTableBase* table, int n) const = 0;
    // Empties the list for "清除所有行".
    virtual void clearAllRows(GeneralTableBase* table) const = 0;
};
