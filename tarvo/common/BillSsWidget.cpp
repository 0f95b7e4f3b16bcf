#include "BillSsWidget.h"

#include "BillModel.h"
#include "TarvoGuard.h"

#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "ProTreeNode.h"
#include "ProjectWorks.h"
#include "zTableView.h"

#include <QGridLayout>
#include <QLabel>

BillSsWidget::BillSsWidget(AuditBusiness* audit, QWidget* parent) : QWidget(parent), m_audit(audit)
{
}

void BillSsWidget::init(BillModel* model, const QString& listName)
{
    m_model = model;
    m_model->setReadOnlyView(true);
    m_model->setAudit(m_audit);
    m_view = new zTableView(this);
    m_view->setObjectName(QStringLiteral("ssGridView"));
    m_view->LoadTableHeader(listName);
    m_view->setModel(m_model);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* title = m_title = new QLabel(QStringLiteral("送审版本"), this);
    title->setStyleSheet(
        QStringLiteral("QLabel { background: #fff4d6; padding: 3px 6px; color: #7a5a00; }"));
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(title, 0, 0);
    layout->addWidget(m_view, 1, 0);
    connect(DataManagement::getInstance(), &DataManagement::projectClosed, this,
            &BillSsWidget::forgetProject);
}

void BillSsWidget::forgetProject(int projectIndex)
{
    const ProjectWorks* closing =
        DataManagement::getInstance()->GetProjectWorksByIndex(projectIndex);
    if (!m_table || !closing || m_table->getOwner() != closing)
        return;
    m_table = nullptr;
    m_model->setTableSource(nullptr, nullptr);
}

void BillSsWidget::ProcMsg(int msgId, QVariant* payload)
{
    TarvoGuard::run(sourceFile(), __LINE__, className() + QStringLiteral("::ProcMsg"), [&] {
        if (msgId == 74 || msgId == 79) {
            ProTreeNode* node = ProTreeNode::FromVariant(payload);
            if (!node || ProTreeNode::Types(node) != 0)
                return;
            // The submitted version of the same node.
            ConstructionWorks* works = DataManagement::getInstance()->GetProObjectForDisplay(
                ProTreeNode::ProjectIndex(node), 1, ProTreeNode::Id(node));
            m_table = works ? pageTable(works) : nullptr;
            m_model->setTableSource(works, m_table);
        } else if (msgId == 41 || msgId == 606) {
            Reload();
        }
    });
}

void BillSsWidget::setTitle(const QString& title)
{
    m_title->setText(title);
}

void BillSsWidget::Reload()
{
    m_model->resetModel();
}
