#pragma once

#include "common/BillModel.h"

class LxGzXmRgDjQdTable;

// The model of the daywork labour unit-price list; column 4 is the price in 元/工日.
class LxGzXmQdModel : public BillModel
{
    Q_OBJECT
public:
    static constexpr int PriceField = 4;

    explicit LxGzXmQdModel(QObject* parent = nullptr);
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    QString modifyLabel() const override { return QStringLiteral("修改零星工作项目清单行"); }
    bool checkEdit(int row, int field, QVariant& value) override;
    bool applyEdit(int row, int field, const QVariant& value) override;
    // 4 unit price, 6 provisional quantity, 7 amount.
    NumberKind numberKind(int field) const override
    {
        return field == PriceField ? NumberKind::Price
               : field == 6        ? NumberKind::Quantity
               : field == 7        ? NumberKind::Amount
                                   : NumberKind::None;
    }
};
