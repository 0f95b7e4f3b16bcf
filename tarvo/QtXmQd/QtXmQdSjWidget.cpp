#include "QtXmQdSjWidget.h"

#include "FormulaEditingDialog.h"
#include "QtXmQdModel.h"
#include "TarvoGuard.h"
#include "common/ContentTemplates.h"

#include "AuditBusiness.h"
#include "Communication.h"
#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "FyBlBusiness.h"
#include "HostConstants.h"
#include "HostIds.h"
#include "JsMsBusiness.h"
#include "MsgExplain.h"
#include "QtXmQdJJjbBusiness.h"
#include "TableOps.h"
#include "VXBaseEditor.h"
#include "XmBjHzbBusiness.h"
#include "XtBlBusiness.h"
#include "zMessageBox.h"
#include "zTableView.h"
#include "zTitleModal.h"

#include <QAction>
#include <QDebug>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>
#include <QTimer>

#include <cmath>
#include <stdexcept>

QtXmQdSjWidget::QtXmQdSjWidget(AuditBusiness* audit, QWidget* parent)
    : BillSjWidget(audit, parent), m_acInsert(new QAction(QStringLiteral("插入行"), this)),
      m_acDelete(new QAction(QStringLiteral("删除当前行"), this)),
      m_acClear(new QAction(QStringLiteral("清除所有行"), this)), m_acSubTotal(new QAction(this)),
      m_acCalculation(new QAction(this)),
      m_acFormula(new QAction(QStringLiteral("编辑公式"), this)),
      m_acExtract(new QAction(QStringLiteral("提取零星工作项目费"), this))
{
    init(new QtXmQdModel(this));
    connect(m_acInsert, &QAction::triggered, this, &QtXmQdSjWidget::InsertRow);
    connect(m_acDelete, &QAction::triggered, this,
            [this] { DeleteCurrentRow(m_acDelete->text()); });
    connect(m_acClear, &QAction::triggered, this, &QtXmQdSjWidget::ClearAllRows);
    connect(m_acSubTotal, &QAction::triggered, this, &QtXmQdSjWidget::slotAcSetToSubTotal);
    connect(m_acCalculation, &QAction::triggered, this, &QtXmQdSjWidget::slotAcSetToCalculation);
    connect(m_acFormula, &QAction::triggered, this, [this] { EditFormula(currentRow()); });
    connect(m_acExtract, &QAction::triggered, this,
            &QtXmQdSjWidget::slotAcExtractSporadicWorkItemFees);
    connect(static_cast<QtXmQdModel*>(model()), &QtXmQdModel::signalEditFormulaRequested, this,
            [this](int row, const QString&) {
                // Out of the editor's event handling before the dialog runs.
                QTimer::singleShot(0, this, [this, row] {
                    TARVO_GUARD("QtXmQd\\QtXmQdSjWidget", "QtXmQdSjWidget::EditFormula")
                    {
                        EditFormula(row);
                    };
                });
            });
    view()->installEventFilter(this);
    view()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view(), &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        TARVO_GUARD("QtXmQd\\QtXmQdSjWidget", "QtXmQdSjWidget::contextMenu")
        {
            QMenu menu(this);
            menu.addActions(contextActions());
            menu.exec(view()->viewport()->mapToGlobal(pos));
        };
    });
}

GeneralTableBase* QtXmQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getQtXmQdHzTable();
}

QtXmQdHzTable* QtXmQdSjWidget::pageTable() const
{
    return static_cast<QtXmQdHzTable*>(table());
}

int QtXmQdSjWidget::currentRow() const
{
    return view()->currentIndex().isValid() ? view()->currentIndex().row() : -1;
}

bool QtXmQdSjWidget::canMoveRows(int from, int to) const
{
    return QtXmQdJJjbBusiness::GridRowCanMove(pageTable(), from, to);
}

bool QtXmQdSjWidget::moveRows(int from, int to)
{
    return QtXmQdJJjbBusiness::GridRowMove(works(), pageTable(), from, to);
}

