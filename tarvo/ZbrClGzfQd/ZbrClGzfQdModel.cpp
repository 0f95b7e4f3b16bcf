#include "ZbrClGzfQdModel.h"

#include "ZbrClGzfQdBusiness.h"

ZbrClGzfQdModel::ZbrClGzfQdModel(QObject* parent) : MaterialListModel(parent) {}

ZbrClGzfQdTable* ZbrClGzfQdModel::pageTable() const
{
    return static_cast<ZbrClGzfQdTable*>(table());
}

bool ZbrClGzfQdModel::applyEdit(int row, int field, const QVariant& value)
{
    return ZbrClGzfQdBusiness::ProcColunmValueChanged(works(), pageTable(), row, field, value);
}

QColor ZbrClGzfQdModel::cellTextColor(int row, int field) const
{
    return ZbrClGzfQdBusiness::GetCellTextColor(pageTable(), row, field);
}

QColor ZbrClGzfQdModel::cellBackgroundColor(int row, int field) const
{
    return ZbrClGzfQdBusiness::GetCellBackgroundColor(pageTable(), row, field);
}
