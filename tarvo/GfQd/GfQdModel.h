#pragma once

#include "common/BillModel.h"

class GfSjQdTable;

// The model of the statutory fees and taxes list: field 1 serial, 4 rate in percent,
// 5 amount.
class GfQdModel : public BillModel
{
    Q_OBJECT
public:
    static constexpr int BaseField = 3;
    static constexpr int RateField = 4;
    static constexpr int AmountField = 5;

    explicit GfQdModel(QObject* parent = nullptr);
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // The rate as shown: empty for 0, one "%" after a positive rate, none after a negative one.
    static QString rateText(const QVariant& value);

protected:
    QString modifyLabel() const override { return QStringLiteral("修改规费税金清单行"); }
    // A rate must read as a number (in percent), a base as an expression over fee variables
    // that closes no cycle; otherwise the page's warning and nothing changes.
    bool checkEdit(int row, int field, QVariant& value) override;
    bool applyEdit(int row, int field, const QVariant& value) override;
};
