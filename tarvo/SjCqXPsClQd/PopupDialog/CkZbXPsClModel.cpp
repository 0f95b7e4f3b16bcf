#include "CkZbXPsClModel.h"

#include <QFont>

CkZbXPsClModel::CkZbXPsClModel(QObject* parent) : QAbstractTableModel(parent) {}

void CkZbXPsClModel::setMaterials(const QVector<TenderEvaluatedMaterial>& materials)
{
    beginResetModel();
    m_materials = materials;
    endResetModel();
}

QString CkZbXPsClModel::Text(const TenderEvaluatedMaterial& m, int column)
{
    switch (column) {
    case eXh:
        return m.serial;
    case eZbBm:
        return m.code;
    case eClMc:
        return m.name;
    case eGgXh:
        return m.spec;
    case eDw:
        return m.unit;
    case eCd:
        return m.origin;
    case eCj:
        return m.manufacturer;
    case ePz:
        return m.variety;
    case eZlDc:
        return m.grade;
    case eBz:
        return m.remark;
    default:
        return QString();
    }
}

int CkZbXPsClModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_materials.size();
}

int CkZbXPsClModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : eColumnCount;
}

QVariant CkZbXPsClModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_materials.size())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return Text(m_materials.at(index.row()), index.column());
    case Qt::TextAlignmentRole:
        return int(
            (index.column() == eXh || index.column() == eDw ? Qt::AlignHCenter : Qt::AlignLeft) |
            Qt::AlignVCenter);
    case Qt::FontRole:
        return QFont(QStringLiteral("SimSun"), 9);
    default:
        return QVariant();
    }
}

QVariant CkZbXPsClModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char* const titles[] = {"序号", "招标编码", "材料名称", "规格型号", "单位",
                                         "产地", "厂家",     "品种",     "质量档次", "备注"};
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
        section < eColumnCount)
        return QString::fromUtf8(titles[section]);
    if (orientation == Qt::Vertical && role == Qt::DisplayRole)
        return section + 1;
    return QVariant();
}
