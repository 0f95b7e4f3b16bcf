// Matching the bid's materials to the tender's provisional list, and writing the result into
// the unit projects (the operations of ZgClQdBusiness that the matching dialogs call).
#include "ZgClQdBusiness.h"

#include "BusinessFaultInjection.h"
#include "DbZbZgClItem.h"
#include "MaterialMatcher.h"
#include "ProgressSink.h"

#include "ZgClZsItem.h"

#include <QSet>

#include <algorithm>
#include <functional>

#include <cmath>

namespace {

using Key = MaterialMatcher::Key;

Key keyOf(const BaseDataItem* item)
{
    return {item->getValue(3).toString(), item->getValue(4).toString(),
            item->getValue(5).toString()};
}

Key trimmedKey(const BaseDataItem* item)
{
    return MaterialMatcher::Trimmed(keyOf(item));
}

bool isProvisional(const BaseDataItem* line)
{
    return line->getValue(ZgClQdBusiness::ProvisionalField).toBool();
}

bool samePrice(double a, double b)
{
    return std::fabs(a - b) < 0.005;
}

void setIfChanged(BaseDataItem* item, int field, const QVariant& value)
{
    if (item->getValue(field) != value)
        item->setValue(field, value);
}

void report(ProgressSink* progress, int start, int share, int done, int count)
{
    if (progress && count > 0)
        progress->setValue(start + int(double(share) * done / count));
}

// The material lines of one unit project: its own materials with a name.
QList<BaseDataItem*> linesOf(ConstructionWorks* unit)
{
    QList<BaseDataItem*> lines;
    if (!unit)
        return lines;
    const auto& items = unit->getRcjHzTable()->items();
    lines.reserve(items.size());
    for (BaseDataItem* line : items)
        if (!line->getValue(3).toString().trimmed().isEmpty())
            lines.append(line);
    return lines;
}

// Pairs the unmatched tender records with lines of the bid, exact identity first.
void matchRecords(MaterialMatcher& matcher, const QVector<DbZbZgClItem*>& tenders,
                  const QList<BaseDataItem*>& lines)
{
    QVector<DbZbZgClItem*> open;
    for (DbZbZgClItem* record : tenders)
        if (!record->IsMatched() && record->GetZbCl())
            open.append(record);
    const auto pairs = matcher.pair(
        int(open.size()), [&](int i) { return keyOf(open.at(i)->GetZbCl()); }, int(lines.size()),
        [&](int j) { return lines.at(j)->getValue(3).toString(); },
        [&](int j) { return keyOf(lines.at(j)); });
    for (const MaterialMatcher::Pair& p : pairs)
        open.at(p.wanted)->Pair(lines.at(p.offered), p.kind == MaterialMatcher::Exact
                                                         ? DbZbZgClItem::Matched
                                                         : DbZbZgClItem::MatchedByNorm);
}

DbZbZgClItem* headingFor(int id, int dwId, const QString& name)
{
    auto* node = new ZgClZsItem(id, 0, ZgClZsItem::UnitProject);
    node->SetZxGcName(name);
    node->SetNodeId(dwId);
    node->SetDwGcKey(QString::number(dwId));
    return new DbZbZgClItem(node, nullptr, DbZbZgClItem::ZbOnly, dwId);
}

DbZbZgClItem* tenderRecord(const ZgjClHzItem* material, int id, int parentId, int dwId)
{
    auto* node = new ZgClZsItem(id, parentId, ZgClZsItem::Material);
    node->SetNodeId(dwId);
    auto* copy = new ZgjClHzItem;
    copy->copyFrom(*material);
    node->SetZgjClHzItem(copy);
    return new DbZbZgClItem(node, nullptr, DbZbZgClItem::ZbOnly, dwId);
}

QVector<DbZbZgClItem*> tendersOf(const QList<DbZbZgClItem*>& records, int dwId)
{
    QVector<DbZbZgClItem*> tenders;
    for (DbZbZgClItem* record : records)
        if (record->GetDwId() == dwId && record->IsZbRow())
            tenders.append(record);
    return tenders;
}

// Lines of one unit project the writing concerns: paired ones with their record.
QHash<Key, const DbZbZgClItem*> pairedKeys(const QList<DbZbZgClItem*>& records, int dwId)
{
    QHash<Key, const DbZbZgClItem*> paired;
    for (const DbZbZgClItem* record : records)
        if (record->GetDwId() == dwId && record->IsMatched() && record->GetTbCl() &&
            !record->IsOrphan())
            paired.insert(trimmedKey(record->GetTbCl()), record);
    return paired;
}

void analyzeUnit(const QList<BaseDataItem*>& lines, const QHash<Key, const DbZbZgClItem*>& paired,
                 bool& b1, bool& b2, bool& b3)
{
    for (const BaseDataItem* line : lines) {
        const auto it = paired.constFind(trimmedKey(line));
        if (it == paired.cend()) {
            b3 = b3 || isProvisional(line);
            continue;
        }
        b1 = b1 || !samePrice(line->getDouble(7), (*it)->GetZbCl()->getDouble(7));
        b2 = b2 || !isProvisional(line);
    }
}

void applyUnit(const QList<BaseDataItem*>& lines, const QHash<Key, const DbZbZgClItem*>& paired,
               bool modifyPrice, bool setProvisional, bool cancelProvisional)
{
    for (BaseDataItem* line : lines) {
        const auto it = paired.constFind(trimmedKey(line));
        if (it == paired.cend()) {
            if (cancelProvisional && isProvisional(line))
                setIfChanged(line, ZgClQdBusiness::ProvisionalField, false);
            continue;
        }
        const DbZbZgClItem* record = *it;
        setIfChanged(line, ZgClQdBusiness::UnitTenderCodeField,
                     record->GetZbZgClZsItem()->GetOwnZbBm());
        if (modifyPrice) {
            const double price = record->GetZbCl()->getDouble(7);
            if (!samePrice(line->getDouble(7), price)) {
                line->setValue(7, price);
                setIfChanged(line, 10, std::round(line->getDouble(9) * price * 100.0) / 100.0);
            }
        }
        if (setProvisional && !isProvisional(line))
            setIfChanged(line, ZgClQdBusiness::ProvisionalField, true);
    }
}

// Rebuilds the bid-only rows of one unit project whose records are [begin, end) of the list:
// its provisional lines no tender record of the range holds, once per material, placed at
// the end of the range. Returns the range's new end.
int refreshRange(QList<DbZbZgClItem*>& records, int begin, int end, int dwId,
                 const QList<BaseDataItem*>& lines)
{
    QSet<Key> paired;
    for (int i = begin; i < end;) {
        DbZbZgClItem* record = records.at(i);
        if (record->GetState() == DbZbZgClItem::TbOnly && !record->GetZbZgClZsItem()) {
            delete records.takeAt(i);
            --end;
            continue;
        }
        if (record->IsMatched() && record->GetTbCl())
            paired.insert(trimmedKey(record->GetTbCl()));
        ++i;
    }
    QList<DbZbZgClItem*> added;
    for (BaseDataItem* line : lines) {
        if (!isProvisional(line))
            continue;
        Key key = trimmedKey(line);
        if (paired.contains(key))
            continue;
        paired.insert(std::move(key)); // once per material
        added.append(new DbZbZgClItem(nullptr, line, DbZbZgClItem::TbOnly, dwId));
    }
    if (end == records.size()) {
        records.append(added);
    } else {
        for (int i = 0; i < added.size(); ++i)
            records.insert(end + i, added.at(i));
    }
    return end + int(added.size());
}

// The [begin, end) range of each unit project's records (they lie together).
QMap<int, QPair<int, int>> unitRanges(const QList<DbZbZgClItem*>& records)
{
    QMap<int, QPair<int, int>> ranges;
    for (int i = 0; i < records.size(); ++i) {
        auto it = ranges.find(records.at(i)->GetDwId());
        if (it == ranges.end())
            ranges.insert(records.at(i)->GetDwId(), {i, i + 1});
        else
            it->second = i + 1;
    }
    return ranges;
}

QVector<DbZbZgClItem*> tendersIn(const QList<DbZbZgClItem*>& records, int begin, int end)
{
    QVector<DbZbZgClItem*> tenders;
    for (int i = begin; i < end; ++i)
        if (records.at(i)->IsZbRow())
            tenders.append(records.at(i));
    return tenders;
}

} // namespace

