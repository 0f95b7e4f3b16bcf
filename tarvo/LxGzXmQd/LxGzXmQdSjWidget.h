#pragma once

#include "common/BillSjWidget.h"

class LxGzXmRgDjQdTable;

// The editable grid of "零星工作项目人工单价清单": takes picked regional labour prices into the
// selected rows, applies the content templates, inserts, deletes and clears rows.
class LxGzXmQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    LxGzXmQdSjWidget(AuditBusiness* audit, QWidget* parent);

    static QStringList TemplateNames();
    void CurSporadicWorksTempChanged(const QString& name);
    void SaveTemplate();
    void InsertRow();
    void DeleteCurrentRow(const QString& label);
    void ClearAllRows();

public slots:
    // The price picked in the query panel goes into every selected row but summary rows.
    void slotSelectSporadicItem(double price);

protected:
    QString sourceFile() const override { return QStringLiteral("LxGzXmQd\\LxGzXmQdSjWidget"); }
    QString className() const override { return QStringLiteral("LxGzXmQdSjWidget"); }
    QString listName() const override { return QStringLiteral("零星工作项目人工单价清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-LingXingGongZuoXiangMuQingDanJiJiJiaBiao.json");
    }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("零星人工项目清单移动行"); }
    void onRibbonCommand(const QVariant& payload) override;
    // The ribbon's "模板选择" shows the template the unit project took last.
    void onActivated() override;
    void onNodeLoaded() override;

private:
    static constexpr int SummaryKind = 1; // summary rows: no picked price, never deleted
    LxGzXmRgDjQdTable* list() const;
    int currentRow() const;
};