QList<QAction*> QtXmQdSjWidget::contextActions()
{
    const BaseDataItem* item = pageTable() ? pageTable()->at(currentRow()) : nullptr;
    const int kind = item ? item->getKind() : -1;
    m_acSubTotal->setText(kind == QtXmQdJJjbBusiness::SubTotal
                              ? QStringLiteral("取消当前行\"小计\"属性")
                              : QStringLiteral("置当前行\"小计\"属性"));
    m_acCalculation->setText(kind == QtXmQdJJjbBusiness::Calculation
                                 ? QStringLiteral("取消当前行\"计算\"属性")
                                 : QStringLiteral("置当前行\"计算\"属性"));
    const bool editable = item && !isLocked() && kind != QtXmQdJJjbBusiness::Total;
    m_acSubTotal->setEnabled(editable);
    m_acCalculation->setEnabled(editable);

    const bool writable = pageTable() && !isLocked();
    m_acInsert->setEnabled(writable);
    m_acDelete->setEnabled(editable);
    m_acClear->setEnabled(writable);
    m_acFormula->setEnabled(editable);
    m_acExtract->setEnabled(writable);
    return {m_acInsert,      m_acDelete,  m_acClear,  m_acSubTotal,
            m_acCalculation, m_acFormula, m_acExtract};
}

void QtXmQdSjWidget::InsertRow()
{
    runCommand("InsertRow", QStringLiteral("插入行"), OperationKind::Edit, [&] {
        const int row = currentRow() < 0 ? pageTable()->count() : currentRow();
        return QtXmQdJJjbBusiness::InsertCustomItem(works(), pageTable(), row);
    });
    ChangeDelAndInsAcState(currentRow());
}

void QtXmQdSjWidget::DeleteCurrentRow(const QString& label)
{
    runCommand("DeleteCurrentRow", label, OperationKind::Edit, [&] {
        const int row = currentRow();
        BaseDataItem* item = pageTable()->at(row);
        BaseDataItem* total = nullptr;
        QtXmQdJJjbBusiness::CheckExistedTotalRow(pageTable(), &total);
        if (!TableOps::mayDelete(
                pageTable(), item, [total](const BaseDataItem* row) { return row == total; },
                &QtXmQdJJjbBusiness::isEmptyRow))
            return false; // the total row stays, and so does the last empty input row
        return QtXmQdJJjbBusiness::RemoveItem(works(), pageTable(), row);
    });
    ChangeDelAndInsAcState(currentRow());
}

void QtXmQdSjWidget::ClearAllRows()
{
    qDebug().noquote() << sourceFile() << __LINE__ << QStringLiteral("ClearAllRows");
    runCommand("ClearAllRows", QStringLiteral("清除所有行"), OperationKind::Edit, [&] {
        if (!showQuestion(this, QStringLiteral("操作提示"),
                          QStringLiteral("你确定清除所有行内容吗?")))
            return false;
        QtXmQdHzTable* list = pageTable();
        TableOps::clearKeepingCount(list, QtXmQdJJjbBusiness::NewEmpty);
        QtXmQdJJjbBusiness::AddTotalItem(list);
        QtXmQdJJjbBusiness::CalculateTable(works(), list);
        return true;
    });
}

void QtXmQdSjWidget::slotAcSetToCalculation()
{
    runCommand(
        "slotAcSetToCalculation", QStringLiteral("修改其他项目清单行"), OperationKind::Edit,
        [&] { return static_cast<QtXmQdModel*>(model())->ToggleCalculateRow(currentRow()); });
}

void QtXmQdSjWidget::slotAcSetToSubTotal()
{
    runCommand("slotAcSetToSubTotal", QStringLiteral("修改其他项目清单行"), OperationKind::Edit,
               [&] { return static_cast<QtXmQdModel*>(model())->ToggleSubTotalRow(currentRow()); });
}

