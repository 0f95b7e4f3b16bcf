#include "DbZbZgSyClModel.h"

const QVector<DbZbZgClModel::Column>& DbZbZgSyClModel::columns() const
{
    static const QVector<Column> list = {
        {"序号", Seq, Qt::AlignLeft},
        {"招标编码", ZbCode, Qt::AlignLeft},
        {"招标文件|材料名称", ZbName, Qt::AlignLeft},
        {"招标文件|规格型号", ZbModel, Qt::AlignLeft},
        {"招标文件|单位", ZbUnit, Qt::AlignHCenter},
        {"招标文件|暂估单价", ZbPrice, Qt::AlignRight},
        {"投标工程|材料名称", TbName, Qt::AlignLeft},
        {"投标工程|规格型号", TbModel, Qt::AlignLeft},
        {"投标工程|单位", TbUnit, Qt::AlignHCenter},
        {"投标工程|调价", TbPrice, Qt::AlignRight},
    };
    return list;
}
