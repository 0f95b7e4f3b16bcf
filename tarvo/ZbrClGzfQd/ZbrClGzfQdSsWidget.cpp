#include "ZbrClGzfQdSsWidget.h"

#include "ZbrClGzfQdSsModel.h"

#include "ConstructionWorks.h"

ZbrClGzfQdSsWidget::ZbrClGzfQdSsWidget(AuditBusiness* audit, QWidget* parent)
    : BillSsWidget(audit, parent)
{
    init(new ZbrClGzfQdSsModel(this), QStringLiteral("招标人材料购置费清单"));
}

GeneralTableBase* ZbrClGzfQdSsWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getZbrClGzfQdTable();
}
