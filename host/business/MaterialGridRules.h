#pragma once

#include <QList>
#include <QString>

#include <functional>

class BaseDataItem;
class GeneralTableBase;

// The rules of the materials grids (tenderer-purchased, provisional, evaluated): the block,
// the sorts, keeping the first rows and clearing quantities or prices. Rows of kind 1 are
// materials, kind 2 is the total row. Nothing here opens an undo record: the caller runs
// these inside its command's record.
namespace MaterialGridRules {

enum Field { Serial = 1, Name = 3, Price = 7, Quantity = 9, Amount = 10, QuestionMark = 22 };
enum SortKey { ByAmount, ByQuantity, ByPrice, ByName, BySerial, ByTenderCode };

// Rows whose block flag is set, in table order.
QList<int> blockRows(const GeneralTableBase* table);
// The focused row becomes the block's first row: rows above it leave; when it lies above the
// block, every row from it down to the block's first row joins.
void defineBlockHead(GeneralTableBase* table, int row);
// The focused row becomes the block's last row, the mirror of defineBlockHead.
void defineBlockTail(GeneralTableBase* table, int row);
// Every row flips its flag; rows the service calls empty stay out of the block.
void invertBlock(GeneralTableBase* table, const std::function<bool(BaseDataItem*)>& isEmpty);
void setBlockAll(GeneralTableBase* table, bool inBlock);

// The undo label of a sort: "排序.金额" ...
QString sortLabel(SortKey key);
// The field a sort reads; the tender code's field is the page's.
int sortField(SortKey key, int tenderCodeField);
// The rows in sorted order: material rows that carry the key first (amount, quantity and
// price descending, blank or zero last; name and tender code in Chinese collation order;
// serial ascending), then all other rows in their old order. The collation keys are
// computed once per row. The sort is unstable, as the host's sorts are.
QList<BaseDataItem*> sortedOrder(const QList<BaseDataItem*>& rows, SortKey key,
                                 int tenderCodeField = -1);

// Removes the given rows (in table order) in one pass, never the total row. Nothing is
// recalculated: the caller recalculates once for all.
void removeRows(GeneralTableBase* table, const QList<int>& rows);
// Keeps the first n material rows and the total row; removes the rest.
void keepFirstRows(GeneralTableBase* table, int n);
// The rows a clear of quantities or prices touches: material rows, the block's only when
// blockOnly.
QList<BaseDataItem*> rowsToClear(const GeneralTableBase* table, bool blockOnly);
// Removes every row, last first, and appends one empty material row fewer than there were:
// the list keeps its length (less the total row) but loses its contents.
void clearAllRows(GeneralTableBase* table);

} // namespace MaterialGridRules
