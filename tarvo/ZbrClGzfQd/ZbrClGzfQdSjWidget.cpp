#include "ZbrClGzfQdSjWidget.h"

#include "PopupDialog/SummarySelectionDialog.h"
#include "ZbrClGzfQdModel.h"
#include "common/RowsCountInputDialog.h"
#include "common/TarvoGuard.h"

#include "AuditBusiness.h"
#include "Communication.h"
#include "ConstructionWorks.h"
#include "MenuBarManager.h"
#include "ProjectWorks.h"
#include "RURecordControl.h"
#include "TableOps.h"
#include "VXProgressBar.h"
#include "ZbrClGzfQdBusiness.h"
#include "zMessageBox.h"
#include "zTableView.h"
#include "zTitleModal.h"

#include <QAction>
#include <QCollator>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr int Material = 1;

// Real keys: blank or zero sorts after everything in descending order.
double realKey(const BaseDataItem* item, int field)
{
    bool ok = false;
    const double value = item->getValueStr(field).toDouble(&ok);
    return !ok || std::fabs(value) < 1e-6 ? -1e11 : value;
}

} // namespace

ZbrClGzfQdSjWidget::ZbrClGzfQdSjWidget(AuditBusiness* audit, QWidget* parent)
    : BillSjWidget(audit, parent)
{
    init(new ZbrClGzfQdModel(this));
    buildMenus();
    view()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view(), &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pos) { m_context->exec(view()->viewport()->mapToGlobal(pos)); });
    connect(view()->verticalHeader(), &QHeaderView::sectionDoubleClicked, this,
            &ZbrClGzfQdSjWidget::ClearQuestionMark);

    // The explanation of the cell colours, under the grid.
    auto* legend = new QLabel(this);
    legend->setObjectName(QStringLiteral("legend"));
    legend->setTextFormat(Qt::RichText);
    legend->setText(
        QStringLiteral("说明：颜色配置方案：<span "
                       "style='background:#ffd6d6'>背景表示各单位工程暂估属性设置不一致</span>；"
                       "<span style='color:#dc0000'>前景表示各单位工程调价不一致</span>；"
                       "<span style='background:#fff2b8'>背景表示各单位工程产地等不一致</span>"));
    legend->setStyleSheet(QStringLiteral("QLabel { padding: 3px 6px; color: #34495e; }"));
    static_cast<QGridLayout*>(layout())->addWidget(legend, 1, 0);
}

GeneralTableBase* ZbrClGzfQdSjWidget::pageTable(ConstructionWorks* works) const
{
    return works->getTenderInventory()->getZbrClGzfQdTable();
}

ZbrClGzfQdTable* ZbrClGzfQdSjWidget::list() const
{
    return static_cast<ZbrClGzfQdTable*>(table());
}

int ZbrClGzfQdSjWidget::currentRow() const
{
    return view()->currentIndex().isValid() ? view()->currentIndex().row() : -1;
}

bool ZbrClGzfQdSjWidget::writable() const
{
    return list() && works() && !isLocked();
}

bool ZbrClGzfQdSjWidget::canMoveRows(int from, int to) const
{
    return ZbrClGzfQdBusiness::GridRowCanMove(list(), from, to);
}

bool ZbrClGzfQdSjWidget::moveRows(int from, int to)
{
    return ZbrClGzfQdBusiness::GridRowMove(works(), list(), from, to);
}

QAction* ZbrClGzfQdSjWidget::makeAction(const QString& text, const QKeySequence& shortcut,
                                        void (ZbrClGzfQdSjWidget::*slot)())
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

