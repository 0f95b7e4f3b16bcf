#pragma once

#include "common/BillSjWidget.h"

#include <QHash>

class QAction;
class QMenu;
class ZbrClGzfQdTable;

// The editable grid of "招标人材料购置费清单": block selection, clearing, deleting, keeping the
// first rows, sorting, and summarising the materials of all unit projects.
class ZbrClGzfQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    enum SortKey { ByAmount, ByQuantity, ByPrice, ByName, BySerial };

    ZbrClGzfQdSjWidget(AuditBusiness* audit, QWidget* parent);

    // Block selection (redraw only, no undo step).
    void SelectAll();
    void DefineBlockHead();
    void DefineBlockTail();
    void SetCurrentRowInBlock(bool inBlock);
    void CancelBlock();
    void InvertBlock();

    void InsertRow(bool after);
    void DeleteRowsOrBlock();
    void DeleteBlockRows();
    void ClearAllRows();
    void ClearQuantitiesOrPrices(bool prices, bool blockOnly);
    // The fixed commands (30 and 60 rows) record "保留前30行,其余删除", as the host does.
    void KeepFirstRows(int n, bool fixedCommand = true);
    void KeepFirstRowsAsked();
    void Sort(SortKey key);
    void slotAcHzZgCl();
    void slotAcSxZgCl();
    void slotAcQcWh();
    void RegenerateSerials();
    // Double-click on a row header: a question mark is dismissed.
    void ClearQuestionMark(int row);

    QMenu* contextMenu() const { return m_context; }
    QMenu* ribbonMenu(const QString& title) const { return m_ribbonMenus.value(title); }
    QAction* action(const QString& text) const { return m_actions.value(text); }
    // The composed refresh report for a price-inconsistent and b unmatched materials.
    static QString RefreshReport(int a, int b);

protected:
    QString sourceFile() const override { return QStringLiteral("ZbrClGzfQd\\ZbrClGzfQdSjWidget"); }
    QString className() const override { return QStringLiteral("ZbrClGzfQdSjWidget"); }
    QString listName() const override { return QStringLiteral("招标人材料购置费清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-ZhaoBiaoRenCaiLiaoGouZhiFeiQingDan.json");
    }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return 2; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("招标人材料购置费清单移动行"); }
    void onActivated() override;
    void onRibbonCommand(const QVariant& payload) override;

private:
    ZbrClGzfQdTable* list() const;
    int currentRow() const;
    bool writable() const;
    QAction* makeAction(const QString& text, const QKeySequence& shortcut,
                        void (ZbrClGzfQdSjWidget::*slot)());
    void buildMenus();
    void summariseOrRefresh(bool refresh);
    QList<int> blockRows() const;

    QHash<QString, QAction*> m_actions;
    QHash<QString, QMenu*> m_ribbonMenus;
    QMenu* m_context = nullptr;
};
