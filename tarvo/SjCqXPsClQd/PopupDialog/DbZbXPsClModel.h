#pragma once

#include "ZgClQd/PopupDialog/DbZbZgClModel.h"

class DbZbXpsClItem;

// The grid of "对比招标控制价需评审材料清单": each tender material of the evaluated list with
// the bid material it corresponds to, and the bid's marked materials no tender material took.
// No prices: evaluation is about which material, not its price.
class DbZbXPsClModel : public DbZbZgClModel
{
    Q_OBJECT
public:
    using DbZbZgClModel::DbZbZgClModel;

    void setXpsRecords(const QList<DbZbXpsClItem*>* records);

protected:
    const QVector<Column>& columns() const override;
    int recordCount() const override;
    DbZbZgClItem* recordAt(int i) const override;

private:
    const QList<DbZbXpsClItem*>* m_xpsRecords = nullptr;
};
