#include "QtXmQdSsWidget.h"

#include "QtXmQdSsModel.h"

#include "ConstructionWorks.h"

QtXmQdSsWidget::QtXmQdSsWidget(AuditBusiness* audit, QWidget* parent) : BillSsWidget(audit, parent)
{
    init(new QtXmQdSsModel(this), QStringLiteral("其他项目清单"));
}

GeneralTableBase* QtXmQdSsWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getQtXmQdHzTable();
}
