#pragma once

#include "common/MaterialListModel.h"

class ZbrClGzfQdTable;

// The model of "招标人材料购置费清单".
class ZbrClGzfQdModel : public MaterialListModel
{
    Q_OBJECT
public:
    explicit ZbrClGzfQdModel(QObject* parent = nullptr);

protected:
    QString modifyLabel() const override { return QStringLiteral("修改招标人材料购置费清单行"); }
    bool applyEdit(int row, int field, const QVariant& value) override;
    QColor cellTextColor(int row, int field) const override;
    QColor cellBackgroundColor(int row, int field) const override;

private:
    ZbrClGzfQdTable* pageTable() const;
};
