#include "MaterialGridRules.h"

#include "GeneralTableBase.h"

#include <QCollator>
#include <QCollatorSortKey>
#include <QLocale>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <optional>

namespace MaterialGridRules {

namespace {

constexpr int Material = 1;
constexpr int Total = 2;

// Real keys: blank or zero sorts after everything in descending order.
double realKey(const BaseDataItem* item, int field)
{
    // A stored number is its own key; only a typed text is read as a number.
    const QVariant stored = item->getValue(field);
    bool ok = false;
    double value = 0;
    switch (stored.userType()) {
    case QMetaType::Double:
    case QMetaType::Int:
    case QMetaType::LongLong:
        value = stored.toDouble();
        ok = std::isfinite(value);
        break;
    default:
        value = item->getValueStr(field).toDouble(&ok);
        break;
    }
    return !ok || std::fabs(value) < 1e-6 ? -1e11 : value;
}

bool isTextKey(SortKey key)
{
    return key == ByName || key == ByTenderCode;
}

} // namespace

QList<int> blockRows(const GeneralTableBase* table)
{
    QList<int> rows;
    if (table)
        for (int row = 0; row < table->count(); ++row)
            if (table->at(row)->IsBlock())
                rows << row;
    return rows;
}

void defineBlockHead(GeneralTableBase* table, int row)
{
    if (!table || row < 0 || row >= table->count())
        return;
    const QList<int> block = blockRows(table);
    const int end = block.isEmpty() ? row : qMax(row, block.first());
    for (int r = 0; r < table->count(); ++r) {
        if (r < row)
            table->at(r)->SetBlock(false);
        else if (r <= end)
            table->at(r)->SetBlock(true);
    }
}

void defineBlockTail(GeneralTableBase* table, int row)
{
    if (!table || row < 0 || row >= table->count())
        return;
    const QList<int> block = blockRows(table);
    const int start = block.isEmpty() ? row : qMin(row, block.last());
    for (int r = 0; r < table->count(); ++r) {
        if (r > row)
            table->at(r)->SetBlock(false);
        else if (r >= start)
            table->at(r)->SetBlock(true);
    }
}

void invertBlock(GeneralTableBase* table, const std::function<bool(BaseDataItem*)>& isEmpty)
{
    if (table)
        for (BaseDataItem* item : table->items())
            item->SetBlock(!item->IsBlock() && !(isEmpty && isEmpty(item)));
}

void setBlockAll(GeneralTableBase* table, bool inBlock)
{
    if (table)
        for (BaseDataItem* item : table->items())
            item->SetBlock(inBlock);
}

QString sortLabel(SortKey key)
{
    switch (key) {
    case ByAmount:
        return QStringLiteral("排序.金额");
    case ByQuantity:
        return QStringLiteral("排序.数量");
    case ByPrice:
        return QStringLiteral("排序.单价");
    case ByName:
        return QStringLiteral("排序.材料名称");
    case BySerial:
        return QStringLiteral("排序.序号");
    case ByTenderCode:
        return QStringLiteral("排序.招标编码");
    }
    return QString();
}

int sortField(SortKey key, int tenderCodeField)
{
    switch (key) {
    case ByAmount:
        return Amount;
    case ByQuantity:
        return Quantity;
    case ByPrice:
        return Price;
    case ByName:
        return Name;
    case BySerial:
        return Serial;
    case ByTenderCode:
        return tenderCodeField;
    }
    return -1;
}

QList<BaseDataItem*> sortedOrder(const QList<BaseDataItem*>& rows, SortKey key, int tenderCodeField)
{
    const int field = sortField(key, tenderCodeField);
    if (field < 0)
        return rows;
    struct Row
    {
        BaseDataItem* item;
        double number;
        std::optional<QCollatorSortKey> text;
    };
    static const QCollator collator{QLocale(QLocale::Chinese, QLocale::China)};
    QVector<Row> sorted;
    sorted.reserve(rows.size());
    QList<BaseDataItem*> rest;
    for (BaseDataItem* item : rows) {
        // Real keys take every material row (blank sorts last); the others only rows that
        // carry the key.
        const bool takesPart =
            item->getKind() == Material &&
            (!(isTextKey(key) || key == BySerial) ||
             (item->getValue(field).isValid() && !item->getValueStr(field).isEmpty()));
        if (!takesPart) {
            rest << item;
            continue;
        }
        Row row{item, 0, std::nullopt};
        if (isTextKey(key))
            row.text = collator.sortKey(item->getValue(field).toString());
        else
            row.number = key == BySerial ? item->getValue(field).toDouble() : realKey(item, field);
        sorted.append(std::move(row));
    }
    // std::sort is an introsort: unstable, as the host's sorts are.
    std::sort(sorted.begin(), sorted.end(), [key](const Row& a, const Row& b) {
        if (isTextKey(key))
            return a.text->compare(*b.text) < 0;
        return key == BySerial ? a.number < b.number : a.number > b.number;
    });
    QList<BaseDataItem*> order;
    order.reserve(rows.size());
    for (const Row& row : sorted)
        order << row.item;
    return order + rest;
}

void removeRows(GeneralTableBase* table, const QList<int>& rows)
{
    if (!table)
        return;
    QList<int> gone;
    gone.reserve(rows.size());
    for (int row : rows)
        if (const BaseDataItem* item = table->at(row); item && item->getKind() != Total)
            gone << row;
    table->BaseDataItemRemoveRows(gone);
}

void keepFirstRows(GeneralTableBase* table, int n)
{
    if (!table || n < 0)
        return;
    QList<int> removed;
    int kept = 0;
    for (int row = 0; row < table->count(); ++row) {
        if (table->at(row)->getKind() == Total)
            continue;
        if (kept < n)
            ++kept;
        else
            removed << row;
    }
    // One pass; journalled last first, so that undo puts the rows back first to last.
    table->BaseDataItemRemoveRows(removed);
}

QList<BaseDataItem*> rowsToClear(const GeneralTableBase* table, bool blockOnly)
{
    QList<BaseDataItem*> rows;
    if (table)
        for (BaseDataItem* item : table->items())
            if (item->getKind() == Material && (!blockOnly || item->IsBlock()))
                rows << item;
    return rows;
}

void clearAllRows(GeneralTableBase* table)
{
    if (!table)
        return;
    const int n = table->count();
    for (int row = n - 1; row >= 0; --row)
        table->BaseDataItemRemoveAt(row);
    for (int i = 0; i < n - 1; ++i) {
        BaseDataItem* item = table->CreateItem();
        item->loadState(Material, false, 0, QString());
        table->BaseDataItemAppend(item);
    }
}

} // namespace MaterialGridRules
