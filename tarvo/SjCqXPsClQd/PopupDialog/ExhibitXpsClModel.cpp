#include "ExhibitXpsClModel.h"

#include "SjCqXPsClTable.h"

void ExhibitXpsClModel::setXpsMaterials(const QList<SjCqXPsClItem*>& materials)
{
    QList<BaseDataItem*> items;
    items.reserve(materials.size());
    for (SjCqXPsClItem* m : materials)
        items.append(m);
    setMaterials(items);
}

SjCqXPsClItem* ExhibitXpsClModel::xpsMaterial(int row) const
{
    // Only SjCqXPsClItems are ever given to this model.
    return static_cast<SjCqXPsClItem*>(material(row));
}
