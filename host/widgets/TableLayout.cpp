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

    QJsonArray rows;
    const QFont viewFont = view->font();
    for (int r = 0; r < model->rowCount(); ++r) {
        if (view->isRowHidden(r))
            continue;
        QJsonObject row;
        row.insert(QStringLiteral("row"), rows.size());
        row.insert(QStringLiteral("rowHeight"), view->rowHeight(r));
        for (int column : columns) {
            const QModelIndex index = model->index(r, column);
            const QString key = QString::number(column);
            row.insert(key, model->data(index, Qt::DisplayRole).toString());
            const QVariant font = model->data(index, Qt::FontRole);
            row.insert(key + QStringLiteral("-font"),
                       FontObject(font.canConvert<QFont>() ? font.value<QFont>() : viewFont));
            row.insert(key + QStringLiteral("-alignment"),
                       alignmentOf(model->data(index, Qt::TextAlignmentRole), defaultAlignment));
        }
        rows.append(row);
    }
    layout.insert(QStringLiteral("count"), rows.size());
    layout.insert(QStringLiteral("Table"), rows);
    return layout;
}
