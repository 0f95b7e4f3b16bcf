#include "ModuleHost.h"

#include "BundleActivatorFactory.h"
#include "BundleLoader.h"
#include "Communication.h"
#include "HostIds.h"
#include "MenuBarManager.h"
#include "MsgExplain.h"
#include "ObjectHelper.h"
#include "ProcExceptionNew.h"
#include "ProjectSettingSpace.h"
#include "UISerInterface.h"

#include <QCoreApplication>

#include <stdexcept>

namespace {

const char* const kPages[][2] = {
    {"其他项目清单", "QtXmQdJJjbService"},
    {"招标人材料购置费清单", "ZbrClGzfQdService"},
    {"零星工作项目人工单价清单", "LxGzXmQdJJjbService"},
    {"规费税金清单", "GfQdService"},
    {"需评审的材料清单", "XSjCqPsDClQdJJgbService"},
    {"暂估材料(工程设备)清单", "ZgClQdService"},
};

} // namespace

ModuleHost::ModuleHost(QObject* parent) : QObject(parent)
{
    MsgExplain::registerMetaTypes();
    connect(Communication::GetInstance(), &Communication::signalMsg, this,
            &ModuleHost::onModuleMessage);
}

ModuleHost::~ModuleHost()
{
    destroyContainer();
    if (m_service) {
        if (auto activator = osgi::BundleActivatorFactory::GetActivator("TarvoActivator"))
            activator->Stop(ServiceName.toStdString());
    }
}

QString ModuleHost::defaultLibraryPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/libtarvo.so");
}

bool ModuleHost::load(const QString& libraryPath, QString* error)
{
    if (m_service)
        return true;
    QString loadError;
    osgi::BundleLoader::Load(libraryPath, &loadError);
    auto activator = osgi::BundleActivatorFactory::GetActivator("TarvoActivator");
    if (!activator) {
        if (error)
            *error = loadError.isEmpty() ? QStringLiteral("模块未注册激活器：%1").arg(libraryPath)
                                         : loadError;
        return false;
    }
    activator->Start(ServiceName.toStdString());
    m_service = osgi::ObjectHelper::GetService(ServiceName.toStdString());
    if (!m_service) {
        if (error)
            *error = QStringLiteral("模块没有提供服务“%1”。").arg(ServiceName);
        return false;
    }
    m_msgIds.clear();
    m_service->GetMsgIdList(m_msgIds);
    return true;
}

QWidget* ModuleHost::createContainer()
{
    destroyContainer();
    if (!m_service)
        return nullptr;
    ProjectSettingSpace::ServiceFuncPageInfo info;
    info.strServiceName = ServiceName;
    for (const auto& page : kPages) {
        ProjectSettingSpace::ProFuncPageInfo p;
        p.strPageName = QString::fromUtf8(page[0]);
        p.strServiceName = QString::fromUtf8(page[1]);
        info.listPageInfo << p;
    }
    // The module does not guard the making of its container: what it throws is reported here
    // and the window goes on without pages.
    try {
        m_container = m_service->CreateWidget(QVariant::fromValue(info));
    } catch (const std::exception& e) {
        ProcExceptionNew(e, QStringLiteral("workbench\\ModuleHost"), __LINE__,
                         QStringLiteral("ModuleHost::createContainer"));
        m_container = nullptr;
    } catch (...) {
        ProcExceptionNew(std::runtime_error("未知异常"), QStringLiteral("workbench\\ModuleHost"),
                         __LINE__, QStringLiteral("ModuleHost::createContainer"));
        m_container = nullptr;
    }
    Communication::GetInstance()->SaveActiveFirstLevelWidget(m_container);
    return m_container;
}

void ModuleHost::destroyContainer()
{
    if (!m_container)
        return;
    if (m_service)
        m_service->DeleteWidget(m_container);
    delete m_container;
    m_container = nullptr;
}

void ModuleHost::send(int msgId, const QVariant& payload)
{
    if (!m_service || (msgId != MsgId::RefreshPages && !m_msgIds.contains(msgId)))
        return;
    if (m_container)
        Communication::GetInstance()->SaveActiveFirstLevelWidget(m_container);
    QVariant copy = payload;
    m_service->ProcessMsg(msgId, &copy);
    emit sent(msgId, payload);
}

void ModuleHost::onModuleMessage(int target, int msgId, const QVariant& payload)
{
    Q_UNUSED(target)
    switch (msgId) {
    case HostMsg::ShowRibbon:
        emit ribbonRequested(payload.toString());
        break;
    case HostMsg::TabChanged:
        emit pageChanged();
        break;
    case HostMsg::RibbonItemState: {
        const auto info = payload.value<MsgExplain::ToChangeMenuItemInfo>();
        if (info.nType == 3)
            MenuBarManager::getInstance()->SetComboText(info.strText, info.value.toString());
        else if (info.nType == 4)
            MenuBarManager::getInstance()->SetComboItems(info.strText, info.value.toStringList());
        else
            MenuBarManager::getInstance()->SetItemState(info.strText, info.nState);
        break;
    }
    case MsgId::TemplateNames:
    case MsgId::SwitchHeaderTemplate:
    case MsgId::SaveHeaderTemplate:
    case MsgId::RenameColumn:
    case MsgId::HeaderSettings:
    case MsgId::ListHeaderTemplates:
        // Header-template commands come back to the module as they went out.
        send(msgId, payload);
        break;
    default:
        break;
    }
}
