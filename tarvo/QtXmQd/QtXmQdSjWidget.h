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
    // "编辑公式" on a row: the formula dialog, then the formula and the two rates written back
    // as one undo step.
    void EditFormula(int row);
    // Replaces the list by the named content template.
    void CurQtXmQdTemplateChanged(const QString& name);
    // The note shown when a written amount may not belong in the unit project's cost.
    static QString AmountReminderText();
    // What the status bar says when a key is typed on a calculated amount.
    static QString CalculatedCellHint();
    // The context menu's entries for the focused row (texts follow the row's attributes).
    QList<QAction*> contextActions();

public slots:
    void slotAcSetToCalculation();
    void slotAcSetToSubTotal();
    void slotAcExtractSporadicWorkItemFees();

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
    // A key typed on a calculated amount never reaches its formula: the cell's value comes
    // from the formula, which is changed in the formula dialog only.
    bool eventFilter(QObject* watched, QEvent* event) override;

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
