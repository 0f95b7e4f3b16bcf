#pragma once

#include "common/MaterialListModel.h"

class SjCqXPsClTable;

// The model of "需评审的材料清单".
class SjCqXPsClModel : public MaterialListModel
{
    Q_OBJECT
public:
    explicit SjCqXPsClModel(QObject* parent = nullptr);

    // The tender code and the descriptive columns read from the left.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    QString modifyLabel() const override { return QStringLiteral("修改需评审材料清单行"); }
    bool applyEdit(int row, int field, const QVariant& value) override;
    QColor cellTextColor(int row, int field) const override;
    QColor cellBackgroundColor(int row, int field) const override;

private:
    SjCqXPsClTable* pageTable() const;
};
