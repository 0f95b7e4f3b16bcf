#include "ZgClQdModel.h"

#include "BaseDataItem.h"
#include "ZgClQdBusiness.h"

ZgClQdModel::ZgClQdModel(QObject* parent) : MaterialListModel(parent) {}

QVariant ZgClQdModel::data(const QModelIndex& index, int role) const
{
    if ((role == Qt::DisplayRole || role == Qt::EditRole) && index.isValid() &&
        fieldOfColumn(index.column()) == ZgClQdBusiness::ProvisionalField) {
        const BaseDataItem* item = itemAt(index.row());
        if (!item || item->getKind() != ZgClQdBusiness::Material || TableOps::isBlank(item))
            return QString();
        return item->getValue(ZgClQdBusiness::ProvisionalField).toBool() ? QStringLiteral("是")
                                                                         : QStringLiteral("否");
    }
    if (role == Qt::TextAlignmentRole && index.isValid() &&
        fieldOfColumn(index.column()) == ZgClQdBusiness::ProvisionalField)
        return AlignCentre;
    return MaterialListModel::data(index, role);
}

ZgjClHzTable* ZgClQdModel::pageTable() const
{
    return static_cast<ZgjClHzTable*>(table());
}

bool ZgClQdModel::applyEdit(int row, int field, const QVariant& value)
{
    return ZgClQdBusiness::ProcColunmValueChanged(works(), pageTable(), row, field, value);
}

QColor ZgClQdModel::cellTextColor(int row, int field) const
{
    return ZgClQdBusiness::GetCellTextColor(pageTable(), row, field);
}

QColor ZgClQdModel::cellBackgroundColor(int row, int field) const
{
    return ZgClQdBusiness::GetCellBackgroundColor(pageTable(), row, field);
}
