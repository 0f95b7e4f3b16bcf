#include "GfQdModel.h"

#include "Communication.h"
#include "GfQdBusiness.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "UnitProjectCalc.h"
#include "zMessageBox.h"

#include "GfSjQdTable.h"

#include <QFont>
#include <QRegularExpression>

GfQdModel::GfQdModel(QObject* parent) : BillModel(parent) {}

QString GfQdModel::rateText(const QVariant& value)
{
    bool ok = false;
    const double rate = value.toString().remove(QLatin1Char('%')).toDouble(&ok);
    if (ok && rate == 0)
        return QString();
    QString text = value.toString();
    if (value.userType() == QMetaType::Double)
        text = QString::number(value.toDouble(), 'g', 15);
    static const QRegularExpression percentAtEnd(QStringLiteral("%$"));
    if (!text.isEmpty() && ok && rate > 0 && !percentAtEnd.match(text).hasMatch())
        text += QLatin1Char('%');
    return text;
}

QVariant GfQdModel::data(const QModelIndex& index, int role) const
{
    const BaseDataItem* item = index.isValid() ? itemAt(index.row()) : nullptr;
    if (!item)
        return BillModel::data(index, role);
    const int field = fieldOfColumn(index.column());
    switch (role) {
    case Qt::DisplayRole:
        if (field == RateField)
            return rateText(item->getValue(RateField));
        if (field == AmountField || field == 6)
            return amountText(item->getValue(field));
        return BillModel::data(index, role);
    case Qt::TextAlignmentRole:
        if (field == 1)
            return AlignCentre;
        if (field == RateField || field == AmountField)
            return AlignRightCentre;
        return BillModel::data(index, role);
    case Qt::FontRole:
        return QFont(QStringLiteral("SimSun"), 9);
    default:
        return BillModel::data(index, role);
    }
}

bool GfQdModel::checkEdit(int row, int field, QVariant& value)
{
    QString refusal;
    if (field == RateField) {
        QVariant stored;
        if (!GfQdBusiness::RateValue(value, stored))
            refusal = QStringLiteral("请正确输入实数或计算表达式!");
    } else if (field == BaseField && !value.toString().trimmed().isEmpty()) {
        double result = 0;
        QString error;
        if (!LxGzXmQdJJjbBusiness::CalculateFormula(works(), value.toString(), result, error))
            refusal = QStringLiteral("请正确输入实数或计算表达式!");
        else
            refusal = UnitProjectCalc::FindCycle(works(), table(), row, value.toString());
    }
    if (refusal.isEmpty())
        return true;
    showInformation(Communication::GetInstance()->GetMainWindow(), QStringLiteral("提示"), refusal,
                    QMessageBox::Ok, QMessageBox::Warning);
    return false;
}

bool GfQdModel::applyEdit(int row, int field, const QVariant& value)
{
    return GfQdBusiness::ProcColunmValueChanged(works(), static_cast<GfSjQdTable*>(table()), row,
                                                field, value);
}
