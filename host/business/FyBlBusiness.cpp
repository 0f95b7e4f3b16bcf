#include "FyBlBusiness.h"

#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "SharedInterface.h"

#include <QFile>

namespace {

double totalOf(GeneralTableBase* table, int totalKind, int amountField)
{
    for (BaseDataItem* item : table->items())
        if (item->getKind() == totalKind)
            return item->getDouble(amountField);
    return 0;
}

double sumOf(GeneralTableBase* table, int amountField, int kind)
{
    double sum = 0;
    for (BaseDataItem* item : table->items())
        if (item->getKind() == kind)
            sum += item->getDouble(amountField);
    return sum;
}

double otherItemByName(QtXmQdHzTable* table, const QString& name)
{
    for (BaseDataItem* item : table->items())
        if (item->getValue(2).toString() == name)
            return item->getKind() == 3 ? item->getDouble(6) : item->getDouble(3);
    return 0;
}

} // namespace

FyBlBusiness* FyBlBusiness::GetInstance()
{
    static FyBlBusiness instance;
    return &instance;
}

void FyBlBusiness::RecalculateFyBl(ConstructionWorks* works)
{
    if (!works)
        return;
    TenderInventory* inv = works->getTenderInventory();
    setValue(works, QStringLiteral("其他项目合计"), totalOf(inv->getQtXmQdHzTable(), 4, 3));
    setValue(works, QStringLiteral("暂列金额"),
             otherItemByName(inv->getQtXmQdHzTable(), QStringLiteral("暂列金额")));
    setValue(works, QStringLiteral("计日工"),
             otherItemByName(inv->getQtXmQdHzTable(), QStringLiteral("计日工")));
    setValue(works, QStringLiteral("总承包服务费"),
             otherItemByName(inv->getQtXmQdHzTable(), QStringLiteral("总承包服务费")));
    setValue(works, QStringLiteral("规费合计"), sumOf(inv->getGfSjQdTable(), 5, 0));
    setValue(works, QStringLiteral("税金"), sumOf(inv->getGfSjQdTable(), 5, 2));
    setValue(works, QStringLiteral("招标人材料购置费合计"),
             totalOf(inv->getZbrClGzfQdTable(), 2, 10));
}

double FyBlBusiness::GetFyBlValueById(ConstructionWorks* works, int id) const
{
    if (!works)
        return 0;
    for (BaseDataItem* item : works->getFyBlTable()->items())
        if (item->getValue(1).toInt() == id)
            return item->getDouble(3);
    return 0;
}

double FyBlBusiness::GetFyBlValueByName(ConstructionWorks* works, const QString& name) const
{
    return variables(works).value(name, 0.0);
}

QHash<QString, double> FyBlBusiness::variables(ConstructionWorks* works) const
{
    QHash<QString, double> vars;
    if (works)
        for (BaseDataItem* item : works->getFyBlTable()->items())
            vars.insert(item->getValue(2).toString(), item->getDouble(3));
    return vars;
}

void FyBlBusiness::setValue(ConstructionWorks* works, const QString& name, double value)
{
    FyBlTable* table = works->getFyBlTable();
    int maxId = 0;
    for (BaseDataItem* item : table->items()) {
        if (item->getValue(2).toString() == name) {
            item->setValue(3, value);
            return;
        }
        maxId = qMax(maxId, item->getValue(1).toInt());
    }
    BaseDataItem* item = table->CreateItem();
    item->loadValue(1, qMax(maxId, 1000) + 1); // low numbers are the host's fixed variables
    item->loadValue(2, name);
    item->loadValue(3, value);
    table->BaseDataItemAppend(item);
}

double FyBlBusiness::GetSJFyBlValue(const ProTreeNode* node, int id) const
{
    return GetFyBlValueById(DataManagement::getInstance()->GetContructWorks(node), id);
}

bool FyBlBusiness::ChangeFyBl(int projectIndex, int auditVersion, int nodeId, int id, double value)
{
    ConstructionWorks* works =
        DataManagement::getInstance()->GetProObjectForDisplay(projectIndex, auditVersion, nodeId);
    if (!works)
        return false;
    FyBlTable* table = works->getFyBlTable();
    for (BaseDataItem* item : table->items())
        if (item->getValue(1).toInt() == id) {
            item->setValue(3, value);
            return true;
        }
    static const QHash<int, QString> names = {
        {QuotaFeeRateId, QStringLiteral("工程定额测定费费率")},
        {TaxRateId, QStringLiteral("税金费率")}};
    BaseDataItem* item = table->CreateItem();
    item->loadValue(1, id);
    item->loadValue(2, names.value(id, QStringLiteral("费用变量%1").arg(id)));
    item->loadValue(3, value);
    table->BaseDataItemAppend(item);
    return true;
}

QStringList FyBlBusiness::FeeVariableNames()
{
    QFile file(SharedInterface::GetAppPath() + QStringLiteral("Config/FeeVariableNames.txt"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QStringList names;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (!line.trimmed().isEmpty())
            names << QString::fromUtf8(line.trimmed());
    return names;
}
