#include "ZbrClGzfQdWidget.h"

#include "ZbrClGzfQdSjWidget.h"
#include "ZbrClGzfQdSsWidget.h"

ZbrClGzfQdWidget::ZbrClGzfQdWidget(QWidget* parent) : BillPageWidget(parent)
{
    init();
}

BillSjWidget* ZbrClGzfQdWidget::createSjWidget()
{
    return new ZbrClGzfQdSjWidget(audit(), this);
}

BillSsWidget* ZbrClGzfQdWidget::createSsWidget()
{
    return new ZbrClGzfQdSsWidget(audit(), this);
}
