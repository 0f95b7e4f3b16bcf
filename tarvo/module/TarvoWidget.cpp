#include "TarvoWidget.h"

#include "PageNames.h"
#include "TarvoGuard.h"
#include "common/BillPageWidget.h"

#include "GfQd/GfQdWidget.h"
#include "LxGzXmQd/LxGzXmQdWidget.h"
#include "QtXmQd/QtXmQdWidget.h"
#include "SjCqXPsClQd/SjCqXPsClWidget.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"
#include "ZgClQd/ZgClQdWidget.h"

#include "Communication.h"
#include "DataManagement.h"
#include "HostIds.h"
#include "MsgExplain.h"
#include "PriceModelConfig.h"
#include "ProTreeNode.h"
#include "ProjectWorks.h"
#include "XtBlBusiness.h"
#include "zMessageBox.h"
#include "zProTabWidget.h"

#include <QDebug>
#include <QGridLayout>
#include <QTabBar>

namespace {

// Configuration item and system variable that remember a node's current page.
constexpr int CurrentPageItem = 25;

template <typename Page> QWidget* createPage()
{
    return new Page(nullptr);
}

template <typename Page> bool deliver(QWidget* widget, int msgId, QVariant* payload)
{
    Page* page = qobject_cast<Page*>(widget);
    if (page)
        page->ProcMsg(msgId, payload);
    return page != nullptr;
}

bool isNodeMsg(int msgId)
{
    return msgId == MsgId::NodeClicked || msgId == MsgId::NodeSelected;
}

struct PageClass
{
    QString service;
    QWidget* (*create)();
    bool (*deliver)(QWidget*, int, QVariant*);
};

const QList<PageClass>& pageClasses()
{
    static const QList<PageClass> classes = {
        {PageNames::QtXmQdService, &createPage<QtXmQdWidget>, &deliver<QtXmQdWidget>},
        {PageNames::ZbrClGzfQdService, &createPage<ZbrClGzfQdWidget>, &deliver<ZbrClGzfQdWidget>},
        {PageNames::LxGzXmQdService, &createPage<LxGzXmQdWidget>, &deliver<LxGzXmQdWidget>},
        {PageNames::GfQdService, &createPage<GfQdWidget>, &deliver<GfQdWidget>},
        {PageNames::SjCqXPsClService, &createPage<SjCqXPsClWidget>, &deliver<SjCqXPsClWidget>},
        {PageNames::ZgClQdService, &createPage<ZgClQdWidget>, &deliver<ZgClQdWidget>},
    };
    return classes;
}

} // namespace

