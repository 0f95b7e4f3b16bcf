#include "SjCqXPsClSjWidget.h"

#include "PopupDialog/CkZbXPsClDialog.h"
#include "PopupDialog/DbZbXpsClDialog.h"
#include "SjCqXPsClModel.h"
#include "ZgClQd/PopupDialog/XHAndBMFactorDialog.h"
#include "common/MaterialGridServiceOf.h"
#include "common/TarvoGuard.h"

#include "AuditBusiness.h"
#include "Communication.h"
#include "ConstructionWorks.h"
#include "HostIds.h"
#include "MenuBarManager.h"
#include "VXProgressBar.h"
#include "zMessageBox.h"
#include "zTableView.h"
#include "zTitleModal.h"

#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QMenu>

#include <utility>

namespace {

// The grid's rules over SjCqXPsClBusiness.
class Service : public MaterialGridServiceOf<SjCqXPsClBusiness, SjCqXPsClTable>
{
public:
    void recalculateRow(BaseDataItem* item) const override
    {
        SjCqXPsClBusiness::CalculateSjCqXPsClItemHJ(item);
    }
    void keepFirstRows(GeneralTableBase* table, int n) const override
    {
        SjCqXPsClBusiness::RemoveAllAndKeepNRow(page(table), n);
    }
};

const QString kSynchText = QStringLiteral("正在同步需评审材料到子工程，请等待");

} // namespace

SjCqXPsClSjWidget::SjCqXPsClSjWidget(AuditBusiness* audit, QWidget* parent)
    : MaterialSjWidget(audit, parent)
{
    auto* model = new SjCqXPsClModel(this);
    initMaterials(model, std::make_unique<Service>());
    connect(this, &SjCqXPsClSjWidget::signalMatchTenderList, this,
            &SjCqXPsClSjWidget::slotMatchTenderList);

    const QKeySequence none;
    QMenu* menu = contextMenu();
    menu->addAction(
        makeAction(QStringLiteral("汇总工程所有材料"), none, [this] { slotAcHzXPsCl(); }));
    menu->addAction(
        makeAction(QStringLiteral("追加工程所有暂估材料"), none, [this] { slotAcZjZgCl(); }));
    menu->addAction(
        makeAction(QStringLiteral("追加工程所有甲供材料"), none, [this] { slotAcZjJgCl(); }));
    menu->addAction(
        makeAction(QStringLiteral("刷新材料价格、数量、金额"), none, [this] { slotAcSxXPsCl(); }));
    menu->addAction(makeAction(QStringLiteral("清除问号标记"), none, [this] { slotAcQcWh(); }));
    menu->addAction(makeAction(QStringLiteral("重新生成材料序号及招标编码"), none,
                               [this] { slotAcCxScXhBm(); }));
    menu->addAction(makeAction(QStringLiteral("根据招标约定对比整理投标需评审材料"), none,
                               [this] { slotAcDyZlTbXPsCl(); }));
    menu->addAction(
        makeAction(QStringLiteral("仅保留招标信息"), none, [this] { slotAcJblZbXx(); }));
    menu->addAction(makeAction(QStringLiteral("去除所有材料数量"), none,
                               [this] { ClearQuantitiesOrPrices(false, false); }));
    menu->addAction(makeAction(QStringLiteral("去除所有材料价格"), none,
                               [this] { ClearQuantitiesOrPrices(true, false); }));
    menu->addAction(makeAction(QStringLiteral("去除定义块内材料数量"), none,
                               [this] { ClearQuantitiesOrPrices(false, true); }));
    menu->addAction(makeAction(QStringLiteral("去除定义块内材料价格"), none,
                               [this] { ClearQuantitiesOrPrices(true, true); }));
    menu->addMenu(blockMenu());
    m_sort = addSortMenu(menu);
    addRowCommands(menu, false);

    // The ribbon's numbering button offers both numberings.
    m_numbering = new QMenu(QStringLiteral("生成序号与招标编码"), this);
    m_numbering->addAction(action(QStringLiteral("重新生成材料序号及招标编码")));
    m_numbering->addAction(makeAction(QStringLiteral("对比材料招标清单生成相应序号"), none,
                                      [this] { slotAcDbZbQdScXh(); }));
    offerClearAllOnRibbon();
}

GeneralTableBase* SjCqXPsClSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getSjCqXPsClHzTable();
}

