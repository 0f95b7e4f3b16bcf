#include "TableOps.h"

#include "BusinessFaultInjection.h"
#include "GeneralTableBase.h"
#include "NumberInput.h"
#include "UnitProjectCalc.h"

#include <cmath>

namespace TableOps {

BaseDataItem* findKind(const GeneralTableBase* table, int kind)
{
    if (!table)
        return nullptr;
    for (BaseDataItem* item : table->items())
        if (item->getKind() == kind)
            return item;
    return nullptr;
}

bool isBlank(const BaseDataItem* item)
{
    if (!item)
        return true;
    const RowFields& values = item->rawValues();
    for (int f = 0; f < values.size(); ++f)
        if (values.type(f) != RowFields::Invalid && !values.value(f).toString().trimmed().isEmpty())
            return false;
    return true;
}

QVariant normalise(const QVariant& value)
{
    if (value.userType() != QMetaType::QString)
        return value;
    bool ok = false;
    const double d = value.toString().trimmed().toDouble(&ok);
    return ok ? QVariant(d) : value;
}

BaseDataItem* insertNew(GeneralTableBase* table, int row, int kind)
{
    if (!table)
        return nullptr;
    BaseDataItem* item = table->CreateItem();
    item->loadState(kind, false, 0, QString());
    table->BaseDataItemInsert(qBound(0, row, table->count()), item);
    BusinessFaultInjection::check(); // a test's failure strikes once the row is in
    return item;
}

bool canMove(const GeneralTableBase* table, int from, int to, int fixedKind)
{
    if (!table || from == to || from < 0 || to < 0 || from >= table->count() ||
        to >= table->count())
        return false;
    return table->at(from)->getKind() != fixedKind && table->at(to)->getKind() != fixedKind;
}

void renumber(GeneralTableBase* table, int kind)
{
    int n = 0;
    for (BaseDataItem* item : table->items())
        if (item->getKind() == kind)
            item->setValue(1, ++n);
}

void replaceRows(GeneralTableBase* target, const GeneralTableBase* source)
{
    if (!target || !source)
        return;
    target->Clear();
    for (const BaseDataItem* from : source->items()) {
        BaseDataItem* item = target->CreateItem();
        item->loadState(from->getKind(), from->IsBlock(), from->getRowHeight(), from->getNote());
        for (int f = 0; f < from->fieldCount(); ++f)
            item->loadValue(f, from->getValue(f));
        target->BaseDataItemAppend(item);
    }
}

} // namespace TableOps

