#include "JsonSchemaCheck.h"

#include <QDebug>
#include <QFile>
#include <QHash>
#include <QMutex>
#include <QSet>
#include <QUrl>
#include <QVector>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/pointer.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
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
        {QStringLiteral("maxLength"), QStringLiteral("文字过长")},
        {QStringLiteral("pattern"), QStringLiteral("写法不符")},
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

// Refuses what the validator and Qt's JSON reader would handle badly, walking without
// recursion: nesting deeper than 64 (the validator recurses), a key twice in one object (Qt
// silently keeps the last, and leaks the first) and a number beyond ±9×10¹⁸ (the validator
// converts every number to a 64-bit integer to compare it with a list of allowed values; no
// setting comes near that size).
bool checkShape(const rapidjson::Value& root, QString* problem)
{
    struct Entry
    {
        const rapidjson::Value* value;
        int depth;
        QString pointer;
    };
    QVector<Entry> stack{{&root, 1, QString()}};
    while (!stack.isEmpty()) {
        const Entry entry = stack.takeLast();
        if (entry.depth > 64) {
            *problem = QStringLiteral("嵌套超过64层");
            return false;
        }
        if (entry.value->IsDouble() && !(std::fabs(entry.value->GetDouble()) < 9e18)) {
            *problem = QStringLiteral("%1 的值 %2 超出范围")
                           .arg(entry.pointer.isEmpty() ? QStringLiteral("/") : entry.pointer,
                                shown(entry.value));
            return false;
        }
        if (entry.value->IsArray()) {
            int index = 0;
            for (const rapidjson::Value& item : entry.value->GetArray())
                stack.append({&item, entry.depth + 1,
                              entry.pointer + QLatin1Char('/') + QString::number(index++)});
        } else if (entry.value->IsObject()) {
            QSet<QString> keys;
            for (const auto& member : entry.value->GetObject()) {
                const QString key =
                    QString::fromUtf8(member.name.GetString(), int(member.name.GetStringLength()));
                if (keys.contains(key)) {
                    *problem =
                        QStringLiteral("%1 中的键“%2”出现了两次")
                            .arg(entry.pointer.isEmpty() ? QStringLiteral("/") : entry.pointer,
                                 key);
                    return false;
                }
                keys.insert(key);
                stack.append(
                    {&member.value, entry.depth + 1, entry.pointer + QLatin1Char('/') + key});
            }
        }
    }
    return true;
}

bool parse(const QByteArray& json, rapidjson::Document* document, QString* problem)
{
    // Nesting is bounded by the parser's iterative mode: no recursion on the file's depth.
    document->Parse<rapidjson::kParseIterativeFlag>(json.constData(), json.size());
    if (document->HasParseError()) {
        *problem =
            QStringLiteral("不是有效的JSON（第%1字节：%2）")
                .arg(document->GetErrorOffset())
                .arg(QString::fromUtf8(rapidjson::GetParseError_En(document->GetParseError())));
        return false;
    }
    return checkShape(*document, problem);
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
    QString why;
    if (!parse(json, &document, &why))
        return fail(why);
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

void JsonSchemaCheck::warnOnce(const QString& text)
{
    static QMutex mutex;
    static QSet<QString> said;
    QMutexLocker lock(&mutex);
    if (said.size() < 1000 && !said.contains(text)) {
        said.insert(text);
        qWarning().noquote() << text;
    }
}

bool JsonSchemaCheck::wellFormed(const QByteArray& json, QString* problem)
{
    rapidjson::Document document;
    QString why;
    if (parse(json, &document, &why))
        return true;
    if (problem)
        *problem = why;
    return false;
}
