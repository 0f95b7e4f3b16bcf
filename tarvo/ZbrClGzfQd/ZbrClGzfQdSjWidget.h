#pragma once

#include "common/MaterialSjWidget.h"

// The editable grid of "招标人材料购置费清单": the shared materials grid over
// ZbrClGzfQdBusiness, plus summarising and refreshing the materials of all unit projects.
class ZbrClGzfQdSjWidget : public MaterialSjWidget
{
    Q_OBJECT
public:
    ZbrClGzfQdSjWidget(AuditBusiness* audit, QWidget* parent);

public slots:
    void slotAcHzZgCl();
    void slotAcSxZgCl();
    void slotAcQcWh();

public:
    void RegenerateSerials();

protected:
    QString sourceFile() const override { return QStringLiteral("ZbrClGzfQd\\ZbrClGzfQdSjWidget"); }
    QString className() const override { return QStringLiteral("ZbrClGzfQdSjWidget"); }
    QString listName() const override { return QStringLiteral("招标人材料购置费清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-ZhaoBiaoRenCaiLiaoGouZhiFeiQingDan.json");
    }
    QString moveLabel() const override { return QStringLiteral("招标人材料购置费清单移动行"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    void onRibbonCommand(const QVariant& payload) override;

private:
    // The label of what was done, or empty when the user cancelled the choice.
    QString summariseOrRefresh(bool refresh);
};
