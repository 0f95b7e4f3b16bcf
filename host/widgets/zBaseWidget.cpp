#include "zBaseWidget.h"

#include <QPainter>
#include <QStyleOption>

zBaseWidget::zBaseWidget(QWidget* parent) : QWidget(parent) {}

void zBaseWidget::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}
