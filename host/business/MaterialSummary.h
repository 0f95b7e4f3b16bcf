#pragma once

#include <QHash>
#include <QList>
#include <QString>

class BaseDataItem;
class ConstructionWorks;
class ProgressSink;

// The materials of all unit projects of a construction project, gathered by material
// identity: equal name (3), model (4) and unit (5) make one material.
class MaterialSummary
{
public:
    // Inconsistency bits kept in field 30 of a summarised row.
    enum Inconsistency { PriceDiffers = 1, ProvisionalDiffers = 2, OriginDiffers = 4 };
    static constexpr int InconsistencyField = 30;

    struct Entry
    {
        QString code, name, model, unit, origin;
        double quantity = 0;
        double price = 0; // the price of the largest share of the quantity
        int flags = 0;
        int order = 0; // first appearance, for a stable list order
    };

    // Gathers the current-version materials of every unit project of the works' project;
    // provisionalOnly keeps the materials flagged provisional (11). Progress goes to 0..90.
    static QList<Entry> Gather(ConstructionWorks* works, bool provisionalOnly,
                               ProgressSink* progress);
    static QString Key(const BaseDataItem* item);
};