void ZbrClGzfQdSjWidget::buildMenus()
{
    const QKeySequence none;
    // Block commands, shared by the context menu and the ribbon's "招投标-块选".
    auto* block = new QMenu(QStringLiteral("块定义"), this);
    block->addAction(makeAction(QStringLiteral("全选"), QKeySequence(Qt::Key_F4),
                                &ZbrClGzfQdSjWidget::SelectAll));
    block->addAction(makeAction(QStringLiteral("定义块首"), QKeySequence(Qt::Key_F5),
                                &ZbrClGzfQdSjWidget::DefineBlockHead));
    block->addAction(makeAction(QStringLiteral("定义块尾"), QKeySequence(Qt::Key_F6),
                                &ZbrClGzfQdSjWidget::DefineBlockTail));
    // Both carry Ctrl+Left, as the host's other grids do.
    QAction* select = makeAction(QStringLiteral("选中当前行"),
                                 QKeySequence(QStringLiteral("Ctrl+Left")), nullptr);
    connect(select, &QAction::triggered, this, [this] { SetCurrentRowInBlock(true); });
    QAction* deselect = makeAction(QStringLiteral("不选中当前行"),
                                   QKeySequence(QStringLiteral("Ctrl+Left")), nullptr);
    connect(deselect, &QAction::triggered, this, [this] { SetCurrentRowInBlock(false); });
    block->addAction(select);
    block->addAction(deselect);
    block->addAction(makeAction(QStringLiteral("取消块定义"), QKeySequence(Qt::Key_F7),
                                &ZbrClGzfQdSjWidget::CancelBlock));
    block->addAction(
        makeAction(QStringLiteral("反向选择"), none, &ZbrClGzfQdSjWidget::InvertBlock));

    m_context = new QMenu(this);
    m_context->addAction(
        makeAction(QStringLiteral("汇总工程所有材料"), none, &ZbrClGzfQdSjWidget::slotAcHzZgCl));
    m_context->addAction(makeAction(QStringLiteral("刷新材料价格、数量、金额"), none,
                                    &ZbrClGzfQdSjWidget::slotAcSxZgCl));
    m_context->addAction(
        makeAction(QStringLiteral("清除问号标记"), none, &ZbrClGzfQdSjWidget::slotAcQcWh));
    m_context->addAction(makeAction(QStringLiteral("重新生成材料序号"), none,
                                    &ZbrClGzfQdSjWidget::RegenerateSerials));
    m_context->addSeparator();
    m_context->addMenu(block);
    QAction* insert = makeAction(QStringLiteral("插入行"), QKeySequence(Qt::Key_Insert), nullptr);
    connect(insert, &QAction::triggered, this, [this] { InsertRow(false); });
    QAction* append = makeAction(QStringLiteral("添加行"), none, nullptr);
    connect(append, &QAction::triggered, this, [this] { InsertRow(true); });
    m_context->addAction(insert);
    m_context->addAction(append);
    m_context->addAction(makeAction(QStringLiteral("删除"), QKeySequence(Qt::Key_Delete),
                                    &ZbrClGzfQdSjWidget::DeleteRowsOrBlock));
    m_context->addAction(
        makeAction(QStringLiteral("清除所有行"), none, &ZbrClGzfQdSjWidget::ClearAllRows));

    auto ribbon = [this](const QString& title) {
        auto* menu = new QMenu(title, this);
        m_ribbonMenus.insert(title, menu);
        return menu;
    };
    QMenu* del = ribbon(QStringLiteral("招投标-删除行"));
    QAction* deleteRow = new QAction(QStringLiteral("删除当前行/块"), this);
    connect(deleteRow, &QAction::triggered, this, &ZbrClGzfQdSjWidget::DeleteRowsOrBlock);
    del->addAction(deleteRow);
    QMenu* heights = ribbon(QStringLiteral("自动行高"));
    connect(heights->addAction(QStringLiteral("表格自适应行高")), &QAction::triggered, this,
            [this] { FitRowHeights(false); });
    connect(heights->addAction(QStringLiteral("表格置最小行高")), &QAction::triggered, this,
            [this] { FitRowHeights(true); });
    QMenu* sort = ribbon(QStringLiteral("编制:排序"));
    const QList<QPair<QString, SortKey>> sorts = {{QStringLiteral("金额"), ByAmount},
                                                  {QStringLiteral("数量"), ByQuantity},
                                                  {QStringLiteral("单价"), ByPrice},
                                                  {QStringLiteral("材料名称"), ByName},
                                                  {QStringLiteral("序号"), BySerial}};
    for (const auto& entry : sorts) {
        const SortKey key = entry.second;
        connect(sort->addAction(entry.first), &QAction::triggered, this,
                [this, key] { Sort(key); });
    }
    QMenu* clear = ribbon(QStringLiteral("清除数量&价格"));
    connect(clear->addAction(QStringLiteral("清除所有数量")), &QAction::triggered, this,
            [this] { ClearQuantitiesOrPrices(false, false); });
    connect(clear->addAction(QStringLiteral("清除所有价格")), &QAction::triggered, this,
            [this] { ClearQuantitiesOrPrices(true, false); });
    clear->addSeparator();
    connect(clear->addAction(QStringLiteral("清除块内数量")), &QAction::triggered, this,
            [this] { ClearQuantitiesOrPrices(false, true); });
    connect(clear->addAction(QStringLiteral("清除块内价格")), &QAction::triggered, this,
            [this] { ClearQuantitiesOrPrices(true, true); });
    QMenu* batch = ribbon(QStringLiteral("编制:批量删除"));
    connect(batch->addAction(QStringLiteral("保留前30行,其余删除")), &QAction::triggered, this,
            [this] { KeepFirstRows(30); });
    connect(batch->addAction(QStringLiteral("保留前60行,其余删除")), &QAction::triggered, this,
            [this] { KeepFirstRows(60); });
    connect(batch->addAction(QStringLiteral("保留前n(输入)行,其余删除")), &QAction::triggered, this,
            &ZbrClGzfQdSjWidget::KeepFirstRowsAsked);
    connect(batch->addAction(QStringLiteral("删除定义块内所有行")), &QAction::triggered, this,
            &ZbrClGzfQdSjWidget::DeleteBlockRows);
    connect(batch->addAction(QStringLiteral("删除所有行")), &QAction::triggered, this,
            &ZbrClGzfQdSjWidget::ClearAllRows);
    QMenu* blockRibbon = ribbon(QStringLiteral("招投标-块选"));
    blockRibbon->addActions(block->actions());
}