SjCqXPsClTable* SjCqXPsClSjWidget::list() const
{
    return static_cast<SjCqXPsClTable*>(table());
}

QString SjCqXPsClSjWidget::commandLabel(Command command) const
{
    switch (command) {
    case DeleteCommand:
    case DeleteBlockCommand:
        return QStringLiteral("删除行");
    case DismissMarkCommand:
        return QStringLiteral("去除文号标记");
    default:
        return MaterialSjWidget::commandLabel(command);
    }
}

QString SjCqXPsClSjWidget::keepLabel(int n, bool) const
{
    return QStringLiteral("保留前%1行,其余删除").arg(n);
}

void SjCqXPsClSjWidget::aboutToRemoveRows(const QList<BaseDataItem*>& rows)
{
    m_removing.clear();
    for (const BaseDataItem* item : rows)
        if (item && item->getKind() == SjCqXPsClBusiness::Material)
            m_removing << SjCqXPsClBusiness::KeyOf(item);
}

void SjCqXPsClSjWidget::rowsRemoved(Command command)
{
    const QList<SjCqXPsClBusiness::Key> rows = std::exchange(m_removing, {});
    VXProgressBar progress(QStringLiteral("提示"), kSynchText, 0, 100,
                           Communication::GetInstance()->GetMainWindow());
    progress.show();
    QCoreApplication::processEvents();
    const int kind = command == ClearAllCommand ? SjCqXPsClBusiness::RowsCleared
                                                : SjCqXPsClBusiness::RowsDeleted;
    if (command == DeleteCommand && rows.size() == 1)
        SjCqXPsClBusiness::SynchGljClState(list(), rows.first(), &progress, kind, false);
    else
        SjCqXPsClBusiness::SynchGljClState(list(), rows, &progress, kind, false);
    progress.finish();
    if (command != DeleteCommand)
        SjCqXPsClBusiness::CompleteEmptyRows(list());
}

void SjCqXPsClSjWidget::onActivated()
{
    MaterialSjWidget::onActivated();
    MenuBarManager::getInstance()->SetRibbonActionMenu(4, QStringLiteral("生成序号与招标编码"),
                                                       m_numbering);
}

void SjCqXPsClSjWidget::onRibbonCommand(const QVariant& payload)
{
    const QString command = payload.toString();
    if (command == QStringLiteral("汇总工程材料"))
        slotAcHzXPsCl();
    else if (command == QStringLiteral("刷新数量&价格"))
        slotAcSxXPsCl();
    else if (command == QStringLiteral("生成序号与招标编码"))
        slotAcCxScXhBm();
    else if (command == QStringLiteral("查看招标需评审材料"))
        slotAcCkZbXPsCl();
    else if (command == QStringLiteral("对应整理投标需评审材料"))
        slotAcDyZlTbXPsCl();
    else
        MaterialSjWidget::onRibbonCommand(payload);
}

void SjCqXPsClSjWidget::slotAcHzXPsCl()
{
    runCommand("slotAcHzXPsCl", QStringLiteral("汇总工程所有需评审材料"), OperationKind::Summary,
               [&] {
                   rebuildShowingFormerRows(QStringLiteral("正在汇总工程所有需评审材料，请等待"),
                                            [&](VXProgressBar& progress) {
                                                progress.show();
                                                SjCqXPsClBusiness::ClearBCzDyClBj(works());
                                                SjCqXPsClBusiness::HzSjCqXPsCl(works(), &progress);
                                                progress.finish();
                                            });
                   if (audit())
                       audit()->CreateRelationByTable(3);
               });
}

void SjCqXPsClSjWidget::reportInconsistencies()
{
    const int a = SjCqXPsClBusiness::GetTjByzClCount(works());
    const int b = SjCqXPsClBusiness::GetBCzDyClCount(works());
    const QString report = RefreshReport(a, b);
    if (!report.isEmpty())
        showInformation(this, QStringLiteral("提示"), report);
    if (a > 0)
        SjCqXPsClBusiness::SetTjByzClBlock(works());
}

void SjCqXPsClSjWidget::gatherAndReport(const QString& progressText,
                                        void (*operation)(ConstructionWorks*, ProgressSink*))
{
    rebuildShowingFormerRows(progressText, [&](VXProgressBar& progress) {
        progress.show();
        operation(works(), &progress);
        progress.finish();
    });
    reportInconsistencies();
}

