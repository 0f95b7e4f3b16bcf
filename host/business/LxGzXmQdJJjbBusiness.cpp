#include "LxGzXmQdJJjbBusiness.h"

#include "BusinessFaultInjection.h"
#include "FyBlBusiness.h"
#include "TableOps.h"
#include "UnitProjectCalc.h"
#include "VXParseAlg.h"

#include "LxGzXmRgDjQdTable.h"

bool LxGzXmQdJJjbBusiness::ProcColunmValueChanged(ConstructionWorks* works,
                                                  LxGzXmRgDjQdTable* table, int row, int column,
                                                  const QVariant& value)
{
    BusinessFaultInjection::check();
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item)
        return false;
    QVariant stored = TableOps::normalise(value);
    if ((column == 4 || column == 6) && !TableOps::numericValue(value, stored))
        return false;
    item->setValue(column, stored);
    CalculateLxGzXmQdTable(works, table);
    return true;
}

void LxGzXmQdJJjbBusiness::CalculateLxGzXmQdTable(ConstructionWorks* works,
                                                  LxGzXmRgDjQdTable* table)
{
    // The daywork total feeds fee variables: the whole unit project follows.
    UnitProjectCalc::RecalculateOwner(table, works);
}

bool LxGzXmQdJJjbBusiness::CheckExistedTotalRow(const QList<BaseDataItem*>& items,
                                                BaseDataItem*& total)
{
    total = nullptr;
    for (BaseDataItem* item : items)
        if (item->getKind() == 1) {
            total = item;
            return true;
        }
    return false;
}

bool LxGzXmQdJJjbBusiness::isEmptyRow(BaseDataItem* item)
{
    return TableOps::isBlank(item);
}

bool LxGzXmQdJJjbBusiness::RemoveItem(ConstructionWorks* works, LxGzXmRgDjQdTable* table, int row)
{
    if (!table || !table->at(row))
        return false;
    table->BaseDataItemRemoveAt(row);
    CalculateLxGzXmQdTable(works, table);
    return true;
}

bool LxGzXmQdJJjbBusiness::GridRowCanMove(LxGzXmRgDjQdTable* table, int from, int to)
{
    return TableOps::canMove(table, from, to, -1);
}

bool LxGzXmQdJJjbBusiness::GridRowMove(LxGzXmRgDjQdTable* table, int from, int to)
{
    if (!GridRowCanMove(table, from, to) || !table->BaseDataItemMove(from, to))
        return false;
    // A summary row sums the labour rows below it: a move can change its amount.
    UnitProjectCalc::RecalculateOwner(table);
    return true;
}

bool LxGzXmQdJJjbBusiness::CalculateFormula(ConstructionWorks* works, const QString& text,
                                            double& result, QString& error)
{
    error.clear();
    if (text.trimmed().isEmpty())
        return false;
    return VXParseAlg::getInstance()->ExpCalc(text, FyBlBusiness::GetInstance()->variables(works),
                                              result, error);
}

void LxGzXmQdJJjbBusiness::AdjustLxGzXmQdRowType(const QList<BaseDataItem*>& items)
{
    for (BaseDataItem* item : items)
        if (item->getKind() != 0 && item->getKind() != 1)
            item->setKind(0);
}

void LxGzXmQdJJjbBusiness::ReplaceTableContentFromOther(LxGzXmRgDjQdTable* target,
                                                        const LxGzXmRgDjQdTable* source)
{
    TableOps::replaceRows(target, source);
}

BaseDataItem* LxGzXmQdJJjbBusiness::InsertItem(LxGzXmRgDjQdTable* table, int row)
{
    return TableOps::insertNew(table, row < 0 ? (table ? table->count() : 0) : row, 0);
}
