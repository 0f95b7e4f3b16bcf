#include "QtXmQdSjWidget.h"

#include "QtXmQdModel.h"

#include "QtXmQdJJjbBusiness.h"

#include "ConstructionWorks.h"

QtXmQdSjWidget::QtXmQdSjWidget(AuditBusiness* audit, QWidget* parent) : BillSjWidget(audit, parent)
{
    init(new QtXmQdModel(this));
}

GeneralTableBase* QtXmQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getQtXmQdHzTable();
}

QtXmQdHzTable* QtXmQdSjWidget::pageTable() const
{
    return static_cast<QtXmQdHzTable*>(table());
}

bool QtXmQdSjWidget::canMoveRows(int from, int to) const
{
    return QtXmQdJJjbBusiness::GridRowCanMove(pageTable(), from, to);
}

bool QtXmQdSjWidget::moveRows(int from, int to)
{
    QtXmQdHzTable* t = pageTable();
    return QtXmQdJJjbBusiness::GridRowMove(works(), t, from, to);
}