bool ZgClQdBusiness::InitMatchZbZgCl(ConstructionWorks* works, QList<DbZbZgClItem*>& records,
                                     TbClMap& tbCl, DwMap& dwMap, ProgressSink* progress)
{
    BusinessFaultInjection::check();
    records.clear();
    tbCl.clear();
    dwMap.clear();
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    if (!project || !project->HasGcZbZgCl())
        return false;
    MaterialMatcher matcher;
    const QList<ProTreeNode*> units = project->unitProjectNodes();
    QList<int> stored = project->GcZbZgClUnitIds();
    int id = 0;
    for (int u = 0; u < units.size(); ++u) {
        ProTreeNode* unit = units.at(u);
        const int dwId = ProTreeNode::Id(unit);
        stored.removeAll(dwId);
        dwMap.insert(dwId, unit);
        const QList<BaseDataItem*>& lines = tbCl[dwId] = linesOf(project->works(0, dwId));
        DbZbZgClItem* heading = headingFor(++id, dwId, ProTreeNode::Name(unit));
        const int begin = int(records.size());
        records.append(heading);
        QList<ZgjClHzItem*> materials;
        project->GetDwZbZgCl({project->projectIndex(), dwId}, materials);
        QVector<DbZbZgClItem*> tenders;
        for (const ZgjClHzItem* material : materials) {
            tenders.append(tenderRecord(material, ++id, heading->GetZbZgClZsItem()->GetId(), dwId));
            records.append(tenders.last());
        }
        matchRecords(matcher, tenders, lines);
        refreshRange(records, begin, int(records.size()), dwId, lines);
        report(progress, 0, 100, u + 1, int(units.size()));
    }
    // Tender materials of unit projects deleted since the list was stored: shown, not applied.
    for (const int dwId : stored) {
        DbZbZgClItem* heading =
            headingFor(++id, dwId, QStringLiteral("单位工程(编号%1)已不在当前工程中").arg(dwId));
        heading->SetOrphan(true);
        records.append(heading);
        QList<ZgjClHzItem*> materials;
        project->GetDwZbZgCl({project->projectIndex(), dwId}, materials);
        for (const ZgjClHzItem* material : materials) {
            records.append(tenderRecord(material, ++id, heading->GetZbZgClZsItem()->GetId(), dwId));
            records.last()->SetOrphan(true);
        }
    }
    return true;
}

