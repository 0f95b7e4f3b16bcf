#include "LxGzXmQdSjWidget.h"

#include "LxGzXmQdModel.h"

#include "LxGzXmQdJJjbBusiness.h"

#include "ConstructionWorks.h"

LxGzXmQdSjWidget::LxGzXmQdSjWidget(AuditBusiness* audit, QWidget* parent) : BillSjWidget(audit, parent)
{
    init(new LxGzXmQdModel(this));
}

GeneralTableBase* LxGzXmQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getLxGzXmRgDjQdTable();
}

LxGzXmRgDjQdTable* LxGzXmQdSjWidget::pageTable() const
{
    return static_cast<LxGzXmRgDjQdTable*>(table());
}

bool LxGzXmQdSjWidget::canMoveRows(int from, int to) const
{
    return LxGzXmQdJJjbBusiness::GridRowCanMove(pageTable(), from, to);
}

bool LxGzXmQdSjWidget::moveRows(int from, int to)
{
    LxGzXmRgDjQdTable* t = pageTable();
    return LxGzXmQdJJjbBusiness::GridRowMove(t, from, to);
}
