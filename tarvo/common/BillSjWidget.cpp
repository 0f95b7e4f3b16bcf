#include "BillSjWidget.h"

#include "BillModel.h"
#include "TarvoGuard.h"

#include "AuditBusiness.h"
#include "Communication.h"
#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "MsgExplain.h"
#include "ProTreeNode.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"
#include "zTableView.h"

#include <QDebug>
#include <QGridLayout>
#include <QHeaderView>

BillSjWidget::BillSjWidget(AuditBusiness* audit, QWidget* parent) : zBaseWidget(parent), m_audit(audit)
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
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { ChangeDelAndInsAcState(current.row()); });
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        // A reset drops the selection model's current index; keep the ribbon in step.
        if (m_audit)
            m_audit->CreateRelationByTable();
    });
}

bool BillSjWidget::isLocked() const
{
    if (!m_table || TableBaseObject::GetReadOnlyLocked(m_table))
        return true;
    const ProjectWorks* owner = m_table->getOwner();
    return owner && (owner->GetDqdZdSd() || owner->IsReadOnly());
}

void BillSjWidget::ProcMsg(int msgId, QVariant* payload)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ProcMsg"), [&] {
        const QVariant value = payload ? *payload : QVariant();
        switch (msgId) {
        case 74:
        case 79:
            loadNode(payload, msgId);
            break;
        case 31:
            onProjectSaved(value);
            break;
        case 41:
            RefreshGrid();
            break;
        case 12:
            onActivated();
            break;
        case 78:
            onSettingsChanged(value);
            break;
        case 6:
            if (!m_view->isEditing())
                onRibbonCommand(value);
            break;
        case 7002:
            zTableView::callSwitchTableHeaderConfig(m_view, 1, 1, value.toString());
            break;
        case 7003:
            zTableView::callSaveUserTemplateToJsonFilePanel(m_view);
            break;
        case 7004:
            zTableView::callModifyCurrColNamePanel(m_view);
            break;
        case 7005:
            zTableView::callHeaderSettingsPanel(m_view);
            break;
        case 7006:
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
    Communication::GetInstance()->SendMsg(4, 7000, QVariant(names));
}

void BillSjWidget::loadNode(QVariant* payload, int msgId)
{
    ProTreeNode* node = ProTreeNode::FromVariant(payload);
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
    m_node = node;
    m_works = works;
    m_table = works ? pageTable(works) : nullptr;
    m_model->setTableSource(works, m_table);
    if (m_audit)
        m_audit->SetTableSource(m_table);
    RefreshGrid();
    applyReadOnly();
}

void BillSjWidget::applyReadOnly()
{
    const bool locked = isLocked();
    m_view->setEditTriggers(locked ? QAbstractItemView::NoEditTriggers
                                   : QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                                         | QAbstractItemView::AnyKeyPressed);
}

void BillSjWidget::RefreshGrid()
{
    const QModelIndex current = m_view->currentIndex();
    m_model->resetModel();
    if (current.isValid() && current.row() < m_model->rowCount())
        m_view->setCurrentIndex(m_model->index(current.row(), current.column()));
}

void BillSjWidget::onActivated()
{
    Communication::GetInstance()->SendMsg(4, 15, QVariant(ribbonFile()));
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
            Communication::GetInstance()->SendMsg(4, 47, QVariant::fromValue(info));
        }
    });
}

void BillSjWidget::slotMouseMoveRows(int from, int to, bool finished)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotMouseMoveRows"), [&] {
        if (!finished || !m_table || isLocked() || !canMoveRows(from, to))
            return;
        m_model->recorded(22, moveLabel(), [&] { return moveRows(from, to); });
        m_view->setCurrentIndex(m_model->index(to, qMax(0, m_view->currentIndex().column())));
    });
}

bool BillSjWidget::eventFilter(QObject* watched, QEvent* event)
{
    return zBaseWidget::eventFilter(watched, event);
}
