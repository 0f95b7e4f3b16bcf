#include "HeaderColumn.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

Qt::Alignment alignmentFromText(const QString& text)
{
    if (text == QLatin1String("center"))
        return Qt::AlignCenter;
    if (text == QLatin1String("right"))
        return Qt::AlignRight | Qt::AlignVCenter;
    return Qt::AlignLeft | Qt::AlignVCenter;
}

QString alignmentText(Qt::Alignment align)
{
    if (align & Qt::AlignHCenter)
        return QStringLiteral("center");
    if (align & Qt::AlignRight)
        return QStringLiteral("right");
    return QStringLiteral("left");
}

} // namespace

HeaderConfig HeaderConfig::fromJson(const QByteArray& json, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    HeaderConfig config;
    if (parseError.error != QJsonParseError::NoError || !doc.isObject()) {
        if (error)
            *error = QStringLiteral("表头配置不是有效的JSON：%1").arg(parseError.errorString());
        return config;
    }
    const QJsonObject root = doc.object();
    config.listName = root.value(QStringLiteral("listName")).toString();
    const QJsonObject font = root.value(QStringLiteral("font")).toObject();
    config.fontFamily = font.value(QStringLiteral("family")).toString(config.fontFamily);
    config.fontPointSize = font.value(QStringLiteral("size")).toInt(config.fontPointSize);
    config.rowHeight = root.value(QStringLiteral("rowHeight")).toInt(config.rowHeight);
    for (const QJsonValue& v : root.value(QStringLiteral("columns")).toArray()) {
        const QJsonObject o = v.toObject();
        HeaderColumn column;
        column.field = o.value(QStringLiteral("field")).toInt(-1);
        column.title = o.value(QStringLiteral("title")).toString();
        column.width = o.value(QStringLiteral("width")).toInt(80);
        column.align = alignmentFromText(o.value(QStringLiteral("align")).toString());
        column.visible = o.value(QStringLiteral("visible")).toBool(true);
        if (column.field < 0) {
            if (error)
                *error = QStringLiteral("表头配置的列“%1”缺少字段号").arg(column.title);
            return HeaderConfig();
        }
        config.columns.append(column);
    }
    if (config.columns.isEmpty() && error)
        *error = QStringLiteral("表头配置没有任何列");
    return config;
}

QByteArray HeaderConfig::toJson() const
{
    QJsonArray columnArray;
    for (const HeaderColumn& c : columns) {
        columnArray.append(QJsonObject{{QStringLiteral("field"), c.field},
                                       {QStringLiteral("title"), c.title},
                                       {QStringLiteral("width"), c.width},
                                       {QStringLiteral("align"), alignmentText(c.align)},
                                       {QStringLiteral("visible"), c.visible}});
    }
    const QJsonObject root{
        {QStringLiteral("listName"), listName},
        {QStringLiteral("font"),
         QJsonObject{{QStringLiteral("family"), fontFamily}, {QStringLiteral("size"), fontPointSize}}},
        {QStringLiteral("rowHeight"), rowHeight},
        {QStringLiteral("columns"), columnArray}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}
