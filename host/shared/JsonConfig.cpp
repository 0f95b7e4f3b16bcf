#include "JsonConfig.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QJsonParseError>

QJsonObject ReadJsonConfig(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug().noquote() << QStringLiteral("配置文件无法打开: %1").arg(path);
        return {};
    }
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) {
        qDebug().noquote()
            << QStringLiteral("配置文件格式错误: %1 (%2)").arg(path, error.errorString());
        return {};
    }
    return doc.object();
}
