#pragma once

#include <QHeaderView>

// A horizontal header of two levels: a section titled "group|title" shows the group once over
// all neighbouring sections of the same group and its own title below; a section without a
// group takes the full height.
class GroupedHeaderView : public QHeaderView
{
    Q_OBJECT
public:
    explicit GroupedHeaderView(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

private:
    QString groupOf(int logicalIndex) const;
    QString titleOf(int logicalIndex) const;
};
