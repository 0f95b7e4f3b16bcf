#include "MaterialSummary.h"

#include "BaseDataItem.h"
#include "ProgressSink.h"
#include "ProjectWorks.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

// A field as text, as getValue(field).toString() gives it; a stored text is read from its
// slot without a QVariant (a summary reads millions of them).
QString textOf(const BaseDataItem* item, int field)
{
    const RowFields& values = item->rawValues();
    return values.type(field) == RowFields::Text ? values.textAt(field)
                                                 : item->getValue(field).toString();
}

bool flagOf(const BaseDataItem* item, int field)
{
    const RowFields& values = item->rawValues();
    return values.type(field) == RowFields::Bool ? values.boolAt(field)
                                                 : item->getValue(field).toBool();
}

} // namespace

QString MaterialSummary::Key(const BaseDataItem* item)
{
    return textOf(item, 3).trimmed() + QChar(0x1F) + textOf(item, 4).trimmed() + QChar(0x1F) +
           textOf(item, 5).trimmed();
}

namespace {

// The same identity as Key(), held as its three trimmed texts: looking a line up builds no
// joined text. The texts mostly need no trimming and are then shared, not copied.
struct LineKey
{
    QString name;
    QString model;
    QString unit;

    explicit LineKey(const BaseDataItem* item)
        : name(textOf(item, 3).trimmed()), model(textOf(item, 4).trimmed()),
          unit(textOf(item, 5).trimmed())
    {
    }
    bool operator==(const LineKey& other) const
    {
        return name == other.name && model == other.model && unit == other.unit;
    }
};

uint qHash(const LineKey& key, uint seed = 0)
{
    return qHash(key.unit, qHash(key.model, qHash(key.name, seed)));
}

// The quantity of a material at each price it is priced at. A material is priced at one or
// a few prices: they are searched in a short list, and only a material priced many ways
// gets an index.
class QuantityByPrice
{
public:
    void add(double price, double quantity)
    {
        if (m_index.isEmpty()) {
            for (auto& pair : m_pairs)
                if (pair.first == price) {
                    pair.second += quantity;
                    return;
                }
        } else if (const auto it = m_index.constFind(price); it != m_index.constEnd()) {
            m_pairs[std::size_t(it.value())].second += quantity;
            return;
        }
        m_pairs.emplace_back(price, quantity);
        if (m_pairs.size() > 8 && m_index.isEmpty()) {
            for (std::size_t i = 0; i < m_pairs.size(); ++i)
                m_index.insert(m_pairs[i].first, int(i));
        } else if (!m_index.isEmpty()) {
            m_index.insert(price, int(m_pairs.size()) - 1);
        }
    }
    bool isEmpty() const { return m_pairs.empty(); }
    std::size_t size() const { return m_pairs.size(); }
    const std::vector<std::pair<double, double>>& pairs() const { return m_pairs; }

private:
    std::vector<std::pair<double, double>> m_pairs;
    QHash<double, int> m_index;
};

} // namespace

QList<MaterialSummary::Entry> MaterialSummary::Gather(ConstructionWorks* works,
                                                      bool provisionalOnly, ProgressSink* progress)
{
    // What every line reads comes first, so that a line touches few cache lines; the hash
    // holds only the key and the place of the material's sums.
    struct Acc
    {
        bool seen = false;
        bool named = false;                   // the entry has its name
        bool provisional[2] = {false, false}; // met not provisional, met provisional
        bool originDiffers = false;
        double quantity = 0;
        QString firstOrigin;
        QuantityByPrice quantityByPrice;
        Entry entry;
    };
    QHash<LineKey, int> byKey;
    std::vector<Acc> sums;
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    const QList<ProTreeNode*> units = project ? project->unitProjectNodes() : QList<ProTreeNode*>();
    int order = 0;
    for (int u = 0; u < units.size(); ++u) {
        ConstructionWorks* unit = project->works(0, ProTreeNode::Id(units.at(u)));
        if (!unit)
            continue;
        for (const BaseDataItem* m : unit->getRcjHzTable()->items()) {
            const bool provisional = flagOf(m, 11);
            // The origin is compared on every line: a stored text is read in place.
            QString otherOrigin;
            const QString& origin = m->rawValues().type(12) == RowFields::Text
                                        ? m->rawValues().textAt(12)
                                        : (otherOrigin = textOf(m, 12));
            LineKey key(m);
            int& place = byKey[key];
            if (place == 0) {
                sums.emplace_back();
                place = int(sums.size());
            }
            Acc& acc = sums[std::size_t(place - 1)];
            if (!acc.named) {
                acc.entry.code = textOf(m, 1);
                acc.entry.name = key.name;
                acc.entry.model = key.model;
                acc.entry.unit = key.unit;
                acc.entry.origin = origin;
                acc.entry.order = order++;
                acc.named = !acc.entry.name.isEmpty();
            }
            if (!acc.seen) {
                acc.seen = true;
                acc.firstOrigin = origin;
            } else if (!acc.originDiffers && origin != acc.firstOrigin) {
                acc.originDiffers = true;
            }
            acc.provisional[provisional ? 1 : 0] = true;
            if (provisionalOnly && !provisional)
                continue;
            const double quantity = m->getDouble(9);
            acc.quantity += quantity;
            acc.quantityByPrice.add(m->getDouble(7), quantity);
        }
        if (progress)
            progress->setValue(int(90.0 * (u + 1) / units.size()));
    }
    QList<Entry> entries;
    entries.reserve(int(sums.size()));
    for (Acc& acc : sums) {
        if (acc.quantityByPrice.isEmpty())
            continue; // not provisional anywhere
        // The price of the largest quantity; of equal quantities, the highest price.
        double best = -1;
        for (const auto& [price, quantity] : acc.quantityByPrice.pairs())
            if (quantity > best || (quantity == best && price > acc.entry.price)) {
                best = quantity;
                acc.entry.price = price;
            }
        acc.entry.quantity = std::round(acc.quantity * 1000.0) / 1000.0;
        acc.entry.flags = (acc.quantityByPrice.size() > 1 ? PriceDiffers : 0) |
                          (acc.provisional[0] && acc.provisional[1] ? ProvisionalDiffers : 0) |
                          (acc.originDiffers ? OriginDiffers : 0);
        entries << acc.entry;
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.order < b.order; });
    return entries;
}
