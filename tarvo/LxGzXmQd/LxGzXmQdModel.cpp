#include "LxGzXmQdModel.h"

#include "LxGzXmQdJJjbBusiness.h"

#include "LxGzXmRgDjQdTable.h"

#include <QFont>

LxGzXmQdModel::LxGzXmQdModel(QObject* parent) : BillModel(parent) {}

QVariant LxGzXmQdModel::data(const QModelIndex& index, int role) const
{
    const BaseDataItem* item = index.isValid() ? itemAt(index.row()) : nullptr;
    if (item && role == Qt::FontRole) {
        QFont font(QStringLiteral("SimSun"), 9);
        font.setBold(item->getKind() == 1); // summary rows
        return font;
    }
    return BillModel::data(index, role);
}

bool LxGzXmQdModel::checkEdit(int row, int field, QVariant& value)
{
    Q_UNUSED(row)
    // The price and the provisional quantity (field 6) are numbers.
    return field == PriceField || field == 6 ? evaluateNumeric(value) : true;
}

bool LxGzXmQdModel::applyEdit(int row, int field, const QVariant& value)
{
    return LxGzXmQdJJjbBusiness::ProcColunmValueChanged(
        works(), static_cast<LxGzXmRgDjQdTable*>(table()), row, field, value);
}
