#include "TarvoService.h"
#include "TarvoWidget.h"

#include "TarvoGuard.h"

#include "Communication.h"
#include "DataManagement.h"
#include "HostIds.h"
#include "ProjectSettingHelper.h"

#include <QDebug>

TarvoService::TarvoService()
{
    LoadChildrenPageInfo();
}

TarvoService::~TarvoService() = default;

QString TarvoService::GetServiceName()
{
    return QStringLiteral("TarvoService");
}

void TarvoService::LoadChildrenPageInfo()
{
    TARVO_GUARD("module\\TarvoService", "TarvoService::LoadChildrenPageInfo")
    {
        const QString name = GetServiceName();
        const QList<SerContentInfo> list =
            ProjectSettingHelper::GetProjectSettingHelper()->GetChildrenServiceInfo(
                DataManagement::getInstance()->AppName(), name);
        for (const SerContentInfo& info : list)
            m_childPages.insert(info.strServiceName, info); // the last one of a name wins
    };
}

QWidget* TarvoService::CreateWidget(const QVariant& v)
{
    // Not under the module's guard: a container that cannot be made is the host's failure to
    // report (it catches around this call), not a page's.
    ProjectSettingSpace::ServiceFuncPageInfo info;
    const int type = qMetaTypeId<ProjectSettingSpace::ServiceFuncPageInfo>();
    if (v.userType() == type) {
        info = v.value<ProjectSettingSpace::ServiceFuncPageInfo>();
    } else {
        QVariant copy = v;
        if (copy.convert(type))
            info = copy.value<ProjectSettingSpace::ServiceFuncPageInfo>();
    }
    auto* widget = new TarvoWidget(m_childPages, info.listPageInfo, nullptr);
    m_widgets.append(widget);
    QMessageLogger(__FILE__, __LINE__, nullptr).debug()
        << __FILE__ << __LINE__ << QStringLiteral("创建Tarvo：") << static_cast<void*>(widget);
    return widget;
}

void TarvoService::DeleteWidget(QWidget* widget)
{
    TARVO_GUARD("module\\TarvoService", "TarvoService::DeleteWidget")
    {
        if (!m_widgets.contains(widget))
            return;
        Communication* communication = Communication::GetInstance();
        if (communication->GetActiveFirstLevelWidget() == widget)
            communication->SaveActiveFirstLevelWidget(nullptr);
        m_widgets.removeAt(m_widgets.indexOf(widget));
    };
}

void TarvoService::GetMsgIdList(QList<int>& ids)
{
    ids << 31 << 12 << 79 << 74 << 49 << 606 << 71 << 6 << 5 << 7000 << 7002 << 7003 << 7004 << 7005
        << 7006;
}

void TarvoService::ProcessMsg(int msgId, QVariant* payload)
{
    TARVO_GUARD("module\\TarvoService", "TarvoService::ProcessMsg")
    {
        if (msgId == MsgId::RefreshPages) {
            QObject* object = nullptr;
            if (payload) {
                if (QMetaType::typeFlags(payload->userType()) & QMetaType::PointerToQObject) {
                    object = payload->value<QObject*>();
                } else {
                    QVariant copy = *payload;
                    if (copy.convert(qMetaTypeId<QWidget*>()))
                        object = copy.value<QWidget*>();
                }
            }
            if (!object || !object->isWidgetType())
                return;
            auto* widget = static_cast<QWidget*>(object);
            if (!m_widgets.contains(widget))
                return;
            static_cast<TarvoWidget*>(widget)->ProcMsg(MsgId::RefreshPages, payload);
            return;
        }
        QWidget* active = Communication::GetInstance()->GetActiveFirstLevelWidget();
        if (!active || !m_widgets.contains(active))
            return;
        auto* container = static_cast<TarvoWidget*>(active);
        if (msgId == MsgId::Activated)
            container->ProcActiveWidgetChanged();
        else
            container->ProcMsg(msgId, payload);
    };
}
