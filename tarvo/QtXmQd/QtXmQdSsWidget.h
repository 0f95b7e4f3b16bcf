#pragma once

#include "common/BillSsWidget.h"

// The submitted-version grid of "其他项目清单".
class QtXmQdSsWidget : public BillSsWidget
{
    Q_OBJECT
public:
    QtXmQdSsWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("QtXmQd\\QtXmQdSsWidget"); }
    QString className() const override { return QStringLiteral("QtXmQdSsWidget"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
};
