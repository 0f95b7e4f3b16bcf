#include "SjCqXPsClModel.h"

#include "SjCqXPsClBusiness.h"

SjCqXPsClModel::SjCqXPsClModel(QObject* parent) : MaterialListModel(parent) {}

SjCqXPsClTable* SjCqXPsClModel::pageTable() const
{
    return static_cast<SjCqXPsClTable*>(table());
}

bool SjCqXPsClModel::applyEdit(int row, int field, const QVariant& value)
{
    return SjCqXPsClBusiness::ProcColunmValueChanged(works(), pageTable(), row, field, value);
}

QColor SjCqXPsClModel::cellTextColor(int row, int field) const
{
    return SjCqXPsClBusiness::GetCellTextColor(pageTable(), row, field);
}

QColor SjCqXPsClModel::cellBackgroundColor(int row, int field) const
{
    return SjCqXPsClBusiness::GetCellBackgroundColor(pageTable(), row, field);
}