void QtXmQdSjWidget::onRibbonCommand(const QVariant& payload)
{
    const QString command = payload.toString();
    if (command == QStringLiteral("插入行"))
        InsertRow();
    else if (command == QStringLiteral("招投标-删除行"))
        DeleteCurrentRow(command);
    else if (command == QStringLiteral("清除所有行"))
        ClearAllRows();
    else if (command == QStringLiteral("编辑公式"))
        EditFormula(currentRow());
    else if (command == QStringLiteral("提取零星工作项目费"))
        slotAcExtractSporadicWorkItemFees();
    else if (payload.userType() == qMetaTypeId<MsgExplain::MenuComboInfo>()) {
        const auto combo = payload.value<MsgExplain::MenuComboInfo>();
        if (combo.strItem == QStringLiteral("模板选择"))
            CurQtXmQdTemplateChanged(combo.strText);
    }
}

void QtXmQdSjWidget::onActivated()
{
    BillSjWidget::onActivated();
    onNodeLoaded();
}

void QtXmQdSjWidget::onNodeLoaded()
{
    // The ribbon's "模板选择" shows the template the unit project took last, else the one its
    // pricing model names.
    const QString fallback =
        works() && works()->getConfig() ? works()->getConfig()->getItem(2).toString() : QString();
    ContentTemplates::Announce(
        HostConstants::QtXmQdTemplateFileProfix,
        ContentTemplates::InUse(works(), 2, fallback, HostConstants::QtXmQdTemplateFileProfix));
}

QString QtXmQdSjWidget::AmountReminderText()
{
    return QStringLiteral("注意：如果此处录入或计算产生的金额不包含在单位工程造价中（如材料("
                          "工程设备)暂估价已计入综合单价），"
                          "请不要在此计列，以免重复计算。");
}

QString QtXmQdSjWidget::CalculatedCellHint()
{
    return QStringLiteral(
        "该金额由计算公式得出，不能直接键入；请双击单元格或使用“编辑公式”修改公式");
}

bool QtXmQdSjWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != view() || event->type() != QEvent::KeyPress)
        return BillSjWidget::eventFilter(watched, event);
    bool refused = false;
    TARVO_GUARD("QtXmQd\\QtXmQdSjWidget", "QtXmQdSjWidget::eventFilter")
    {
        auto* key = static_cast<QKeyEvent*>(event);
        const QModelIndex current = view()->currentIndex();
        // Only typed text: F2, Enter and moving keys keep their meaning.
        refused = !key->text().isEmpty() && key->text().at(0).isPrint() && current.isValid() &&
                  current.data(Qtitan::EditorRole).isValid();
        if (!refused)
            return;
        if (auto* window =
                qobject_cast<QMainWindow*>(Communication::GetInstance()->GetMainWindow()))
            window->statusBar()->showMessage(CalculatedCellHint(), 6000);
    };
    return refused || BillSjWidget::eventFilter(watched, event);
}

void QtXmQdSjWidget::AmountReminder(int row)
{
    // Provisional prices of materials are part of the unit rates already.
    const BaseDataItem* item = pageTable() ? pageTable()->at(row) : nullptr;
    const QString name = item ? item->getValue(2).toString() : QString();
    if (name.contains(QStringLiteral("材料")) && name.contains(QStringLiteral("暂估")))
        showInformation(this, QStringLiteral("提示"), AmountReminderText());
}

