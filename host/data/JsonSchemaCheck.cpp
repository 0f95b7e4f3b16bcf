#include "JsonSchemaCheck.h"

#include <QFile>
#include <QHash>
#include <QUrl>
#include <QVector>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/pointer.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <memory>

namespace {

QString keywordText(const QString& keyword)
{
    static const QHash<QString, QString> texts = {
        {QStringLiteral("type"), QStringLiteral("类型不符")},
        {QStringLiteral("minimum"), QStringLiteral("小于允许的最小值")},
        {QStringLiteral("maximum"), QStringLiteral("大于允许的最大值")},
        {QStringLiteral("enum"), QStringLiteral("不是允许的值")},
        {QStringLiteral("required"), QStringLiteral("缺少必需的项")},
        {QStringLiteral("minItems"), QStringLiteral("项数少于要求")},
        {QStringLiteral("maxItems"), QStringLiteral("项数多于允许")},
        {QStringLiteral("minLength"), QStringLiteral("文字为空")},
        {QStringLiteral("additionalProperties"), QStringLiteral("含有不允许的项")}};
    return texts.value(keyword, keyword);
}

QString shown(const rapidjson::Value* value)
{
    if (!value)
        return QStringLiteral("（无）");
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value->Accept(writer);
    QString text = QString::fromUtf8(buffer.GetString(), int(buffer.GetSize()));
    if (text.size() > 60)
        text = text.left(60) + QStringLiteral("…");
    return text;
}

const rapidjson::SchemaDocument* schemaOf(const QString& kind)
{
    static QHash<QString, std::shared_ptr<rapidjson::SchemaDocument>> schemas;
    if (auto found = schemas.value(kind))
        return found.get();
    QFile file(QStringLiteral(":/schema/") + kind + QStringLiteral(".schema.json"));
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    const QByteArray bytes = file.readAll();
    rapidjson::Document document;
    if (document.Parse(bytes.constData(), bytes.size()).HasParseError())
        return nullptr;
    auto schema = std::make_shared<rapidjson::SchemaDocument>(document);
    schemas.insert(kind, schema);
    return schema.get();
}

// Deepest nesting of a configuration file, counted without recursion (the validator walks the
// document recursively, so a deeper file is refused before it is walked).
int depthOf(const rapidjson::Value& root)
{
    QVector<QPair<const rapidjson::Value*, int>> stack{{&root, 1}};
    int deepest = 0;
    while (!stack.isEmpty()) {
        const auto [value, depth] = stack.takeLast();
        deepest = qMax(deepest, depth);
        if (deepest > 64)
            break;
        if (value->IsArray())
            for (const rapidjson::Value& item : value->GetArray())
                stack.append({&item, depth + 1});
        else if (value->IsObject())
            for (const auto& member : value->GetObject())
                stack.append({&member.value, depth + 1});
    }
    return deepest;
}

} // namespace

bool JsonSchemaCheck::validate(const QByteArray& json, const QString& kind, QString* problem)
{
    auto fail = [problem](const QString& text) {
        if (problem)
            *problem = text;
        return false;
    };
    const rapidjson::SchemaDocument* schema = schemaOf(kind);
    if (!schema)
        return fail(QStringLiteral("没有“%1”的格式定义").arg(kind));
    rapidjson::Document document;
    // Nesting is bounded by the parser's iterative mode: no recursion on the file's depth.
    document.Parse<rapidjson::kParseIterativeFlag>(json.constData(), json.size());
    if (document.HasParseError())
        return fail(
            QStringLiteral("不是有效的JSON（第%1字节：%2）")
                .arg(document.GetErrorOffset())
                .arg(QString::fromUtf8(rapidjson::GetParseError_En(document.GetParseError()))));
    if (depthOf(document) > 64)
        return fail(QStringLiteral("嵌套超过64层"));
    rapidjson::SchemaValidator validator(*schema);
    if (document.Accept(validator))
        return true;
    rapidjson::StringBuffer pointer;
    validator.GetInvalidDocumentPointer().StringifyUriFragment(pointer);
    QString where = QString::fromUtf8(pointer.GetString(), int(pointer.GetSize()));
    where = QUrl::fromPercentEncoding(where.mid(1).toUtf8()); // "#/a/0" -> "/a/0"
    if (where.isEmpty())
        where = QStringLiteral("/");
    const rapidjson::Value* value = validator.GetInvalidDocumentPointer().Get(document);
    return fail(QStringLiteral("%1 的值 %2 %3")
                    .arg(where, shown(value),
                         keywordText(QString::fromUtf8(validator.GetInvalidSchemaKeyword()))));
}
