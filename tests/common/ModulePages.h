#pragma once

#include "ModelTesters.h"
#include "ProjectSettingSpace.h"
#include "ProjectWorks.h"

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

// A click on a node of the project tree, as the host sends it (message 74).
template <class Receiver> void showNode(Receiver& page, ProTreeNode* node)
{
    QVariant payload = QVariant::fromValue(node);
    page.ProcMsg(74, &payload);
}

// One bill page showing a node, its models under test, and its editing grid.
template <class Widget, class Grid> struct ModulePage
{
    explicit ModulePage(ProTreeNode* node)
    {
        showNode(widget, node);
        attachModelTesters(&widget);
    }
    Grid* grid() { return static_cast<Grid*>(widget.sjWidget()); }
    void focus(int row) { grid()->view()->setCurrentIndex(grid()->model()->index(row, 0)); }
    Widget widget;
};