TarvoWidget::TarvoWidget(const QMap<QString, SerContentInfo>& serviceContent,
                         const QList<ProjectSettingSpace::ProFuncPageInfo>& pages, QWidget* parent)
    : QWidget(parent)
{
    qRegisterMetaType<TabPageInfo*>("TabPageInfo*");

    m_layout = new QGridLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_tabs = new zProTabWidget(4, nullptr);
    m_tabs->SetHaveContextMenu(true);
    m_tabs->tabBar()->setObjectName(QStringLiteral("BottomProTabBar"));
    m_tabs->SetTabOnTop(false);
    m_tabs->setStyleSheet(m_tabs->styleSheet());
    m_layout->addWidget(m_tabs);
    m_tabs->UpdateTabWidgetStyle();

    m_serviceContent = serviceContent;

    // Only pages that some child service provides get a tab.
    struct Tagged
    {
        ProjectSettingSpace::ProFuncPageInfo page;
        QString service;
    };
    QList<Tagged> tagged;
    for (const ProjectSettingSpace::ProFuncPageInfo& page : pages) {
        const QString service = serviceOfPage(page.strPageName);
        if (!service.isEmpty())
            tagged.append({page, service});
    }
    const bool anyCurrent =
        std::any_of(tagged.begin(), tagged.end(), [](const Tagged& t) { return t.page.bCurrent; });
    if (!anyCurrent && !tagged.isEmpty())
        tagged.first().page.bCurrent = true;
    for (const Tagged& t : std::as_const(tagged)) {
        ProjectSettingSpace::ProFuncPageInfo page = t.page;
        page.strServiceName = t.service;
        m_tabs->AddTabWithoutCreateWidget(page.strPageName, t.service, page.bCurrent,
                                          m_serviceContent.value(t.service).bHaveContextMenu,
                                          QVariant::fromValue(page));
    }

    m_tabs->SetTabPageOriginalOrder(PageNames::pageOrder());
    m_tabs->SetServiceContentInfo(serviceContent);
    m_tabs->slotUpdateIndicatorBtnPos(0);
    m_tabs->UpdateIndicatorGeometry();

    connect(m_tabs, SIGNAL(signalCurPageIndexChanged(int)), this, SLOT(slotCurTabChanged(int)));
    // A closed project's node is freed with it: tab changes must not write to it any more.
    connect(DataManagement::getInstance(), &DataManagement::projectClosed, this, [this](int index) {
        TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::projectClosed")
        {
            if (m_currentNode && ProTreeNode::ProjectIndex(m_currentNode) == index)
                m_currentNode = nullptr;
        };
    });
    connect(m_tabs, &zProTabWidget::signalCreateTabWidget, this, &TarvoWidget::slotCreateTabWidget);
    connect(m_tabs, &zProTabWidget::signalToDeleteTabWidget, this,
            &TarvoWidget::slotRemoveTabWidget);
    connect(m_tabs, &zProTabWidget::signalTabPageChanged, this, &TarvoWidget::slotTabPageChanged);
    connect(m_tabs, &zProTabWidget::signalOperateMsg, this, &TarvoWidget::slotTabOperateMsg);
    connect(m_tabs, &zProTabWidget::sigHeaderTemplateChanged, this,
            &TarvoWidget::slotHeaderTemplateChanged);
    connect(m_tabs, &zProTabWidget::signalSaveTableheaderTemp, this,
            &TarvoWidget::slotSaveTableheaderTemp);
    connect(m_tabs, &zProTabWidget::signalModifyCurrentColumnTittle, this,
            &TarvoWidget::slotModifyCurrentColumnTittle);
    connect(m_tabs, &zProTabWidget::signalTableHeaderAdvancedSetting, this,
            &TarvoWidget::slotTableHeaderAdvancedSetting);
    connect(m_tabs, &zProTabWidget::signalTabMenuAboutToShow, this,
            &TarvoWidget::slotTabMenuAboutToShow);
}

TarvoWidget::~TarvoWidget()
{
    m_tabs->InformToManageDeleteWidget();
    m_serviceContent.clear();
    m_widgetService.clear();
}

QString TarvoWidget::serviceOfPage(const QString& pageName) const
{
    for (auto it = m_serviceContent.cbegin(); it != m_serviceContent.cend(); ++it)
        if (it.value().listPageNames.contains(pageName))
            return it.key();
    return QString();
}

QWidget* TarvoWidget::CreateWidgetByTypeName(const QString& serviceName)
{
    for (const PageClass& page : pageClasses())
        if (page.service == serviceName)
            return page.create();
    return nullptr;
}

void TarvoWidget::DistributeMsg(QWidget* page, QString serviceName, int msgId, QVariant* payload)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::DistributeMsg")
    {
        // A node message was decoded once, here: the pages take the node as it is.
        if (auto* bill = qobject_cast<BillPageWidget*>(page); bill && isNodeMsg(msgId)) {
            bill->ProcNodeMsg(msgId, m_decodedNode, payload);
            return;
        }
        for (const PageClass& pageClass : pageClasses())
            if (pageClass.service == serviceName) {
                pageClass.deliver(page, msgId, payload);
                return;
            }
    };
}

void TarvoWidget::forward(int msgId, QVariant* payload)
{
    QWidget* widget = m_tabs->GetCurrentContentWidget();
    DistributeMsg(widget, m_widgetService.value(widget), msgId, payload);
}

