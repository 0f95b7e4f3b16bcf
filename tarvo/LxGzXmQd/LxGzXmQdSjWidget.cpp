#include "LxGzXmQdSjWidget.h"

#include "LxGzXmQdModel.h"
#include "common/ContentTemplates.h"
#include "common/TarvoGuard.h"

#include "AuditBusiness.h"
#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "HostConstants.h"
#include "HostIds.h"
#include "LxGzXmQdJJjbBusiness.h"
#include "MsgExplain.h"
#include "TableOps.h"
#include "XtBlBusiness.h"
#include "zMessageBox.h"
#include "zTableView.h"

#include <QMenu>
#include <QSet>

LxGzXmQdSjWidget::LxGzXmQdSjWidget(AuditBusiness* audit, QWidget* parent)
    : BillSjWidget(audit, parent)
{
    init(new LxGzXmQdModel(this));
    view()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view(), &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        TARVO_GUARD("LxGzXmQd\\LxGzXmQdSjWidget", "LxGzXmQdSjWidget::contextMenu")
        {
            QMenu menu(this);
            QMenu* apply = menu.addMenu(QStringLiteral("调用内容模板"));
            for (const QString& name : TemplateNames())
                connect(apply->addAction(name), &QAction::triggered, this,
                        [this, name] { CurSporadicWorksTempChanged(name); });
            connect(menu.addAction(QStringLiteral("保存为内容模板")), &QAction::triggered, this,
                    &LxGzXmQdSjWidget::SaveTemplate);
            menu.addSeparator();
            connect(menu.addAction(QStringLiteral("插入行")), &QAction::triggered, this,
                    &LxGzXmQdSjWidget::InsertRow);
            connect(menu.addAction(QStringLiteral("删除当前行")), &QAction::triggered, this,
                    [this] { DeleteCurrentRow(QStringLiteral("删除当前行")); });
            connect(menu.addAction(QStringLiteral("清除所有行")), &QAction::triggered, this,
                    &LxGzXmQdSjWidget::ClearAllRows);
            for (QAction* action : menu.actions())
                action->setEnabled(!isLocked());
            menu.exec(view()->viewport()->mapToGlobal(pos));
        };
    });
}

GeneralTableBase* LxGzXmQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getLxGzXmRgDjQdTable();
}

LxGzXmRgDjQdTable* LxGzXmQdSjWidget::list() const
{
    return static_cast<LxGzXmRgDjQdTable*>(table());
}

int LxGzXmQdSjWidget::currentRow() const
{
    return view()->currentIndex().isValid() ? view()->currentIndex().row() : -1;
}

bool LxGzXmQdSjWidget::canMoveRows(int from, int to) const
{
    return LxGzXmQdJJjbBusiness::GridRowCanMove(list(), from, to);
}

bool LxGzXmQdSjWidget::moveRows(int from, int to)
{
    return LxGzXmQdJJjbBusiness::GridRowMove(list(), from, to);
}

void LxGzXmQdSjWidget::slotSelectSporadicItem(double price)
{
    runCommand("slotSelectSporadicItem", QStringLiteral("选择零星人工单价"), OperationKind::Edit,
               [&] {
                   QSet<int> seen;
                   bool changed = false;
                   for (const QModelIndex& index : view()->selectionModel()->selectedIndexes()) {
                       const int row = index.row();
                       if (seen.contains(row))
                           continue;
                       seen.insert(row);
                       const BaseDataItem* item = list()->at(row);
                       if (item && item->getKind() != SummaryKind) // summary rows keep theirs
                           changed |= LxGzXmQdJJjbBusiness::ProcColunmValueChanged(works(), list(),
                                                                                   row, 4, price);
                   }
                   return changed;
               });
}

QStringList LxGzXmQdSjWidget::TemplateNames()
{
    return ContentTemplates::Names(HostConstants::LxGcXmQdTemplateFileProfix);
}

void LxGzXmQdSjWidget::CurSporadicWorksTempChanged(const QString& name)
{
    runCommand("CurSporadicWorksTempChanged", QStringLiteral("模板选择"), OperationKind::Edit, [&] {
        ConstructionWorks* unit = works();
        LxGzXmRgDjQdTable temporary;
        if (!DataManagement::getInstance()->GetSJPriceModelConfig(node()) ||
            !ContentTemplates::Read(this, name, HostConstants::LxGcXmQdTemplateFileProfix,
                                    &temporary, LxGzXmRgDjQdTable::Type))
            return false; // no such template: the table stays as it is
        XtBlBusiness::ChangeXtBl(ProTreeNode::ProjectIndex(node()), unit->getAuditId(),
                                 unit->getNodeId(), 4, name);
        LxGzXmQdJJjbBusiness::AdjustLxGzXmQdRowType(temporary.items());
        LxGzXmQdJJjbBusiness::ReplaceTableContentFromOther(list(), &temporary);
        LxGzXmQdJJjbBusiness::CalculateLxGzXmQdTable(unit, list());
        if (audit())
            audit()->CreateRelationByTable(3);
        return true;
    });
}

