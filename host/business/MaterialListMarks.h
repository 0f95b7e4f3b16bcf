#pragma once

#include "TableOps.h"

#include "GeneralTableBase.h"

#include <QString>

// The marks and numbers a summarised materials list keeps the same way whatever its table:
// a disagreement bitmask per row, the question mark, the block of rows priced differently,
// serial numbers and tender codes. Row kind 1 is a material row.
namespace MaterialListMarks {

inline bool isMaterialRow(const BaseDataItem* item)
{
    return item->getKind() == 1 && !TableOps::isBlank(item);
}

// Material rows whose disagreement field carries the bit.
inline int countWithBit(const GeneralTableBase* table, int field, int bit)
{
    int count = 0;
    if (table)
        for (const BaseDataItem* item : table->items())
            count += item->getKind() == 1 && (item->getValue(field).toInt() & bit) ? 1 : 0;
    return count;
}

// The block becomes exactly the material rows whose disagreement field carries the bit.
inline void blockWithBit(GeneralTableBase* table, int field, int bit)
{
    if (table)
        for (BaseDataItem* item : table->items()) {
            const bool inBlock = item->getKind() == 1 && (item->getValue(field).toInt() & bit);
            if (item->IsBlock() != inBlock)
                item->SetBlock(inBlock);
        }
}

inline int countMarked(const GeneralTableBase* table, int field)
{
    int count = 0;
    if (table)
        for (const BaseDataItem* item : table->items())
            count += item->getValue(field).toBool() ? 1 : 0;
    return count;
}

inline void clearMarks(GeneralTableBase* table, int field)
{
    if (table)
        for (BaseDataItem* item : table->items())
            if (item->getValue(field).toBool())
                item->setValue(field, false);
}

// Serial numbers 1, 2, 3 ... on the non-empty material rows; a row already right is left
// alone, so the undo record holds what changed.
inline void numberMaterialRows(GeneralTableBase* table)
{
    int serial = 0;
    if (table)
        for (BaseDataItem* item : table->items())
            if (isMaterialRow(item) && item->getValue(1) != QVariant(++serial))
                item->setValue(1, serial);
}

// Tender codes prefix + running number from start, zero-padded to digits (0 to 32), on the
// non-empty material rows; each code is also handed to done.
template <typename Done>
void codeMaterialRows(GeneralTableBase* table, const QString& prefix, int start, int digits,
                      Done done)
{
    if (!table)
        return;
    digits = qBound(0, digits, 32);
    qint64 number = start;
    for (BaseDataItem* item : table->items()) {
        if (!isMaterialRow(item))
            continue;
        const QString code =
            prefix + QStringLiteral("%1").arg(number++, digits, 10, QLatin1Char('0'));
        if (item->getValue(2) != QVariant(code))
            item->setValue(2, code);
        done(item, code);
    }
}

} // namespace MaterialListMarks
