#include "QtXmQdModel.h"

#include "TarvoGuard.h"

#include "AmountEditor.h"
#include "QtXmQdJJjbBusiness.h"
#include "SkinManager.h"
#include "XmBjHzbBusiness.h"

#include "HostIds.h"
#include "QtXmQdHzTable.h"

#include <QColor>
#include <QFont>

QtXmQdModel::QtXmQdModel(QObject* parent)
    : BillModel(parent), m_amountEditor(new AmountEditor(this))
{
    connect(m_amountEditor, &AmountEditor::signalEditFinished, this,
            &QtXmQdModel::signalFormulaEditFinished);
    connect(m_amountEditor, &AmountEditor::signalToEditFormula, this,
            &QtXmQdModel::slotToEditFormula);
}

void QtXmQdModel::slotToEditFormula(QString formula)
{
    TARVO_GUARD("QtXmQd\\QtXmQdModel", "QtXmQdModel::slotToEditFormula")
    {
        emit signalEditFormulaRequested(m_amountEditor->row(), formula);
    };
}

QtXmQdHzTable* QtXmQdModel::pageTable() const
{
    return static_cast<QtXmQdHzTable*>(table());
}

bool QtXmQdModel::isFixedRow(const BaseDataItem* item) const
{
    return item->getKind() == QtXmQdJJjbBusiness::Total;
}

QVariant QtXmQdModel::data(const QModelIndex& index, int role) const
{
    const BaseDataItem* item = index.isValid() ? itemAt(index.row()) : nullptr;
    if (!item)
        return BillModel::data(index, role);
    const int field = fieldOfColumn(index.column());
    const int kind = item->getKind();
    const bool calculation = kind == QtXmQdJJjbBusiness::Calculation;
    switch (role) {
    case Qt::DisplayRole:
        // A calculation row shows what its formula comes to.
        if (calculation && field == AmountField)
            return amountText(item->getValue(EvaluatedAmountField));
        if (field == AmountField)
            return amountText(item->getValue(AmountField));
        return BillModel::data(index, role);
    case Qt::EditRole:
        if (calculation && field == AmountField)
            return XmBjHzbBusiness::GetPureFormulaFromJss(item->getValue(AmountField).toString());
        return BillModel::data(index, role);
    case Qtitan::EditorRole:
        if (!calculation || field != AmountField || isReadOnlyView())
            return QVariant();
        m_amountEditor->setWorks(works());
        m_amountEditor->setRow(index.row());
        return QVariant::fromValue<QObject*>(m_amountEditor);
    case Qt::TextAlignmentRole:
        if (field == AmountField) {
            bool number = false;
            data(index, Qt::DisplayRole).toString().toDouble(&number);
            return number ? AlignRightCentre : AlignCentre;
        }
        if (field == 1 || field == 5)
            return AlignCentre;
        if (field == 2)
            return kind == QtXmQdJJjbBusiness::Total ? AlignCentre : AlignLeftCentre;
        return AlignLeftCentre;
    case Qt::BackgroundRole:
        if (kind == QtXmQdJJjbBusiness::SubTotal)
            return SkinManager::getInstance()->getVXColor(
                QStringLiteral("FeeTableRateAttributesLine"), QColor(255, 236, 255));
        if (calculation && field == AmountField)
            return SkinManager::getInstance()->getVXColor(QStringLiteral("FeiLvEmptyColor"),
                                                          QColor(217, 217, 217));
        return BillModel::data(index, role);
    case Qt::FontRole:
        return QFont(QStringLiteral("SimSun"), 9);
    default:
        return BillModel::data(index, role);
    }
}

bool QtXmQdModel::checkEdit(int row, int field, QVariant& value)
{
    Q_UNUSED(row)
    if (field != AmountField)
        return true;
    // The amount is checked as a number or expression but stored as typed: a calculation
    // row keeps its formula.
    QVariant checked = value;
    return evaluateNumeric(checked);
}

bool QtXmQdModel::applyEdit(int row, int field, const QVariant& value)
{
    BaseDataItem* item = itemAt(row);
    if (item && item->getKind() == QtXmQdJJjbBusiness::NewEmpty)
        item->setKind(QtXmQdJJjbBusiness::Ordinary);
    return QtXmQdJJjbBusiness::ProcColunmValueChanged(works(), pageTable(), row, field, value);
}

bool QtXmQdModel::ToggleCalculateRow(int row)
{
    const BaseDataItem* item = itemAt(row);
    if (!item || isFixedRow(item))
        return false;
    const bool set = item->getKind() != QtXmQdJJjbBusiness::Calculation;
    return recorded(OperationKind::Edit, modifyLabel(),
                    [&] { return QtXmQdJJjbBusiness::SetAsCalculateRow(works(), row, set); });
}

bool QtXmQdModel::ToggleSubTotalRow(int row)
{
    const BaseDataItem* item = itemAt(row);
    if (!item || isFixedRow(item))
        return false;
    const bool set = item->getKind() != QtXmQdJJjbBusiness::SubTotal;
    return recorded(OperationKind::Edit, modifyLabel(),
                    [&] { return QtXmQdJJjbBusiness::SetAsSubTotalRow(works(), row, set); });
}
