#include "SjCqXPsClBusiness.h"

#include "DbZbXpsClItem.h"
#include "MaterialGridRules.h"
#include "MaterialListMarks.h"
#include "MaterialMatcher.h"
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

QSet<SjCqXPsClBusiness::Key> listedKeys(const SjCqXPsClTable* table)
{
    QSet<SjCqXPsClBusiness::Key> listed;
    for (const BaseDataItem* item : table->items())
        if (isMaterialRow(item))
            listed.insert(SjCqXPsClBusiness::KeyOf(item));
    return listed;
}

// New rows take the first empty rows at the end of the list, then go above the total row.
int firstFreeRow(SjCqXPsClTable* table)
{
    int next = table->GetItemIndexInOrder(ensureTotal(table));
    while (next > 0 && table->at(next - 1)->getKind() == SjCqXPsClBusiness::Material &&
           TableOps::isBlank(table->at(next - 1)))
        --next;
    return next;
}

BaseDataItem* takeFreeRow(SjCqXPsClTable* table, int& next)
{
    BaseDataItem* item = table->at(next);
    if (!item || item->getKind() != SjCqXPsClBusiness::Material || !TableOps::isBlank(item))
        item = TableOps::insertNew(table, next, SjCqXPsClBusiness::Material);
    ++next;
    return item;
}

