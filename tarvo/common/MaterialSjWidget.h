#pragma once

#include "BillSjWidget.h"
#include "MaterialGridRules.h"
#include "MaterialGridService.h"

#include <QHash>
#include <QKeySequence>

#include <functional>
#include <memory>

class MaterialListModel;
class QAction;
class QMenu;
class VXProgressBar;

// The editable grid the materials lists share (tenderer-purchased, provisional, evaluated):
// the block commands, inserting, deleting and clearing rows, keeping the first rows, clearing
// quantities or prices, the sorts, row moves, dismissing a question mark by double-clicking
// the row header, the context menu's row commands and the six ribbon drop-downs. A page
// supplies its model, its business service (MaterialGridService), its texts (the virtuals of
// BillSjWidget and commandLabel) and composes its context menu from the actions here plus
// its own summarising commands.
class MaterialSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    enum SortKey {
        ByAmount = MaterialGridRules::ByAmount,
        ByQuantity = MaterialGridRules::ByQuantity,
        ByPrice = MaterialGridRules::ByPrice,
        ByName = MaterialGridRules::ByName,
        BySerial = MaterialGridRules::BySerial,
        ByTenderCode = MaterialGridRules::ByTenderCode
    };
    // The commands whose undo labels a page may word its own way.
    enum Command {
        InsertCommand,      // "插入行"
        AppendCommand,      // "添加行"
        DeleteCommand,      // "删除"
        DeleteBlockCommand, // "删除定义块内所有行"
        ClearAllCommand,    // "清除所有行"
        DismissMarkCommand  // "清除问号标记" (double-click on one question mark)
    };

    MaterialSjWidget(AuditBusiness* audit, QWidget* parent);
    ~MaterialSjWidget() override;

    // Block selection: redraw only, no undo step.
    void SelectAll();
    void DefineBlockHead();
    void DefineBlockTail();
    void SetCurrentRowInBlock(bool inBlock);
    void CancelBlock();
    void InvertBlock();

    void InsertRow(bool after);
    // The block's rows after a question when there is a block, else the focused row.
    void DeleteRowsOrBlock();
    void DeleteBlockRows();
    void ClearAllRows();
    void ClearQuantitiesOrPrices(bool prices, bool blockOnly);
    void KeepFirstRows(int n, bool fixedCommand = true);
    // Asks for the number in the rows-count dialog first.
    void KeepFirstRowsAsked();
    void Sort(SortKey key);
    // Double-click on a row header: a question mark is dismissed.
    void ClearQuestionMark(int row);

    QMenu* contextMenu() const { return m_context; }
    QMenu* blockMenu() const { return m_block; }
    QMenu* ribbonMenu(const QString& title) const { return m_ribbonMenus.value(title); }
    QAction* action(const QString& text) const { return m_actions.value(text); }
    // The report after a refresh: a materials priced differently and b without corresponding
    // data in the unit projects; empty when both are 0.
    static QString RefreshReport(int a, int b);

protected:
    // Builds the grid over the page's model and service; called by the page's constructor,
    // which then fills contextMenu().
    void initMaterials(MaterialListModel* model, std::unique_ptr<MaterialGridService> service);
    const MaterialGridService& service() const { return *m_service; }
    int currentRow() const;
    QList<int> blockRows() const;

    virtual QString commandLabel(Command command) const;
    // The fixed commands (30 and 60 rows) record "保留前30行,其余删除", as the host does.
    virtual QString keepLabel(int n, bool fixedCommand) const;
    // The field of the tender code, for the sort "招标编码"; -1 when the list has none.
    virtual int tenderCodeField() const { return -1; }
    // Deleting and clearing rows, inside the command's record: the rows about to go (or to
    // lose their contents), then the command that took them. A list kept in step with the
    // unit projects carries the change down here.
    virtual void aboutToRemoveRows(const QList<BaseDataItem*>& rows) { Q_UNUSED(rows) }
    virtual void rowsRemoved(Command command) { Q_UNUSED(command) }

    // An action of the page, kept under its text for action() and ribbon commands.
    QAction* makeAction(const QString& text, const QKeySequence& shortcut,
                        const std::function<void()>& slot);
    // The row commands of the context menu: "插入行", "添加行", "删除", "清除所有行".
    void addRowCommands(QMenu* menu, bool withAppend = true);
    // The sub-menu "排序" with every sort of the list; returns it.
    QMenu* addSortMenu(QMenu* menu);
    // The ribbon's "招投标-删除行" also offers "删除所有行" (the lists of the tender's materials).
    void offerClearAllOnRibbon();

    // Rebuilds the list from the unit projects under a progress bar titled "提示" with the
    // given text, while the grid shows a copy of the former rows; the grid is back on the list
    // when this returns, also when the work throws. Runs inside the caller's command.
    void rebuildShowingFormerRows(const QString& progressText,
                                  const std::function<void(VXProgressBar&)>& work);
    // Runs work while the grid shows a copy of the former rows (a dialog that rebuilds the
    // list when it applies); the grid is back on the list when this returns.
    void showingFormerRows(const std::function<void()>& work);

    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    int totalKind() const override { return 2; }
    void onActivated() override;
    void onRibbonCommand(const QVariant& payload) override;

private:
    void buildMenus();
    // The sorts offered, in menu order; "招标编码" only where the list has the field.
    QList<QPair<QString, SortKey>> sorts() const;

    std::unique_ptr<MaterialGridService> m_service;
    QHash<QString, QAction*> m_actions;
    QHash<QString, QMenu*> m_ribbonMenus;
    QMenu* m_context = nullptr;
    QMenu* m_block = nullptr;
};