void TarvoWidget::ProcMsg(int msgId, QVariant* payload)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::ProcMsg")
    {
        switch (msgId) {
        case MsgId::RefreshPages: {
            const QMap<QString, QList<QWidget*>> created = m_tabs->GetAlreadyCreatePage();
            for (auto it = created.cbegin(); it != created.cend(); ++it)
                for (QWidget* widget : it.value())
                    DistributeMsg(widget, it.key(), msgId, payload);
            return;
        }
        case MsgId::NodeClicked:
        case MsgId::NodeSelected: {
            ProcessProjectTreeClickedMsg(payload);
            RestorePageArrangement();
            const ProjectWorks* works = DataManagement::getInstance()->GetProjectWorksByIndex(
                ProTreeNode::ProjectIndex(m_currentNode));
            m_tabs->ChangeROState(works && works->IsReadOnly());
            break;
        }
        case MsgId::ActivatePage:
            ProcessChangeActivePageMsg(payload);
            break;
        case MsgId::TemplateNames:
            m_tabs->SetTableHeaderTempList(payload ? payload->toStringList() : QStringList());
            break;
        default:
            break;
        }
        forward(msgId, payload);
    };
}

void TarvoWidget::ProcActiveWidgetChanged()
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::ProcActiveWidgetChanged")
    {
        QWidget* widget = m_tabs->GetCurrentContentWidget();
        if (!widget || !m_widgetService.contains(widget))
            return;
        Communication::GetInstance()->SaveActiveSecondLevelWidget(widget);
        QVariant empty{QStringLiteral("")};
        DistributeMsg(widget, m_widgetService.value(widget), 12, &empty);
    };
}

void TarvoWidget::RestorePageArrangement()
{
    const ProjectWorks* works = m_currentNode
                                    ? DataManagement::getInstance()->GetProjectWorksByIndex(
                                          ProTreeNode::ProjectIndex(m_currentNode))
                                    : nullptr;
    // Once per project shown: later clicks in the same project keep what the user does now.
    if (!works || works == m_arrangedProject)
        return;
    m_arrangedProject = works;
    const PriceModelConfig* config = DataManagement::getInstance()->GetPriceModelConfig(
        ProTreeNode::ProjectIndex(m_currentNode));
    if (!config)
        return;
    auto names = [&](int item) {
        const QVariant value = config->getItem(item);
        if (value.isValid() && value.userType() != QMetaType::QStringList) {
            qWarning().noquote() << QStringLiteral(
                                        "工程配置项%1（页面排列）的值“%2”不是页面名称列表，已忽略")
                                        .arg(item)
                                        .arg(value.toString());
            return QStringList();
        }
        return value.toStringList();
    };
    const QStringList order = names(PageOrderItem);
    const QStringList hidden = names(HiddenPagesItem);
    if (!order.isEmpty() || !hidden.isEmpty())
        m_tabs->ApplyPageArrangement(order, hidden);
}

void TarvoWidget::ProcessProjectTreeClickedMsg(QVariant* payload)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::ProcessProjectTreeClickedMsg")
    {
        m_decodedNode = ProTreeNode::FromVariant(payload);
        if (m_decodedNode)
            m_currentNode = m_decodedNode;
    };
}

void TarvoWidget::ProcessChangeActivePageMsg(QVariant* payload)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::ProcessChangeActivePageMsg")
    {
        MsgExplain::ToChangeActivePageInfo info;
        const int type = qMetaTypeId<MsgExplain::ToChangeActivePageInfo>();
        if (payload && payload->userType() == type) {
            info = payload->value<MsgExplain::ToChangeActivePageInfo>();
        } else if (payload) {
            QVariant copy = *payload;
            if (copy.convert(type))
                info = copy.value<MsgExplain::ToChangeActivePageInfo>();
        }
        m_tabs->SetTabVisibleBySysName(info.strPageName, true, false);
    };
}

void TarvoWidget::SaveCurPageIndexToConfig(int index)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::SaveCurPageIndexToConfig")
    {
        if (!m_currentNode)
            return;
        auto* config = dynamic_cast<ConfigOfConstruction*>(
            DataManagement::getInstance()->GetSJPriceModelConfig(m_currentNode));
        if (config)
            config->setItem(CurrentPageItem, m_tabs->GetSysNameByIndex(index));
    };
}

