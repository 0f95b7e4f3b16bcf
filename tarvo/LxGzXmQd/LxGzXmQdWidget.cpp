#include "LxGzXmQdWidget.h"

#include "TarvoGuard.h"

#include "ConstructionWorks.h"
#include "HostIds.h"
#include "LxGzXmQdSjWidget.h"
#include "LxGzXmQdSsWidget.h"
#include "ProjectRegion.h"
#include "SporadicWorksWidget.h"

#include <QGridLayout>
#include <QSplitter>

LxGzXmQdWidget::LxGzXmQdWidget(QWidget* parent) : BillPageWidget(parent)
{
    init();
}

void LxGzXmQdWidget::afterMsg(int msgId)
{
    // The panel follows the page's read-only state, and offers the project's region.
    if (m_sporadic && (msgId == MsgId::NodeClicked || msgId == MsgId::NodeSelected ||
                       msgId == MsgId::RefreshPages)) {
        m_sporadic->slotChangeReadOnly(sjWidget()->isLocked());
        if (ConstructionWorks* works = sjWidget()->works())
            m_sporadic->SetProjectRegion(ProjectRegion::Of(works->getOwner()));
    }
}

BillSjWidget* LxGzXmQdWidget::createSjWidget()
{
    return new LxGzXmQdSjWidget(audit(), this);
}

BillSsWidget* LxGzXmQdWidget::createSsWidget()
{
    return new LxGzXmQdSsWidget(audit(), this);
}

void LxGzXmQdWidget::InitWidget()
{
    setObjectName(QStringLiteral("LxGzXmQdWidget"));
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setObjectName(QStringLiteral("splitter"));
    splitter->setOpaqueResize(true);
    splitter->setHandleWidth(6);
    splitter->setChildrenCollapsible(true);
    layout->addWidget(splitter);

    auto* content = new QWidget(splitter);
    content->setObjectName(QStringLiteral("contentWidget"));
    auto* contentLayout = new QGridLayout(content);
    contentLayout->setObjectName(QStringLiteral("gridLayout_2"));
    contentLayout->setContentsMargins(0, 0, 0, 0);
    auto* grids = new zCommonSplitter(1, 1, content);
    grids->addWidget(ssHolder());
    grids->addWidget(sjWidget());
    grids->setSizes({200, 200});
    grids->setHandleWidth(6);
    contentLayout->addWidget(grids);

    // The regional labour-rate query panel beside the bill.
    m_sporadic = new SporadicWorksWidget(splitter);
    auto* sporadic = m_sporadic;
    connect(m_sporadic, &SporadicWorksWidget::signalSelectSporadicItem,
            static_cast<LxGzXmQdSjWidget*>(sjWidget()), &LxGzXmQdSjWidget::slotSelectSporadicItem);
    splitter->addWidget(content);
    splitter->addWidget(sporadic);
    // The bill keeps the larger share: its prices and amounts stay in sight beside the panel.
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    splitter->setSizes({780, 420});
}
