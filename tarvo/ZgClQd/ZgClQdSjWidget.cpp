#include "ZgClQdSjWidget.h"

#include "ZgClQdModel.h"

#include "ZgClQdBusiness.h"

#include "ConstructionWorks.h"

ZgClQdSjWidget::ZgClQdSjWidget(AuditBusiness* audit, QWidget* parent) : BillSjWidget(audit, parent)
{
    init(new ZgClQdModel(this));
}

GeneralTableBase* ZgClQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getZgjClHzTable();
}

ZgjClHzTable* ZgClQdSjWidget::pageTable() const
{
    return static_cast<ZgjClHzTable*>(table());
}

bool ZgClQdSjWidget::canMoveRows(int from, int to) const
{
    return ZgClQdBusiness::GridRowCanMove(pageTable(), from, to);
}

bool ZgClQdSjWidget::moveRows(int from, int to)
{
    ZgjClHzTable* t = pageTable();
    return ZgClQdBusiness::GridRowMove(works(), t, from, to);
}
