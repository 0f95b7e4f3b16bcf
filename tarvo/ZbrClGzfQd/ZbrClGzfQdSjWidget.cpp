#include "ZbrClGzfQdSjWidget.h"

#include "PopupDialog/SummarySelectionDialog.h"
#include "ZbrClGzfQdModel.h"
#include "common/MaterialGridServiceOf.h"

#include "AuditBusiness.h"
#include "ConstructionWorks.h"
#include "HostIds.h"
#include "VXProgressBar.h"
#include "ZbrClGzfQdBusiness.h"
#include "zMessageBox.h"
#include "zTitleModal.h"

#include <QMenu>

namespace {

// The grid's rules over ZbrClGzfQdBusiness.
class Service : public MaterialGridServiceOf<ZbrClGzfQdBusiness, ZbrClGzfQdTable>
{
public:
    void recalculateList(ConstructionWorks* works, GeneralTableBase*) const override
    {
        ZbrClGzfQdBusiness::CalGzfQdTable(works);
    }
    void recalculateRow(BaseDataItem* item) const override
    {
        ZbrClGzfQdBusiness::CalculateZbrClItemHJ(item);
    }
    void keepFirstRows(GeneralTableBase* table, int n) const override
    {
        ZbrClGzfQdBusiness::RemoveAllAndKeepNRow(page(table), n);
    }
};

} // namespace

ZbrClGzfQdSjWidget::ZbrClGzfQdSjWidget(AuditBusiness* audit, QWidget* parent)
    : MaterialSjWidget(audit, parent)
{
    initMaterials(new ZbrClGzfQdModel(this), std::make_unique<Service>());
    const QKeySequence none;
    QMenu* menu = contextMenu();
    menu->addAction(
        makeAction(QStringLiteral("汇总工程所有材料"), none, [this] { slotAcHzZgCl(); }));
    menu->addAction(
        makeAction(QStringLiteral("刷新材料价格、数量、金额"), none, [this] { slotAcSxZgCl(); }));
    menu->addAction(makeAction(QStringLiteral("清除问号标记"), none, [this] { slotAcQcWh(); }));
    menu->addAction(
        makeAction(QStringLiteral("重新生成材料序号"), none, [this] { RegenerateSerials(); }));
    menu->addSeparator();
    menu->addMenu(blockMenu());
    addRowCommands(menu);
}

GeneralTableBase* ZbrClGzfQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getZbrClGzfQdTable();
}

void ZbrClGzfQdSjWidget::onRibbonCommand(const QVariant& payload)
{
    const QString command = payload.toString();
    if (command == QStringLiteral("汇总工程材料"))
        slotAcHzZgCl();
    else if (command == QStringLiteral("刷新数量&价格"))
        slotAcSxZgCl();
    else
        MaterialSjWidget::onRibbonCommand(payload);
}

QString ZbrClGzfQdSjWidget::summariseOrRefresh(bool refresh)
{
    SummarySelectionDialog dialog(this);
    if (refresh)
        dialog.setTexts(QStringLiteral("汇总材料类型:"), QStringLiteral("仅暂估价材料"),
                        QStringLiteral("所有工程材料"));
    else
        dialog.setTexts(QStringLiteral("汇总暂估价材料/招标方购置材料:"),
                        QStringLiteral("仅汇总暂估价材料"), QStringLiteral("汇总所有工程材料"));
    const int choice = zTitleModal::ShowModal(&dialog) == 0 ? dialog.choice() : -1;
    if (choice != 0 && choice != 1)
        return QString();
    const bool all = choice == 1;
    const QString text = refresh ? QStringLiteral("正在刷新所有工程材料，请等待")
                                 : (all ? QStringLiteral("正在汇总所有工程材料，请等待")
                                        : QStringLiteral("正在汇总暂估价材料，请等待"));
    rebuildShowingFormerRows(text, [&](VXProgressBar& progress) {
        if (!refresh) {
            ZbrClGzfQdBusiness::ClearBCzDyClBj(works());
            all ? ZbrClGzfQdBusiness::HzSyClToZbrCl(works(), &progress)
                : ZbrClGzfQdBusiness::HzZgjClToZbrCl(works(), &progress);
            return;
        }
        all ? ZbrClGzfQdBusiness::UpdateZbrClGzfQdSLAndTJ(works(), &progress)
            : ZbrClGzfQdBusiness::UpdateZbrClGzfQdZgjSLAndTJ(works(), &progress);
        progress.finish();
        const int a = ZbrClGzfQdBusiness::GetTjByzClCount(works());
        const QString report = RefreshReport(a, ZbrClGzfQdBusiness::GetBCzDyClCount(works()));
        if (!report.isEmpty())
            showInformation(this, QStringLiteral("提示"), report);
        if (a > 0)
            ZbrClGzfQdBusiness::SetTjByzClBlock(works());
    });
    if (audit())
        audit()->CreateRelationByTable(3);
    return refresh
               ? (all ? QStringLiteral("刷新所有工程材料") : QStringLiteral("刷新暂估价材料"))
               : (all ? QStringLiteral("汇总所有工程材料") : QStringLiteral("仅汇总暂估价材料"));
}

void ZbrClGzfQdSjWidget::slotAcHzZgCl()
{
    QString label;
    runCommand("slotAcHzZgCl", label, OperationKind::Summary,
               [&] { label = summariseOrRefresh(false); });
}

void ZbrClGzfQdSjWidget::slotAcSxZgCl()
{
    QString label;
    runCommand("slotAcSxZgCl", label, OperationKind::Summary,
               [&] { label = summariseOrRefresh(true); });
}

void ZbrClGzfQdSjWidget::slotAcQcWh()
{
    runCommand("slotAcQcWh", QStringLiteral("清除问号标记"), OperationKind::Edit,
               [&] { ZbrClGzfQdBusiness::ClearBCzDyClBj(works()); });
}

void ZbrClGzfQdSjWidget::RegenerateSerials()
{
    runCommand("RegenerateSerials", QStringLiteral("重新生成材料序号"), OperationKind::Edit,
               [&] { ZbrClGzfQdBusiness::RegenerateZbrClGzfQdXH(works()); });
}
