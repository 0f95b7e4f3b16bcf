#include "BillSsWidget.h"

#include "BillModel.h"
#include "TarvoGuard.h"

#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "HostIds.h"
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
    // A list with a total row keeps it in sight under the rows, as the current version does.
    m_view->setFooterEnabled(true);
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
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &BillSsWidget::slotFocusedRowChanged);
}

void BillSsWidget::slotFocusedRowChanged(const QModelIndex& current)
{
    TarvoGuard::run(sourceFile(), __LINE__, className() + QStringLiteral("::slotFocusedRowChanged"),
                    [&] { m_model->setFocusedRow(current.row()); });
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
        if (msgId == MsgId::NodeClicked || msgId == MsgId::NodeSelected) {
            LoadNode(ProTreeNode::FromVariant(payload));
        } else if (msgId == MsgId::RefreshPages || msgId == MsgId::RecordReplayed) {
            Reload();
        }
    });
}

void BillSsWidget::LoadNode(ProTreeNode* node)
{
    TarvoGuard::run(sourceFile(), __LINE__, className() + QStringLiteral("::LoadNode"), [&] {
        if (!node || ProTreeNode::Types(node) != 0)
            return;
        // The submitted version of the same node.
        ConstructionWorks* works = DataManagement::getInstance()->GetProObjectForDisplay(
            ProTreeNode::ProjectIndex(node), 1, ProTreeNode::Id(node));
        m_table = works ? pageTable(works) : nullptr;
        m_model->setTableSource(works, m_table);
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
