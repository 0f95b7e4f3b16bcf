#pragma once

#include <QList>
#include <QString>
#include <QVariant>

class BaseDataItem;
class ConstructionWorks;
class LxGzXmRgDjQdTable;

// The daywork labour unit-price list (零星工作项目人工单价清单). Row kinds: 0 labour row,
// 1 summary row. Column 4 is the labour unit price in 元/工日. Also evaluates the arithmetic
// that users type into numeric cells.
class LxGzXmQdJJjbBusiness
{
public:
    static bool ProcColunmValueChanged(ConstructionWorks* works, LxGzXmRgDjQdTable* table, int row,
                                       int column, const QVariant& value);
    static void CalculateLxGzXmQdTable(ConstructionWorks* works, LxGzXmRgDjQdTable* table);
    static bool CheckExistedTotalRow(const QList<BaseDataItem*>& items, BaseDataItem*& total);
    static bool isEmptyRow(BaseDataItem* item);
    static bool RemoveItem(ConstructionWorks* works, LxGzXmRgDjQdTable* table, int row);
    static bool GridRowCanMove(LxGzXmRgDjQdTable* table, int from, int to);
    static bool GridRowMove(LxGzXmRgDjQdTable* table, int from, int to);
    // Rows read from a template: unknown kinds become labour rows.
    static void AdjustLxGzXmQdRowType(const QList<BaseDataItem*>& items);
    static void ReplaceTableContentFromOther(LxGzXmRgDjQdTable* target,
                                             const LxGzXmRgDjQdTable* source);
    static void AquireLxGzXmQdTemplate(LxGzXmRgDjQdTable* target, const LxGzXmRgDjQdTable* source)
    {
        ReplaceTableContentFromOther(target, source);
    }
    static BaseDataItem* InsertItem(LxGzXmRgDjQdTable* table, int row);

    // Evaluates text as a number or an arithmetic expression over the works' fee variables.
    // Empty text gives false with an empty error.
    static bool CalculateFormula(ConstructionWorks* works, const QString& text, double& result,
                                 QString& error);
};
