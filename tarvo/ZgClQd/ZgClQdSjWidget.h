#pragma once

#include "common/MaterialSjWidget.h"

class QLabel;
class ZgjClHzTable;

// The editable grid of "暂估材料(工程设备)清单": the shared materials grid over ZgClQdBusiness,
// plus gathering the provisional materials of all unit projects, the refresh report, the
// numbering dialog and the unit projects' settings side by side. Every record of this list
// carries the operation kind 10.
class ZgClQdSjWidget : public MaterialSjWidget
{
    Q_OBJECT
public:
    ZgClQdSjWidget(AuditBusiness* audit, QWidget* parent);

public slots:
    // "汇总工程所有暂估材料" / "汇总工程暂估材料".
    void slotAcHzZgCl();
    // "刷新材料价格、数量、金额" / "刷新数量&价格", with its report.
    void slotAcSxZgCl();
    // "清除问号标记".
    void slotAcQcWh();
    // "重新生成材料序号及招标编码" / "生成序号与招标编码".
    void slotAcCxScXhBm();
    // "查看单位工程暂估设置".
    void slotAcCkDwGcZgSz();
    // "查看招标暂估材料" and "对应整理投标暂估材料" open the tender list's dialogs.
    void slotAcCkZbZgCl();
    void slotAcDyZlTbZgCl();

public:
    QLabel* explanation() const { return m_explanation; }
    QMenu* keepTenderMenu() const { return m_keepTender; }
    QMenu* sortMenu() const { return m_sort; }
    static QString ExplanationText();

signals:
    // The tender list's dialogs are opened by whoever provides them.
    void signalViewTenderList();
    void signalMatchTenderList();

protected:
    QString sourceFile() const override { return QStringLiteral("ZgClQd\\ZgClQdSjWidget"); }
    QString className() const override { return QStringLiteral("ZgClQdSjWidget"); }
    QString listName() const override { return QStringLiteral("暂估材料(工程设备)清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-ZanGuCaiLiaoQingDan.json");
    }
    QString moveLabel() const override { return QStringLiteral("暂估材料清单移动行"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    QString commandLabel(Command command) const override;
    QString keepLabel(int n, bool fixedCommand) const override;
    int tenderCodeField() const override { return 2; }
    void onActivated() override;
    void onNodeLoaded() override;
    void onRibbonCommand(const QVariant& payload) override;

private slots:
    // Opens the tender's provisional list (CkZbZgClQdDialog) over the page's project.
    void slotShowTenderList();
    // Opens the matching dialog (DbZbZgClDialog) inside the page's undo record.
    void slotMatchTenderList();

private:
    ZgjClHzTable* list() const;
    void updateKeepTenderMenu();
    void sendTenderItemStates();

    QLabel* m_explanation = nullptr;
    QMenu* m_keepTender = nullptr;
    QMenu* m_sort = nullptr;
};