void QtXmQdSjWidget::EditFormula(int row)
{
    runCommand("EditFormula", QStringLiteral("编辑公式"), OperationKind::Edit, [&] {
        ConstructionWorks* unit = works();
        BaseDataItem* item = pageTable()->at(row);
        if (!item || item->getKind() == QtXmQdJJjbBusiness::Total)
            return false;
        const int projectIndex = ProTreeNode::ProjectIndex(node());
        FormulaEditingDialog dialog(Communication::GetInstance()->GetMainWindow(),
                                    JsMsBusiness::IsVATProject(unit->getOwner()));
        dialog.LoadRates(DataManagement::getInstance()->GetProTreeNodeByLocalId(projectIndex,
                                                                                unit->getNodeId()));
        const QString before = XmBjHzbBusiness::GetPureFormulaFromJss(item->getValue(3).toString());
        dialog.SetFormula(before);
        dialog.SetRow(row);
        if (zTitleModal::ShowModal(&dialog) != 0)
            return false;
        const QString formula = dialog.GetFormula();
        const int audit = unit->getAuditId();
        const int nodeId = unit->getNodeId();
        FyBlBusiness* fyBl = FyBlBusiness::GetInstance();
        const QString tax = dialog.GetSjFlText();
        if (tax !=
            XtBlBusiness::GetXtBlValue(unit->getProjectWorksId(), audit, nodeId, 10).toString()) {
            XtBlBusiness::ChangeXtBl(projectIndex, audit, nodeId, 10, tax);
            fyBl->ChangeFyBl(projectIndex, audit, nodeId, FyBlBusiness::TaxRateId,
                             dialog.GetSjFl());
        }
        if (std::fabs(dialog.GetDeCdFl() -
                      fyBl->GetFyBlValueById(unit, FyBlBusiness::QuotaFeeRateId)) > 1e-6)
            fyBl->ChangeFyBl(projectIndex, audit, nodeId, FyBlBusiness::QuotaFeeRateId,
                             dialog.GetDeCdFl());
        const bool changed =
            QtXmQdJJjbBusiness::ProcColunmValueChanged(unit, pageTable(), row, 3, formula);
        if (formula != before)
            AmountReminder(row);
        return changed;
    });
}

void QtXmQdSjWidget::slotAcExtractSporadicWorkItemFees()
{
    runCommand("slotAcExtractSporadicWorkItemFees", QStringLiteral("提取零星工作项目费"),
               OperationKind::Edit, [&] {
                   if (!QtXmQdJJjbBusiness::ExtractSporadicWorkItemFees(works()))
                       return false;
                   FyBlBusiness::GetInstance()->RecalculateFyBl(works());
                   if (ProjectWorks* owner = works()->getOwner())
                       owner->setProjectWorkChanged(true);
                   return true;
               });
}

void QtXmQdSjWidget::CurQtXmQdTemplateChanged(const QString& name)
{
    // A name without a file changes nothing, not even the remembered choice.
    if (!QFileInfo::exists(ContentTemplates::Path(name, HostConstants::QtXmQdTemplateFileProfix)))
        return;
    runCommand("CurQtXmQdTemplateChanged", QStringLiteral("模板选择"), OperationKind::Edit, [&] {
        ConstructionWorks* unit = works();
        // The unit's choice moves from the configured template to the new one before the
        // file is read.
        const PriceModelConfig* config =
            DataManagement::getInstance()->GetSJPriceModelConfig(node());
        qDebug().noquote() << QStringLiteral("Current Template:")
                           << (config ? config->getItem(2).toString() : QString());
        XtBlBusiness::ChangeXtBl(ProTreeNode::ProjectIndex(node()), unit->getAuditId(),
                                 unit->getNodeId(), 2, name);
        QtXmQdHzTable temporary;
        if (!ContentTemplates::Read(this, name, HostConstants::QtXmQdTemplateFileProfix, &temporary,
                                    QtXmQdHzTable::Type))
            throw std::runtime_error("content template unreadable"); // nothing stays changed
        QtXmQdJJjbBusiness::AdjustQtXmQdRowType(&temporary);
        QtXmQdJJjbBusiness::ReplaceTableContentFromOther(pageTable(), &temporary);
        QtXmQdJJjbBusiness::ExtractSporadicWorkItemFees(unit);
        QtXmQdJJjbBusiness::CalQtXmQdCalculateRow(unit, pageTable());
        FyBlBusiness::GetInstance()->RecalculateFyBl(unit);
        return true;
    });
    if (audit())
        audit()->CreateRelationByTable(3);
}
