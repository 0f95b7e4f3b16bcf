#include "MaterialSjWidget.h"

#include "MaterialListModel.h"
#include "RowsCountInputDialog.h"

#include "Communication.h"
#include "ConstructionWorks.h"
#include "HostIds.h"
#include "HostScreen.h"
#include "MenuBarManager.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"
#include "TableOps.h"
#include "VXProgressBar.h"
#include "zMessageBox.h"
#include "zTableView.h"
#include "zTitleModal.h"

#include <QAction>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>

MaterialSjWidget::MaterialSjWidget(AuditBusiness* audit, QWidget* parent)
    : BillSjWidget(audit, parent)
{
}

MaterialSjWidget::~MaterialSjWidget() = default;

void MaterialSjWidget::initMaterials(MaterialListModel* model,
                                     std::unique_ptr<MaterialGridService> service)
{
    m_service = std::move(service);
    init(model);
    view()->setFooterEnabled(true); // the total row stays in sight under the rows
    buildMenus();
    view()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view(), &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        TARVO_GUARD("common\\MaterialSjWidget", "MaterialSjWidget::contextMenu")
        {
            m_context->exec(view()->viewport()->mapToGlobal(pos));
        };
    });
    connect(view()->verticalHeader(), &QHeaderView::sectionDoubleClicked, this,
            &MaterialSjWidget::ClearQuestionMark);

    // The explanation of the cell colours, under the grid.
    auto* legend = new QLabel(this);
    legend->setObjectName(QStringLiteral("legend"));
    legend->setTextFormat(Qt::RichText);
    legend->setText(QStringLiteral(
        "说明：颜色配置方案：<br/>"
        "<span style='background:#ffd6d6'>背景表示各单位工程暂估属性设置不一致</span><br/>"
        "<span style='color:#dc0000'>前景表示各单位工程调价不一致</span><br/>"
        "<span style='background:#fff2b8'>背景表示各单位工程产地等不一致</span>"));
    legend->setStyleSheet(QStringLiteral("QLabel { padding: 3px 6px; color: #34495e; }"));
    static_cast<QGridLayout*>(layout())->addWidget(
        legend, 2, 0); // under the grid, also once a title row stands above it
}

QString MaterialSjWidget::commandLabel(Command command) const
{
    static const char* const labels[] = {"插入行",     "添加行",      "删除", "删除定义块内所有行",
                                         "清除所有行", "清除问号标记"};
    return QString::fromUtf8(labels[command]);
}

QString MaterialSjWidget::keepLabel(int n, bool fixedCommand) const
{
    return QStringLiteral("保留前%1行,其余删除").arg(fixedCommand ? 30 : n);
}

int MaterialSjWidget::currentRow() const
{
    return view()->currentIndex().isValid() ? view()->currentIndex().row() : -1;
}

QList<int> MaterialSjWidget::blockRows() const
{
    return MaterialGridRules::blockRows(table());
}

bool MaterialSjWidget::canMoveRows(int from, int to) const
{
    return m_service->canMoveRows(table(), from, to);
}

bool MaterialSjWidget::moveRows(int from, int to)
{
    return m_service->moveRows(works(), table(), from, to);
}

QAction* MaterialSjWidget::makeAction(const QString& text, const QKeySequence& shortcut,
                                      const std::function<void()>& slot)
{
    auto* action = new QAction(text, this);
    if (!shortcut.isEmpty()) {
        action->setShortcut(shortcut);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut); // only while the grid has focus
        view()->addAction(action);
    }
    connect(action, &QAction::triggered, this, slot);
    m_actions.insert(text, action);
    return action;
}

void MaterialSjWidget::addRowCommands(QMenu* menu, bool withAppend)
{
    menu->addAction(action(QStringLiteral("插入行")));
    if (withAppend)
        menu->addAction(action(QStringLiteral("添加行")));
    menu->addAction(action(QStringLiteral("删除")));
    menu->addAction(action(QStringLiteral("清除所有行")));
}

QMenu* MaterialSjWidget::addSortMenu(QMenu* menu)
{
    QMenu* sort = menu->addMenu(QStringLiteral("排序"));
    for (const auto& entry : sorts())
        connect(sort->addAction(entry.first), &QAction::triggered, this,
                [this, key = entry.second] { Sort(key); });
    return sort;
}

void MaterialSjWidget::offerClearAllOnRibbon()
{
    if (QMenu* del = ribbonMenu(QStringLiteral("招投标-删除行")))
        connect(del->addAction(QStringLiteral("删除所有行")), &QAction::triggered, this,
                [this] { ClearAllRows(); });
}

