#include "GfQdSjWidget.h"

#include "GfQdModel.h"
#include "TarvoGuard.h"
#include "common/ContentTemplates.h"

#include "AuditBusiness.h"
#include "Communication.h"
#include "DataManagement.h"
#include "GfQdBusiness.h"
#include "HostConstants.h"
#include "HostIds.h"
#include "MsgExplain.h"
#include "TableOps.h"
#include "XtBlBusiness.h"
#include "zMessageBox.h"
#include "zTableView.h"

#include <QDebug>
#include <QMenu>

namespace {

// System variable that records the fee template the unit project last took or saved.
constexpr int TemplateXtBl = 5;

} // namespace

GfQdSjWidget::GfQdSjWidget(AuditBusiness* audit, QWidget* parent) : BillSjWidget(audit, parent)
{
    init(new GfQdModel(this));
    view()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view(), &QWidget::customContextMenuRequested, this, &GfQdSjWidget::showContextMenu);
}

GeneralTableBase* GfQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getGfSjQdTable();
}

GfSjQdTable* GfQdSjWidget::pageTable() const
{
    return static_cast<GfSjQdTable*>(table());
}

bool GfQdSjWidget::canMoveRows(int from, int to) const
{
    return GfQdBusiness::GridRowCanMove(pageTable(), from, to);
}

bool GfQdSjWidget::moveRows(int from, int to)
{
    return GfQdBusiness::GridRowMove(pageTable(), from, to);
}

QString GfQdSjWidget::TemplateDir()
{
    return ContentTemplates::Dir();
}

QStringList GfQdSjWidget::TemplateNames()
{
    return ContentTemplates::Names(HostConstants::GfQdTemplateFileProfix);
}

void GfQdSjWidget::announceTemplates(const QString& current)
{
    ContentTemplates::Announce(HostConstants::GfQdTemplateFileProfix, current);
}

void GfQdSjWidget::UpdateCurFeesItemTemp()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("UpdateCurFeesItemTemp"), [&] {
        if (!node())
            return;
        QString name;
        const PriceModelConfig* config =
            DataManagement::getInstance()->GetPriceModelConfig(ProTreeNode::ProjectIndex(node()));
        if (config && config->objectType() == ConfigOfConstruction::ObjectType)
            name = config->getItem(5).toString();
        qDebug().noquote() << QStringLiteral("Default Template:") << name;
        // A template the unit project took or saved since counts before the default.
        announceTemplates(ContentTemplates::InUse(works(), TemplateXtBl, name,
                                                  HostConstants::GfQdTemplateFileProfix));
    });
}

void GfQdSjWidget::onActivated()
{
    BillSjWidget::onActivated();
    UpdateCurFeesItemTemp();
    disableExportsWhenReadOnly();
}

void GfQdSjWidget::onNodeLoaded()
{
    UpdateCurFeesItemTemp();
    disableExportsWhenReadOnly();
}

void GfQdSjWidget::disableExportsWhenReadOnly()
{
    const ProjectWorks* owner = table() ? table()->getOwner() : nullptr;
    if (!owner || !owner->IsReadOnly())
        return;
    for (const QString& text : {QStringLiteral("导出招投标CJZ"), QStringLiteral("导出竣工CJZ"),
                                QStringLiteral("导出备案CJZX")}) {
        MsgExplain::ToChangeMenuItemInfo info{text, 3, 0, QVariant()};
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, HostMsg::RibbonItemState,
                                              QVariant::fromValue(info));
    }
}

void GfQdSjWidget::CurGfSjTamplateChanged(const QString& name)
{
    runCommand("CurGfSjTamplateChanged", QStringLiteral("调用内容模板"), OperationKind::Edit, [&] {
        GfSjQdTable temporary;
        if (!ContentTemplates::Read(this, name, HostConstants::GfQdTemplateFileProfix, &temporary,
                                    GfSjQdTable::Type))
            return false; // no such template: the list stays as it is
        XtBlBusiness::ChangeXtBl(ProTreeNode::ProjectIndex(node()), works()->getAuditId(),
                                 works()->getNodeId(), TemplateXtBl, name);
        GfQdBusiness::ReplaceTableContentFromOther(pageTable(), &temporary);
        GfQdBusiness::CalculateGfQdTable(works(), pageTable());
        if (ProjectWorks* owner = pageTable()->getOwner())
            owner->setProjectWorkChanged(true);
        if (audit())
            audit()->CreateRelationByTable(3);
        return true;
    });
}

