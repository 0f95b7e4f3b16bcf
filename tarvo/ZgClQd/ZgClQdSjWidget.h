#pragma once

#include "common/BillSjWidget.h"

class ZgjClHzTable;

// The editable grid of "暂估材料(工程设备)清单".
class ZgClQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    ZgClQdSjWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("ZgClQd\\ZgClQdSjWidget"); }
    QString className() const override { return QStringLiteral("ZgClQdSjWidget"); }
    QString listName() const override { return QStringLiteral("暂估材料(工程设备)清单"); }
    QString ribbonFile() const override
    {
        return QStringLiteral("XiangMu-ZanGuCaiLiaoQingDan.json");
    }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return 2; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("暂估材料清单移动行"); }

private:
    ZgjClHzTable* pageTable() const;
};
