#pragma once

#include "common/BillSjWidget.h"

class LxGzXmRgDjQdTable;

// The editable grid of "零星工作项目人工单价清单".
class LxGzXmQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    LxGzXmQdSjWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("LxGzXmQd\\LxGzXmQdSjWidget"); }
    QString className() const override { return QStringLiteral("LxGzXmQdSjWidget"); }
    QString listName() const override { return QStringLiteral("零星工作项目人工单价清单"); }
    QString ribbonFile() const override { return QStringLiteral("XiangMu-LingXingGongZuoXiangMuQingDanJiJiJiaBiao.json"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return -1; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("零星人工项目清单移动行"); }

private:
    LxGzXmRgDjQdTable* pageTable() const;
};
