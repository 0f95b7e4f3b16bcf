#pragma once

#include "BaseDataItem.h"
#include "TableBaseObject.h"

#include <QList>

// A table of rows. Rows are owned by the table; a removed row is handed to the open undo
// record (so that undo can put the very same row back) or deleted when nothing records.
class GeneralTableBase : public TableBaseObject
{
public:
    GeneralTableBase(int tableType, WorkBaseObject* works);
    ~GeneralTableBase() override;
    GeneralTableBase(const GeneralTableBase&) = delete;
    GeneralTableBase& operator=(const GeneralTableBase&) = delete;

    // A new empty row of this table's row class, not yet in the table.
    virtual BaseDataItem* CreateItem() const = 0;

    int count() const { return m_items.size(); }
    BaseDataItem* at(int row) const
    {
        return row >= 0 && row < m_items.size() ? m_items.at(row) : nullptr;
    }
    const QList<BaseDataItem*>& items() const { return m_items; }
    int GetItemIndexInOrder(const BaseDataItem* item) const;

    void BaseDataItemAppend(BaseDataItem* item);
    void BaseDataItemInsert(int row, BaseDataItem* item);
    void BaseDataItemRemoveAt(int row);
    // Removes the given rows (ascending, each once; others are ignored) in one pass over the
    // table. Journalled as removals last row first, as a loop of BaseDataItemRemoveAt would.
    void BaseDataItemRemoveRows(const QList<int>& rows);
    bool BaseDataItemMove(int from, int to);
    // Puts the rows into the given order (a permutation of the current rows).
    void SetItemOrder(const QList<BaseDataItem*>& order);
    void Clear();

    // Changes are journalled only for tables that belong to a unit project of an open
    // project; temporary tables (templates, copies) are not.
    bool isJournalled() const { return parentObject() != nullptr; }

    // Undo/redo and loading: structural changes that are never journalled.
    void attach(int row, BaseDataItem* item);
    BaseDataItem* detach(int row);
    void reorder(const QList<BaseDataItem*>& order);

private:
    QList<BaseDataItem*> m_items;
};

// Declares a row class and its table class with a type code.
#define TARVO_DECLARE_TABLE(ItemClass, TableClass, TypeCode)                                       \
    class ItemClass : public BaseDataItem                                                          \
    {                                                                                              \
    };                                                                                             \
    class TableClass : public GeneralTableBase                                                     \
    {                                                                                              \
    public:                                                                                        \
        static constexpr int Type = TypeCode;                                                      \
        explicit TableClass(WorkBaseObject* works = nullptr) : GeneralTableBase(Type, works) {}    \
        BaseDataItem* CreateItem() const override { return new ItemClass; }                        \
    };
