#include "GfQdSsWidget.h"

#include "GfQdSsModel.h"

#include "ConstructionWorks.h"

GfQdSsWidget::GfQdSsWidget(AuditBusiness* audit, QWidget* parent) : BillSsWidget(audit, parent)
{
    init(new GfQdSsModel(this), QStringLiteral("规费清单"));
}

GeneralTableBase* GfQdSsWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getGfSjQdTable();
}
