#include "GfQdWidget.h"

#include "GfQdSjWidget.h"
#include "GfQdSsWidget.h"

GfQdWidget::GfQdWidget(QWidget* parent) : BillPageWidget(parent)
{
    init();
}

BillSjWidget* GfQdWidget::createSjWidget()
{
    return new GfQdSjWidget(audit(), this);
}

BillSsWidget* GfQdWidget::createSsWidget()
{
    return new GfQdSsWidget(audit(), this);
}
