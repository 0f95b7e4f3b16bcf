#pragma once

#include "ProjectSettingSpace.h"

// What a host asks the module's service for: a container with the six bill pages.
inline ProjectSettingSpace::ServiceFuncPageInfo sixModulePages()
{
    ProjectSettingSpace::ServiceFuncPageInfo info;
    info.strServiceName = QStringLiteral("TarvoService");
    for (const char* page : {"其他项目清单", "招标人材料购置费清单", "零星工作项目人工单价清单",
                             "规费税金清单", "需评审的材料清单", "暂估材料(工程设备)清单"}) {
        ProjectSettingSpace::ProFuncPageInfo p;
        p.strPageName = QString::fromUtf8(page);
        info.listPageInfo << p;
    }
    return info;
}
