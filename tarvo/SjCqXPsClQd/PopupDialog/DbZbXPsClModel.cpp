#include "DbZbXPsClModel.h"

#include "DbZbXpsClItem.h"

void DbZbXPsClModel::setXpsRecords(const QList<DbZbXpsClItem*>* records)
{
    m_xpsRecords = records;
    refresh();
}

const QVector<DbZbZgClModel::Column>& DbZbXPsClModel::columns() const
{
    static const QVector<Column> list = {
        {"序号", Seq, Qt::AlignLeft},
        {"招标编码", ZbCode, Qt::AlignLeft},
        {"招标文件|材料名称", ZbName, Qt::AlignLeft},
        {"招标文件|规格型号", ZbModel, Qt::AlignLeft},
        {"招标文件|单位", ZbUnit, Qt::AlignHCenter},
        {"投标工程|材料名称", TbName, Qt::AlignLeft},
        {"投标工程|规格型号", TbModel, Qt::AlignLeft},
        {"投标工程|单位", TbUnit, Qt::AlignHCenter},
    };
    return list;
}

int DbZbXPsClModel::recordCount() const
{
    return m_xpsRecords ? int(m_xpsRecords->size()) : 0;
}

DbZbZgClItem* DbZbXPsClModel::recordAt(int i) const
{
    return m_xpsRecords->at(i);
}
