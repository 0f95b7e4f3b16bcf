#pragma once

#include "common/MaterialSjWidget.h"

#include "SjCqXPsClBusiness.h"

class SjCqXPsClTable;

// The editable grid of "需评审的材料清单": the shared materials grid over SjCqXPsClBusiness,
// plus gathering the evaluated materials of the unit projects, appending their provisional and
// owner-supplied materials, the refresh report, the two numberings, and keeping the unit
// projects' evaluated flags in step when rows are deleted or cleared.
class SjCqXPsClSjWidget : public MaterialSjWidget
{
    Q_OBJECT
public:
    SjCqXPsClSjWidget(AuditBusiness* audit, QWidget* parent);

public slots:
    // "汇总工程所有材料" / "汇总工程材料".
    void slotAcHzXPsCl();
    // "追加工程所有暂估材料" and "追加工程所有甲供材料".
    void slotAcZjZgCl();
    void slotAcZjJgCl();
    // "刷新材料价格、数量、金额" / "刷新数量&价格".
    void slotAcSxXPsCl();
    // "清除问号标记".
    void slotAcQcWh();
    // "重新生成材料序号及招标编码" / "生成序号与招标编码".
    void slotAcCxScXhBm();
    // "对比材料招标清单生成相应序号".
    void slotAcDbZbQdScXh();
    // "仅保留招标信息".
    void slotAcJblZbXx();
    // "查看招标需评审材料" and "根据招标约定对比整理投标需评审材料" / "对应整理投标需评审材料".
    void slotAcCkZbXPsCl();
    void slotAcDyZlTbXPsCl();

public:
    QMenu* sortMenu() const { return m_sort; }
    QMenu* numberingMenu() const { return m_numbering; }

signals:
    // The user asked to arrange the bid's list against the tender's (slotMatchTenderList).
    void signalMatchTenderList();

public slots:
    // The comparison dialog as one user action: everything it writes is one undo step.
    void slotMatchTenderList();
    // The dialog changed the list: the grid reloads once the dialog is closed.
    void slotXpsClChanged();

protected:
    QString sourceFile() const override { return QStringLiteral("SjCqXPsClQd\\SjCqXPsClSjWidget"); }
    QString className() const override { return QStringLiteral("SjCqXPsClSjWidget"); }
    QString listName() const override { return QStringLiteral("需评审的材料清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-XuSuiJiChouQuPingShenCaiLiaoQingDan.json");
    }
    QString moveLabel() const override { return QStringLiteral("需评审材料清单移动行"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    QString commandLabel(Command command) const override;
    QString keepLabel(int n, bool fixedCommand) const override;
    int tenderCodeField() const override { return 2; }
    void aboutToRemoveRows(const QList<BaseDataItem*>& rows) override;
    void rowsRemoved(Command command) override;
    void onActivated() override;
    void onRibbonCommand(const QVariant& payload) override;

private:
    SjCqXPsClTable* list() const;
    // Appending and refreshing: the host's operation under its progress text while the grid
    // shows the former rows, then the report. Runs inside the caller's command.
    void gatherAndReport(const QString& progressText,
                         void (*operation)(ConstructionWorks*, ProgressSink*));
    // The refresh report of the unit projects' disagreements, and the block of differing prices.
    void reportInconsistencies();

    QList<SjCqXPsClBusiness::Key> m_removing;
    QMenu* m_sort = nullptr;
    QMenu* m_numbering = nullptr;
    bool m_xpsChanged = false;
};