void TarvoWidget::slotCurTabChanged(int index)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotCurTabChanged")
    {
        QWidget* widget = m_tabs->GetCurrentContentWidget();
        if (!widget || !m_widgetService.contains(widget))
            return;
        SaveCurPageIndexToConfig(index);
        Communication::GetInstance()->SaveActiveSecondLevelWidget(widget);
        if (m_currentNode)
            XtBlBusiness::ChangeXtBl(ProTreeNode::ProjectIndex(m_currentNode),
                                     ProTreeNode::AuditVersion(m_currentNode),
                                     ProTreeNode::Id(m_currentNode), CurrentPageItem,
                                     QVariant(m_tabs->GetSysNameByIndex(index)));
        QVariant empty{QStringLiteral("")};
        DistributeMsg(widget, m_widgetService.value(widget), 12, &empty);
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, HostMsg::TabChanged,
                                              QVariant(0));
    };
}

void TarvoWidget::slotCreateTabWidget(TabPageInfo* pTabPageInfo)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotCreateTabWidget")
    {
        if (!pTabPageInfo)
            return;
        const QString service = serviceOfPage(pTabPageInfo->strPageName);
        if (service.isEmpty())
            return;
        QWidget* widget = CreateWidgetByTypeName(service);
        pTabPageInfo->pWidget = widget;
        if (widget)
            m_widgetService.insert(widget, service);
    };
}

void TarvoWidget::slotTabPageChanged(
    QList<ProjectSettingSpace::ProFuncPageInfo> listCurProFuncPageInfo)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotTabPageChanged")
    {
        if (!m_currentNode)
            return;
        // The arrangement is kept per project: which pages are shown, in tab order.
        ProjectWorks* works = DataManagement::getInstance()->GetProjectWorksByIndex(
            ProTreeNode::ProjectIndex(m_currentNode));
        if (!works || !DataManagement::getInstance()->GetSJPriceModelConfig(m_currentNode))
            return;
        QStringList hidden;
        QStringList order;
        for (const ProjectSettingSpace::ProFuncPageInfo& page : listCurProFuncPageInfo) {
            order << page.strPageName;
            if (!page.bVisible)
                hidden << page.strPageName;
        }
        works->GetPriceModelConfig()->setItem(HiddenPagesItem, hidden);
        works->GetPriceModelConfig()->setItem(PageOrderItem, order);
        works->setProjectWorkChanged(true);
    };
}

void TarvoWidget::slotTabOperateMsg(QString strMsg)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotTabOperateMsg")
    {
        showInformation(this, QStringLiteral("操作提示"), strMsg);
    };
}

void TarvoWidget::slotRemoveTabWidget(TabPageInfo* pTabPageInfo)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotRemoveTabWidget")
    {
        if (!pTabPageInfo || serviceOfPage(pTabPageInfo->strPageName).isEmpty())
            return;
        m_widgetService.remove(pTabPageInfo->pWidget);
        Communication* communication = Communication::GetInstance();
        if (communication->GetActiveSecondLevelWidget() == pTabPageInfo->pWidget)
            communication->SaveActiveSecondLevelWidget(nullptr);
    };
}

void TarvoWidget::slotHeaderTemplateChanged(QString strHeaderTempName)
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotHeaderTemplateChanged")
    {
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, MsgId::SwitchHeaderTemplate,
                                              QVariant(strHeaderTempName));
    };
}

void TarvoWidget::slotSaveTableheaderTemp()
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotSaveTableheaderTemp")
    {
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, MsgId::SaveHeaderTemplate,
                                              QVariant());
    };
}

void TarvoWidget::slotModifyCurrentColumnTittle()
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotModifyCurrentColumnTittle")
    {
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, MsgId::RenameColumn, QVariant());
    };
}

void TarvoWidget::slotTableHeaderAdvancedSetting()
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotTableHeaderAdvancedSetting")
    {
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, MsgId::HeaderSettings,
                                              QVariant());
    };
}

void TarvoWidget::slotTabMenuAboutToShow()
{
    TARVO_GUARD("module\\TarvoWidget", "TarvoWidget::slotTabMenuAboutToShow")
    {
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, MsgId::ListHeaderTemplates,
                                              QVariant());
    };
}
