#pragma once

#include "common/BillPageWidget.h"

// The page "规费税金清单".
class GfQdWidget : public BillPageWidget
{
    Q_OBJECT
public:
    explicit GfQdWidget(QWidget* parent = nullptr);

protected:
    BillSjWidget* createSjWidget() override;
    BillSsWidget* createSsWidget() override;
    QString sourceFile() const override { return QStringLiteral("GfQd\\GfQdWidget"); }
    QString className() const override { return QStringLiteral("GfQdWidget"); }
};