void SjCqXPsClSjWidget::slotAcZjZgCl()
{
    runCommand("slotAcZjZgCl", QStringLiteral("追加工程所有暂估材料"), OperationKind::Summary, [&] {
        gatherAndReport(QStringLiteral("正在追加工程所有暂估材料，请等待"),
                        &SjCqXPsClBusiness::ZjGcZgjCl);
    });
}

void SjCqXPsClSjWidget::slotAcZjJgCl()
{
    runCommand("slotAcZjJgCl", QStringLiteral("追加工程所有甲供材料"), OperationKind::Summary, [&] {
        gatherAndReport(QStringLiteral("正在追加工程所有甲供材料，请等待"),
                        &SjCqXPsClBusiness::ZjGcJgCl);
    });
}

void SjCqXPsClSjWidget::slotAcSxXPsCl()
{
    runCommand("slotAcSxXPsCl", QStringLiteral("刷新材料价格、数量、金额"), OperationKind::Summary,
               [&] {
                   gatherAndReport(QStringLiteral("正在刷新材料价格、数量、金额，请等待"),
                                   &SjCqXPsClBusiness::UpdateSjCqXPsClSLAndTJ);
               });
}

void SjCqXPsClSjWidget::slotAcQcWh()
{
    runCommand("slotAcQcWh", QStringLiteral("清除问号标记"), OperationKind::Edit,
               [&] { SjCqXPsClBusiness::ClearBCzDyClBj(works()); });
}

void SjCqXPsClSjWidget::slotAcCxScXhBm()
{
    // A cancelled dialog changes nothing and so leaves no step behind.
    runCommand("slotAcCxScXhBm", QStringLiteral("重新生成材料序号及招标编码"),
               OperationKind::Summary, [&] {
                   XHAndBMFactorDialog dialog(this);
                   if (zTitleModal::ShowModal(&dialog) != 0)
                       return;
                   if (dialog.sequenceChecked())
                       SjCqXPsClBusiness::RegenerateSjCqXPsClXH(works());
                   if (dialog.codeChecked())
                       SjCqXPsClBusiness::RegenerateSjCqXPsClTableBM(
                           works(), dialog.prefix(), dialog.startNumber(), dialog.digits());
               });
}

void SjCqXPsClSjWidget::slotAcDbZbQdScXh()
{
    runCommand("slotAcDbZbQdScXh", QStringLiteral("对比材料招标清单生成相应序号"),
               OperationKind::Summary, [&] {
                   if (!SjCqXPsClBusiness::RegenerateSjCqXPsClXHByZbQd(works()))
                       showInformation(this, QStringLiteral("提示"),
                                       QStringLiteral("当前工程没有招标需评审材料清单"));
               });
}

void SjCqXPsClSjWidget::slotAcJblZbXx()
{
    runCommand("slotAcJblZbXx", QStringLiteral("仅保留招标信息"), OperationKind::Edit,
               [&] { SjCqXPsClBusiness::KeepZbInfoOnly(list()); });
}

void SjCqXPsClSjWidget::slotAcCkZbXPsCl()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcCkZbXPsCl"), [&] {
        closeEditor();
        if (!works())
            return;
        CkZbXPsClDialog dialog(works(), this);
        zTitleModal::ShowModal(&dialog);
    });
}

void SjCqXPsClSjWidget::slotAcDyZlTbXPsCl()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcDyZlTbXPsCl"), [&] {
        closeEditor();
        if (isWritable())
            emit signalMatchTenderList();
    });
}

void SjCqXPsClSjWidget::slotMatchTenderList()
{
    // A dialog closed without saving leaves no step; the grid shows a copy of the rows while
    // the dialog may rewrite the list, and reloads once it is closed.
    m_xpsChanged = false;
    runCommand("slotMatchTenderList", QStringLiteral("对应整理投标需评审材料"),
               OperationKind::Summary, [&] {
                   showingFormerRows([&] {
                       DbZbXpsClDialog dialog(works(), this);
                       connect(&dialog, &DbZbXpsClDialog::signalXpsClChanged, this,
                               &SjCqXPsClSjWidget::slotXpsClChanged);
                       dialog.Load();
                       zTitleModal::ShowModal(&dialog);
                   });
               });
    if (m_xpsChanged)
        RefreshGrid();
}

void SjCqXPsClSjWidget::slotXpsClChanged()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotXpsClChanged"), [&] { m_xpsChanged = true; });
}
