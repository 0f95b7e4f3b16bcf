#include "SjCqXPsClBusiness.h"

#include "MaterialGridRules.h"
#include "MaterialListMarks.h"
#include "ProgressSink.h"

#include "ProjectWorks.h"

#include <QHash>
#include <QSet>
#include <QVarLengthArray>

#include <cmath>
#include <memory>
#include <vector>

namespace {

SjCqXPsClTable* listOf(ConstructionWorks* works)
{
    return works ? works->getTenderInventory()->getSjCqXPsClHzTable() : nullptr;
}

double fen(double value)
{
    return std::round(value * 100.0) / 100.0;
}

double thousandth(double value)
{
    return std::round(value * 1000.0) / 1000.0;
}

// Sets a field only when it changes, so that the undo record holds what really changed.
void update(BaseDataItem* item, int field, const QVariant& value)
{
    if (item->getValue(field) != value)
        item->setValue(field, value);
}

using MaterialListMarks::isMaterialRow;

int inconsistency(const BaseDataItem* item)
{
    return item ? item->getValue(SjCqXPsClBusiness::InconsistencyField).toInt() : 0;
}

QString text(const BaseDataItem* item, int field)
{
    return item->getValue(field).toString();
}

// The materials of every unit project (current version), gathered by identity. Quantities sum
// every line of the material: evaluation concerns the material, not the lines that use it.
class Gathering
{
public:
    struct Material
    {
        SjCqXPsClBusiness::Key key;
        QString variety, origin, manufacturer, quality, remark;
        double basePrice = 0;
        double quantity = 0;
        QVarLengthArray<QPair<double, double>, 2> prices; // price, quantity at that price
        bool provisional = false, evaluated = false, ownerSupplied = false;
        bool originDiffers = false;

        // The price that carries the largest share of the quantity (the higher on a tie).
        double price() const
        {
            double best = 0, bestQuantity = -1;
            for (const auto& p : prices)
                if (p.second > bestQuantity || (p.second == bestQuantity && p.first > best)) {
                    best = p.first;
                    bestQuantity = p.second;
                }
            return best;
        }
        int flags() const
        {
            return (prices.size() > 1 ? SjCqXPsClBusiness::PriceDiffers : 0) |
                   (originDiffers ? SjCqXPsClBusiness::OriginDiffers : 0);
        }
        bool has(int unitFlag) const
        {
            switch (unitFlag) {
            case SjCqXPsClBusiness::UnitProvisionalField:
                return provisional;
            case SjCqXPsClBusiness::UnitOwnerSuppliedField:
                return ownerSupplied;
            default:
                return evaluated;
            }
        }
    };

    Gathering(ProjectWorks* project, ProgressSink* progress, int share)
    {
        const QList<ProTreeNode*> units =
            project ? project->unitProjectNodes() : QList<ProTreeNode*>();
        for (int u = 0; u < units.size(); ++u) {
            if (ConstructionWorks* unit = project->works(0, ProTreeNode::Id(units.at(u))))
                for (const BaseDataItem* line : unit->getRcjHzTable()->items())
                    add(line);
            if (progress)
                progress->setValue(int(double(share) * (u + 1) / units.size()));
        }
    }