void ZbrClGzfQdSjWidget::onActivated()
{
    for (auto it = m_ribbonMenus.cbegin(); it != m_ribbonMenus.cend(); ++it)
        MenuBarManager::getInstance()->SetRibbonActionMenu(4, it.key(), it.value());
    BillSjWidget::onActivated();
    if (ProjectWorks* owner = works() ? works()->getOwner() : nullptr; owner && owner->IsReadOnly())
        MenuBarManager::getInstance()->ChangeMenuToDisable({QStringLiteral("导出招投标CJZ"),
                                                            QStringLiteral("导出竣工CJZ"),
                                                            QStringLiteral("导出备案CJZX")});
}

void ZbrClGzfQdSjWidget::onRibbonCommand(const QVariant& payload)
{
    const QString command = payload.toString();
    if (command == QStringLiteral("插入行"))
        InsertRow(false);
    else if (command == QStringLiteral("招投标-删除行"))
        DeleteRowsOrBlock();
    else if (command == QStringLiteral("汇总工程材料"))
        slotAcHzZgCl();
    else if (command == QStringLiteral("刷新数量&价格"))
        slotAcSxZgCl();
    else if (command == QStringLiteral("重新生成材料序号"))
        RegenerateSerials();
    else if (QAction* named = m_actions.value(command))
        named->trigger();
}

QList<int> ZbrClGzfQdSjWidget::blockRows() const
{
    QList<int> rows;
    if (list())
        for (int row = 0; row < list()->count(); ++row)
            if (list()->at(row)->IsBlock())
                rows << row;
    return rows;
}

void ZbrClGzfQdSjWidget::SelectAll()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("SelectAll"), [&] {
        if (!list())
            return;
        for (BaseDataItem* item : list()->items())
            item->SetBlock(true);
        model()->resetModel();
    });
}

void ZbrClGzfQdSjWidget::DefineBlockHead()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("DefineBlockHead"), [&] {
        const int row = currentRow();
        if (!list() || row < 0)
            return;
        const QList<int> block = blockRows();
        // Rows above the head leave; from the head down to the block's first row join.
        const int end = block.isEmpty() ? row : qMax(row, block.first());
        for (int r = 0; r < list()->count(); ++r) {
            if (r < row)
                list()->at(r)->SetBlock(false);
            else if (r <= end)
                list()->at(r)->SetBlock(true);
        }
        model()->resetModel();
    });
}

void ZbrClGzfQdSjWidget::DefineBlockTail()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("DefineBlockTail"), [&] {
        const int row = currentRow();
        if (!list() || row < 0)
            return;
        const QList<int> block = blockRows();
        const int start = block.isEmpty() ? row : qMin(row, block.last());
        for (int r = 0; r < list()->count(); ++r) {
            if (r > row)
                list()->at(r)->SetBlock(false);
            else if (r >= start)
                list()->at(r)->SetBlock(true);
        }
        model()->resetModel();
    });
}