QList<QPair<QString, MaterialSjWidget::SortKey>> MaterialSjWidget::sorts() const
{
    QList<QPair<QString, SortKey>> sorts = {{QStringLiteral("金额"), ByAmount},
                                            {QStringLiteral("数量"), ByQuantity},
                                            {QStringLiteral("单价"), ByPrice},
                                            {QStringLiteral("材料名称"), ByName},
                                            {QStringLiteral("序号"), BySerial}};
    if (tenderCodeField() >= 0)
        sorts.append({QStringLiteral("招标编码"), ByTenderCode});
    return sorts;
}

void MaterialSjWidget::buildMenus()
{
    const QKeySequence none;
    // Block commands, shared by the context menu and the ribbon's "招投标-块选".
    m_block = new QMenu(QStringLiteral("块定义"), this);
    m_block->addAction(makeAction(QStringLiteral("全选"), Qt::Key_F4, [this] { SelectAll(); }));
    m_block->addAction(
        makeAction(QStringLiteral("定义块首"), Qt::Key_F5, [this] { DefineBlockHead(); }));
    m_block->addAction(
        makeAction(QStringLiteral("定义块尾"), Qt::Key_F6, [this] { DefineBlockTail(); }));
    // Both carry Ctrl+Left, as the host's other grids do.
    const QKeySequence ctrlLeft(QStringLiteral("Ctrl+Left"));
    m_block->addAction(
        makeAction(QStringLiteral("选中当前行"), ctrlLeft, [this] { SetCurrentRowInBlock(true); }));
    m_block->addAction(makeAction(QStringLiteral("不选中当前行"), ctrlLeft,
                                  [this] { SetCurrentRowInBlock(false); }));
    m_block->addAction(
        makeAction(QStringLiteral("取消块定义"), Qt::Key_F7, [this] { CancelBlock(); }));
    m_block->addAction(makeAction(QStringLiteral("反向选择"), none, [this] { InvertBlock(); }));

    // Row commands; the page places them in its context menu.
    makeAction(QStringLiteral("插入行"), Qt::Key_Insert, [this] { InsertRow(false); });
    makeAction(QStringLiteral("添加行"), none, [this] { InsertRow(true); });
    makeAction(QStringLiteral("删除"), Qt::Key_Delete, [this] { DeleteRowsOrBlock(); });
    makeAction(QStringLiteral("清除所有行"), none, [this] { ClearAllRows(); });
    m_context = new QMenu(this);

    auto ribbon = [this](const QString& title) {
        auto* menu = new QMenu(title, this);
        m_ribbonMenus.insert(title, menu);
        return menu;
    };
    auto item = [this](QMenu* menu, const QString& text, const std::function<void()>& slot) {
        connect(menu->addAction(text), &QAction::triggered, this, slot);
    };
    QMenu* del = ribbon(QStringLiteral("招投标-删除行"));
    item(del, QStringLiteral("删除当前行/块"), [this] { DeleteRowsOrBlock(); });
    // The key is the grid's "删除" (one Delete, no ambiguity); the ribbon entry shows it.
    del->actions().constLast()->setShortcut(Qt::Key_Delete);
    del->actions().constLast()->setShortcutContext(Qt::WidgetShortcut);
    QMenu* heights = ribbon(QStringLiteral("自动行高"));
    item(heights, QStringLiteral("表格自适应行高"), [this] { FitRowHeights(false); });
    item(heights, QStringLiteral("表格置最小行高"), [this] { FitRowHeights(true); });
    QMenu* sort = ribbon(QStringLiteral("编制:排序"));
    for (const auto& entry : sorts())
        item(sort, entry.first, [this, key = entry.second] { Sort(key); });
    QMenu* clear = ribbon(QStringLiteral("清除数量&价格"));
    item(clear, QStringLiteral("清除所有数量"), [this] { ClearQuantitiesOrPrices(false, false); });
    item(clear, QStringLiteral("清除所有价格"), [this] { ClearQuantitiesOrPrices(true, false); });
    clear->addSeparator();
    item(clear, QStringLiteral("清除块内数量"), [this] { ClearQuantitiesOrPrices(false, true); });
    item(clear, QStringLiteral("清除块内价格"), [this] { ClearQuantitiesOrPrices(true, true); });
    QMenu* batch = ribbon(QStringLiteral("编制:批量删除"));
    item(batch, QStringLiteral("保留前30行,其余删除"), [this] { KeepFirstRows(30); });
    item(batch, QStringLiteral("保留前60行,其余删除"), [this] { KeepFirstRows(60); });
    item(batch, QStringLiteral("保留前n(输入)行,其余删除"), [this] { KeepFirstRowsAsked(); });
    item(batch, QStringLiteral("删除定义块内所有行"), [this] { DeleteBlockRows(); });
    item(batch, QStringLiteral("删除所有行"), [this] { ClearAllRows(); });
    ribbon(QStringLiteral("招投标-块选"))->addActions(m_block->actions());
}

