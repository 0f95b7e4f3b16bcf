#include "ZgClQdSjWidget.h"

#include "PopupDialog/CkDwGcZgSzDialog.h"
#include "PopupDialog/CkZbZgClQdDialog.h"
#include "PopupDialog/DbZbZgClDialog.h"
#include "PopupDialog/XHAndBMFactorDialog.h"
#include "ZgClQdModel.h"
#include "common/MaterialGridServiceOf.h"
#include "common/TarvoGuard.h"

#include "AuditBusiness.h"
#include "Communication.h"
#include "ConstructionWorks.h"
#include "HostIds.h"
#include "MsgExplain.h"
#include "ProjectWorks.h"
#include "VXProgressBar.h"
#include "ZgClQdBusiness.h"
#include "zMessageBox.h"
#include "zTableView.h"
#include "zTitleModal.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QSize>

namespace {

// The grid's rules over ZgClQdBusiness.
class Service : public MaterialGridServiceOf<ZgClQdBusiness, ZgjClHzTable>
{
public:
    void recalculateRow(BaseDataItem* item) const override
    {
        ZgClQdBusiness::CalculateZgjClItemHJ(item);
    }
    void keepFirstRows(GeneralTableBase* table, int n) const override
    {
        ZgClQdBusiness::RemoveAllAndKeepNRow(page(table), n);
    }
    // The rows lose their contents and the list is padded out again.
    void clearAllRows(GeneralTableBase* table) const override
    {
        for (BaseDataItem* item : table->items()) {
            if (item->getKind() != ZgClQdBusiness::Material)
                continue;
            for (int field = 0; field < item->fieldCount(); ++field)
                if (item->getValue(field).isValid())
                    item->setValue(field, QVariant());
        }
        ZgClQdBusiness::CompleteEmptyRows(page(table));
    }
};

const QString kProgressText = QStringLiteral("正在汇总工程所有暂估材料，请等待");
const QString kNoTenderList =
    QStringLiteral("当前工程没有招标文件约定的暂估清单，请先在“查看招标暂估材料”中导入招标文件。");

} // namespace

QString ZgClQdSjWidget::ExplanationText()
{
    return QStringLiteral(
        "<p><b>说明：</b></p>"
        "<p>本表将材料名称、规格型号与单位相同的材料视为同一条材料，同一条材料在各单位工程中应该"
        "有相同的调价、暂估属性、品牌产地与备注信息等。</p>"
        "<p>本功能模块用于检查各属性的一致性(观察相应单元格颜色)，以及统一设置各材料的相关属性。"
        "</p>"
        "<p>颜色配置方案：<br/>"
        "<span style='background:#ffd6d6'>背景表示各单位工程暂估属性设置不一致</span><br/>"
        "<span style='color:#dc0000'>前景表示各单位工程调价不一致</span><br/>"
        "<span style='background:#fff2b8'>背景表示各单位工程产地等不一致</span></p>");
}

ZgClQdSjWidget::ZgClQdSjWidget(AuditBusiness* audit, QWidget* parent)
    : MaterialSjWidget(audit, parent)
{
    auto* model = new ZgClQdModel(this);
    model->setOperationKind(OperationKind::Summary);
    initMaterials(model, std::make_unique<Service>());

    // "查看招标暂估材料": the tender's provisional list, over the page's project.
    connect(this, &ZgClQdSjWidget::signalViewTenderList, this, &ZgClQdSjWidget::slotShowTenderList);
    connect(this, &ZgClQdSjWidget::signalMatchTenderList, this,
            &ZgClQdSjWidget::slotMatchTenderList);

    // The explanation panel takes the place of the shared grid's colour line.
    m_explanation = findChild<QLabel*>(QStringLiteral("legend"));
    if (m_explanation) {
        m_explanation->setWordWrap(true);
        m_explanation->setText(ExplanationText());
    }

    const QKeySequence none;
    QMenu* menu = contextMenu();
    menu->addAction(
        makeAction(QStringLiteral("汇总工程所有暂估材料"), none, [this] { slotAcHzZgCl(); }));
    menu->addAction(
        makeAction(QStringLiteral("刷新材料价格、数量、金额"), none, [this] { slotAcSxZgCl(); }));
    menu->addAction(makeAction(QStringLiteral("清除问号标记"), none, [this] { slotAcQcWh(); }));
    menu->addAction(makeAction(QStringLiteral("重新生成材料序号及招标编码"), none,
                               [this] { slotAcCxScXhBm(); }));
    menu->addAction(makeAction(QStringLiteral("根据招标约定对比整理投标暂估材料"), none,
                               [this] { slotAcDyZlTbZgCl(); }));
    m_keepTender = menu->addMenu(QStringLiteral("仅保留招标信息"));
    m_keepTender->addAction(makeAction(QStringLiteral("去除所有材料数量"), none,
                                       [this] { ClearQuantitiesOrPrices(false, false); }));
    m_keepTender->addAction(makeAction(QStringLiteral("去除定义块内材料数量"), none,
                                       [this] { ClearQuantitiesOrPrices(false, true); }));
    connect(m_keepTender, &QMenu::aboutToShow, this, &ZgClQdSjWidget::updateKeepTenderMenu);
    menu->addMenu(blockMenu());
    m_sort = addSortMenu(menu);
    addRowCommands(menu, false);

    offerClearAllOnRibbon();
}

