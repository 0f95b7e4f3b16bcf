#include "ZbrClGzfQdSjWidget.h"

#include "ZbrClGzfQdModel.h"

#include "ZbrClGzfQdBusiness.h"

#include "ConstructionWorks.h"

ZbrClGzfQdSjWidget::ZbrClGzfQdSjWidget(AuditBusiness* audit, QWidget* parent) : BillSjWidget(audit, parent)
{
    init(new ZbrClGzfQdModel(this));
}

GeneralTableBase* ZbrClGzfQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getZbrClGzfQdTable();
}

ZbrClGzfQdTable* ZbrClGzfQdSjWidget::pageTable() const
{
    return static_cast<ZbrClGzfQdTable*>(table());
}

bool ZbrClGzfQdSjWidget::canMoveRows(int from, int to) const
{
    return ZbrClGzfQdBusiness::GridRowCanMove(pageTable(), from, to);
}

bool ZbrClGzfQdSjWidget::moveRows(int from, int to)
{
    ZbrClGzfQdTable* t = pageTable();
    return ZbrClGzfQdBusiness::GridRowMove(works(), t, from, to);
}
