#pragma once

#include "TLxrgwh_Gzwh_Add.h"

// "修改工种": the new name of an unused trade, checked like a new one.
class TLxrgwh_Gzwh_Xg : public TLxrgwh_Gzwh_Add
{
    Q_OBJECT
public:
    TLxrgwh_Gzwh_Xg(const QStringList& existing, QWidget* parent = nullptr);

signals:
    void setXgDataGz(const QString& name);

public slots:
    void onOkModify();
};