void GfQdSjWidget::SaveTemplate()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("SaveTemplate"), [&] {
        GfSjQdTable* list = pageTable();
        if (!list)
            return;
        GfSjQdTable copy;
        GfQdBusiness::ReplaceTableContentFromOther(&copy, list);
        const QString name = ContentTemplates::AskAndSave(this, &copy, GfSjQdTable::Type,
                                                          HostConstants::GfQdTemplateFileProfix);
        if (name.isEmpty())
            return;
        announceTemplates(name);
        if (works())
            XtBlBusiness::ChangeXtBl(ProTreeNode::ProjectIndex(node()), works()->getAuditId(),
                                     works()->getNodeId(), TemplateXtBl, name);
    });
}

void GfQdSjWidget::InsertRow()
{
    runCommand("InsertRow", QStringLiteral("插入行"), OperationKind::Edit, [&] {
        const int row = view()->currentIndex().isValid() ? view()->currentIndex().row() : -1;
        BaseDataItem* item = row >= 0 ? GfQdBusiness::InsertItem(works(), pageTable(), row)
                                      : GfQdBusiness::AppendItem(works(), pageTable());
        return item != nullptr;
    });
}

void GfQdSjWidget::DeleteCurrentRow(const QString& label)
{
    const int row = view()->currentIndex().isValid() ? view()->currentIndex().row() : -1;
    runCommand("DeleteCurrentRow", label, OperationKind::Edit, [&] {
        BaseDataItem* item = pageTable()->at(row);
        // The fee list has no total row; its last input row stays while it is empty.
        if (!TableOps::mayDelete(
                pageTable(), item, [](const BaseDataItem*) { return false; },
                &GfQdBusiness::IsEmptyItem))
            return false;
        return GfQdBusiness::RemoveItem(works(), pageTable(), item);
    });
    ChangeDelAndInsAcState(qMin(row, model()->rowCount() - 1));
}

void GfQdSjWidget::ClearAllRows()
{
    runCommand("ClearAllRows", QStringLiteral("清除所有行"), OperationKind::Edit, [&] {
        if (showInformation(
                this, QStringLiteral("操作提示"), QStringLiteral("你确定清除所有行内容吗"),
                QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Question) != QMessageBox::Ok)
            return false;
        pageTable()->Clear();
        GfQdBusiness::CalculateGfQdTable(works(), pageTable());
        return true;
    });
}

void GfQdSjWidget::onRibbonCommand(const QVariant& payload)
{
    if (payload.userType() == qMetaTypeId<MsgExplain::MenuComboInfo>()) {
        const auto combo = payload.value<MsgExplain::MenuComboInfo>();
        if (combo.strItem == QStringLiteral("模板选择"))
            CurGfSjTamplateChanged(combo.strText);
        return;
    }
    const QString command = payload.toString();
    if (command == QStringLiteral("插入行"))
        InsertRow();
    else if (command == QStringLiteral("招投标-删除行"))
        DeleteCurrentRow(command);
    else if (command == QStringLiteral("另存模板"))
        SaveTemplate();
    else if (command == QStringLiteral("清除所有行"))
        ClearAllRows();
    else
        BillSjWidget::onRibbonCommand(payload);
}

void GfQdSjWidget::showContextMenu(const QPoint& pos)
{
    QMenu menu(this);
    QMenu* apply = menu.addMenu(QStringLiteral("调用内容模板"));
    for (const QString& name : TemplateNames())
        connect(apply->addAction(name), &QAction::triggered, this,
                [this, name] { CurGfSjTamplateChanged(name); });
    connect(menu.addAction(QStringLiteral("保存内容模板")), &QAction::triggered, this,
            &GfQdSjWidget::SaveTemplate);
    menu.addSeparator();
    connect(menu.addAction(QStringLiteral("插入行")), &QAction::triggered, this,
            &GfQdSjWidget::InsertRow);
    connect(menu.addAction(QStringLiteral("删除当前行")), &QAction::triggered, this,
            [this] { DeleteCurrentRow(QStringLiteral("删除当前行")); });
    const bool locked = isLocked();
    for (QAction* action : menu.actions())
        action->setEnabled(!locked || action->text() == QStringLiteral("保存内容模板"));
    menu.exec(view()->viewport()->mapToGlobal(pos));
}
