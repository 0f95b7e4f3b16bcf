#include "ZgClQdGathering.h"

#include "ZgClQdBusiness.h"

#include "ProgressSink.h"
#include "ProjectWorks.h"

namespace {

QString text(const BaseDataItem* item, int field)
{
    return item->getValue(field).toString();
}

} // namespace

double ZgClQdGathering::Material::price() const
{
    double best = 0, bestQuantity = -1;
    for (const auto& p : prices)
        if (p.second > bestQuantity || (p.second == bestQuantity && p.first > best)) {
            best = p.first;
            bestQuantity = p.second;
        }
    return best;
}

int ZgClQdGathering::Material::flags() const
{
    return (prices.size() > 1 ? ZgClQdBusiness::PriceDiffers : 0) |
           (provisionalSomewhere && plainSomewhere ? ZgClQdBusiness::ProvisionalDiffers : 0) |
           (originDiffers ? ZgClQdBusiness::OriginDiffers : 0) |
           (manufacturerDiffers ? ZgClQdBusiness::ManufacturerDiffers : 0) |
           (remarkDiffers ? ZgClQdBusiness::RemarkDiffers : 0);
}

ZgClQdGathering::Key ZgClQdGathering::keyOf(const BaseDataItem* item)
{
    return {text(item, 3).trimmed(), text(item, 4).trimmed(), text(item, 5).trimmed()};
}

bool ZgClQdGathering::sameMaterial(const BaseDataItem* item, const Key& key)
{
    return text(item, 3).trimmed() == key.name && text(item, 4).trimmed() == key.model &&
           text(item, 5).trimmed() == key.unit;
}

ZgClQdGathering::ZgClQdGathering(ProjectWorks* project, ProgressSink* progress, int start,
                                 int share)
{
    const QList<ProTreeNode*> units = project ? project->unitProjectNodes() : QList<ProTreeNode*>();
    for (int u = 0; u < units.size(); ++u) {
        if (ConstructionWorks* unit = project->works(0, ProTreeNode::Id(units.at(u))))
            for (const BaseDataItem* line : unit->getRcjHzTable()->items())
                add(line);
        if (progress)
            progress->setValue(start + int(double(share) * (u + 1) / units.size()));
    }
}

ZgClQdGathering::~ZgClQdGathering() = default;

void ZgClQdGathering::add(const BaseDataItem* line)
{
    Key key = keyOf(line);
    if (key.name.isEmpty())
        return; // an empty line is no material
    auto found = m_index.find(key);
    Material* m;
    const bool provisional = line->getValue(ZgClQdBusiness::ProvisionalField).toBool();
    if (found == m_index.end()) {
        m_index.insert(key, int(m_materials.size()));
        m_materials.push_back(std::make_unique<Material>());
        m = m_materials.back().get();
        m->key = std::move(key);
        m->origin = text(line, 12);
        m->manufacturer = text(line, 13);
        m->remark = text(line, 15);
    } else {
        m = m_materials[size_t(*found)].get();
        m->originDiffers = m->originDiffers || text(line, 12) != m->origin;
        m->manufacturerDiffers = m->manufacturerDiffers || text(line, 13) != m->manufacturer;
        m->remarkDiffers = m->remarkDiffers || text(line, 15) != m->remark;
    }
    if (!provisional) {
        m->plainSomewhere = true;
        return;
    }
    if (!m->provisionalSomewhere) {
        m->provisionalSomewhere = true;
        m->basePrice = line->getDouble(6);
        m->variety = text(line, 8);
        m->quality = text(line, 14);
    }
    if (m->code.isEmpty())
        m->code = text(line, ZgClQdBusiness::UnitTenderCodeField);
    const double quantity = line->getDouble(9);
    const double price = line->getDouble(7);
    m->quantity += quantity;
    for (auto& p : m->prices)
        if (p.first == price) {
            p.second += quantity;
            return;
        }
    m->prices.append({price, quantity});
}

QVector<const ZgClQdGathering::Material*> ZgClQdGathering::provisional() const
{
    QVector<const Material*> list;
    for (const auto& m : m_materials)
        if (m->provisionalSomewhere)
            list << m.get();
    return list;
}

const ZgClQdGathering::Material* ZgClQdGathering::find(const Key& key) const
{
    const auto it = m_index.constFind(key);
    return it == m_index.cend() ? nullptr : m_materials[size_t(*it)].get();
}
