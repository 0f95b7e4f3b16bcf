#pragma once

#include "common/BillSsWidget.h"

// The submitted-version grid of "规费税金清单".
class GfQdSsWidget : public BillSsWidget
{
    Q_OBJECT
public:
    GfQdSsWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("GfQd\\GfQdSsWidget"); }
    QString className() const override { return QStringLiteral("GfQdSsWidget"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
};
