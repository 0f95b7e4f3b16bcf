#pragma once

#include "common/BillSsWidget.h"

// The submitted-version grid of "暂估材料(工程设备)清单".
class ZgClQdSsWidget : public BillSsWidget
{
    Q_OBJECT
public:
    ZgClQdSsWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("ZgClQd\\ZgClQdSsWidget"); }
    QString className() const override { return QStringLiteral("ZgClQdSsWidget"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
};
