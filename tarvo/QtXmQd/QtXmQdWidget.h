#pragma once

#include "common/BillPageWidget.h"

// The page "其他项目清单".
class QtXmQdWidget : public BillPageWidget
{
    Q_OBJECT
public:
    explicit QtXmQdWidget(QWidget* parent = nullptr);

protected:
    BillSjWidget* createSjWidget() override;
    BillSsWidget* createSsWidget() override;
    QString sourceFile() const override { return QStringLiteral("QtXmQd\\QtXmQdWidget"); }
    QString className() const override { return QStringLiteral("QtXmQdWidget"); }
};
