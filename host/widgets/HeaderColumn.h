#pragma once

#include <QMetaType>
#include <QString>
#include <QVector>

// One column of a grid's table-header configuration.
struct HeaderColumn
{
    int field = 0;
    QString title;
    int width = 80;
    Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter;
    bool visible = true;
};

// A grid's whole header: its columns, font and row height, read from
// Config/TableHeader/<list name>.json or from a user template.
struct HeaderConfig
{
    QString listName;
    QString fontFamily = QStringLiteral("SimSun");
    int fontPointSize = 9;
    int rowHeight = 22;
    QVector<HeaderColumn> columns;

    bool isValid() const { return !columns.isEmpty(); }
    // Parses the JSON text; on failure returns an invalid config and sets error.
    static HeaderConfig fromJson(const QByteArray& json, QString* error);
    QByteArray toJson() const;
};
