#include "CkZbZgClQdModel.h"

#include "JfszTable.h"
#include "SkinManager.h"
#include "ZgClZsItem.h"
#include "ZgjClHzTable.h"

#include <QColor>
#include <QSet>

namespace {

// Material fields of the columns after the first.
const int kFields[] = {-1, 3, 4, 12, 13, 8, 14, 5, 7};

} // namespace

CkZbZgClQdModel::CkZbZgClQdModel(QObject* parent) : QAbstractTableModel(parent) {}

void CkZbZgClQdModel::setNodes(const QList<ZgClZsItem*>& nodes, const JfszTable* format)
{
    beginResetModel();
    m_rows.clear();
    m_format = format;
    m_materials = 0;
    QHash<int, QList<ZgClZsItem*>> children;
    QSet<int> ids;
    for (ZgClZsItem* node : nodes)
        ids.insert(node->GetId());
    QList<ZgClZsItem*> roots;
    for (ZgClZsItem* node : nodes) {
        if (node->GetParentId() != node->GetId() && ids.contains(node->GetParentId()))
            children[node->GetParentId()].append(node);
        else
            roots.append(node);
        if (node->GetZgClZsItemType() != ZgClZsItem::UnitProject)
            ++m_materials;
    }
    // Depth first without recursion; a node is placed once even if the ids make a loop.
    QSet<int> placed;
    QList<Row> stack;
    for (int i = roots.size() - 1; i >= 0; --i)
        stack.append({roots.at(i), 0});
    while (!stack.isEmpty()) {
        const Row row = stack.takeLast();
        if (placed.contains(row.node->GetId()))
            continue;
        placed.insert(row.node->GetId());
        m_rows.append(row);
        const QList<ZgClZsItem*> below = children.value(row.node->GetId());
        for (int i = below.size() - 1; i >= 0; --i)
            stack.append({below.at(i), row.depth + 1});
    }
    endResetModel();
}

void CkZbZgClQdModel::setKeywords(const QString& name, const QString& spec)
{
    m_nameKeyword = name.trimmed();
    m_specKeyword = spec.trimmed();
    if (!m_rows.isEmpty())
        emit dataChanged(index(0, 0), index(m_rows.size() - 1, eColumnCount - 1),
                         {Qt::ForegroundRole});
}

ZgClZsItem* CkZbZgClQdModel::nodeAt(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).node : nullptr;
}

int CkZbZgClQdModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int CkZbZgClQdModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : eColumnCount;
}

QString CkZbZgClQdModel::text(const ZgClZsItem* node, int depth, int column) const
{
    if (node->GetZgClZsItemType() == ZgClZsItem::UnitProject)
        return column == eZbBm ? node->GetZxGcName() : QString();
    const ZgjClHzItem* material = node->GetZgjClHzItem();
    if (column == eZbBm) {
        const QString code = node->GetOwnZbBm();
        if (code.isEmpty())
            return QStringLiteral("缺少招标编码");
        return QString(2 * depth, QLatin1Char(' ')) + code;
    }
    if (!material)
        return QString();
    const QVariant value = material->getValue(kFields[column]);
    if (column == eZgDj) {
        bool isNumber = false;
        const double price = value.toDouble(&isNumber);
        if (!value.isValid() || !isNumber)
            return value.toString();
        return m_format ? m_format->PriceFloatFormatToStr(price, -1)
                        : QString::number(price, 'f', 2);
    }
    return value.toString();
}

bool CkZbZgClQdModel::hitsKeyword(const ZgClZsItem* node, int column) const
{
    const ZgjClHzItem* material = node->GetZgjClHzItem();
    if (!material)
        return false;
    if (column == eClMc && !m_nameKeyword.isEmpty())
        return material->getValue(3).toString().contains(m_nameKeyword, Qt::CaseInsensitive);
    if (column == eGgXh && !m_specKeyword.isEmpty())
        return material->getValue(4).toString().contains(m_specKeyword, Qt::CaseInsensitive);
    return false;
}

QVariant CkZbZgClQdModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size() || index.column() >= eColumnCount)
        return QVariant();
    const Row& row = m_rows.at(index.row());
    const int column = index.column();
    const bool material = row.node->GetZgClZsItemType() != ZgClZsItem::UnitProject;
    switch (role) {
    case Qt::DisplayRole:
        return text(row.node, row.depth, column);
    case Qt::TextAlignmentRole:
        if (column == eDw)
            return int(Qt::AlignHCenter | Qt::AlignVCenter);
        if (column == eZgDj)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        if (material && column == eZbBm && row.node->GetOwnZbBm().isEmpty())
            return SkinManager::getInstance()->getVXColor(QStringLiteral("Jjb_TextColor_Bjjcl"),
                                                          QColor(255, 0, 0));
        if (material && hitsKeyword(row.node, column))
            return SkinManager::getInstance()->getVXColor(QStringLiteral("Xxj_BgSsGjzYs"),
                                                          QColor(255, 0, 0));
        return QVariant();
    case Qt::BackgroundRole:
        if (row.node->GetFlag() == 1)
            return SkinManager::getInstance()->getVXColor(
                QStringLiteral("DbZbZgClAHModel_ZgWithZbAndTbCl"), QColor(215, 255, 215));
        return QVariant();
    default:
        return QVariant();
    }
}

QVariant CkZbZgClQdModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= eColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole) {
        static const char* const titles[] = {"招标编码", "材料名称", "规格型号", "产地",    "厂家",
                                             "品种",     "质里档次", "单位",     "暂估单价"};
        return QString::fromUtf8(titles[section]);
    }
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignCenter);
    return QVariant();
}
