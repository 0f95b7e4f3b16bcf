#include "ProjectSettingHelper.h"
#include "JsonConfig.h"
#include "SharedInterface.h"

#include <QHash>
#include <QJsonArray>

ProjectSettingHelper* ProjectSettingHelper::GetProjectSettingHelper()
{
    static ProjectSettingHelper instance;
    return &instance;
}

ProjectSettingHelper::ProjectSettingHelper() = default;

QList<SerContentInfo> ProjectSettingHelper::GetChildrenServiceInfo(const QString& appName,
                                                                   const QString& serviceName)
{
    Q_UNUSED(appName)
    if (m_overrides.contains(serviceName))
        return m_overrides.value(serviceName);
    const QJsonObject root =
        ReadJsonConfig(SharedInterface::GetAppPath() + QStringLiteral("Config/ServicePages.json"));
    QList<SerContentInfo> list;
    const QJsonArray services = root.value(serviceName).toArray();
    for (const QJsonValue& v : services) {
        const QJsonObject o = v.toObject();
        SerContentInfo info;
        info.strServiceName = o.value(QStringLiteral("service")).toString();
        info.bHaveContextMenu = o.value(QStringLiteral("contextMenu")).toBool(true);
        info.bReserved = o.value(QStringLiteral("reserved")).toBool(false);
        for (const QJsonValue& page : o.value(QStringLiteral("pages")).toArray())
            info.listPageNames << page.toString();
        list << info;
    }
    return list;
}

void ProjectSettingHelper::SetChildrenServiceInfo(const QString& serviceName,
                                                  const QList<SerContentInfo>& list)
{
    m_overrides.insert(serviceName, list);
}

void ProjectSettingHelper::ResetChildrenServiceInfo()
{
    m_overrides.clear();
}

QColor ProjectSettingHelper::getItemColor(int id) const
{
    static const QHash<int, QColor> defaults = {
        {24, QColor(0, 0, 255)},     // text of rows in the block
        {25, QColor(204, 232, 255)}, // background of rows in the block
    };
    // Read once per application folder: a cell asks for its colour at every repaint, and a
    // missing or broken file is reported once, not once per cell.
    static QHash<QString, QJsonObject> files;
    const QString path = SharedInterface::GetAppPath() + QStringLiteral("Config/ItemColors.json");
    auto cached = files.constFind(path);
    if (cached == files.constEnd())
        cached = files.insert(path, ReadJsonConfig(path, QStringLiteral("colours")));
    const QString configured = cached.value().value(QString::number(id)).toString();
    if (QColor::isValidColor(configured))
        return QColor(configured);
    return defaults.value(id, QColor(Qt::black));
}

QString ProjectSettingHelper::GetSetting(const QString& key, const QString& defaultValue) const
{
    if (m_settings.contains(key))
        return m_settings.value(key);
    const QJsonObject root =
        ReadJsonConfig(SharedInterface::GetAppPath() + QStringLiteral("Config/Settings.json"),
                       QStringLiteral("settings"));
    return root.value(key).toString(defaultValue);
}
