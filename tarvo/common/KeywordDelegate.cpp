#include "KeywordDelegate.h"

#include "SkinManager.h"

#include <QApplication>
#include <QPainter>

void KeywordDelegate::setKeyword(int column, const QString& keyword)
{
    m_keywords.insert(column, keyword.trimmed());
}

QVector<QPair<int, int>> KeywordDelegate::Hits(const QString& text, const QString& keyword)
{
    QVector<QPair<int, int>> hits;
    if (keyword.isEmpty())
        return hits;
    for (int from = 0;;) {
        const int at = text.indexOf(keyword, from, Qt::CaseInsensitive);
        if (at < 0)
            break;
        hits.append({at, int(keyword.size())});
        from = at + int(keyword.size());
    }
    return hits;
}

void KeywordDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    const QString keyword = m_keywords.value(index.column());
    const QString text = index.data(Qt::DisplayRole).toString();
    const auto hits = Hits(text, keyword);
    if (hits.isEmpty()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    opt.text.clear();
    const QWidget* widget = opt.widget;
    QStyle* style = widget ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &opt, painter, widget);

    const QRect rect =
        style->subElementRect(QStyle::SE_ItemViewItemText, &opt, widget).adjusted(2, 0, -2, 0);
    const QColor plain = opt.palette.color(
        opt.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text);
    const QColor hit =
        SkinManager::getInstance()->getVXColor(QStringLiteral("Xxj_BgSsGjzYs"), QColor(255, 0, 0));
    painter->save();
    painter->setFont(opt.font);
    const QFontMetrics metrics(opt.font);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, rect.width());
    int x = rect.left();
    const int width = metrics.horizontalAdvance(shown);
    if (opt.displayAlignment & Qt::AlignHCenter)
        x = rect.left() + (rect.width() - width) / 2;
    else if (opt.displayAlignment & Qt::AlignRight)
        x = rect.right() - width;
    int pos = 0;
    auto draw = [&](int from, int length, const QColor& colour) {
        if (length <= 0 || from >= shown.size())
            return;
        const QString part = shown.mid(from, length);
        painter->setPen(colour);
        painter->drawText(QRect(x, rect.top(), rect.right() - x + 1, rect.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, part);
        x += metrics.horizontalAdvance(part);
    };
    for (const auto& h : hits) {
        draw(pos, h.first - pos, plain);
        draw(h.first, h.second, hit);
        pos = h.first + h.second;
    }
    draw(pos, int(shown.size()) - pos, plain);
    painter->restore();
}