namespace TableOps {

namespace {

constexpr int MaterialTotal = 2;
// Amounts are added up in whole fen, which is exact; beyond 10^13 yuan a double no longer
// holds every fen, and a list with such an amount is added up as doubles instead.
constexpr double FenLimit = 1e15;

bool toFen(double yuan, qint64& fen)
{
    const double f = std::round(yuan * 100.0);
    if (!std::isfinite(f) || std::fabs(f) >= FenLimit)
        return false;
    fen = qint64(f);
    return true;
}

// The amount a material row adds to its list: quantity x price, rounded to fen.
double rowAmount(const BaseDataItem* item)
{
    return std::round(item->getDouble(9) * item->getDouble(7) * 100.0) / 100.0;
}

// A row's amount field follows its quantity and price once either holds a value.
void storeRowAmount(BaseDataItem* item, double amount)
{
    if (item->getValue(9).isValid() || item->getValue(7).isValid())
        item->setValue(10, amount);
}

// The edited row's amount and the total by the difference, as the full calculation would
// give them. False, with nothing changed, when it cannot be sure of that: an amount out of
// exact range, or a total that is not a whole number of fen (not calculated since a change).
bool updateRowAndTotal(GeneralTableBase* table, BaseDataItem* item, qint64 before)
{
    qint64 after = 0;
    if (!toFen(item->getDouble(9) * item->getDouble(7), after))
        return false;
    BaseDataItem* totalRow = materialTotalRow(table);
    if (totalRow) {
        const QVariant stored = totalRow->getValue(10);
        qint64 total = 0;
        if (stored.userType() != QMetaType::Double || !toFen(stored.toDouble(), total) ||
            std::fabs(stored.toDouble() * 100.0 - double(total)) > 1e-3)
            return false;
        total += after - before;
        if (std::fabs(double(total)) >= FenLimit)
            return false;
        storeRowAmount(item, double(after) / 100.0);
        totalRow->setValue(10, double(total) / 100.0);
        return true;
    }
    storeRowAmount(item, double(after) / 100.0);
    return true;
}

} // namespace

BaseDataItem* materialTotalRow(const GeneralTableBase* table)
{
    if (!table)
        return nullptr;
    const QList<BaseDataItem*>& rows = table->items();
    for (int row = rows.size() - 1; row >= 0; --row)
        if (rows.at(row)->getKind() == MaterialTotal)
            return rows.at(row);
    return nullptr;
}

void calculateMaterialList(GeneralTableBase* table)
{
    if (!table)
        return;
    qint64 fen = 0;
    bool exact = true;
    double total = 0; // when an amount is beyond exact range
    BaseDataItem* totalRow = nullptr;
    for (BaseDataItem* item : table->items()) {
        if (item->getKind() == MaterialTotal) {
            totalRow = item;
            continue;
        }
        const double amount = rowAmount(item);
        storeRowAmount(item, amount);
        total += amount;
        qint64 rowFen = 0;
        // Each amount is under 10^15 fen: a running sum kept under 4 x 10^18 cannot overflow.
        exact = exact && toFen(amount, rowFen) && std::fabs(double(fen += rowFen)) < 4e18;
    }
    exact = exact && std::fabs(double(fen)) < FenLimit;
    if (totalRow)
        totalRow->setValue(10, exact ? double(fen) / 100.0 : std::round(total * 100.0) / 100.0);
}

bool materialValueChanged(GeneralTableBase* table, int row, int field, const QVariant& value)
{
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item || item->getKind() == MaterialTotal)
        return false;
    const bool numeric = field == 6 || field == 7 || field == 9 || field == 10;
    QVariant stored = normalise(value);
    if (numeric && !numericValue(value, stored))
        return false;
    // A quantity or a price moves this row's amount and the total by the difference, and
    // the rest of the unit project reads the list only through its total: that is all
    // recalculated. Anything else, or an amount out of exact range, takes the whole unit
    // project again.
    qint64 before = 0;
    const bool byDifference =
        (field == 7 || field == 9) && toFen(item->getDouble(9) * item->getDouble(7), before);
    item->setValue(field, stored);
    if (byDifference && updateRowAndTotal(table, item, before))
        UnitProjectCalc::RecalculateOwner(table, nullptr, UnitProjectCalc::ListsCalculated);
    else
        UnitProjectCalc::RecalculateOwner(table);
    return true;
}

void calculateDaywork(GeneralTableBase* table)
{
    BaseDataItem* summary = nullptr;
    double sum = 0;
    auto closeSummary = [&] {
        if (summary)
            summary->setValue(7, std::round(sum * 100.0) / 100.0);
    };
    for (BaseDataItem* item : table->items()) {
        if (item->getKind() == 1) {
            closeSummary();
            summary = item;
            sum = 0;
            continue;
        }
        if (item->getValue(4).userType() == QMetaType::Double)
            item->setValue(4, std::round(item->getDouble(4) * 100.0) / 100.0);
        if (item->getValue(6).isValid() || item->getValue(4).isValid()) {
            const double amount =
                std::round(item->getDouble(6) * item->getDouble(4) * 100.0) / 100.0;
            item->setValue(7, amount);
            sum += amount;
        }
    }
    closeSummary();
}

bool numericValue(const QVariant& value, QVariant& stored)
{
    if (value.userType() != QMetaType::QString) {
        stored = value.isValid() ? QVariant(value.toDouble()) : QVariant();
        return true;
    }
    const QString text = value.toString();
    if (text.trimmed().isEmpty()) {
        stored = QVariant();
        return true;
    }
    double number = 0;
    QString error;
    if (!NumberInput::ToNumber(text, number, error))
        return false;
    stored = number;
    return true;
}

} // namespace TableOps

namespace TableOps {

bool mayDelete(const GeneralTableBase* table, const BaseDataItem* item,
               const std::function<bool(const BaseDataItem*)>& fixed,
               const std::function<bool(BaseDataItem*)>& empty)
{
    if (!table || !item || fixed(item))
        return false;
    int inputRows = 0;
    for (const BaseDataItem* row : table->items())
        inputRows += fixed(row) ? 0 : 1;
    return inputRows > 1 || !empty(const_cast<BaseDataItem*>(item));
}

void clearKeepingCount(GeneralTableBase* table, int emptyKind)
{
    if (!table)
        return;
    const int n = table->count();
    table->Clear();
    for (int i = 0; i < n - 1; ++i)
        insertNew(table, table->count(), emptyKind);
}

} // namespace TableOps
