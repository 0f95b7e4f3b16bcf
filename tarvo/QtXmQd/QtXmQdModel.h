#pragma once

#include "common/BillModel.h"

class AmountEditor;
class QtXmQdHzTable;

// The model of the other items list. Row kinds: 0 ordinary, 1 new empty, 2 subtotal,
// 3 calculation (its amount is a formula), 4 total (read only).
class QtXmQdModel : public BillModel
{
    Q_OBJECT
public:
    static constexpr int AmountField = 3;
    static constexpr int EvaluatedAmountField = 6;

    explicit QtXmQdModel(QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // Row commands of the grid's context menu.
    bool ToggleCalculateRow(int row);
    bool ToggleSubTotalRow(int row);
    AmountEditor* amountEditor() const { return m_amountEditor; }

public slots:
    void slotToEditFormula(QString formula);

signals:
    void signalFormulaEditFinished();
    // The amount editor asks for the formula dialog on this row.
    void signalEditFormulaRequested(int row, QString formula);

protected:
    QString modifyLabel() const override { return QStringLiteral("修改其他项目清单行"); }
    bool checkEdit(int row, int field, QVariant& value) override;
    bool applyEdit(int row, int field, const QVariant& value) override;
    bool isFixedRow(const BaseDataItem* item) const override;

private:
    QtXmQdHzTable* pageTable() const;
    AmountEditor* m_amountEditor;
};
