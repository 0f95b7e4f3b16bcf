#include "BillPageWidget.h"

#include "BillSjWidget.h"
#include "BillSsWidget.h"
#include "TarvoGuard.h"

#include "AuditBusiness.h"
#include "HostIds.h"
#include "ProTreeNode.h"

#include <QGridLayout>
#include <QHBoxLayout>

BillPageWidget::BillPageWidget(QWidget* parent)
    : zBaseWidget(parent), m_audit(new AuditBusiness(this))
{
}

QString BillPageWidget::tag(const char* function) const
{
    return className() + QStringLiteral("::") + QLatin1String(function);
}

void BillPageWidget::init()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InitWidget"), [&] {
        m_sj = createSjWidget();
        m_ssHolder = new zBaseWidget(this);
        InitWidget();
        SwitchIntoSsState(false);
    });
    InitAudit();
}

void BillPageWidget::InitWidget()
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* frame = new zBaseFrame(this);
    frame->setObjectName(QStringLiteral("frame"));
    layout->addWidget(frame);
    auto* frameLayout = new QHBoxLayout(frame);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new zCommonSplitter(1, 1, frame);
    frameLayout->addWidget(splitter);
    splitter->addWidget(m_ssHolder);
    splitter->addWidget(m_sj);
    splitter->setSizes({200, 200});
    splitter->setHandleWidth(6);
}

void BillPageWidget::InitAudit()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InitAudit"), [&] {
        m_audit->SetWidget(m_sj, 0);
        m_audit->SetWidget(m_ssHolder, 1);
    });
}

void BillPageWidget::SwitchIntoSsState(bool on)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("SwitchIntoSsState"), [&] {
        if (on && !m_ss) {
            m_ss = createSsWidget();
            auto* layout = new QGridLayout;
            layout->setContentsMargins(0, 0, 0, 0);
            layout->addWidget(m_ss);
            m_ssHolder->setLayout(layout);
        } else if (m_ss) {
            m_ss->Reload();
        }
        // Without a submitted version the holder takes no room.
        m_ssHolder->setVisible(m_ss != nullptr && m_hasSs);
    });
}

void BillPageWidget::ProcMsg(int msgId, QVariant* payload)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ProcMsg"), [&] {
        if (msgId == MsgId::NodeClicked || msgId == MsgId::NodeSelected) {
            ProcNodeMsg(msgId, ProTreeNode::FromVariant(payload), payload);
            return;
        }
        m_sj->ProcMsg(msgId, payload);
        if (m_hasSs && m_ss) {
            m_ss->ProcMsg(msgId, payload);
            m_audit->Open();
        }
        m_audit->ProcMsg(msgId, payload);
        afterMsg(msgId);
    });
}

void BillPageWidget::ProcNodeMsg(int msgId, ProTreeNode* node, QVariant* payload)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ProcMsg"), [&] {
        if (node) {
            m_hasSs = ProTreeNode::CheckWithSSVersion(node);
            SwitchIntoSsState(m_hasSs);
        }
        m_sj->LoadNode(node, msgId);
        if (m_hasSs && m_ss) {
            m_ss->LoadNode(node);
            m_audit->Open();
        }
        m_audit->ProcMsg(msgId, payload);
        afterMsg(msgId);
    });
}