GeneralTableBase* ZgClQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getZgjClHzTable();
}

ZgjClHzTable* ZgClQdSjWidget::list() const
{
    return static_cast<ZgjClHzTable*>(table());
}

QString ZgClQdSjWidget::commandLabel(Command command) const
{
    switch (command) {
    case DeleteCommand:
    case DeleteBlockCommand:
        return QStringLiteral("删除行");
    default:
        return MaterialSjWidget::commandLabel(command);
    }
}

QString ZgClQdSjWidget::keepLabel(int n, bool) const
{
    return QStringLiteral("保留前%1行,其余删除").arg(n);
}

void ZgClQdSjWidget::updateKeepTenderMenu()
{
    const bool writable = isWritable();
    action(QStringLiteral("去除所有材料数量"))->setEnabled(writable);
    action(QStringLiteral("去除定义块内材料数量"))->setEnabled(writable && !blockRows().isEmpty());
}

void ZgClQdSjWidget::onActivated()
{
    MaterialSjWidget::onActivated();
    sendTenderItemStates();
}

void ZgClQdSjWidget::onNodeLoaded()
{
    MaterialSjWidget::onNodeLoaded();
    if (isVisible())
        sendTenderItemStates(); // the ribbon may have been announced before the node came
}

void ZgClQdSjWidget::sendTenderItemStates()
{
    // The tender list can always be looked at; arranging the bid against it changes the list.
    const ProjectWorks* owner = works() ? works()->getOwner() : nullptr;
    const bool locked = owner && (owner->IsReadOnly() || owner->GetDqdZdSd());
    for (const auto& item : {qMakePair(QStringLiteral("查看招标暂估材料"), 0),
                             qMakePair(QStringLiteral("对应整理投标暂估材料"), locked ? 3 : 0)}) {
        MsgExplain::ToChangeMenuItemInfo info;
        info.strText = item.first;
        info.nState = item.second;
        Communication::GetInstance()->SendMsg(HostMsg::HostTarget, HostMsg::RibbonItemState,
                                              QVariant::fromValue(info));
    }
}

void ZgClQdSjWidget::onRibbonCommand(const QVariant& payload)
{
    const QString command = payload.toString();
    if (command == QStringLiteral("汇总工程暂估材料"))
        slotAcHzZgCl();
    else if (command == QStringLiteral("刷新数量&价格"))
        slotAcSxZgCl();
    else if (command == QStringLiteral("生成序号与招标编码"))
        slotAcCxScXhBm();
    else if (command == QStringLiteral("查看单位工程暂估设置"))
        slotAcCkDwGcZgSz();
    else if (command == QStringLiteral("查看招标暂估材料"))
        slotAcCkZbZgCl();
    else if (command == QStringLiteral("对应整理投标暂估材料"))
        slotAcDyZlTbZgCl();
    else
        MaterialSjWidget::onRibbonCommand(payload);
}