void ZgClQdBusiness::MatchZbZgClByDbRes(ConstructionWorks* works,
                                        const QList<DbZbZgClItem*>& syRecords, bool resetAll,
                                        QList<DbZbZgClItem*>& records, const TbClMap& tbCl,
                                        const DwMap& dwMap, ProgressSink* progress, int share)
{
    BusinessFaultInjection::check();
    Q_UNUSED(works)
    // The bid material each tender material took over all materials, by exact tender key.
    QHash<Key, const DbZbZgClItem*> chosen;
    for (const DbZbZgClItem* sy : syRecords)
        if (sy->IsMatched() && sy->GetTbCl())
            chosen.insert(MaterialMatcher::Trimmed(keyOf(sy->GetZbCl())), sy);
    // From the last unit project to the first, so that the ranges before stay where they are.
    const QMap<int, QPair<int, int>> ranges = unitRanges(records);
    QVector<QPair<int, int>> order; // begin, dwId
    for (auto it = ranges.cbegin(); it != ranges.cend(); ++it)
        if (dwMap.contains(it.key()))
            order.append({it->first, it.key()});
    std::sort(order.begin(), order.end(), std::greater<>());
    int done = 0;
    for (const auto& [begin, dwId] : std::as_const(order)) {
        const QList<BaseDataItem*> lines = tbCl.value(dwId);
        const int end = ranges.value(dwId).second;
        for (DbZbZgClItem* record : tendersIn(records, begin, end)) {
            if (resetAll)
                record->Unpair();
            else if (record->IsMatched())
                continue;
            const DbZbZgClItem* sy =
                chosen.value(MaterialMatcher::Trimmed(keyOf(record->GetZbCl())), nullptr);
            if (!sy)
                continue;
            if (BaseDataItem* line = CheckFZgClExistInDw(lines, sy->GetTbCl()))
                record->Pair(line, sy->GetState());
        }
        refreshRange(records, begin, end, dwId, lines);
        report(progress, 0, share, ++done, int(order.size()));
    }
}

