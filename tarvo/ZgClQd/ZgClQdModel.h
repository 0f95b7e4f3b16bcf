#pragma once

#include "common/MaterialListModel.h"

class ZgjClHzTable;

// The model of "暂估材料(工程设备)清单".
class ZgClQdModel : public MaterialListModel
{
    Q_OBJECT
public:
    explicit ZgClQdModel(QObject* parent = nullptr);

    // The provisional attribute reads "是" or "否" (and is typed so).
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    QString modifyLabel() const override { return QStringLiteral("修改暂估价材料清单行"); }
    bool applyEdit(int row, int field, const QVariant& value) override;
    QColor cellTextColor(int row, int field) const override;
    QColor cellBackgroundColor(int row, int field) const override;

private:
    ZgjClHzTable* pageTable() const;
};
