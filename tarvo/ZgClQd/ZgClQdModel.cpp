#include "ZgClQdModel.h"

#include "ZgClQdBusiness.h"

ZgClQdModel::ZgClQdModel(QObject* parent) : MaterialListModel(parent) {}

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
