#pragma once

#include <QHeaderView>

// The grid's row header. Besides the row number it draws an icon that the model gives for a
// row: role 5256 says whether to draw one, 5257 holds the SVG bytes, 5258 the size and 5259
// the alignment.
class zRowHeaderView : public QHeaderView
{
    Q_OBJECT
public:
    enum Role {
        IconShownRole = 5256,
        IconImageRole = 5257,
        IconSizeRole = 5258,
        IconAlignRole = 5259
    };

    explicit zRowHeaderView(QWidget* parent = nullptr);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
};
