#include "StaticFileHelper.h"
#include "ProjectSettingHelper.h"
#include "SharedInterface.h"

#include <QFileInfo>

QString StaticFileHelper::AquireMenuConfig(const QString& fileName)
{
    const QString base = SharedInterface::GetAppPath() + QStringLiteral("Config/Menu/");
    const QString area =
        ProjectSettingHelper::GetProjectSettingHelper()->GetSetting(QStringLiteral("AreaVer"));
    const QString regional = base + area + QLatin1Char('/') + fileName;
    if (!area.isEmpty() && QFileInfo::exists(regional))
        return regional;
    return base + fileName;
}
