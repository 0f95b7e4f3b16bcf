#include "CkDwGcZgClSzModel.h"

#include "JfszTable.h"
#include "ZgClZsItem.h"

#include <QColor>

namespace {

// Material field of each column; the tender code column has none.
constexpr int kFields[] = {-1, 3, 4, 12, 13, 8, 14, 5, 6, 7, 9, 10};

const char* const kTitles[] = {"招标编码", "材料名称", "规格型号", "产地", "厂家", "品种",
                               "质量档次", "单位",     "基价",     "调价", "数量", "合价"};

int alignmentOf(int column)
{
    switch (column) {
    case CkDwGcZgClSzModel::eGgXh:
        return Qt::AlignVCenter;
    case CkDwGcZgClSzModel::eDw:
        return Qt::AlignCenter;
    case CkDwGcZgClSzModel::eJj:
    case CkDwGcZgClSzModel::eTj:
    case CkDwGcZgClSzModel::eSl:
    case CkDwGcZgClSzModel::eHj:
        return Qt::AlignRight | Qt::AlignVCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace

CkDwGcZgClSzModel::CkDwGcZgClSzModel(QObject* parent) : QAbstractItemModel(parent) {}

void CkDwGcZgClSzModel::setNodes(const QList<ZgClZsItem*>& nodes, const JfszTable* format)
{
    beginResetModel();
    m_top.clear();
    m_children.clear();
    m_parent.clear();
    m_format = format;
    QHash<int, ZgClZsItem*> byId;
    for (ZgClZsItem* node : nodes)
        byId.insert(node->GetId(), node);
    for (ZgClZsItem* node : nodes) {
        ZgClZsItem* parent = byId.value(node->GetParentId());
        // A node whose parent is missing (or itself) stands at the top rather than vanish.
        if (node->GetZgClZsItemType() == ZgClZsItem::UnitProject || !parent || parent == node) {
            m_top << node;
            continue;
        }
        m_children[parent] << node;
        m_parent.insert(node, parent);
    }
    endResetModel();
}

ZgClZsItem* CkDwGcZgClSzModel::node(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<ZgClZsItem*>(index.internalPointer()) : nullptr;
}

QModelIndex CkDwGcZgClSzModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column < 0 || column >= ColumnCount || row < 0)
        return QModelIndex();
    const QList<ZgClZsItem*>& rows = parent.isValid() ? m_children.value(node(parent)) : m_top;
    if (parent.isValid() && parent.column() != 0)
        return QModelIndex();
    return row < rows.size() ? createIndex(row, column, rows.at(row)) : QModelIndex();
}

QModelIndex CkDwGcZgClSzModel::parent(const QModelIndex& child) const
{
    ZgClZsItem* parent = m_parent.value(node(child));
    if (!parent)
        return QModelIndex();
    return createIndex(int(m_top.indexOf(parent)), 0, parent);
}

int CkDwGcZgClSzModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return m_top.size();
    return parent.column() == 0 ? m_children.value(node(parent)).size() : 0;
}

int CkDwGcZgClSzModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QString CkDwGcZgClSzModel::number(const ZgClZsItem* n, int field, bool total) const
{
    const QVariant value = n->GetZgjClHzItem()->getValue(field);
    if (!value.isValid() || value.toString().isEmpty())
        return QString();
    const double d = value.toDouble();
    if (!m_format)
        return QString::number(d, 'f', 2);
    return total ? m_format->TotalFloatFormatToStr(d, -1) : m_format->PriceFloatFormatToStr(d, -1);
}

QVariant CkDwGcZgClSzModel::data(const QModelIndex& index, int role) const
{
    const ZgClZsItem* n = node(index);
    if (!n)
        return QVariant();
    const bool material = n->GetZgClZsItemType() != ZgClZsItem::UnitProject && n->GetZgjClHzItem();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        if (!material)
            return column == eZbBm ? n->GetZxGcName() : QString();
        if (column == eZbBm)
            return n->GetOwnZbBm().isEmpty() ? QStringLiteral("缺少招标编码") : n->GetOwnZbBm();
        if (column == eJj || column == eTj || column == eSl || column == eHj)
            return number(n, kFields[column], column == eHj);
        return n->GetZgjClHzItem()->getValueStr(kFields[column]);
    case Qt::ForegroundRole:
        if (material && column == eZbBm && n->GetOwnZbBm().isEmpty())
            return QColor(Qt::red);
        return QVariant();
    case Qt::BackgroundRole:
        return n->GetFlag() == 1 ? QVariant(QColor(215, 255, 215)) : QVariant();
    case Qt::TextAlignmentRole:
        return alignmentOf(column);
    default:
        return QVariant();
    }
}

QVariant CkDwGcZgClSzModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
        section < ColumnCount)
        return QString::fromUtf8(kTitles[section]);
    return QAbstractItemModel::headerData(section, orientation, role);
}
