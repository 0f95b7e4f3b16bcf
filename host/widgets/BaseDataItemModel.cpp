#include "BaseDataItemModel.h"

#include "ConstructionWorks.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"

#include <QFont>
#include <QSize>

BaseDataItemModel::BaseDataItemModel(QObject* parent) : QAbstractTableModel(parent)
{
    connect(RURecordControl::GetInstance(), &RURecordControl::signalTableChanged, this,
            &BaseDataItemModel::onTableChanged);
}

void BaseDataItemModel::setColumns(const QVector<HeaderColumn>& columns)
{
    beginResetModel();
    m_columns = columns;
    endResetModel();
}

int BaseDataItemModel::fieldOfColumn(int column) const
{
    return column >= 0 && column < m_columns.size() ? m_columns.at(column).field : -1;
}

int BaseDataItemModel::columnOfField(int field) const
{
    for (int c = 0; c < m_columns.size(); ++c)
        if (m_columns.at(c).field == field)
            return c;
    return -1;
}

void BaseDataItemModel::setTableSource(ConstructionWorks* works, GeneralTableBase* table)
{
    beginResetModel();
    m_works = works;
    m_table = table;
    endResetModel();
}

BaseDataItem* BaseDataItemModel::itemAt(int row) const
{
    return m_table ? m_table->at(row) : nullptr;
}

bool BaseDataItemModel::isLocked() const
{
    if (!m_table)
        return true;
    if (TableBaseObject::GetReadOnlyLocked(m_table))
        return true;
    const ProjectWorks* owner = m_table->getOwner();
    return owner && (owner->GetDqdZdSd() || owner->IsReadOnly());
}

void BaseDataItemModel::onTableChanged(GeneralTableBase* table, const TableChange& change)
{
    if (!m_table || table != m_table)
        return;
    if (change.rowsChanged) {
        resetModel();
        return;
    }
    if (change.firstRow < 0 || change.lastRow >= rowCount() || columnCount() == 0)
        return;
    emit dataChanged(index(change.firstRow, 0), index(change.lastRow, columnCount() - 1));
    emit headerDataChanged(Qt::Vertical, change.firstRow, change.lastRow);
}

void BaseDataItemModel::resetModel()
{
    beginResetModel();
    endResetModel();
}

int BaseDataItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_table ? 0 : m_table->count();
}

int BaseDataItemModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_columns.size();
}

QVariant BaseDataItemModel::data(const QModelIndex& index, int role) const
{
    const BaseDataItem* item = index.isValid() ? itemAt(index.row()) : nullptr;
    if (!item || index.column() >= m_columns.size())
        return QVariant();
    const HeaderColumn& column = m_columns.at(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return item->getValueStr(column.field);
    case Qt::EditRole:
        // Text, so that every cell is edited in a line edit where numbers and expressions
        // can be typed alike.
        return item->getValueStr(column.field);
    case Qt::TextAlignmentRole:
        return int(column.align);
    case Qt::FontRole: {
        static const QFont font(QStringLiteral("SimSun"), 9); // asked for by every painted cell
        return font;
    }
    case Qt::SizeHintRole:
        return item->getRowHeight() > 0 ? QVariant(QSize(column.width, item->getRowHeight()))
                                        : QVariant();
    default:
        return QVariant();
    }
}

QVariant BaseDataItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal) {
        if (section < 0 || section >= m_columns.size())
            return QVariant();
        if (role == Qt::DisplayRole)
            return m_columns.at(section).title;
        if (role == Qt::TextAlignmentRole)
            return int(Qt::AlignCenter);
        return QVariant();
    }
    if (role == Qt::DisplayRole)
        return section + 1;
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignCenter);
    return QVariant();
}

Qt::ItemFlags BaseDataItemModel::flags(const QModelIndex& index) const
{
    if (!index.isValid() || !itemAt(index.row()))
        return Qt::NoItemFlags;
    if (isLocked())
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
}

void BaseDataItemModel::pasteCells(const QVector<QPair<QModelIndex, QString>>& cells)
{
    for (const auto& cell : cells)
        setData(cell.first, cell.second, Qt::EditRole);
}