void ZbrClGzfQdSjWidget::SetCurrentRowInBlock(bool inBlock)
{
    if (BaseDataItem* item = list() ? list()->at(currentRow()) : nullptr) {
        item->SetBlock(inBlock);
        model()->resetModel();
    }
}

void ZbrClGzfQdSjWidget::CancelBlock()
{
    if (!list())
        return;
    for (BaseDataItem* item : list()->items())
        item->SetBlock(false);
    model()->resetModel();
}

void ZbrClGzfQdSjWidget::InvertBlock()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InvertBlock"), [&] {
        if (!list())
            return;
        for (BaseDataItem* item : list()->items())
            item->SetBlock(!item->IsBlock() && !ZbrClGzfQdBusiness::CheckIsEmptyRow(item));
        model()->resetModel();
    });
}

void ZbrClGzfQdSjWidget::InsertRow(bool after)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("InsertRow"), [&] {
        view()->closeEditor();
        if (!writable())
            return;
        int index = currentRow() < 0 ? -1 : currentRow() + (after ? 1 : 0);
        if (index < 0) {
            BaseDataItem* total = nullptr;
            index = ZbrClGzfQdBusiness::CheckExistedTotalRow(list()->items(), total)
                        ? list()->count() - 1
                        : list()->count();
        }
        model()->recorded(8, after ? QStringLiteral("添加行") : QStringLiteral("插入行"),
                          [&] { return ZbrClGzfQdBusiness::InsertItem(list(), index) != nullptr; });
    });
}

void ZbrClGzfQdSjWidget::DeleteRowsOrBlock()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("DeleteRowsOrBlock"), [&] {
        view()->closeEditor();
        if (!writable())
            return;
        if (!blockRows().isEmpty()) {
            if (showQuestion(this, QStringLiteral("提示"),
                             QStringLiteral("你确定要删除定义块内的材料行吗?")))
                DeleteBlockRows();
            return;
        }
        const int row = currentRow();
        if (row < 0)
            return;
        model()->recorded(8, QStringLiteral("删除"), [&] {
            const bool removed = ZbrClGzfQdBusiness::RemoveItem(works(), list(), row);
            ZbrClGzfQdBusiness::CalGzfQdTable(works());
            return removed;
        });
    });
}

void ZbrClGzfQdSjWidget::DeleteBlockRows()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("DeleteBlockRows"), [&] {
        const QList<int> rows = blockRows();
        if (!writable() || rows.isEmpty())
            return;
        model()->recorded(8, QStringLiteral("删除定义块内所有行"), [&] {
            for (auto it = rows.crbegin(); it != rows.crend(); ++it)
                ZbrClGzfQdBusiness::RemoveItem(works(), list(), *it);
            ZbrClGzfQdBusiness::CalGzfQdTable(works());
            return true;
        });
    });
}

void ZbrClGzfQdSjWidget::ClearAllRows()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ClearAllRows"), [&] {
        view()->closeEditor();
        if (!writable() ||
            !showQuestion(this, QStringLiteral("提示"), QStringLiteral("你确定清除所有行内容吗?")))
            return;
        model()->recorded(8, QStringLiteral("清除所有行"), [&] {
            const int n = list()->count();
            for (int row = n - 1; row >= 0; --row)
                list()->BaseDataItemRemoveAt(row);
            for (int i = 0; i < n - 1; ++i) {
                BaseDataItem* item = list()->CreateItem();
                item->loadState(Material, false, 0, QString());
                list()->BaseDataItemAppend(item);
            }
            ZbrClGzfQdBusiness::CalGzfQdTable(works());
            return true;
        });
    });
}

