#pragma once

#include <QVariant>

#include <functional>

class BaseDataItem;
class GeneralTableBase;

// Row operations that every list's business service shares.
namespace TableOps {

// The row of the given kind, or null.
BaseDataItem* findKind(const GeneralTableBase* table, int kind);
// Whether no field of the row holds a value.
bool isBlank(const BaseDataItem* item);
// Numbers typed as text ("12.5", " 3 ") become doubles; other text stays text.
QVariant normalise(const QVariant& value);
// Inserts a new row of the table's class at row (appended past the end); returns it.
BaseDataItem* insertNew(GeneralTableBase* table, int row, int kind);
// A move is possible between two distinct existing rows, neither of them of the fixed kind.
bool canMove(const GeneralTableBase* table, int from, int to, int fixedKind);
// Renumbers field 1 of rows of the given kind 1, 2, 3 ...
void renumber(GeneralTableBase* table, int kind);
// Replaces the target's rows by copies of the source's rows (journalled on the target when
// it belongs to a unit project).
void replaceRows(GeneralTableBase* target, const GeneralTableBase* source);
// Whether "删除当前行" may take the row: never the total or a summary row (fixed), and never
// the list's last input row while it is empty (there would be nowhere left to type).
bool mayDelete(const GeneralTableBase* table, const BaseDataItem* item,
               const std::function<bool(const BaseDataItem*)>& fixed,
               const std::function<bool(BaseDataItem*)>& empty);
// "清除所有行": the n rows go, n - 1 empty rows of the given kind come (the caller adds the
// fresh total row that makes n again).
void clearKeepingCount(GeneralTableBase* table, int emptyKind);

} // namespace TableOps

namespace TableOps {

// Materials lists (kind 1 material rows, kind 2 total row): amount (10) = quantity (9) x
// price (7), rounded to fen; the total row sums the amounts.
void calculateMaterialList(GeneralTableBase* table);
// The total row of a materials list: the last row of kind 2 (found from the end, where it
// stands), or null.
BaseDataItem* materialTotalRow(const GeneralTableBase* table);
// A field edit of a materials list: numbers stored as numbers, then recalculation of the
// unit project. False (nothing changed) for a number that does not read.
bool materialValueChanged(GeneralTableBase* table, int row, int field, const QVariant& value);
// The daywork list: prices kept to fen; a labour row's amount (7) is its provisional quantity
// (6) times its price (4); a summary row (kind 1) sums the labour rows below it.
void calculateDaywork(GeneralTableBase* table);

// What a numeric cell stores for a typed value: empty text clears it (an invalid variant),
// a number or an arithmetic expression without variables is its value ("1,500", "3%"). False
// when the text does not read as a number; nothing is then stored.
bool numericValue(const QVariant& value, QVariant& stored);

} // namespace TableOps
