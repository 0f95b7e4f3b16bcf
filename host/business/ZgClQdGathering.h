#pragma once

#include <QHash>
#include <QString>
#include <QVarLengthArray>
#include <QVector>

#include <memory>

class BaseDataItem;
class ProgressSink;
class ProjectWorks;

// The materials of all unit projects of a project (current version), gathered by material
// identity, with what the provisional-price list needs of each: the summed provisional
// quantity, the prices it comes at, and whether the unit projects disagree.
class ZgClQdGathering
{
public:
    struct Key
    {
        QString name, model, unit;
        bool operator==(const Key& other) const
        {
            return name == other.name && model == other.model && unit == other.unit;
        }
    };

    struct Material
    {
        Key key;
        QString code, variety, origin, manufacturer, quality, remark;
        double basePrice = 0;
        double quantity = 0;                              // provisional lines only
        QVarLengthArray<QPair<double, double>, 2> prices; // price, quantity at that price
        bool provisionalSomewhere = false;
        bool plainSomewhere = false;
        bool originDiffers = false, manufacturerDiffers = false, remarkDiffers = false;

        // The price that carries the largest share of the quantity (the higher on a tie).
        double price() const;
        // The inconsistency bits of ZgClQdBusiness.
        int flags() const;
    };

    // Progress goes from start over share points, one step per unit project.
    ZgClQdGathering(ProjectWorks* project, ProgressSink* progress, int start, int share);
    ~ZgClQdGathering();

    // The materials some unit project holds as provisional, in order of first appearance.
    QVector<const Material*> provisional() const;
    const Material* find(const Key& key) const;

    static Key keyOf(const BaseDataItem* item);
    static bool sameMaterial(const BaseDataItem* item, const Key& key);

private:
    void add(const BaseDataItem* line);

    QHash<Key, int> m_index;
    std::vector<std::unique_ptr<Material>> m_materials;
};

inline uint qHash(const ZgClQdGathering::Key& key, uint seed = 0)
{
    return qHash(key.name, seed) ^ (qHash(key.model, seed) * 31u) ^ (qHash(key.unit, seed) * 131u);
}