void ZgClQdBusiness::MatchDqZxGcZbZgCl(int dwId, ProTreeNode* dwNode, QList<DbZbZgClItem*>& records,
                                       const TbClMap& tbCl)
{
    BusinessFaultInjection::check();
    Q_UNUSED(dwNode)
    const QVector<DbZbZgClItem*> tenders = tendersOf(records, dwId);
    for (DbZbZgClItem* record : tenders)
        record->Unpair();
    MaterialMatcher matcher;
    matchRecords(matcher, tenders, tbCl.value(dwId));
    RefreshTbOnlyRows(dwId, records, tbCl);
}

BaseDataItem* ZgClQdBusiness::CheckFZgClExistInDw(const QList<BaseDataItem*>& dwCl,
                                                  const BaseDataItem* material)
{
    if (!material)
        return nullptr;
    const Key key = trimmedKey(material);
    for (BaseDataItem* line : dwCl)
        if (trimmedKey(line) == key)
            return line;
    return nullptr;
}

BaseDataItem* ZgClQdBusiness::CheckMaterialExists(const QList<BaseDataItem*>& materials,
                                                  const QString& name, const QString& model,
                                                  const QString& unit, double price)
{
    const Key key = MaterialMatcher::Trimmed({name, model, unit});
    for (BaseDataItem* m : materials)
        if (trimmedKey(m) == key && samePrice(m->getDouble(7), price))
            return m;
    return nullptr;
}

QList<BaseDataItem*> ZgClQdBusiness::GetAllTbCl(const TbClMap& tbCl, const DwMap& dwMap)
{
    QList<BaseDataItem*> all;
    QSet<Key> seen;
    for (auto it = dwMap.cbegin(); it != dwMap.cend(); ++it)
        for (BaseDataItem* line : tbCl.value(it.key())) {
            Key key = trimmedKey(line);
            if (seen.contains(key))
                continue;
            seen.insert(std::move(key));
            all.append(line);
        }
    return all;
}

void ZgClQdBusiness::RefreshTbOnlyRows(int dwId, QList<DbZbZgClItem*>& records, const TbClMap& tbCl)
{
    const QPair<int, int> range =
        unitRanges(records).value(dwId, {int(records.size()), int(records.size())});
    if (dwId >= 0) {
        refreshRange(records, range.first, range.second, dwId, tbCl.value(dwId));
        return;
    }
    // The project-wide comparison: the lines of every unit project, in the order of their ids.
    QList<int> units = tbCl.keys();
    std::sort(units.begin(), units.end());
    QList<BaseDataItem*> lines;
    for (const int unit : units)
        lines.append(tbCl.value(unit));
    refreshRange(records, range.first, range.second, dwId, lines);
}

void ZgClQdBusiness::CountZbZgCl(const QList<DbZbZgClItem*>& records, int& matched, int& unmatched)
{
    matched = unmatched = 0;
    for (const DbZbZgClItem* record : records) {
        // Rows of deleted unit projects can be neither paired nor applied.
        if (!record->IsZbRow() || record->IsOrphan())
            continue;
        if (record->IsMatched())
            ++matched;
        else if (record->GetState() == DbZbZgClItem::ZbOnly)
            ++unmatched;
    }
}

void ZgClQdBusiness::AnalyzeZbZgClModifyProperty(const QList<DbZbZgClItem*>& records,
                                                 const TbClMap& tbCl, bool& b1, bool& b2, bool& b3)
{
    BusinessFaultInjection::check();
    b1 = b2 = b3 = false;
    QSet<int> units;
    for (const DbZbZgClItem* record : records)
        if (record->IsDwRow() && !record->IsOrphan())
            units.insert(record->GetDwId());
    for (const int dwId : units)
        analyzeUnit(tbCl.value(dwId), pairedKeys(records, dwId), b1, b2, b3);
}

