#pragma once

#include <QString>
#include <QVariant>

class BaseDataItem;
class ConstructionWorks;
class QtXmQdHzTable;

// Calculation of the other items list (其他项目清单). Row kinds: 0 ordinary, 1 new empty,
// 2 subtotal, 3 calculation, 4 total. An ordinary row's amount is its field 3; a calculation
// row evaluates the formula in field 3 over the unit project's fee variables into field 6;
// a subtotal row sums its child rows (serials "<its serial>.n"); the total row sums the
// top-level rows.
class QtXmQdJJjbBusiness
{
public:
    enum Kind { Ordinary = 0, NewEmpty = 1, SubTotal = 2, Calculation = 3, Total = 4 };

    static bool ProcColunmValueChanged(ConstructionWorks* works, QtXmQdHzTable* table, int row,
                                       int field, const QVariant& value);
    static bool InsertCustomItem(ConstructionWorks* works, QtXmQdHzTable* table, int row);
    static bool RemoveItem(ConstructionWorks* works, QtXmQdHzTable* table, int row);
    static bool isEmptyRow(BaseDataItem* item);
    static bool CheckExistedTotalRow(QtXmQdHzTable* table, BaseDataItem** total = nullptr);
    static void AddTotalItem(QtXmQdHzTable* table);
    static bool GridRowCanMove(QtXmQdHzTable* table, int from, int to);
    static bool GridRowMove(ConstructionWorks* works, QtXmQdHzTable* table, int from, int to);
    // Recalculates the unit project that owns the table (UnitProjectCalc); a table of no unit
    // project is calculated on its own.
    static void CalculateTable(ConstructionWorks* works, QtXmQdHzTable* table);
    // The cycle message when formula, stored in row's amount, would close a cycle through
    // fee variables; empty when it would not.
    static QString CheckFormulaCycle(ConstructionWorks* works, int row, const QString& formula);
    // Sets (or cancels, back to an ordinary row) the calculation / subtotal attribute of a row
    // of the works' other items list.
    static bool SetAsCalculateRow(ConstructionWorks* works, int row, bool set);
    static bool SetAsSubTotalRow(ConstructionWorks* works, int row, bool set);
    // Fixes the row kinds of rows read from a template: unknown kinds become ordinary rows,
    // and the total row (added when missing) goes last.
    static void AdjustQtXmQdRowType(QtXmQdHzTable* table);
    static void ReplaceTableContentFromOther(QtXmQdHzTable* target, const QtXmQdHzTable* source);
    // Puts the daywork list's total into the row named "计日工"; true when it changed.
    static bool ExtractSporadicWorkItemFees(ConstructionWorks* works);
    static void CalQtXmQdCalculateRow(ConstructionWorks* works, QtXmQdHzTable* table)
    {
        CalculateTable(works, table);
    }

    // The amount a row contributes: field 6 on calculation rows, field 3 elsewhere.
    static double rowAmount(const BaseDataItem* item);
};
