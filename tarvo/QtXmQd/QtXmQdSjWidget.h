#pragma once

#include "common/BillSjWidget.h"

class QAction;
class QtXmQdHzTable;

// The editable grid of "其他项目清单": row kinds, calculation and subtotal attributes, and the
// row commands (insert, delete, clear, move), each one undo step.
class QtXmQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    QtXmQdSjWidget(AuditBusiness* audit, QWidget* parent);

    void InsertRow();
    void DeleteCurrentRow(const QString& label);
    void ClearAllRows();
    void slotAcSetToCalculation();
    void slotAcSetToSubTotal();
    // "编辑公式" on a row: the formula dialog, then the formula and the two rates written back
    // as one undo step.
    void EditFormula(int row);
    void slotAcExtractSporadicWorkItemFees();
    // Replaces the list by the named content template.
    void CurQtXmQdTemplateChanged(const QString& name);
    // The note shown when a written amount may not belong in the unit project's cost.
    static QString AmountReminderText();
    // The context menu's entries for the focused row (texts follow the row's attributes).
    QList<QAction*> contextActions();

protected:
    QString sourceFile() const override { return QStringLiteral("QtXmQd\\QtXmQdSjWidget"); }
    QString className() const override { return QStringLiteral("QtXmQdSjWidget"); }
    QString listName() const override { return QStringLiteral("其他项目清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-QiTaXiangMuQingDanJiJiJiaBiao.json");
    }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return 4; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("其他项目清单移动行"); }
    void onRibbonCommand(const QVariant& payload) override;
    void onActivated() override;
    void onNodeLoaded() override;

private:
    QtXmQdHzTable* pageTable() const;
    int currentRow() const;
    QAction* m_acInsert;
    QAction* m_acDelete;
    QAction* m_acClear;
    QAction* m_acSubTotal;
    QAction* m_acCalculation;
    QAction* m_acFormula;
    QAction* m_acExtract;
    void AmountReminder(int row);
};