void ZbrClGzfQdSjWidget::ClearQuantitiesOrPrices(bool prices, bool blockOnly)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ClearQuantitiesOrPrices"), [&] {
        if (!writable())
            return;
        const QString question =
            blockOnly ? (prices ? QStringLiteral("确定去除定义块内的材料价格信息吗?")
                                : QStringLiteral("确定去除定义块内的材料数量信息吗?"))
                      : (prices ? QStringLiteral("确定去除所有材料价格信息吗?")
                                : QStringLiteral("确定去除所有材料数量信息吗?"));
        if (!showQuestion(this, QStringLiteral("提示"), question))
            return;
        const QString label =
            blockOnly ? (prices ? QStringLiteral("清除块内价格") : QStringLiteral("清除块内数量"))
                      : (prices ? QStringLiteral("清除所有价格") : QStringLiteral("清除所有数量"));
        model()->recorded(8, label, [&] {
            for (BaseDataItem* item : list()->items()) {
                if (item->getKind() != Material || (blockOnly && !item->IsBlock()))
                    continue;
                item->setValue(prices ? 7 : 9, QVariant());
                ZbrClGzfQdBusiness::CalculateZbrClItemHJ(item);
            }
            ZbrClGzfQdBusiness::CalGzfQdTable(works());
            return true;
        });
    });
}

void ZbrClGzfQdSjWidget::KeepFirstRows(int n, bool fixedCommand)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("KeepFirstRows"), [&] {
        if (!writable() || n <= 0)
            return;
        const QString label = QStringLiteral("保留前%1行,其余删除").arg(fixedCommand ? 30 : n);
        model()->recorded(11, label, [&] {
            ZbrClGzfQdBusiness::RemoveAllAndKeepNRow(list(), n);
            ZbrClGzfQdBusiness::CalGzfQdTable(works());
            return true;
        });
    });
}

void ZbrClGzfQdSjWidget::KeepFirstRowsAsked()
{
    RowsCountInputDialog dialog(this);
    if (zTitleModal::ShowModal(&dialog) == 0)
        KeepFirstRows(dialog.rowsCount(), false);
}

void ZbrClGzfQdSjWidget::Sort(SortKey key)
{
    static const char* const labels[] = {"排序.金额", "排序.数量", "排序.单价", "排序.材料名称",
                                         "排序.序号"};
    TarvoGuard::run(sourceFile(), __LINE__, key == ByName ? tag("slotAcClMcPx") : tag("Sort"), [&] {
        if (!writable())
            return;
        const QList<BaseDataItem*> before = list()->items();
        const int field = key == ByAmount     ? 10
                          : key == ByQuantity ? 9
                          : key == ByPrice    ? 7
                          : key == ByName     ? 3
                                              : 1;
        struct Row
        {
            BaseDataItem* item;
            double number;
            QCollatorSortKey text;
        };
        static const QCollator collator{QLocale(QLocale::Chinese, QLocale::China)};
        QVector<Row> sorted;
        QList<BaseDataItem*> rest;
        for (BaseDataItem* item : before) {
            const bool present =
                item->getValue(field).isValid() && !item->getValueStr(field).isEmpty();
            if (item->getKind() != Material || (!present && (key == ByName || key == BySerial))) {
                rest << item;
                continue;
            }
            sorted.append(
                {item, key == BySerial ? item->getValue(1).toDouble() : realKey(item, field),
                 collator.sortKey(key == ByName ? item->getValue(3).toString() : QString())});
        }
        // std::sort is an introsort: unstable, as the host's sorts are.
        std::sort(sorted.begin(), sorted.end(), [key](const Row& a, const Row& b) {
            switch (key) {
            case ByName:
                return a.text.compare(b.text) < 0;
            case BySerial:
                return a.number < b.number;
            default:
                return a.number > b.number;
            }
        });
        QList<BaseDataItem*> order;
        for (const Row& row : sorted)
            order << row.item;
        order += rest;
        model()->recorded(25, QString::fromUtf8(labels[key]), [&] {
            list()->reorder(order);
            RURecordControl::GetInstance()->RecordTableItemOrderChange(list(), before);
            return true;
        });
    });
}

QString ZbrClGzfQdSjWidget::RefreshReport(int a, int b)
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

