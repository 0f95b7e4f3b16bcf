#include "ZgClQdWidget.h"

#include "ZgClQdSjWidget.h"
#include "ZgClQdSsWidget.h"

ZgClQdWidget::ZgClQdWidget(QWidget* parent) : BillPageWidget(parent)
{
    init();
}

BillSjWidget* ZgClQdWidget::createSjWidget()
{
    return new ZgClQdSjWidget(audit(), this);
}

BillSsWidget* ZgClQdWidget::createSsWidget()
{
    return new ZgClQdSsWidget(audit(), this);
}
