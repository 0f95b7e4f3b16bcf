#include "JsonConfig.h"

#include "JsonSchemaCheck.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QJsonParseError>

QJsonObject ReadJsonConfig(const QString& path, const QString& schemaKind)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug().noquote() << QStringLiteral("配置文件无法打开: %1").arg(path);
        return {};
    }
    if (file.size() > (16 << 20)) {
        JsonSchemaCheck::warnOnce(QStringLiteral("配置文件“%1”过大，已按默认值使用").arg(path));
        return {};
    }
    const QByteArray bytes = file.readAll();
    QString problem;
    if (!JsonSchemaCheck::wellFormed(bytes, &problem)) {
        JsonSchemaCheck::warnOnce(
            QStringLiteral("配置文件“%1”格式错误，已按默认值使用：%2").arg(path, problem));
        return {};
    }
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) {
        qDebug().noquote()
            << QStringLiteral("配置文件格式错误: %1 (%2)").arg(path, error.errorString());
        return {};
    }
    QJsonObject root = doc.object();
    if (schemaKind.isEmpty() || JsonSchemaCheck::validate(bytes, schemaKind, &problem))
        return root;
    // Each setting and colour has its own default: a faulty value takes it, the rest stay.
    for (const QString& key : root.keys()) {
        QJsonObject one;
        one.insert(key, root.value(key));
        if (!JsonSchemaCheck::validate(QJsonDocument(one).toJson(QJsonDocument::Compact),
                                       schemaKind, &problem)) {
            JsonSchemaCheck::warnOnce(
                QStringLiteral("配置文件“%1”中的值不符合格式，已按默认值使用：%2")
                    .arg(path, problem));
            root.remove(key);
        }
    }
    return root;
}
