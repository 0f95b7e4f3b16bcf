#include "LxGzXmQdSsWidget.h"

#include "LxGzXmQdSsModel.h"

#include "ConstructionWorks.h"

LxGzXmQdSsWidget::LxGzXmQdSsWidget(AuditBusiness* audit, QWidget* parent)
    : BillSsWidget(audit, parent)
{
    init(new LxGzXmQdSsModel(this), QStringLiteral("零星工作项目人工单价清单"));
    setTitle(QStringLiteral("零星工作项目清单及计价表"));
}

GeneralTableBase* LxGzXmQdSsWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getLxGzXmRgDjQdTable();
}
