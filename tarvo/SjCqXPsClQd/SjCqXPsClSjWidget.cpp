#include "SjCqXPsClSjWidget.h"

#include "SjCqXPsClModel.h"

#include "SjCqXPsClBusiness.h"

#include "ConstructionWorks.h"

SjCqXPsClSjWidget::SjCqXPsClSjWidget(AuditBusiness* audit, QWidget* parent)
    : BillSjWidget(audit, parent)
{
    init(new SjCqXPsClModel(this));
}

GeneralTableBase* SjCqXPsClSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getSjCqXPsClHzTable();
}

SjCqXPsClTable* SjCqXPsClSjWidget::pageTable() const
{
    return static_cast<SjCqXPsClTable*>(table());
}

bool SjCqXPsClSjWidget::canMoveRows(int from, int to) const
{
    return SjCqXPsClBusiness::GridRowCanMove(pageTable(), from, to);
}

bool SjCqXPsClSjWidget::moveRows(int from, int to)
{
    SjCqXPsClTable* t = pageTable();
    return SjCqXPsClBusiness::GridRowMove(works(), t, from, to);
}