void ZgClQdSjWidget::slotAcHzZgCl()
{
    runCommand("slotAcHzZgCl", QStringLiteral("汇总工程所有暂估材料"), OperationKind::Summary, [&] {
        rebuildShowingFormerRows(kProgressText, [&](VXProgressBar& progress) {
            progress.show();
            ZgClQdBusiness::RegenerateZgjClHzb(works(), &progress, 100, 0);
        });
        if (audit())
            audit()->CreateRelationByTable(3);
    });
}

void ZgClQdSjWidget::slotAcSxZgCl()
{
    runCommand("slotAcSxZgCl", QStringLiteral("刷新材料价格、数量、金额"), OperationKind::Summary,
               [&] {
                   rebuildShowingFormerRows(kProgressText, [&](VXProgressBar& progress) {
                       progress.show();
                       ZgClQdBusiness::UpdateZgjClHzbSLAndTJ(works(), &progress);
                       progress.finish();
                   });
                   const int a = ZgClQdBusiness::GetTjByzClCount(works());
                   const int b = ZgClQdBusiness::GetBCzDyClCount(works());
                   const QString report = RefreshReport(a, b);
                   if (a > 0 && b > 0)
                       showInformation(this, QStringLiteral("提示"), report, QSize(360, 140));
                   else if (!report.isEmpty())
                       showInformation(this, QStringLiteral("提示"), report);
                   if (a >= 1)
                       ZgClQdBusiness::SetTjByzClBlock(works());
               });
}

void ZgClQdSjWidget::slotAcQcWh()
{
    runCommand("slotAcQcWh", QStringLiteral("清除文号号标记"), OperationKind::Summary,
               [&] { ZgClQdBusiness::ClearBCzDyClBj(works()); });
}

void ZgClQdSjWidget::slotAcCxScXhBm()
{
    // The record is made whether the dialog is accepted or not; a cancelled one changes nothing
    // and so leaves no step behind.
    runCommand("slotAcCxScXhBm", QStringLiteral("重新生成材料序号及招标编码"),
               OperationKind::Summary, [&] {
                   XHAndBMFactorDialog dialog(this);
                   if (zTitleModal::ShowModal(&dialog) != 0)
                       return;
                   if (dialog.sequenceChecked())
                       ZgClQdBusiness::RegenerateZgjClHzbXH(works());
                   if (dialog.codeChecked())
                       ZgClQdBusiness::RegenerateZgjClHzbBM(works(), dialog.prefix(),
                                                            dialog.startNumber(), dialog.digits());
               });
}

void ZgClQdSjWidget::slotAcCkDwGcZgSz()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcCkDwGcZgSz"), [&] {
        closeEditor();
        if (!works())
            return;
        CkDwGcZgSzDialog dialog(works(), this);
        dialog.Load();
        zTitleModal::ShowModal(&dialog);
    });
}

void ZgClQdSjWidget::slotAcCkZbZgCl()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcCkZbZgCl"), [&] {
        closeEditor();
        emit signalViewTenderList();
    });
}

void ZgClQdSjWidget::slotAcDyZlTbZgCl()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcDyZlTbZgCl"), [&] {
        closeEditor();
        if (isWritable())
            emit signalMatchTenderList();
    });
}

void ZgClQdSjWidget::slotMatchTenderList()
{
    // The whole dialog is one user action: every pair it writes back and the rebuilt list
    // are undone in one step, and a dialog closed without saving leaves no step.
    runCommand("slotMatchTenderList", QStringLiteral("对应整理投标暂估材料"),
               OperationKind::Summary, [&] {
                   ProjectWorks* project = works() ? works()->getOwner() : nullptr;
                   if (!project || !project->HasGcZbZgCl()) {
                       showInformation(this, QStringLiteral("操作提示"), kNoTenderList);
                       return;
                   }
                   showingFormerRows([&] {
                       DbZbZgClDialog dialog(works(), this);
                       if (!dialog.Load()) {
                           showInformation(this, QStringLiteral("操作提示"), kNoTenderList);
                           return;
                       }
                       zTitleModal::ShowModal(&dialog);
                   });
               });
}

void ZgClQdSjWidget::slotShowTenderList()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotShowTenderList"), [&] {
        CkZbZgClQdDialog dialog(works(), this);
        zTitleModal::ShowModal(&dialog);
    });
}