    const std::vector<std::unique_ptr<Material>>& materials() const { return m_materials; }
    const Material* find(const SjCqXPsClBusiness::Key& key) const
    {
        const auto it = m_index.constFind(key);
        return it == m_index.cend() ? nullptr : m_materials[size_t(*it)].get();
    }

private:
    void add(const BaseDataItem* line)
    {
        SjCqXPsClBusiness::Key key = SjCqXPsClBusiness::KeyOf(line);
        if (key.name.isEmpty())
            return; // an empty line is no material
        Material* m;
        const auto found = m_index.constFind(key);
        if (found == m_index.cend()) {
            m_index.insert(key, int(m_materials.size()));
            m_materials.push_back(std::make_unique<Material>());
            m = m_materials.back().get();
            m->key = std::move(key);
            m->variety = text(line, 8);
            m->origin = text(line, 12);
            m->manufacturer = text(line, 13);
            m->quality = text(line, 14);
            m->remark = text(line, 15);
            m->basePrice = line->getDouble(6);
        } else {
            m = m_materials[size_t(*found)].get();
            m->originDiffers = m->originDiffers || text(line, 12) != m->origin;
        }
        m->provisional =
            m->provisional || line->getValue(SjCqXPsClBusiness::UnitProvisionalField).toBool();
        m->evaluated =
            m->evaluated || line->getValue(SjCqXPsClBusiness::UnitEvaluatedField).toBool();
        m->ownerSupplied =
            m->ownerSupplied || line->getValue(SjCqXPsClBusiness::UnitOwnerSuppliedField).toBool();
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

    QHash<SjCqXPsClBusiness::Key, int> m_index;
    std::vector<std::unique_ptr<Material>> m_materials;
};

void fill(BaseDataItem* item, const Gathering::Material& m)
{
    const double quantity = thousandth(m.quantity);
    item->setValue(3, m.key.name);
    item->setValue(4, m.key.model);
    item->setValue(5, m.key.unit);
    item->setValue(6, m.basePrice);
    item->setValue(7, m.price());
    item->setValue(8, m.variety);
    item->setValue(9, quantity);
    item->setValue(10, fen(m.price() * quantity));
    item->setValue(12, m.origin);
    item->setValue(13, m.manufacturer);
    item->setValue(14, m.quality);
    item->setValue(15, m.remark);
    item->setValue(SjCqXPsClBusiness::InconsistencyField, m.flags());
}

// Sets the evaluated flag of every unit-project line of the given materials.
void setUnitFlag(ProjectWorks* project, const QSet<SjCqXPsClBusiness::Key>& keys, bool flag,
                 ProgressSink* progress)
{
    const QList<ProTreeNode*> units = project ? project->unitProjectNodes() : QList<ProTreeNode*>();
    for (int u = 0; u < units.size(); ++u) {
        if (ConstructionWorks* unit = project->works(0, ProTreeNode::Id(units.at(u))))
            for (BaseDataItem* line : unit->getRcjHzTable()->items())
                if (line->getValue(SjCqXPsClBusiness::UnitEvaluatedField).toBool() != flag &&
                    keys.contains(SjCqXPsClBusiness::KeyOf(line)))
                    line->setValue(SjCqXPsClBusiness::UnitEvaluatedField, flag);
        if (progress)
            progress->setValue(int(100.0 * (u + 1) / units.size()));
    }
}

BaseDataItem* ensureTotal(SjCqXPsClTable* table)
{
    BaseDataItem* total = nullptr;
    if (!SjCqXPsClBusiness::CheckExistedTotalRow(table, &total)) {
        total = TableOps::insertNew(table, table->count(), SjCqXPsClBusiness::Total);
        total->setValue(3, QStringLiteral("合计"));
    }
    return total;
}

} // namespace

SjCqXPsClBusiness::Key SjCqXPsClBusiness::KeyOf(const BaseDataItem* item)
{
    return {text(item, 3).trimmed(), text(item, 4).trimmed(), text(item, 5).trimmed()};
}

void SjCqXPsClBusiness::CalculateSjCqXPsClItemHJ(BaseDataItem* item)
{
    if (!item || item->getKind() != Material)
        return;
    if (!item->getValue(7).isValid() && !item->getValue(9).isValid())
        update(item, 10, QVariant());
    else
        update(item, 10, fen(item->getDouble(9) * item->getDouble(7)));
}

void SjCqXPsClBusiness::RemoveAllAndKeepNRow(SjCqXPsClTable* table, int n)
{
    MaterialGridRules::keepFirstRows(table, n);
}

void SjCqXPsClBusiness::CompleteEmptyRows(SjCqXPsClTable* table)
{
    if (!table)
        return;
    BaseDataItem* total = ensureTotal(table);
    int materials = 0;
    for (const BaseDataItem* item : table->items())
        materials += item->getKind() == Material ? 1 : 0;
    while (materials++ < MinimumRows)
        TableOps::insertNew(table, table->GetItemIndexInOrder(total), Material);
    TableOps::calculateMaterialList(table);
}

void SjCqXPsClBusiness::HzSjCqXPsCl(ConstructionWorks* works, ProgressSink* progress)
{
    SjCqXPsClTable* table = listOf(works);
    if (!table)
        return;
    BusinessFaultInjection::check();
    // Serials and tender codes given earlier survive a new summary of the same material.
    QHash<Key, QPair<QVariant, QVariant>> former;
    for (const BaseDataItem* item : table->items())
        if (isMaterialRow(item))
            former.insert(KeyOf(item), {item->getValue(1), item->getValue(2)});
    const Gathering gathered(works->getOwner(), progress, 90);
    table->Clear();
    for (const auto& m : gathered.materials()) {
        if (!m->evaluated)
            continue;
        BaseDataItem* item = TableOps::insertNew(table, table->count(), Material);
        fill(item, *m);
        const auto it = former.constFind(m->key);
        if (it != former.cend() && it->second.isValid())
            item->setValue(2, it->second);
    }
    ensureTotal(table);
    TableOps::renumber(table, Material);
    TableOps::calculateMaterialList(table);
    if (progress)
        progress->setValue(100);
}

void SjCqXPsClBusiness::append(ConstructionWorks* works, int unitFlag, ProgressSink* progress)
{
    SjCqXPsClTable* table = listOf(works);
    if (!table)
        return;
    BusinessFaultInjection::check();
    QSet<Key> listed;
    for (const BaseDataItem* item : table->items())
        if (isMaterialRow(item))
            listed.insert(KeyOf(item));
    const Gathering gathered(works->getOwner(), progress, 50);
    BaseDataItem* total = ensureTotal(table);
    // New rows take the first empty rows at the end of the list, then go above the total row.
    int next = table->GetItemIndexInOrder(total);
    while (next > 0 && table->at(next - 1)->getKind() == Material &&
           TableOps::isBlank(table->at(next - 1)))
        --next;
    QSet<Key> added;
    for (const auto& m : gathered.materials()) {
        if (!m->has(unitFlag) || listed.contains(m->key))
            continue;
        BaseDataItem* item = table->at(next);
        if (!item || item->getKind() != Material || !TableOps::isBlank(item))
            item = TableOps::insertNew(table, next, Material);
        ++next;
        fill(item, *m);
        listed.insert(m->key);
        added.insert(m->key);
    }
    setUnitFlag(works->getOwner(), added, true, nullptr);
    RegenerateSjCqXPsClXH(works);
    TableOps::calculateMaterialList(table);
    if (progress)
        progress->setValue(100);
}

void SjCqXPsClBusiness::ZjGcZgjCl(ConstructionWorks* works, ProgressSink* progress)
{
    append(works, UnitProvisionalField, progress);
}

void SjCqXPsClBusiness::ZjGcJgCl(ConstructionWorks* works, ProgressSink* progress)
{
    append(works, UnitOwnerSuppliedField, progress);
}

void SjCqXPsClBusiness::UpdateSjCqXPsClSLAndTJ(ConstructionWorks* works, ProgressSink* progress)
{
    SjCqXPsClTable* table = listOf(works);
    if (!table)
        return;
    BusinessFaultInjection::check();
    const Gathering gathered(works->getOwner(), progress, 90);
    for (BaseDataItem* item : table->items()) {
        if (!isMaterialRow(item))
            continue;
        const Gathering::Material* m = gathered.find(KeyOf(item));
        if (!m) {
            update(item, QuestionMarkField, true); // no unit project holds it any more
            continue;
        }
        update(item, QuestionMarkField, false);
        update(item, 7, m->price());
        update(item, 9, thousandth(m->quantity));
        update(item, InconsistencyField, m->flags());
        CalculateSjCqXPsClItemHJ(item);
    }
    TableOps::calculateMaterialList(table);
    if (progress)
        progress->setValue(100);
}

int SjCqXPsClBusiness::GetTjByzClCount(ConstructionWorks* works)
{
    return MaterialListMarks::countWithBit(listOf(works), InconsistencyField, PriceDiffers);
}

int SjCqXPsClBusiness::GetBCzDyClCount(ConstructionWorks* works)
{
    return MaterialListMarks::countMarked(listOf(works), QuestionMarkField);
}

void SjCqXPsClBusiness::SetTjByzClBlock(ConstructionWorks* works)
{
    MaterialListMarks::blockWithBit(listOf(works), InconsistencyField, PriceDiffers);
}

void SjCqXPsClBusiness::ClearBCzDyClBj(ConstructionWorks* works)
{
    MaterialListMarks::clearMarks(listOf(works), QuestionMarkField);
}

void SjCqXPsClBusiness::RegenerateSjCqXPsClXH(ConstructionWorks* works)
{
    MaterialListMarks::numberMaterialRows(listOf(works));
}

void SjCqXPsClBusiness::RegenerateSjCqXPsClTableBM(ConstructionWorks* works, const QString& prefix,
                                                   int start, int digits)
{
    BusinessFaultInjection::check();
    // The codes stay in the list: the unit projects' code field is the provisional list's.
    MaterialListMarks::codeMaterialRows(listOf(works), prefix, start, digits,
                                        [](BaseDataItem*, const QString&) {});
}

bool SjCqXPsClBusiness::RegenerateSjCqXPsClXHByZbQd(ConstructionWorks* works)
{
    SjCqXPsClTable* table = listOf(works);
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    if (!table || !project || !project->HasGcZbXPsCl())
        return false;
    BusinessFaultInjection::check();
    QHash<Key, const SjCqXPsClItem*> tender;
    qint64 highest = 0;
    for (const SjCqXPsClItem* row : project->GetGcZbXPsCl()) {
        const Key key = KeyOf(row);
        if (!key.name.isEmpty() && !tender.contains(key))
            tender.insert(key, row);
        bool ok = false;
        const qint64 serial = row->getValue(1).toString().trimmed().toLongLong(&ok);
        if (ok)
            highest = qMax(highest, serial);
    }
    qint64 next = highest;
    for (BaseDataItem* item : table->items()) {
        if (!isMaterialRow(item))
            continue;
        const SjCqXPsClItem* match = tender.value(KeyOf(item));
        if (!match) {
            update(item, 1, ++next);
            continue;
        }
        bool ok = false;
        const qint64 serial = match->getValue(1).toString().trimmed().toLongLong(&ok);
        update(item, 1, ok ? QVariant(serial) : match->getValue(1));
        if (!text(match, 2).isEmpty())
            update(item, 2, text(match, 2));
    }
    return true;
}

void SjCqXPsClBusiness::KeepZbInfoOnly(SjCqXPsClTable* table)
{
    if (!table)
        return;
    for (BaseDataItem* item : table->items()) {
        if (item->getKind() != Material)
            continue;
        for (int field : {6, 7, 9, 10, int(QuestionMarkField), int(InconsistencyField)})
            if (item->getValue(field).isValid())
                item->setValue(field, QVariant());
    }
    TableOps::calculateMaterialList(table);
}

void SjCqXPsClBusiness::SynchGljClState(SjCqXPsClTable* table, const QList<Key>& rows,
                                        ProgressSink* progress, int, bool flag)
{
    if (!table)
        return;
    BusinessFaultInjection::check();
    // A material still listed in another row stays as it is.
    QSet<Key> listed;
    for (const BaseDataItem* item : table->items())
        if (isMaterialRow(item))
            listed.insert(KeyOf(item));
    QSet<Key> gone;
    for (const Key& key : rows)
        if (!key.name.isEmpty() && !listed.contains(key))
            gone.insert(key);
    if (!gone.isEmpty())
        setUnitFlag(table->getOwner(), gone, flag, progress);
    else if (progress)
        progress->setValue(100);
}

QColor SjCqXPsClBusiness::GetCellTextColor(SjCqXPsClTable* table, int row, int field)
{
    const int flags = inconsistency(table ? table->at(row) : nullptr);
    return field == 7 && (flags & PriceDiffers) ? QColor(220, 0, 0) : QColor();
}

QColor SjCqXPsClBusiness::GetCellBackgroundColor(SjCqXPsClTable* table, int row, int field)
{
    const int flags = inconsistency(table ? table->at(row) : nullptr);
    return field == 12 && (flags & OriginDiffers) ? QColor(255, 242, 184) : QColor();
}