void ZbrClGzfQdSjWidget::summariseOrRefresh(bool refresh)
{
    view()->closeEditor();
    if (!writable())
        return;
    SummarySelectionDialog dialog(this);
    if (refresh)
        dialog.setTexts(QStringLiteral("汇总材料类型:"), QStringLiteral("仅暂估价材料"),
                        QStringLiteral("所有工程材料"));
    else
        dialog.setTexts(QStringLiteral("汇总暂估价材料/招标方购置材料:"),
                        QStringLiteral("仅汇总暂估价材料"), QStringLiteral("汇总所有工程材料"));
    const int choice = zTitleModal::ShowModal(&dialog) == 0 ? dialog.choice() : -1;
    if (choice != 0 && choice != 1)
        return;
    const bool all = choice == 1;

    // The grid shows a copy while the host rebuilds the list.
    ZbrClGzfQdTable* live = list();
    auto copy = std::make_unique<ZbrClGzfQdTable>();
    TableOps::replaceRows(copy.get(), live);
    model()->setTableSource(works(), copy.get());
    struct Restore
    {
        ZbrClGzfQdSjWidget* self;
        ZbrClGzfQdTable* live;
        ~Restore() { self->model()->setTableSource(self->works(), live); }
    } restore{this, live};

    beginUndoRecord();
    const QString text = refresh ? QStringLiteral("正在刷新所有工程材料，请等待")
                                 : (all ? QStringLiteral("正在汇总所有工程材料，请等待")
                                        : QStringLiteral("正在汇总暂估价材料，请等待"));
    int a = 0, b = 0;
    try {
        VXProgressBar progress(QStringLiteral("提示"), text, 0, 100,
                               Communication::GetInstance()->GetMainWindow());
        QCoreApplication::processEvents();
        if (refresh) {
            all ? ZbrClGzfQdBusiness::UpdateZbrClGzfQdSLAndTJ(works(), &progress)
                : ZbrClGzfQdBusiness::UpdateZbrClGzfQdZgjSLAndTJ(works(), &progress);
            progress.finish();
            a = ZbrClGzfQdBusiness::GetTjByzClCount(works());
            b = ZbrClGzfQdBusiness::GetBCzDyClCount(works());
            const QString report = RefreshReport(a, b);
            if (!report.isEmpty())
                showInformation(this, QStringLiteral("提示"), report);
            if (a > 0)
                ZbrClGzfQdBusiness::SetTjByzClBlock(works());
        } else {
            ZbrClGzfQdBusiness::ClearBCzDyClBj(works());
            all ? ZbrClGzfQdBusiness::HzSyClToZbrCl(works(), &progress)
                : ZbrClGzfQdBusiness::HzZgjClToZbrCl(works(), &progress);
        }
    } catch (...) {
        endUndoRecord(model()->undoInfo(10, QStringLiteral("汇总所有工程材料")));
        throw;
    }
    model()->setTableSource(works(), live);
    if (audit())
        audit()->CreateRelationByTable(3);
    const QString label =
        refresh ? (all ? QStringLiteral("刷新所有工程材料") : QStringLiteral("刷新暂估价材料"))
                : (all ? QStringLiteral("汇总所有工程材料") : QStringLiteral("仅汇总暂估价材料"));
    endUndoRecord(model()->undoInfo(10, label));
}

void ZbrClGzfQdSjWidget::slotAcHzZgCl()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcHzZgCl"),
                    [&] { summariseOrRefresh(false); });
}

void ZbrClGzfQdSjWidget::slotAcSxZgCl()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcSxZgCl"), [&] { summariseOrRefresh(true); });
}

void ZbrClGzfQdSjWidget::slotAcQcWh()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("slotAcQcWh"), [&] {
        if (!writable())
            return;
        model()->recorded(8, QStringLiteral("清除问号标记"), [&] {
            ZbrClGzfQdBusiness::ClearBCzDyClBj(works());
            return true;
        });
    });
}

void ZbrClGzfQdSjWidget::RegenerateSerials()
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("RegenerateSerials"), [&] {
        if (!writable())
            return;
        model()->recorded(8, QStringLiteral("重新生成材料序号"), [&] {
            ZbrClGzfQdBusiness::RegenerateZbrClGzfQdXH(works());
            return true;
        });
    });
}

void ZbrClGzfQdSjWidget::ClearQuestionMark(int row)
{
    TarvoGuard::run(sourceFile(), __LINE__, tag("ClearQuestionMark"), [&] {
        BaseDataItem* item = list() ? list()->at(row) : nullptr;
        if (!item || !item->getValue(22).toBool() || isLocked())
            return;
        model()->recorded(8, QStringLiteral("清除问号标记"), [&] {
            item->setValue(22, false);
            return true;
        });
    });
}
