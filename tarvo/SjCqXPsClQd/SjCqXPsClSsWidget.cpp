#include "SjCqXPsClSsWidget.h"

#include "SjCqXPsClSsModel.h"

#include "ConstructionWorks.h"

SjCqXPsClSsWidget::SjCqXPsClSsWidget(AuditBusiness* audit, QWidget* parent)
    : BillSsWidget(audit, parent)
{
    init(new SjCqXPsClSsModel(this), QStringLiteral("需评审的材料清单"));
}

GeneralTableBase* SjCqXPsClSsWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getSjCqXPsClHzTable();
}
