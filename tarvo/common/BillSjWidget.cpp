#include "BillSjWidget.h"

#include "BillModel.h"
#include "TarvoGuard.h"

#include "AuditBusiness.h"
#include "Communication.h"
#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "HostIds.h"
#include "MsgExplain.h"
#include "ProTreeNode.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"
#include "zTableView.h"

#include <QDebug>
#include <QGridLayout>
#include <QHeaderView>

BillSjWidget::BillSjWidget(AuditBusiness* audit, QWidget* parent)
    : zBaseWidget(parent), m_audit(audit)
{
    installEventFilter(this);
}

QString BillSjWidget::tag(const char* function) const
{
    return className() + QStringLiteral("::") + QLatin1String(function);
}

void BillSjWidget::init(BillModel* model)
{
    m_model = model;
    m_model->setAudit(m_audit);
    m_model->setSourceFolder(sourceFile().section(QLatin1Char('\\'), 0, 0));
    m_view = new zTableView(this);
    m_view->setObjectName(QStringLiteral("gridView"));
    m_view->LoadTableHeader(listName());
    m_view->setModel(m_model);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    connect(m_view, &zTableView::signalMouseMoveRows, this, &BillSjWidget::slotMouseMoveRows);
    connect(DataManagement::getInstance(), &DataManagement::projectClosed, this,
            &BillSjWidget::forgetProject);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { ChangeDelAndInsAcState(current.row()); });
    // A reset drops the view's current cell: the user keeps their place (clamped to the rows
    // left), and the ribbon follows it.
    connect(m_model, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        TARVO_GUARD("common\\BillSjWidget", "BillSjWidget::keepCell")
        {
            m_keptCell = {m_view->currentIndex().row(), m_view->currentIndex().column()};
        };
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        TARVO_GUARD("common\\BillSjWidget", "BillSjWidget::restoreCell")
        {
            const int rows = m_model->rowCount();
            if (m_keptCell.first >= 0 && rows > 0)
                m_view->setCurrentIndex(
                    m_model->index(qMin(m_keptCell.first, rows - 1), qMax(0, m_keptCell.second)));
        };
    });
}

bool BillSjWidget::isLocked() const
{
    if (!m_table || TableBaseObject::GetReadOnlyLocked(m_table))
        return true;
    const ProjectWorks* owner = m_table->getOwner();
    return owner && (owner->GetDqdZdSd() || owner->IsReadOnly());
}

bool BillSjWidget::isWritable() const
{
    return m_works && !isLocked();
}

void BillSjWidget::closeEditor()
{
    m_view->closeEditor();
}

void BillSjWidget::ProcMsg(int msgId, QVariant* payload)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ProcMsg"), [&] {
        const QVariant value = payload ? *payload : QVariant();
        switch (msgId) {
        case MsgId::NodeClicked:
        case MsgId::NodeSelected:
            LoadNode(ProTreeNode::FromVariant(payload), msgId);
            break;
        case MsgId::ProjectSaved:
            onProjectSaved(value);
            break;
        case MsgId::RefreshPages:
            RefreshGrid();
            break;
        case MsgId::Activated:
            onActivated();
            break;
        case MsgId::SettingChanged:
            onSettingsChanged(value);
            break;
        case MsgId::RibbonCommand:
            if (m_view->isEditing())
                break;
            if (value.toString() == QStringLiteral("表格自适应行高"))
                FitRowHeights(false);
            else if (value.toString() == QStringLiteral("表格置最小行高"))
                FitRowHeights(true);
            else
                onRibbonCommand(value);
            break;
        case MsgId::RibbonCombo:
            // A ribbon combo's choice reaches the page's command handler like a command.
            if (!m_view->isEditing())
                onRibbonCommand(value);
            break;
        case MsgId::SwitchHeaderTemplate:
            zTableView::callSwitchTableHeaderConfig(m_view, 1, 1, value.toString());
            break;
        case MsgId::SaveHeaderTemplate:
            zTableView::callSaveUserTemplateToJsonFilePanel(m_view);
            break;
        case MsgId::RenameColumn:
            zTableView::callModifyCurrColNamePanel(m_view);
            break;
        case MsgId::HeaderSettings:
            zTableView::callHeaderSettingsPanel(m_view);
            break;
        case MsgId::ListHeaderTemplates:
            answerTemplateList();
            break;
        default:
            break;
        }
    });
}

void BillSjWidget::answerTemplateList()
{
    QStringList names = zTableView::getCurrentTableAllTemplateName(m_view);
    names.insert(0, QStringLiteral("默认表头"));
    // The host hands the list back as message 7000 (the request's id less 6).
    Communication::GetInstance()->SendMsg(HostMsg::HostTarget, MsgId::TemplateNames,
                                          QVariant(names));
}

