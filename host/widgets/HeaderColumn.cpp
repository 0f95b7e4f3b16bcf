#include "HeaderColumn.h"

#include "JsonSchemaCheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

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
    auto fail = [error](const QString& text) {
        if (error)
            *error = text;
        return HeaderConfig();
    };
    QString problem;
    if (!JsonSchemaCheck::validate(json, QStringLiteral("table-header"), &problem))
        return fail(QStringLiteral("表头配置无效：%1").arg(problem));
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError || !doc.isObject())
        return fail(QStringLiteral("表头配置不是有效的JSON：%1").arg(parseError.errorString()));
    const QJsonObject root = doc.object();
    HeaderConfig config;
    config.listName = root.value(QStringLiteral("listName")).toString();
    const QJsonObject font = root.value(QStringLiteral("font")).toObject();
    config.fontFamily = font.value(QStringLiteral("family")).toString(config.fontFamily);
    config.fontPointSize = font.value(QStringLiteral("size")).toInt(config.fontPointSize);
    config.rowHeight = root.value(QStringLiteral("rowHeight")).toInt(config.rowHeight);
    if (config.fontPointSize <= 0 || config.fontPointSize > 72)
        return fail(QStringLiteral("表头配置的字号%1无效").arg(config.fontPointSize));
    if (config.rowHeight <= 0 || config.rowHeight > 500)
        return fail(QStringLiteral("表头配置的行高%1无效").arg(config.rowHeight));
    const QJsonValue columns = root.value(QStringLiteral("columns"));
    if (!columns.isArray() || columns.toArray().isEmpty())
        return fail(QStringLiteral("表头配置没有任何列"));
    for (const QJsonValue& v : columns.toArray()) {
        const QJsonObject o = v.toObject();
        HeaderColumn column;
        column.title = o.value(QStringLiteral("title")).toString();
        // A field number is a whole number; "3" or 2.5 is a typing error, not field 0.
        const QJsonValue field = o.value(QStringLiteral("field"));
        const double number = field.toDouble(-1);
        if (!field.isDouble() || !(number >= 0 && number <= 255) || number != std::floor(number))
            return fail(QStringLiteral("表头配置的列“%1”缺少字段号").arg(column.title));
        column.field = int(number);
        column.width = o.value(QStringLiteral("width")).toInt(80);
        if (column.width <= 0)
            return fail(QStringLiteral("表头配置的列“%1”宽度无效").arg(column.title));
        const QString align = o.value(QStringLiteral("align")).toString(QStringLiteral("left"));
        if (align != QLatin1String("left") && align != QLatin1String("center") &&
            align != QLatin1String("right"))
            return fail(
                QStringLiteral("表头配置的列“%1”对齐方式“%2”无效").arg(column.title, align));
        column.align = alignmentFromText(align);
        column.visible = o.value(QStringLiteral("visible")).toBool(true);
        config.columns.append(column);
    }
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
        {QStringLiteral("font"), QJsonObject{{QStringLiteral("family"), fontFamily},
                                             {QStringLiteral("size"), fontPointSize}}},
        {QStringLiteral("rowHeight"), rowHeight},
        {QStringLiteral("columns"), columnArray}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}