void MaterialSjWidget::onActivated()
{
    for (auto it = m_ribbonMenus.cbegin(); it != m_ribbonMenus.cend(); ++it)
        MenuBarManager::getInstance()->SetRibbonActionMenu(4, it.key(), it.value());
    BillSjWidget::onActivated();
    if (ProjectWorks* owner = works() ? works()->getOwner() : nullptr; owner && owner->IsReadOnly())
        MenuBarManager::getInstance()->ChangeMenuToDisable({QStringLiteral("导出招投标CJZ"),
                                                            QStringLiteral("导出竣工CJZ"),
                                                            QStringLiteral("导出备案CJZX")});
}

void MaterialSjWidget::onRibbonCommand(const QVariant& payload)
{
    const QString command = payload.toString();
    if (command == QStringLiteral("插入行"))
        InsertRow(false);
    else if (command == QStringLiteral("招投标-删除行"))
        DeleteRowsOrBlock();
    else if (QAction* named = m_actions.value(command))
        named->trigger();
}

void MaterialSjWidget::SelectAll()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("SelectAll"), [&] {
        MaterialGridRules::setBlockAll(table(), true);
        model()->resetModel();
    });
}

void MaterialSjWidget::DefineBlockHead()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("DefineBlockHead"), [&] {
        MaterialGridRules::defineBlockHead(table(), currentRow());
        model()->resetModel();
    });
}

void MaterialSjWidget::DefineBlockTail()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("DefineBlockTail"), [&] {
        MaterialGridRules::defineBlockTail(table(), currentRow());
        model()->resetModel();
    });
}

void MaterialSjWidget::SetCurrentRowInBlock(bool inBlock)
{
    if (BaseDataItem* item = table() ? table()->at(currentRow()) : nullptr) {
        item->SetBlock(inBlock);
        model()->resetModel();
    }
}

void MaterialSjWidget::CancelBlock()
{
    MaterialGridRules::setBlockAll(table(), false);
    model()->resetModel();
}

void MaterialSjWidget::InvertBlock()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InvertBlock"), [&] {
        MaterialGridRules::invertBlock(
            table(), [this](BaseDataItem* item) { return m_service->isEmptyRow(item); });
        model()->resetModel();
    });
}

void MaterialSjWidget::InsertRow(bool after)
{
    runCommand("InsertRow", commandLabel(after ? AppendCommand : InsertCommand),
               OperationKind::Edit, [&] {
                   int index = currentRow() < 0 ? -1 : currentRow() + (after ? 1 : 0);
                   if (index < 0)
                       index = table()->count() - (m_service->hasTotalRow(table()) ? 1 : 0);
                   m_service->insertItem(table(), index);
               });
}

void MaterialSjWidget::DeleteRowsOrBlock()
{
    if (blockRows().isEmpty()) {
        runCommand("DeleteRowsOrBlock", commandLabel(DeleteCommand), OperationKind::Edit, [&] {
            if (currentRow() < 0 || !table()->at(currentRow()))
                return;
            aboutToRemoveRows({table()->at(currentRow())});
            if (m_service->removeItem(works(), table(), currentRow()))
                rowsRemoved(DeleteCommand);
            m_service->recalculateList(works(), table());
        });
        return;
    }
    TarvoGuard::run(sourceFile(), __LINE__, tag("DeleteRowsOrBlock"), [&] {
        closeEditor();
        if (isWritable() && showQuestion(this, QStringLiteral("提示"),
                                         QStringLiteral("你确定要删除定义块内的材料行吗?")))
            DeleteBlockRows();
    });
}

void MaterialSjWidget::DeleteBlockRows()
{
    runCommand("DeleteBlockRows", commandLabel(DeleteBlockCommand), OperationKind::Edit, [&] {
        const QList<int> rows = blockRows();
        if (rows.isEmpty())
            return;
        QList<BaseDataItem*> items;
        for (int row : rows)
            items << table()->at(row);
        aboutToRemoveRows(items);
        // The unit project is recalculated once, when the block's first row goes, not once
        // per row.
        MaterialGridRules::removeRows(table(), rows.mid(1));
        m_service->removeItem(works(), table(), rows.first());
        rowsRemoved(DeleteBlockCommand);
        m_service->recalculateList(works(), table());
    });
}

