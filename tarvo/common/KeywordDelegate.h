#pragma once

#include <QHash>
#include <QStyledItemDelegate>

// Draws a cell's text with the parts that a filter keyword matches (case-insensitive) in the
// keyword colour ("Xxj_BgSsGjzYs"). Keywords are set per column.
class KeywordDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setKeyword(int column, const QString& keyword);
    QString keyword(int column) const { return m_keywords.value(column); }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    // The [start, length) parts of text that keyword matches, case-insensitive, in order.
    static QVector<QPair<int, int>> Hits(const QString& text, const QString& keyword);

private:
    QHash<int, QString> m_keywords;
};
