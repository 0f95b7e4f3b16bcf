#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

// What a child service provides: its name, two flags and the pages (tabs) it offers.
struct SerContentInfo
{
    QString strServiceName;
    bool bHaveContextMenu = true;
    bool bReserved = false;
    QStringList listPageNames;
};

namespace ProjectSettingSpace {

// One page tab of a top-level widget.
struct ProFuncPageInfo
{
    QString strPageName;
    QString strServiceName;
    bool bCurrent = false;
    bool bVisible = true;
};

// The payload of UISerInterface::CreateWidget: a service and the pages it is to show.
struct ServiceFuncPageInfo
{
    QString strServiceName;
    QList<ProFuncPageInfo> listPageInfo;
};

} // namespace ProjectSettingSpace

Q_DECLARE_METATYPE(SerContentInfo)
Q_DECLARE_METATYPE(ProjectSettingSpace::ProFuncPageInfo)
Q_DECLARE_METATYPE(ProjectSettingSpace::ServiceFuncPageInfo)
Q_DECLARE_METATYPE(QList<ProjectSettingSpace::ProFuncPageInfo>)