// A tender row's serial: a number when it reads as one, else the text as given.
QVariant serialOf(const BaseDataItem* tender)
{
    bool ok = false;
    const qint64 serial = tender->getValue(1).toString().trimmed().toLongLong(&ok);
    return ok ? QVariant(serial) : tender->getValue(1);
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
    QSet<Key> listed = listedKeys(table);
    const Gathering gathered(works->getOwner(), progress, 50);
    int next = firstFreeRow(table);
    QSet<Key> added;
    for (const auto& m : gathered.materials()) {
        if (!m->has(unitFlag) || listed.contains(m->key))
            continue;
        fill(takeFreeRow(table, next), *m);
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
        update(item, 1, serialOf(match));
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
    const QSet<Key> listed = listedKeys(table);
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

namespace {

SjCqXPsClItem* bidCopy(const Gathering::Material& m, bool marked)
{
    auto* copy = new SjCqXPsClItem;
    copy->setKind(SjCqXPsClBusiness::Material);
    fill(copy, m);
    copy->setValue(SjCqXPsClBusiness::TbMarkedField, marked);
    return copy;
}

MaterialMatcher::Key matchKey(const BaseDataItem* item)
{
    return {text(item, 3), text(item, 4), text(item, 5)};
}

bool isMarked(const BaseDataItem* bid)
{
    return bid && bid->getValue(SjCqXPsClBusiness::TbMarkedField).toBool();
}

// Empties the caller's candidates; the list they are gathered against, or null.
SjCqXPsClTable* freshCandidates(ConstructionWorks* works, QList<SjCqXPsClItem*>& tbCl)
{
    qDeleteAll(tbCl);
    tbCl.clear();
    SjCqXPsClTable* table = listOf(works);
    if (table)
        BusinessFaultInjection::check();
    return table;
}

} // namespace

void SjCqXPsClBusiness::AquireXmTbXpsCl(ConstructionWorks* works, QList<SjCqXPsClItem*>& tbCl)
{
    SjCqXPsClTable* table = freshCandidates(works, tbCl);
    if (!table)
        return;
    QSet<Key> listed;
    for (const BaseDataItem* item : table->items()) {
        if (!isMaterialRow(item) || listed.contains(KeyOf(item)))
            continue;
        listed.insert(KeyOf(item));
        auto* copy = new SjCqXPsClItem;
        copy->copyFrom(*item);
        copy->setValue(TbMarkedField, true);
        tbCl.append(copy);
    }
    const Gathering gathered(works->getOwner(), nullptr, 0);
    for (const auto& m : gathered.materials())
        if (m->evaluated && !listed.contains(m->key))
            tbCl.append(bidCopy(*m, true));
}

void SjCqXPsClBusiness::HzSyClAsTbXpsCl(ConstructionWorks* works, QList<SjCqXPsClItem*>& tbCl)
{
    SjCqXPsClTable* table = freshCandidates(works, tbCl);
    if (!table)
        return;
    const QSet<Key> listed = listedKeys(table);
    const Gathering gathered(works->getOwner(), nullptr, 0);
    for (const auto& m : gathered.materials())
        tbCl.append(bidCopy(*m, m->evaluated || listed.contains(m->key)));
}

bool SjCqXPsClBusiness::InitMatchZbXpsCl(ConstructionWorks* works,
                                         const QList<SjCqXPsClItem*>& tbCl,
                                         QList<DbZbXpsClItem*>& records,
                                         QList<SjCqXPsClItem*>& tbOnly)
{
    qDeleteAll(records);
    records.clear();
    tbOnly.clear();
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    if (!project || !project->HasGcZbXPsCl())
        return false;
    BusinessFaultInjection::check();
    for (SjCqXPsClItem* zb : project->GetGcZbXPsCl())
        if (!text(zb, 3).trimmed().isEmpty())
            records.append(new DbZbXpsClItem(zb, nullptr, DbZbZgClItem::ZbOnly));
    MaterialMatcher matcher;
    const auto pairs = matcher.pair(
        int(records.size()), [&](int i) { return matchKey(records.at(i)->GetZbCl()); },
        int(tbCl.size()), [&](int j) { return matchKey(tbCl.at(j)); });
    for (const MaterialMatcher::Pair& p : pairs)
        records.at(p.wanted)->Pair(tbCl.at(p.offered), p.kind == MaterialMatcher::Exact
                                                           ? DbZbZgClItem::Matched
                                                           : DbZbZgClItem::MatchedByNorm);
    RefreshXpsTbOnlyRows(records, tbCl, tbOnly);
    return true;
}

void SjCqXPsClBusiness::RefreshXpsTbOnlyRows(QList<DbZbXpsClItem*>& records,
                                             const QList<SjCqXPsClItem*>& tbCl,
                                             QList<SjCqXPsClItem*>& tbOnly)
{
    QSet<const BaseDataItem*> paired;
    for (auto it = records.begin(); it != records.end();) {
        if (!(*it)->IsZbRow()) {
            delete *it;
            it = records.erase(it);
            continue;
        }
        if ((*it)->IsMatched())
            paired.insert((*it)->GetTbCl());
        ++it;
    }
    tbOnly.clear();
    for (SjCqXPsClItem* bid : tbCl) {
        if (paired.contains(bid))
            continue;
        tbOnly.append(bid);
        if (isMarked(bid))
            records.append(new DbZbXpsClItem(nullptr, bid, DbZbZgClItem::TbOnly));
    }
}

void SjCqXPsClBusiness::CountZbXpsCl(const QList<DbZbXpsClItem*>& records, int& matched,
                                     int& unmatched)
{
    matched = unmatched = 0;
    for (const DbZbXpsClItem* record : records)
        if (record->IsMatched())
            ++matched;
        else if (record->IsZbRow())
            ++unmatched;
}

void SjCqXPsClBusiness::AnalysisXmXpsModify(ConstructionWorks* works,
                                            const QList<DbZbXpsClItem*>& records,
                                            QList<DbZbXpsClItem*>& a, QList<DbZbXpsClItem*>& b,
                                            QList<DbZbXpsClItem*>& c)
{
    Q_UNUSED(works)
    BusinessFaultInjection::check();
    a.clear();
    b.clear();
    c.clear();
    for (DbZbXpsClItem* record : records) {
        if (record->IsMatched() && record->GetTbCl())
            (isMarked(record->GetTbCl()) ? c : a).append(record);
        else if (!record->IsZbRow() && isMarked(record->GetTbCl()))
            b.append(record);
    }
}

void SjCqXPsClBusiness::ApplyZbXpsClModifyToProject(ConstructionWorks* works,
                                                    const QList<DbZbXpsClItem*>& a,
                                                    const QList<DbZbXpsClItem*>& b,
                                                    const QList<DbZbXpsClItem*>& c,
                                                    bool setAttribute, bool cancelAttribute)
{
    SjCqXPsClTable* table = listOf(works);
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    if (!table || !project)
        return;
    BusinessFaultInjection::check();
    QHash<Key, BaseDataItem*> rows;
    for (BaseDataItem* item : table->items())
        if (isMaterialRow(item) && !rows.contains(KeyOf(item)))
            rows.insert(KeyOf(item), item);
    QSet<QString> tenderCodes;
    for (const SjCqXPsClItem* zb : project->GetGcZbXPsCl())
        if (!text(zb, 2).trimmed().isEmpty())
            tenderCodes.insert(text(zb, 2).trimmed());

    // What the unit projects' lines take, by material: the evaluated flag and the code.
    QHash<Key, bool> flags;
    QHash<Key, QString> codes;
    int next = firstFreeRow(table);
    auto writePair = [&](const DbZbXpsClItem* record) {
        const BaseDataItem* bid = record->GetTbCl();
        const BaseDataItem* zb = record->GetZbCl();
        const Key key = KeyOf(bid);
        BaseDataItem* row = rows.value(key);
        if (!row) {
            row = takeFreeRow(table, next);
            for (int field : {3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15, int(InconsistencyField)})
                row->setValue(field, bid->getValue(field));
            rows.insert(key, row);
        }
        const QString code = text(zb, 2).trimmed();
        update(row, 1, serialOf(zb));
        if (!code.isEmpty())
            update(row, 2, code);
        flags.insert(key, true);
        codes.insert(key, code);
    };
    for (const DbZbXpsClItem* record : c)
        writePair(record);
    if (setAttribute)
        for (const DbZbXpsClItem* record : a)
            writePair(record);
    bool removed = false;
    for (const DbZbXpsClItem* record : b) {
        const Key key = KeyOf(record->GetTbCl());
        if (flags.contains(key))
            continue; // the material is paired in another record
        codes.insert(key, QString());
        BaseDataItem* row = rows.value(key);
        if (cancelAttribute) {
            flags.insert(key, false);
            if (row) {
                table->BaseDataItemRemoveAt(table->GetItemIndexInOrder(row));
                rows.remove(key);
                removed = true;
            }
        } else if (row && tenderCodes.contains(text(row, 2).trimmed())) {
            update(row, 2, QVariant()); // the tender material it stood for is paired elsewhere
        }
    }

    // The list is written; the unit projects follow (a host failure may come in between).
    BusinessFaultInjection::check();
    for (ProTreeNode* node : project->unitProjectNodes()) {
        ConstructionWorks* unit = project->works(0, ProTreeNode::Id(node));
        if (!unit)
            continue;
        for (BaseDataItem* line : unit->getRcjHzTable()->items()) {
            const Key key = KeyOf(line);
            const auto flag = flags.constFind(key);
            if (flag != flags.cend())
                update(line, UnitEvaluatedField, *flag);
            const auto code = codes.constFind(key);
            if (code != codes.cend())
                update(line, UnitEvaluatedCodeField,
                       code->isEmpty() ? QVariant() : QVariant(*code));
        }
    }
    if (removed)
        CompleteEmptyRows(table);
    TableOps::calculateMaterialList(table);
}
