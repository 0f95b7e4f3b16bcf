#pragma once

#include "common/BillSjWidget.h"

class QtXmQdHzTable;

// The editable grid of "其他项目清单".
class QtXmQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    QtXmQdSjWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("QtXmQd\\QtXmQdSjWidget"); }
    QString className() const override { return QStringLiteral("QtXmQdSjWidget"); }
    QString listName() const override { return QStringLiteral("其他项目清单"); }
    QString ribbonFile() const override { return QStringLiteral("XiangMu-QiTaXiangMuQingDanJiJiJiaBiao.json"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return 4; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("其他项目清单移动行"); }

private:
    QtXmQdHzTable* pageTable() const;
};
