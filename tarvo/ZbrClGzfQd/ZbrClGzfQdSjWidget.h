#pragma once

#include "common/BillSjWidget.h"

class ZbrClGzfQdTable;

// The editable grid of "招标人材料购置费清单".
class ZbrClGzfQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    ZbrClGzfQdSjWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("ZbrClGzfQd\\ZbrClGzfQdSjWidget"); }
    QString className() const override { return QStringLiteral("ZbrClGzfQdSjWidget"); }
    QString listName() const override { return QStringLiteral("招标人材料购置费清单"); }
    QString ribbonFile() const override { return QStringLiteral("XiangMu-ZhaoBiaoRenCaiLiaoGouZhiFeiQingDan.json"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return 2; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("招标人材料购置费清单移动行"); }

private:
    ZbrClGzfQdTable* pageTable() const;
};
