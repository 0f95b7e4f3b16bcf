#pragma once

#include "ProjectSettingSpace.h"

#include <QColor>
#include <QHash>
#include <QList>
#include <QString>

// Project settings of the host: which child services (pages) a UI service has, item colours
// by number, and application settings such as "AreaVer". Read from Config/ below the
// application path.
class ProjectSettingHelper
{
public:
    static ProjectSettingHelper* GetProjectSettingHelper();

    QList<SerContentInfo> GetChildrenServiceInfo(const QString& appName,
                                                 const QString& serviceName);
    // Replaces what the configuration says for one service (tests, embedding hosts).
    void SetChildrenServiceInfo(const QString& serviceName, const QList<SerContentInfo>& list);
    void ResetChildrenServiceInfo();

    QColor getItemColor(int id) const;
    QString GetSetting(const QString& key, const QString& defaultValue = QString()) const;
    void SetSetting(const QString& key, const QString& value) { m_settings.insert(key, value); }

private:
    ProjectSettingHelper();
    QHash<QString, QList<SerContentInfo>> m_overrides;
    QHash<QString, QString> m_settings;
};
