#pragma once

#include "common/BillSjWidget.h"

class GfSjQdTable;

// The editable grid of "规费税金清单".
class GfQdSjWidget : public BillSjWidget
{
    Q_OBJECT
public:
    GfQdSjWidget(AuditBusiness* audit, QWidget* parent);

protected:
    QString sourceFile() const override { return QStringLiteral("GfQd\\GfQdSjWidget"); }
    QString className() const override { return QStringLiteral("GfQdSjWidget"); }
    QString listName() const override { return QStringLiteral("规费清单"); }
    QString ribbonFile() const override { return QStringLiteral("XiangMu-GuiFeiQingDan.json"); }
    GeneralTableBase* pageTable(ConstructionWorks* works) const override;
    int totalKind() const override { return -1; }
    bool canMoveRows(int from, int to) const override;
    bool moveRows(int from, int to) override;
    QString moveLabel() const override { return QStringLiteral("规费税金清单移动行"); }

private:
    GfSjQdTable* pageTable() const;
};