void ZgClQdBusiness::ApplyZbZgClModifyToProject(const DwMap& dwMap,
                                                const QList<DbZbZgClItem*>& records,
                                                const TbClMap& tbCl, bool modifyPrice,
                                                bool setProvisional, bool cancelProvisional,
                                                ProgressSink* progress, int share)
{
    BusinessFaultInjection::check();
    QSet<int> units;
    for (const DbZbZgClItem* record : records)
        if (record->IsDwRow() && !record->IsOrphan())
            units.insert(record->GetDwId());
    int done = 0;
    for (auto it = dwMap.cbegin(); it != dwMap.cend(); ++it) {
        if (units.contains(it.key()))
            applyUnit(tbCl.value(it.key()), pairedKeys(records, it.key()), modifyPrice,
                      setProvisional, cancelProvisional);
        report(progress, 0, share, ++done, int(dwMap.size()));
    }
}

bool ZgClQdBusiness::GetGcZbAndTbCl(ConstructionWorks* works, QList<DbZbZgClItem*>& records,
                                    TbClMap& tbCl, DwMap& dwMap, ProgressSink* progress)
{
    BusinessFaultInjection::check();
    records.clear();
    tbCl.clear();
    dwMap.clear();
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    if (!project || !project->HasGcZbZgCl())
        return false;
    const QList<ProTreeNode*> units = project->unitProjectNodes();
    QSet<Key> seen;
    int id = 0;
    for (int u = 0; u < units.size(); ++u) {
        const int dwId = ProTreeNode::Id(units.at(u));
        dwMap.insert(dwId, units.at(u));
        tbCl.insert(dwId, linesOf(project->works(0, dwId)));
        QList<ZgjClHzItem*> materials;
        project->GetDwZbZgCl({project->projectIndex(), dwId}, materials);
        for (const ZgjClHzItem* material : materials) {
            Key key = trimmedKey(material);
            if (key.name.isEmpty() || seen.contains(key))
                continue;
            seen.insert(std::move(key));
            records.append(tenderRecord(material, ++id, 0, -1));
        }
        report(progress, 0, 100, u + 1, int(units.size()));
    }
    return true;
}

void ZgClQdBusiness::AutoMatchZbSyCl(QList<DbZbZgClItem*>& records, const TbClMap& tbCl,
                                     const DwMap& dwMap)
{
    BusinessFaultInjection::check();
    const QVector<DbZbZgClItem*> tenders = tendersOf(records, -1);
    for (DbZbZgClItem* record : tenders)
        record->Unpair();
    MaterialMatcher matcher;
    matchRecords(matcher, tenders, GetAllTbCl(tbCl, dwMap));
    RefreshTbOnlyRows(-1, records, tbCl);
}

void ZgClQdBusiness::AnalyzeSyZbZgClModifyProperty(const QList<DbZbZgClItem*>& records,
                                                   const TbClMap& tbCl, const DwMap& dwMap,
                                                   bool& b1, bool& b2, bool& b3)
{
    BusinessFaultInjection::check();
    b1 = b2 = b3 = false;
    const QHash<Key, const DbZbZgClItem*> paired = pairedKeys(records, -1);
    for (auto it = dwMap.cbegin(); it != dwMap.cend(); ++it)
        analyzeUnit(tbCl.value(it.key()), paired, b1, b2, b3);
}

void ZgClQdBusiness::ApplySyZbZgClModifyToProject(const DwMap& dwMap,
                                                  const QList<DbZbZgClItem*>& records,
                                                  const TbClMap& tbCl, bool modifyPrice,
                                                  bool setProvisional, bool cancelProvisional,
                                                  ProgressSink* progress, int share)
{
    BusinessFaultInjection::check();
    const QHash<Key, const DbZbZgClItem*> paired = pairedKeys(records, -1);
    int done = 0;
    for (auto it = dwMap.cbegin(); it != dwMap.cend(); ++it) {
        applyUnit(tbCl.value(it.key()), paired, modifyPrice, setProvisional, cancelProvisional);
        report(progress, 0, share, ++done, int(dwMap.size()));
    }
}
