#include "SjCqXPsClWidget.h"

#include "SjCqXPsClSjWidget.h"
#include "SjCqXPsClSsWidget.h"

SjCqXPsClWidget::SjCqXPsClWidget(QWidget* parent) : BillPageWidget(parent)
{
    init();
}

BillSjWidget* SjCqXPsClWidget::createSjWidget()
{
    return new SjCqXPsClSjWidget(audit(), this);
}

BillSsWidget* SjCqXPsClWidget::createSsWidget()
{
    return new SjCqXPsClSsWidget(audit(), this);
}
