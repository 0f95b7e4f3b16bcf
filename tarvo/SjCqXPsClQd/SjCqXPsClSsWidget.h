#pragma once

#include "common/BillSsWidget.h"

// The submitted-version grid of "需评审的材料清单".
class SjCqXPsClSsWidget : public BillSsWidget
{
    Q_OBJECT
public:
    SjCqXPsClSsWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("SjCqXPsClQd\\SjCqXPsClSsWidget"); }
    QString className() const override { return QStringLiteral("SjCqXPsClSsWidget"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
};
