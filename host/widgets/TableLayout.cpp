#include "TableLayout.h"

#include <QAbstractItemModel>
#include <QFont>
#include <QHeaderView>
#include <QJsonArray>
#include <QTableView>

namespace {

QString styleName(QFont::Style style)
{
    switch (style) {
    case QFont::StyleItalic:
        return QStringLiteral("StyleItalic");
    case QFont::StyleOblique:
        return QStringLiteral("StyleOblique");
    default:
        return QStringLiteral("StyleNormal");
    }
}

int alignmentOf(const QVariant& value, int fallback)
{
    bool ok = false;
    const int flags = value.toInt(&ok);
    return ok && value.isValid() ? flags : fallback;
}

} // namespace

QJsonObject TableLayout::FontObject(const QFont& font, bool withStyle)
{
    QJsonObject o;
    o.insert(QStringLiteral("family"), font.family());
    // A font sized in pixels is given in points at 96 dots per inch.
    const int points =
        font.pointSize() > 0 ? font.pointSize() : qRound(font.pixelSize() * 72.0 / 96.0);
    o.insert(QStringLiteral("font-size"), points);
    o.insert(QStringLiteral("bold"), font.weight() > 57);
    o.insert(QStringLiteral("italic"), font.style() != QFont::StyleNormal);
    if (withStyle)
        o.insert(QStringLiteral("style"), styleName(font.style()));
    return o;
}

QJsonObject TableLayout::Describe(const QTableView* view)
{
    QJsonObject layout;
    const QAbstractItemModel* model = view ? view->model() : nullptr;
    if (!model)
        return layout;
    const QHeaderView* header = view->horizontalHeader();
    const int defaultAlignment = int(Qt::AlignLeft | Qt::AlignVCenter);

    QList<int> columns; // logical indexes of the visible columns, in shown order
    QJsonArray columnArray;
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        if (logical < 0 || header->isSectionHidden(logical))
            continue;
        columns << logical;
        QJsonObject c;
        c.insert(QStringLiteral("column"), logical);
        c.insert(QStringLiteral("name"),
                 model->headerData(logical, Qt::Horizontal, Qt::DisplayRole).toString());
        c.insert(QStringLiteral("width"), header->sectionSize(logical));
        c.insert(QStringLiteral("textAlignment"),
                 alignmentOf(model->headerData(logical, Qt::Horizontal, Qt::TextAlignmentRole),
                             defaultAlignment));
        columnArray.append(c);
    }
    QJsonObject head;
    head.insert(QStringLiteral("height"), header->isHidden() ? 0 : header->height());
    head.insert(QStringLiteral("color"), view->palette().color(QPalette::Mid).name());
    head.insert(QStringLiteral("font"), FontObject(header->font(), true));
    head.insert(QStringLiteral("Columns"), columnArray);
    layout.insert(QStringLiteral("header"), head);

    // A grid has few distinct fonts: each one's object is made once, and the keys of every
    // column once, not for every cell.
    struct Keys
    {
        QString text;
        QString font;
        QString alignment;
    };
    QVector<Keys> keys;
    keys.reserve(columns.size());
    for (int column : columns) {
        const QString key = QString::number(column);
        keys.append({key, key + QStringLiteral("-font"), key + QStringLiteral("-alignment")});
    }
    const QFont viewFont = view->font();
    const QJsonObject viewFontObject = FontObject(viewFont);
    QFont lastFont = viewFont;
    QJsonObject lastFontObject = viewFontObject;
    // Every row has the same keys: each row starts as a copy of one that has them all, and only
    // the values that differ from the template's are replaced, in place through the value's
    // position among the sorted keys (no key lookup per cell). Adding keys one by one to an
    // empty object costs three times as much, and replacing by key twice as much.
    QJsonObject templateRow;
    templateRow.insert(QStringLiteral("row"), 0);
    templateRow.insert(QStringLiteral("rowHeight"), 0);
    for (const Keys& key : qAsConst(keys)) {
        templateRow.insert(key.text, QString());
        templateRow.insert(key.font, viewFontObject);
        templateRow.insert(key.alignment, defaultAlignment);
    }
    const auto positionOf = [&templateRow](const QString& key) {
        return int(templateRow.constFind(key) - templateRow.constBegin());
    };
    struct Positions
    {
        int text;
        int font;
        int alignment;
    };
    QVector<Positions> positions;
    positions.reserve(keys.size());
    for (const Keys& key : qAsConst(keys))
        positions.append({positionOf(key.text), positionOf(key.font), positionOf(key.alignment)});
    const int rowPosition = positionOf(QStringLiteral("row"));
    const int heightPosition = positionOf(QStringLiteral("rowHeight"));
    QJsonArray rows;
    for (int r = 0; r < model->rowCount(); ++r) {
        if (view->isRowHidden(r))
            continue;
        QJsonObject row = templateRow;
        const QJsonObject::iterator values = row.begin();
        (values + rowPosition).value() = rows.size();
        (values + heightPosition).value() = view->rowHeight(r);
        for (int i = 0; i < columns.size(); ++i) {
            const QModelIndex index = model->index(r, columns.at(i));
            const Positions& at = positions.at(i);
            const QString text = model->data(index, Qt::DisplayRole).toString();
            if (!text.isEmpty())
                (values + at.text).value() = text;
            const QVariant font = model->data(index, Qt::FontRole);
            if (font.canConvert<QFont>()) {
                const QFont cellFont = font.value<QFont>();
                if (!(cellFont == lastFont)) {
                    lastFont = cellFont;
                    lastFontObject = FontObject(cellFont);
                }
                (values + at.font).value() = lastFontObject;
            }
            const int alignment =
                alignmentOf(model->data(index, Qt::TextAlignmentRole), defaultAlignment);
            if (alignment != defaultAlignment)
                (values + at.alignment).value() = alignment;
        }
        rows.append(row);
    }
    layout.insert(QStringLiteral("count"), rows.size());
    layout.insert(QStringLiteral("Table"), rows);
    return layout;
}
