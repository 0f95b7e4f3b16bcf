#include "GroupedHeaderView.h"

#include <QPainter>

GroupedHeaderView::GroupedHeaderView(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(false);
}

QString GroupedHeaderView::groupOf(int logicalIndex) const
{
    const QString text =
        model() ? model()->headerData(logicalIndex, orientation()).toString() : QString();
    return text.contains(QLatin1Char('|')) ? text.section(QLatin1Char('|'), 0, 0) : QString();
}

QString GroupedHeaderView::titleOf(int logicalIndex) const
{
    const QString text =
        model() ? model()->headerData(logicalIndex, orientation()).toString() : QString();
    return text.section(QLatin1Char('|'), -1);
}

QSize GroupedHeaderView::sizeHint() const
{
    QSize size = QHeaderView::sizeHint();
    size.setHeight(fontMetrics().height() * 2 + 12);
    return size;
}

void GroupedHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    const QString group = groupOf(logicalIndex);
    if (group.isEmpty()) {
        QStyleOptionHeader opt;
        initStyleOption(&opt);
        opt.rect = rect;
        opt.section = logicalIndex;
        opt.text = titleOf(logicalIndex);
        opt.textAlignment = Qt::AlignCenter;
        style()->drawControl(QStyle::CE_Header, &opt, painter, this);
        return;
    }
    const int half = rect.height() / 2;
    // The group's span: the neighbouring visible sections of the same group.
    int first = visualIndex(logicalIndex), last = first;
    while (first > 0 && groupOf(QHeaderView::logicalIndex(first - 1)) == group)
        --first;
    while (last + 1 < count() && groupOf(QHeaderView::logicalIndex(last + 1)) == group)
        ++last;
    const int left = sectionViewportPosition(QHeaderView::logicalIndex(first));
    const int right = sectionViewportPosition(QHeaderView::logicalIndex(last)) +
                      sectionSize(QHeaderView::logicalIndex(last));
    QStyleOptionHeader top;
    initStyleOption(&top);
    top.rect = QRect(left, rect.top(), right - left, half);
    top.text = group;
    top.textAlignment = Qt::AlignCenter;
    painter->save();
    painter->setClipRect(QRect(rect.left(), rect.top(), rect.width(), half));
    style()->drawControl(QStyle::CE_Header, &top, painter, this);
    painter->restore();
    QStyleOptionHeader bottom;
    initStyleOption(&bottom);
    bottom.rect = QRect(rect.left(), rect.top() + half, rect.width(), rect.height() - half);
    bottom.section = logicalIndex;
    bottom.text = titleOf(logicalIndex);
    bottom.textAlignment = Qt::AlignCenter;
    style()->drawControl(QStyle::CE_Header, &bottom, painter, this);
}
