#include "ExhibitFZgClModel.h"

#include "BaseDataItem.h"

ExhibitFZgClModel::ExhibitFZgClModel(QObject* parent) : QAbstractTableModel(parent) {}

void ExhibitFZgClModel::setMaterials(const QList<BaseDataItem*>& materials)
{
    beginResetModel();
    m_all = materials;
    rebuild();
    endResetModel();
}

void ExhibitFZgClModel::setKeywords(const QString& name, const QString& model)
{
    beginResetModel();
    m_name = name.trimmed();
    m_model = model.trimmed();
    rebuild();
    endResetModel();
}

void ExhibitFZgClModel::rebuild()
{
    if (m_name.isEmpty() && m_model.isEmpty()) {
        m_rows = m_all;
        return;
    }
    m_rows.clear();
    for (BaseDataItem* m : std::as_const(m_all))
        if (m->getValue(3).toString().contains(m_name, Qt::CaseInsensitive) &&
            m->getValue(4).toString().contains(m_model, Qt::CaseInsensitive))
            m_rows.append(m);
}

BaseDataItem* ExhibitFZgClModel::material(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row) : nullptr;
}

int ExhibitFZgClModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ExhibitFZgClModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(eColumnCount);
}

QVariant ExhibitFZgClModel::data(const QModelIndex& index, int role) const
{
    const BaseDataItem* m = material(index.row());
    if (!m || index.column() < 0 || index.column() >= eColumnCount)
        return QVariant();
    if (role == Qt::DisplayRole)
        return m->getValue(3 + index.column()).toString();
    if (role == Qt::TextAlignmentRole)
        return int((index.column() == eDw ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
    return QVariant();
}

QVariant ExhibitFZgClModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= eColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole) {
        static const char* const titles[] = {"材料名称", "规格型号", "单位"};
        return QString::fromUtf8(titles[section]);
    }
    return QVariant();
}
