#include "zRowHeaderView.h"

#include <QHash>
#include <QPainter>
#include <QStyle>
#include <QSvgRenderer>

zRowHeaderView::zRowHeaderView(QWidget* parent) : QHeaderView(Qt::Vertical, parent)
{
    setSectionsClickable(true);
    setHighlightSections(false);
}

void zRowHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    QHeaderView::paintSection(painter, rect, logicalIndex);
    const QAbstractItemModel* m = model();
    if (!m || m->headerData(logicalIndex, Qt::Vertical, IconShownRole).toInt() != 1)
        return;
    const QByteArray svg = m->headerData(logicalIndex, Qt::Vertical, IconImageRole).toByteArray();
    if (svg.isEmpty())
        return;
    // One renderer per image, for as long as the header lives.
    static QHash<QByteArray, QSvgRenderer*> renderers;
    QSvgRenderer*& renderer = renderers[svg];
    if (!renderer)
        renderer = new QSvgRenderer(svg);
    QSize size = m->headerData(logicalIndex, Qt::Vertical, IconSizeRole).toSize();
    if (!size.isValid())
        size = QSize(16, 16);
    size = size.boundedTo(rect.size() - QSize(2, 2));
    const Qt::Alignment align(m->headerData(logicalIndex, Qt::Vertical, IconAlignRole).toInt());
    const QRect target =
        QStyle::alignedRect(Qt::LeftToRight, align ? align : Qt::AlignCenter, size, rect);
    // The mark covers the row number: the question is what the row is about.
    painter->save();
    painter->setClipRect(rect); // the styled section leaves the painter clipped to nothing
    painter->fillRect(rect.adjusted(1, 1, -1, -1), palette().button());
    renderer->render(painter, target);
    painter->restore();
}