void MaterialSjWidget::ClearAllRows()
{
    runCommand("ClearAllRows", commandLabel(ClearAllCommand), OperationKind::Edit, [&] {
        if (!showQuestion(this, QStringLiteral("提示"), QStringLiteral("你确定清除所有行内容吗?")))
            return;
        aboutToRemoveRows(table()->items());
        m_service->clearAllRows(table());
        rowsRemoved(ClearAllCommand);
        m_service->recalculateList(works(), table());
    });
}

void MaterialSjWidget::ClearQuantitiesOrPrices(bool prices, bool blockOnly)
{
    const QString label =
        blockOnly ? (prices ? QStringLiteral("清除块内价格") : QStringLiteral("清除块内数量"))
                  : (prices ? QStringLiteral("清除所有价格") : QStringLiteral("清除所有数量"));
    runCommand("ClearQuantitiesOrPrices", label, OperationKind::Edit, [&] {
        const QString question =
            blockOnly ? (prices ? QStringLiteral("确定去除定义块内的材料价格信息吗?")
                                : QStringLiteral("确定去除定义块内的材料数量信息吗?"))
                      : (prices ? QStringLiteral("确定去除所有材料价格信息吗?")
                                : QStringLiteral("确定去除所有材料数量信息吗?"));
        if (!showQuestion(this, QStringLiteral("提示"), question))
            return;
        for (BaseDataItem* item : MaterialGridRules::rowsToClear(table(), blockOnly)) {
            item->setValue(prices ? MaterialGridRules::Price : MaterialGridRules::Quantity,
                           QVariant());
            m_service->recalculateRow(item);
        }
        m_service->recalculateList(works(), table());
    });
}

void MaterialSjWidget::KeepFirstRows(int n, bool fixedCommand)
{
    runCommand("KeepFirstRows", keepLabel(n, fixedCommand), OperationKind::KeepRows, [&] {
        if (n <= 0)
            return;
        m_service->keepFirstRows(table(), n);
        m_service->recalculateList(works(), table());
        // A list already this short still gets its undo step: the user sees the command done.
        RURecordControl::GetInstance()->RecordChange([] {}, [] {});
    });
}

void MaterialSjWidget::KeepFirstRowsAsked()
{
    RowsCountInputDialog dialog(this);
    if (zTitleModal::ShowModal(&dialog) == 0)
        KeepFirstRows(dialog.rowsCount(), false);
}

void MaterialSjWidget::Sort(SortKey key)
{
    const auto rule = MaterialGridRules::SortKey(key);
    runCommand(key == ByName ? "slotAcClMcPx" : "Sort", MaterialGridRules::sortLabel(rule),
               OperationKind::Sort, [&] {
                   const QList<BaseDataItem*> before = table()->items();
                   table()->reorder(
                       MaterialGridRules::sortedOrder(before, rule, tenderCodeField()));
                   RURecordControl::GetInstance()->RecordTableItemOrderChange(table(), before);
               });
}

void MaterialSjWidget::ClearQuestionMark(int row)
{
    runCommand("ClearQuestionMark", commandLabel(DismissMarkCommand), OperationKind::Edit, [&] {
        BaseDataItem* item = table()->at(row);
        if (item && item->getValue(MaterialGridRules::QuestionMark).toBool())
            item->setValue(MaterialGridRules::QuestionMark, false);
    });
}

QString MaterialSjWidget::RefreshReport(int a, int b)
{
    QString report;
    if (a > 0)
        report =
            QStringLiteral("有%1条材料在单位工程中的价格不统一(该类材料由定义块选中！)").arg(a);
    if (b > 0) {
        if (a > 0)
            report += QLatin1Char('\n');
        report += QStringLiteral("有%1条材料在单位工程中没有对应数据("
                                 "该类材料固定列加有问号标记，双击?号可以取消标注！)")
                      .arg(b);
    }
    return report;
}

void MaterialSjWidget::showingFormerRows(const std::function<void()>& work)
{
    GeneralTableBase* live = table();
    std::unique_ptr<GeneralTableBase> copy = m_service->newTable();
    TableOps::replaceRows(copy.get(), live);
    model()->setTableSource(works(), copy.get());
    struct Restore
    {
        MaterialSjWidget* self;
        GeneralTableBase* live;
        ~Restore() { self->model()->setTableSource(self->works(), live); }
    } restore{this, live};
    work();
}

void MaterialSjWidget::rebuildShowingFormerRows(const QString& progressText,
                                                const std::function<void(VXProgressBar&)>& work)
{
    showingFormerRows([&] {
        VXProgressBar progress(QStringLiteral("提示"), progressText, 0, 100,
                               Communication::GetInstance()->GetMainWindow());
        progress.setFixedHeight(HostScreen::Scaled(124));
        progress.show(); // painted before the host starts its work
        QCoreApplication::processEvents();
        work(progress);
    });
}
