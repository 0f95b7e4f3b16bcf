#pragma once

#include <QJsonObject>

class QFont;
class QTableView;

// The table-layout description of a grid as it is shown (docs/table-layout.md): the header
// (height, bottom-line colour, font, the visible columns in their shown order with identity,
// title, width and alignment) and every shown row with its height and, per visible column,
// the cell's text, font and alignment. Any grid gives one; the Excel exports write it.
class TableLayout
{
public:
    static QJsonObject Describe(const QTableView* view);
    // "family", "font-size", "bold", "italic" (and "style" for the header's font).
    static QJsonObject FontObject(const QFont& font, bool withStyle = false);
};
