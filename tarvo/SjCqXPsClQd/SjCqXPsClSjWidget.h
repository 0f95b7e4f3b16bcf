#pragma once

#include "common/BillSjWidget.h"

class SjCqXPsClTable;

// The editable grid of "需评审的材料清单".
class SjCqXPsClSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    SjCqXPsClSjWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("SjCqXPsClQd\\SjCqXPsClSjWidget"); }
    QString className() const override { return QStringLiteral("SjCqXPsClSjWidget"); }
    QString listName() const override { return QStringLiteral("需评审的材料清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-XuPingShenCaiLiaoQingDan.json");
    }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return 2; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("需评审材料清单移动行"); }

private:
    SjCqXPsClTable* pageTable() const;
};
