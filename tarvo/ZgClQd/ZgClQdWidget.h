#pragma once

#include "common/BillPageWidget.h"

// The page "暂估材料(工程设备)清单".
class ZgClQdWidget : public BillPageWidget
{
    Q_OBJECT
public:
    explicit ZgClQdWidget(QWidget* parent = nullptr);

protected:
    BillSjWidget* createSjWidget() override;
    BillSsWidget* createSsWidget() override;
    QString sourceFile() const override { return QStringLiteral("ZgClQd\\ZgClQdWidget"); }
    QString className() const override { return QStringLiteral("ZgClQdWidget"); }
};
