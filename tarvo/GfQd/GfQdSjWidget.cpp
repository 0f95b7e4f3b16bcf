#include "GfQdSjWidget.h"

#include "GfQdModel.h"

#include "GfQdBusiness.h"

#include "ConstructionWorks.h"

GfQdSjWidget::GfQdSjWidget(AuditBusiness* audit, QWidget* parent) : BillSjWidget(audit, parent)
{
    init(new GfQdModel(this));
}

GeneralTableBase* GfQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getGfSjQdTable();
}

GfSjQdTable* GfQdSjWidget::pageTable() const
{
    return static_cast<GfSjQdTable*>(table());
}

bool GfQdSjWidget::canMoveRows(int from, int to) const
{
    return GfQdBusiness::GridRowCanMove(pageTable(), from, to);
}

bool GfQdSjWidget::moveRows(int from, int to)
{
    GfSjQdTable* t = pageTable();
    return GfQdBusiness::GridRowMove(t, from, to);
}
