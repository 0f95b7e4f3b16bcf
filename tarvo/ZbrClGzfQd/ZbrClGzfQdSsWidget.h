#pragma once

#include "common/BillSsWidget.h"

// The submitted-version grid of "招标人材料购置费清单".
class ZbrClGzfQdSsWidget : public BillSsWidget
{
    Q_OBJECT
public:
    ZbrClGzfQdSsWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("ZbrClGzfQd\\ZbrClGzfQdSsWidget"); }
    QString className() const override { return QStringLiteral("ZbrClGzfQdSsWidget"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
};
