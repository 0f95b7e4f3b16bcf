#include "QtXmQdWidget.h"

#include "QtXmQdSjWidget.h"
#include "QtXmQdSsWidget.h"

QtXmQdWidget::QtXmQdWidget(QWidget* parent) : BillPageWidget(parent)
{
    init();
}

BillSjWidget* QtXmQdWidget::createSjWidget()
{
    return new QtXmQdSjWidget(audit(), this);
}

BillSsWidget* QtXmQdWidget::createSsWidget()
{
    return new QtXmQdSsWidget(audit(), this);
}