void BillSjWidget::LoadNode(ProTreeNode* node, int msgId)
{
    if (!node)
        return;
    if (ProTreeNode::Types(node) != 0) {
        qDebug().noquote() << QStringLiteral("节点类型错误！node: %1, type: %2, code: %3")
                                  .arg(ProTreeNode::Name(node))
                                  .arg(ProTreeNode::Types(node))
                                  .arg(msgId);
        return;
    }
    ConstructionWorks* works = DataManagement::getInstance()->GetProObjectForDisplay(
        ProTreeNode::ProjectIndex(node), ProTreeNode::AuditVersion(node), ProTreeNode::Id(node));
    m_view->clearSelection();
    m_view->setCurrentIndex(QModelIndex()); // another table: no kept place
    m_node = node;
    m_works = works;
    m_table = works ? pageTable(works) : nullptr;
    m_model->setTableSource(works, m_table);
    if (m_audit)
        m_audit->SetTableSource(m_table);
    RefreshGrid();
    applyReadOnly();
    onNodeLoaded();
}

void BillSjWidget::forgetProject(int projectIndex)
{
    if (!m_node || ProTreeNode::ProjectIndex(m_node) != projectIndex)
        return;
    m_view->clearSelection();
    m_view->setCurrentIndex(QModelIndex());
    m_node = nullptr;
    m_works = nullptr;
    m_table = nullptr;
    m_model->setTableSource(nullptr, nullptr);
    if (m_audit)
        m_audit->SetTableSource(nullptr);
    RefreshGrid();
}

void BillSjWidget::applyReadOnly()
{
    const bool locked = isLocked();
    m_view->setEditTriggers(locked ? QAbstractItemView::NoEditTriggers
                                   : QAbstractItemView::DoubleClicked |
                                         QAbstractItemView::EditKeyPressed |
                                         QAbstractItemView::AnyKeyPressed);
}

void BillSjWidget::RefreshGrid()
{
    m_model->resetModel();
    // Rows the user gave a height keep it. While the header does not paint, a resize does not
    // ask for the section's place, which would lay out every section again: the heights of a
    // long list are then set in one pass. Each resize also asks for the least height, which
    // the header works out from its font unless one is set: it is set for the pass.
    if (!m_table)
        return;
    QHeaderView* rows = m_view->verticalHeader();
    const bool painting = rows->updatesEnabled();
    rows->setUpdatesEnabled(false);
    const int minimum = rows->minimumSectionSize();
    rows->setMinimumSectionSize(minimum);
    for (int row = 0; row < m_table->count(); ++row)
        if (const int height = m_table->at(row)->getRowHeight(); height > 0)
            rows->resizeSection(row, height);
    rows->setMinimumSectionSize(-1);
    rows->setUpdatesEnabled(painting);
    m_view->viewport()->update();
}

void BillSjWidget::FitRowHeights(bool minimal)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag(minimal ? "MinRowHeight" : "FitRowHeights"), [&] {
        if (!m_table || isLocked())
            return;
        const int minimum = m_view->headerConfig().rowHeight;
        m_model->recorded(
            OperationKind::Edit,
            minimal ? QStringLiteral("表格置最小行高") : QStringLiteral("表格自适应行高"), [&] {
                for (int row = 0; row < m_table->count(); ++row)
                    m_table->at(row)->setRowHeight(
                        minimal ? minimum : qMax(minimum, m_view->contentHeightOfRow(row)));
                return true;
            });
        RefreshGrid();
    });
}

void BillSjWidget::onActivated()
{
    Communication::GetInstance()->SendMsg(HostMsg::HostTarget, HostMsg::ShowRibbon,
                                          QVariant(ribbonFile()));
    ChangeDelAndInsAcState(m_view->currentIndex().isValid() ? m_view->currentIndex().row() : 0);
}

void BillSjWidget::ChangeDelAndInsAcState(int row)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ChangeDelAndInsAcState"), [&] {
        if (row < 0 || !m_table || isLocked())
            return;
        const BaseDataItem* item = m_table->at(row);
        int state = row > 0 ? 1 : 0;
        if (item && totalKind() >= 0 && item->getKind() == totalKind())
            state = 3;
        for (const QString& text : {QStringLiteral("招投标-删除行"), QStringLiteral("插入行")}) {
            MsgExplain::ToChangeMenuItemInfo info;
            info.strText = text;
            info.nState = state;
            Communication::GetInstance()->SendMsg(HostMsg::HostTarget, HostMsg::RibbonItemState,
                                                  QVariant::fromValue(info));
        }
    });
}

void BillSjWidget::slotMouseMoveRows(int from, int to, bool finished)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotMouseMoveRows"), [&] {
        if (!finished) {
            // While dragging, the grid shows whether the rows may land here.
            m_view->setMoveTarget(to, m_table && !isLocked() && canMoveRows(from, to));
            return;
        }
        m_view->clearMoveTarget();
        if (!m_table || isLocked() || !canMoveRows(from, to))
            return;
        m_model->recorded(OperationKind::MoveRows, moveLabel(), [&] { return moveRows(from, to); });
        m_view->setCurrentIndex(m_model->index(to, qMax(0, m_view->currentIndex().column())));
    });
}

void BillSjWidget::hideEvent(QHideEvent* event)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("hideEvent"), [&] { closeEditor(); });
    zBaseWidget::hideEvent(event);
}

bool BillSjWidget::eventFilter(QObject* watched, QEvent* event)
{
    return zBaseWidget::eventFilter(watched, event);
}
