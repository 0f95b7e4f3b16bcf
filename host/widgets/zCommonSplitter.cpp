#include "zCommonSplitter.h"

zCommonSplitter::zCommonSplitter(int type, int style, QWidget* parent)
    : QSplitter(type == 1 ? Qt::Horizontal : Qt::Vertical, parent)
{
    Q_UNUSED(style)
    setChildrenCollapsible(true);
    setStyleSheet(QStringLiteral("QSplitter::handle { background: #dfe4ea; }"));
}
