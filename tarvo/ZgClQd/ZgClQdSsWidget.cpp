#include "ZgClQdSsWidget.h"

#include "ZgClQdSsModel.h"

#include "ConstructionWorks.h"

ZgClQdSsWidget::ZgClQdSsWidget(AuditBusiness* audit, QWidget* parent) : BillSsWidget(audit, parent)
{
    init(new ZgClQdSsModel(this), QStringLiteral("暂估材料(工程设备)清单"));
}

GeneralTableBase* ZgClQdSsWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getZgjClHzTable();
}
