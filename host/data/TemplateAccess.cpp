#include "TemplateAccess.h"

#include "GeneralTableBase.h"
#include "JsonSchemaCheck.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

QString templateName(const QString& path)
{
    return QFileInfo(path).completeBaseName();
}

} // namespace

bool TemplateAccess::ReadTemplateFile(const QString& path, GeneralTableBase* table, int type,
                                      QString* error)
{
    auto fail = [&](const QString& reason) {
        if (error)
            *error = QStringLiteral("模板“%1”无法使用：%2").arg(templateName(path), reason);
        return false;
    };
    if (!table)
        return fail(QStringLiteral("没有目标表格"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("文件无法读取"));
    QJsonParseError parseError;
    if (file.size() > (64 << 20))
        return fail(QStringLiteral("文件过大"));
    const QByteArray bytes = file.readAll();
    QString problem;
    if (!JsonSchemaCheck::wellFormed(bytes, &problem))
        return fail(QStringLiteral("文件格式错误（%1）").arg(problem));
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError || !doc.isObject())
        return fail(QStringLiteral("文件格式错误（%1）").arg(parseError.errorString()));
    const QJsonObject root = doc.object();
    if (root.value(QStringLiteral("format")).toString() != FormatId)
        return fail(QStringLiteral("不是内容模板文件"));
    if (root.value(QStringLiteral("tableType")).toInt() != type)
        return fail(QStringLiteral("模板属于其他清单"));
    // Version, row kinds and value types as the format defines them; a template without rows
    // would empty the list, so it is refused like any other malformed template.
    if (!JsonSchemaCheck::validate(bytes, QStringLiteral("content-template"), &problem))
        return fail(problem);
    const QJsonArray rows = root.value(QStringLiteral("rows")).toArray();
    // Parse everything first: a bad row leaves the table as it was.
    QList<BaseDataItem*> items;
    for (const QJsonValue& value : rows) {
        if (!value.isObject()) {
            qDeleteAll(items);
            return fail(QStringLiteral("行数据格式错误"));
        }
        const QJsonObject row = value.toObject();
        BaseDataItem* item = table->CreateItem();
        item->loadState(row.value(QStringLiteral("kind")).toInt(), false, 0,
                        row.value(QStringLiteral("note")).toString());
        const QJsonObject fields = row.value(QStringLiteral("fields")).toObject();
        for (auto it = fields.begin(); it != fields.end(); ++it) {
            bool ok = false;
            const int field = it.key().toInt(&ok);
            if (!ok || field < 0 || field > 255) {
                delete item;
                qDeleteAll(items);
                return fail(QStringLiteral("字段号“%1”无效").arg(it.key()));
            }
            item->loadValue(field, it.value().toVariant());
        }
        items << item;
    }
    for (BaseDataItem* item : items)
        table->attach(table->count(), item);
    return true;
}

bool TemplateAccess::WriteTemplateFile(const QString& path, const GeneralTableBase* table, int type,
                                       QString* error)
{
    QJsonArray rows;
    for (const BaseDataItem* item : table->items()) {
        QJsonObject fields;
        const RowFields& values = item->rawValues();
        for (int f = 0; f < values.size(); ++f)
            if (values.type(f) != RowFields::Invalid)
                fields.insert(QString::number(f), QJsonValue::fromVariant(values.value(f)));
        QJsonObject row{{QStringLiteral("kind"), item->getKind()},
                        {QStringLiteral("fields"), fields}};
        if (!item->getNote().isEmpty())
            row.insert(QStringLiteral("note"), item->getNote());
        rows.append(row);
    }
    const QJsonObject root{{QStringLiteral("format"), FormatId},
                           {QStringLiteral("version"), 1},
                           {QStringLiteral("tableType"), type},
                           {QStringLiteral("rows"), rows}};
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(root).toJson()) < 0 ||
        !file.commit()) {
        if (error)
            *error =
                QStringLiteral("模板“%1”保存失败：%2").arg(templateName(path), file.errorString());
        return false;
    }
    return true;
}
