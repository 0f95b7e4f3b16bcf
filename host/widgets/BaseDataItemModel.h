#pragma once

#include "HeaderColumn.h"
#include "TableChange.h"

#include <QAbstractTableModel>

class BaseDataItem;
class ConstructionWorks;
class GeneralTableBase;

// Base item model of a bill grid: an adapter over one host table. Columns map to field
// numbers through the grid's header configuration. Display is the row's field text, the
// font "SimSun" 9 points, alignment as configured; editing is refused here and left to
// the page models, which route it through their business service.
class BaseDataItemModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit BaseDataItemModel(QObject* parent = nullptr);

    void setColumns(const QVector<HeaderColumn>& columns);
    const QVector<HeaderColumn>& columns() const { return m_columns; }
    int fieldOfColumn(int column) const;
    int columnOfField(int field) const;

    void setTableSource(ConstructionWorks* works, GeneralTableBase* table);
    ConstructionWorks* works() const { return m_works; }
    GeneralTableBase* table() const { return m_table; }
    BaseDataItem* itemAt(int row) const;
    // Whether the table may not be edited (its read-only lock or the project's lock).
    bool isLocked() const;

    void resetModel();
    // The row the grid shows as its fixed footer (the list's total row), or -1.
    virtual int footerRow() const { return -1; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Values pasted into several cells at once. Here each goes through setData; the bill
    // models take the block as one undo step.
    virtual void pasteCells(const QVector<QPair<QModelIndex, QString>>& cells);

private:
    // The journal tells what a record, an undo or a redo changed: changed rows are redrawn,
    // rows that came, went or moved rebuild the model.
    void onTableChanged(GeneralTableBase* table, const TableChange& change);

    QVector<HeaderColumn> m_columns;
    ConstructionWorks* m_works = nullptr;
    GeneralTableBase* m_table = nullptr;
};
