#include "SjCqXPsClModel.h"

#include "SjCqXPsClBusiness.h"

SjCqXPsClModel::SjCqXPsClModel(QObject* parent) : MaterialListModel(parent) {}

QVariant SjCqXPsClModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::TextAlignmentRole && index.isValid()) {
        const int field = fieldOfColumn(index.column());
        if (field == 2 || field == 8 || field == 12 || field == 13 || field == 14)
            return AlignLeftCentre;
    }
    return MaterialListModel::data(index, role);
}

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
