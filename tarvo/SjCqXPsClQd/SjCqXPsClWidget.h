#pragma once

#include "common/BillPageWidget.h"

// The page "需评审的材料清单".
class SjCqXPsClWidget : public BillPageWidget
{
    Q_OBJECT
public:
    explicit SjCqXPsClWidget(QWidget* parent = nullptr);

protected:
    BillSjWidget* createSjWidget() override;
    BillSsWidget* createSsWidget() override;
    QString sourceFile() const override { return QStringLiteral("SjCqXPsClQd\\SjCqXPsClWidget"); }
    QString className() const override { return QStringLiteral("SjCqXPsClWidget"); }
};