void LxGzXmQdSjWidget::SaveTemplate()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("SaveTemplate"), [&] {
        if (!list())
            return;
        const QString name = ContentTemplates::AskAndSave(
            this, list(), LxGzXmRgDjQdTable::Type, HostConstants::LxGcXmQdTemplateFileProfix);
        if (name.isEmpty() || !works())
            return;
        // The list is now what the saved template holds.
        XtBlBusiness::ChangeXtBl(ProTreeNode::ProjectIndex(node()), works()->getAuditId(),
                                 works()->getNodeId(), 4, name);
        onNodeLoaded();
    });
}

void LxGzXmQdSjWidget::onActivated()
{
    BillSjWidget::onActivated();
    onNodeLoaded();
}

void LxGzXmQdSjWidget::onNodeLoaded()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("onNodeLoaded"), [&] {
        ContentTemplates::Announce(
            HostConstants::LxGcXmQdTemplateFileProfix,
            ContentTemplates::InUse(works(), 4, QString(),
                                    HostConstants::LxGcXmQdTemplateFileProfix));
    });
}

void LxGzXmQdSjWidget::InsertRow()
{
    runCommand("InsertRow", QStringLiteral("插入行"), OperationKind::Edit,
               [&] { return LxGzXmQdJJjbBusiness::InsertItem(list(), currentRow()) != nullptr; });
}

void LxGzXmQdSjWidget::DeleteCurrentRow(const QString& label)
{
    runCommand("DeleteCurrentRow", label, OperationKind::Edit, [&] {
        const int row = currentRow();
        BaseDataItem* total = nullptr;
        LxGzXmQdJJjbBusiness::CheckExistedTotalRow(list()->items(), total);
        // The total and the summary rows stay, and so does the last empty labour row.
        auto fixed = [total](const BaseDataItem* item) {
            return item == total || item->getKind() == SummaryKind;
        };
        if (!TableOps::mayDelete(list(), list()->at(row), fixed, &LxGzXmQdJJjbBusiness::isEmptyRow))
            return false;
        return LxGzXmQdJJjbBusiness::RemoveItem(works(), list(), row);
    });
}

void LxGzXmQdSjWidget::ClearAllRows()
{
    runCommand("ClearAllRows", QStringLiteral("清除所有行"), OperationKind::Edit, [&] {
        if (!showQuestion(this, QStringLiteral("提示"), QStringLiteral("你确定清除所有行内容吗?")))
            return false;
        // n rows stay n rows, as on the other lists: a fresh summary row heads n - 1 empty
        // labour rows when the list had one.
        BaseDataItem* total = nullptr;
        const bool hadSummary = LxGzXmQdJJjbBusiness::CheckExistedTotalRow(list()->items(), total);
        const int n = list()->count();
        TableOps::clearKeepingCount(list(), 0);
        if (hadSummary)
            TableOps::insertNew(list(), 0, SummaryKind);
        else if (n > 0)
            TableOps::insertNew(list(), n - 1, 0);
        LxGzXmQdJJjbBusiness::CalculateLxGzXmQdTable(works(), list());
        return true;
    });
}

void LxGzXmQdSjWidget::onRibbonCommand(const QVariant& payload)
{
    if (payload.userType() == qMetaTypeId<MsgExplain::MenuComboInfo>()) {
        const auto combo = payload.value<MsgExplain::MenuComboInfo>();
        if (combo.strItem == QStringLiteral("模板选择"))
            CurSporadicWorksTempChanged(combo.strText);
        return;
    }
    const QString command = payload.toString();
    if (command == QStringLiteral("插入行"))
        InsertRow();
    else if (command == QStringLiteral("招投标-删除行") ||
             command == QStringLiteral("删除当前行") || command == QStringLiteral("删除"))
        DeleteCurrentRow(command);
    else if (command == QStringLiteral("清除所有行"))
        ClearAllRows();
    else if (command == QStringLiteral("保存为内容模板") || command == QStringLiteral("另存模板") ||
             command == QStringLiteral("保存模板"))
        SaveTemplate();
}
