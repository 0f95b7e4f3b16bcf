#pragma once

#include "common/BillSsWidget.h"

// The submitted-version grid of "零星工作项目人工单价清单".
class LxGzXmQdSsWidget : public BillSsWidget
{
    Q_OBJECT
public:
    LxGzXmQdSsWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("LxGzXmQd\\LxGzXmQdSsWidget"); }
    QString className() const override { return QStringLiteral("LxGzXmQdSsWidget"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
};
