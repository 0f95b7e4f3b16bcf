#include "MaterialSummary.h"

#include "ProgressSink.h"
#include "ProjectWorks.h"

#include <QSet>

#include <algorithm>
#include <cmath>

QString MaterialSummary::Key(const BaseDataItem* item)
{
    return item->getValue(3).toString().trimmed() + QChar(0x1F) +
           item->getValue(4).toString().trimmed() + QChar(0x1F) +
           item->getValue(5).toString().trimmed();
}

QList<MaterialSummary::Entry> MaterialSummary::Gather(ConstructionWorks* works,
                                                      bool provisionalOnly, ProgressSink* progress)
{
    struct Acc
    {
        Entry entry;
        QHash<double, double> quantityByPrice;
        QSet<bool> provisional;
        QSet<QString> origins;
    };
    QHash<QString, Acc> byKey;
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    const QList<ProTreeNode*> units = project ? project->unitProjectNodes() : QList<ProTreeNode*>();
    int order = 0;
    for (int u = 0; u < units.size(); ++u) {
        ConstructionWorks* unit = project->works(0, ProTreeNode::Id(units.at(u)));
        if (!unit)
            continue;
        for (const BaseDataItem* m : unit->getRcjHzTable()->items()) {
            const bool provisional = m->getValue(11).toBool();
            Acc& acc = byKey[Key(m)];
            if (acc.entry.name.isEmpty()) {
                acc.entry.code = m->getValue(1).toString();
                acc.entry.name = m->getValue(3).toString().trimmed();
                acc.entry.model = m->getValue(4).toString().trimmed();
                acc.entry.unit = m->getValue(5).toString().trimmed();
                acc.entry.origin = m->getValue(12).toString();
                acc.entry.order = order++;
            }
            acc.provisional << provisional;
            acc.origins << m->getValue(12).toString();
            if (provisionalOnly && !provisional)
                continue;
            acc.entry.quantity += m->getDouble(9);
            acc.quantityByPrice[m->getDouble(7)] += m->getDouble(9);
        }
        if (progress)
            progress->setValue(int(90.0 * (u + 1) / units.size()));
    }
    QList<Entry> entries;
    for (Acc& acc : byKey) {
        if (acc.quantityByPrice.isEmpty())
            continue; // not provisional anywhere
        double best = -1;
        for (auto it = acc.quantityByPrice.cbegin(); it != acc.quantityByPrice.cend(); ++it)
            if (it.value() > best || (it.value() == best && it.key() > acc.entry.price)) {
                best = it.value();
                acc.entry.price = it.key();
            }
        acc.entry.quantity = std::round(acc.entry.quantity * 1000.0) / 1000.0;
        acc.entry.flags = (acc.quantityByPrice.size() > 1 ? PriceDiffers : 0) |
                          (acc.provisional.size() > 1 ? ProvisionalDiffers : 0) |
                          (acc.origins.size() > 1 ? OriginDiffers : 0);
        entries << acc.entry;
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.order < b.order; });
    return entries;
}
