#include "GfQdBusiness.h"

#include "BusinessFaultInjection.h"
#include "FyBlBusiness.h"
#include "TableOps.h"
#include "VXParseAlg.h"

#include "ConstructionWorks.h"

#include <cmath>

static double round2(double v)
{
    return std::round(v * 100.0) / 100.0;
}

bool GfQdBusiness::ProcColunmValueChanged(ConstructionWorks* works, GfSjQdTable* table, int row,
                                          int field, const QVariant& value)
{
    BusinessFaultInjection::check();
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item)
        return false;
    QVariant stored = field == 3 ? QVariant(value.toString()) : TableOps::normalise(value);
    if (field == 4 && stored.userType() == QMetaType::QString) {
        // "3.41%" is a rate of 3.41.
        QString text = stored.toString().trimmed();
        if (text.endsWith(QLatin1Char('%')))
            text.chop(1);
        bool ok = false;
        const double rate = text.toDouble(&ok);
        stored = ok ? QVariant(rate) : QVariant();
    }
    item->setValue(field, stored);
    CalculateGfQdTable(works, table);
    return true;
}

BaseDataItem* GfQdBusiness::InsertItem(ConstructionWorks* works, GfSjQdTable* table, int index)
{
    Q_UNUSED(works)
    return TableOps::insertNew(table, index, Fee);
}

BaseDataItem* GfQdBusiness::AppendItem(ConstructionWorks* works, GfSjQdTable* table)
{
    return InsertItem(works, table, table ? table->count() : 0);
}

bool GfQdBusiness::RemoveItem(ConstructionWorks* works, GfSjQdTable* table, BaseDataItem* item)
{
    const int row = table ? table->GetItemIndexInOrder(item) : -1;
    if (row < 0)
        return false;
    table->BaseDataItemRemoveAt(row);
    CalculateGfQdTable(works, table);
    return true;
}

bool GfQdBusiness::IsEmptyItem(BaseDataItem* item)
{
    return TableOps::isBlank(item);
}

bool GfQdBusiness::GridRowCanMove(GfSjQdTable* table, int from, int to)
{
    return TableOps::canMove(table, from, to, -1);
}

bool GfQdBusiness::GridRowMove(GfSjQdTable* table, int from, int to)
{
    return GridRowCanMove(table, from, to) && table->BaseDataItemMove(from, to);
}

void GfQdBusiness::CalculateGfQdTable(ConstructionWorks* works, GfSjQdTable* table)
{
    if (!table)
        return;
    FyBlBusiness* fyBl = FyBlBusiness::GetInstance();
    auto calculate = [&](int kind) {
        const QHash<QString, double> vars = fyBl->variables(works);
        double sum = 0;
        for (BaseDataItem* item : table->items()) {
            if (item->getKind() != kind)
                continue;
            double base = 0;
            QString error;
            const QString expr = item->getValue(3).toString();
            if (!expr.trimmed().isEmpty() &&
                !VXParseAlg::getInstance()->ExpCalc(expr, vars, base, error, true))
                base = 0;
            item->setValue(6, round2(base));
            const double amount = round2(base * item->getDouble(4) / 100.0);
            item->setValue(5, amount);
            sum += amount;
        }
        return sum;
    };
    const double fees = calculate(Fee);
    if (works && table->getOwner())
        fyBl->setValue(works, QStringLiteral("规费合计"), round2(fees));
    const double taxes = calculate(Tax);
    if (works && table->getOwner())
        fyBl->setValue(works, QStringLiteral("税金"), round2(taxes));
}

void GfQdBusiness::ReplaceTableContentFromOther(GfSjQdTable* target, const GfSjQdTable* source)
{
    TableOps::replaceRows(target, source);
}
