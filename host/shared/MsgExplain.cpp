#include "MsgExplain.h"
#include "ProjectSettingSpace.h"

void MsgExplain::registerMetaTypes()
{
    qRegisterMetaType<MsgExplain::ToChangeActivePageInfo>("MsgExplain::ToChangeActivePageInfo");
    qRegisterMetaType<MsgExplain::ToChangeMenuItemInfo>("MsgExplain::ToChangeMenuItemInfo");
    qRegisterMetaType<MsgExplain::MenuComboInfo>("MsgExplain::MenuComboInfo");
    qRegisterMetaType<SerContentInfo>("SerContentInfo");
    qRegisterMetaType<ProjectSettingSpace::ProFuncPageInfo>("ProjectSettingSpace::ProFuncPageInfo");
    qRegisterMetaType<ProjectSettingSpace::ServiceFuncPageInfo>(
        "ProjectSettingSpace::ServiceFuncPageInfo");
    qRegisterMetaType<QList<ProjectSettingSpace::ProFuncPageInfo>>(
        "QList<ProjectSettingSpace::ProFuncPageInfo>");
}
