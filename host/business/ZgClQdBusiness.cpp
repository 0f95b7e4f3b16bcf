#include "ZgClQdBusiness.h"

#include "MaterialListMarks.h"
#include "ProgressSink.h"
#include "ZgClQdGathering.h"

#include "ProjectWorks.h"

#include <QHash>

#include <cmath>

namespace {

ZgjClHzTable* listOf(ConstructionWorks* works)
{
    return works ? works->getTenderInventory()->getZgjClHzTable() : nullptr;
}

int inconsistency(const BaseDataItem* item)
{
    return item ? item->getValue(ZgClQdBusiness::InconsistencyField).toInt() : 0;
}

bool isMaterialRow(const BaseDataItem* item)
{
    return item->getKind() == ZgClQdBusiness::Material && !TableOps::isBlank(item);
}

double fen(double value)
{
    return std::round(value * 100.0) / 100.0;
}

// Sets a field only when it changes, so that a refresh records what really changed.
void update(BaseDataItem* item, int field, const QVariant& value)
{
    if (item->getValue(field) != value)
        item->setValue(field, value);
}

// The inconsistency bit of a list field whose value is set for all unit projects.
int bitOf(int listField)
{
    switch (listField) {
    case 7:
        return ZgClQdBusiness::PriceDiffers;
    case ZgClQdBusiness::ProvisionalField:
        return ZgClQdBusiness::ProvisionalDiffers;
    case 12:
        return ZgClQdBusiness::OriginDiffers;
    case 13:
        return ZgClQdBusiness::ManufacturerDiffers;
    case 15:
        return ZgClQdBusiness::RemarkDiffers;
    default:
        return 0;
    }
}

// A typed provisional attribute: a boolean, or 1/0, 是/否, true/false as text.
bool toProvisional(const QVariant& value, bool* ok)
{
    *ok = true;
    if (value.userType() == QMetaType::Bool)
        return value.toBool();
    const QString text = value.toString().trimmed().toLower();
    if (text == QLatin1String("1") || text == QLatin1String("true") || text == QStringLiteral("是"))
        return true;
    if (text == QLatin1String("0") || text == QLatin1String("false") ||
        text == QStringLiteral("否") || text.isEmpty())
        return false;
    *ok = false;
    return false;
}

} // namespace

BaseDataItem* ZgClQdBusiness::InsertItem(ZgjClHzTable* table, int row)
{
    return MaterialListBusiness::InsertItem(nullptr, table, row);
}

void ZgClQdBusiness::CalculateZgjClItemHJ(BaseDataItem* item)
{
    if (!item || item->getKind() != Material)
        return;
    if (!item->getValue(7).isValid() && !item->getValue(9).isValid())
        update(item, 10, QVariant());
    else
        update(item, 10, fen(item->getDouble(9) * item->getDouble(7)));
}

void ZgClQdBusiness::CompleteEmptyRows(ZgjClHzTable* table)
{
    if (!table)
        return;
    BaseDataItem* total = nullptr;
    if (!CheckExistedTotalRow(table, &total)) {
        total = TableOps::insertNew(table, table->count(), Total);
        total->setValue(3, QStringLiteral("合计"));
    }
    int materials = 0;
    for (const BaseDataItem* item : table->items())
        materials += item->getKind() == Material ? 1 : 0;
    while (materials++ < MinimumRows)
        TableOps::insertNew(table, table->GetItemIndexInOrder(total), Material);
    TableOps::calculateMaterialList(table);
}

void ZgClQdBusiness::RemoveAllAndKeepNRow(ZgjClHzTable* table, int n)
{
    if (!table || n < 0)
        return;
    int kept = 0;
    for (int row = 0; row < table->count();) {
        const bool total = table->at(row)->getKind() == Total;
        if (total || kept < n) {
            kept += total ? 0 : 1;
            ++row;
            continue;
        }
        table->BaseDataItemRemoveAt(row);
    }
    TableOps::calculateMaterialList(table);
}

void ZgClQdBusiness::RegenerateZgjClHzb(ConstructionWorks* works, ProgressSink* progress, int share,
                                        int start)
{
    ZgjClHzTable* table = listOf(works);
    if (!table)
        return;
    BusinessFaultInjection::check();
    // Tender codes typed or generated earlier survive a new summary of the same material.
    QHash<ZgClQdGathering::Key, QString> formerCodes;
    for (const BaseDataItem* item : table->items())
        if (item->getKind() == Material && !item->getValue(2).toString().isEmpty())
            formerCodes.insert(ZgClQdGathering::keyOf(item), item->getValue(2).toString());

    const ZgClQdGathering gathered(works->getOwner(), progress, start, share * 9 / 10);
    table->Clear();
    int serial = 0;
    for (const ZgClQdGathering::Material* m : gathered.provisional()) {
        BaseDataItem* item = table->CreateItem();
        item->loadState(Material, false, 0, QString());
        item->loadValue(1, ++serial);
        item->loadValue(2, m->code.isEmpty() ? formerCodes.value(m->key) : m->code);
        item->loadValue(3, m->key.name);
        item->loadValue(4, m->key.model);
        item->loadValue(5, m->key.unit);
        item->loadValue(6, m->basePrice);
        item->loadValue(7, m->price());
        item->loadValue(8, m->variety);
        item->loadValue(9, std::round(m->quantity * 1000.0) / 1000.0);
        item->loadValue(10, fen(m->price() * std::round(m->quantity * 1000.0) / 1000.0));
        item->loadValue(ProvisionalField, true);
        item->loadValue(12, m->origin);
        item->loadValue(13, m->manufacturer);
        item->loadValue(14, m->quality);
        item->loadValue(15, m->remark);
        item->loadValue(InconsistencyField, m->flags());
        table->BaseDataItemAppend(item);
    }
    BaseDataItem* total = table->CreateItem();
    total->loadState(Total, false, 0, QString());
    total->loadValue(3, QStringLiteral("合计"));
    table->BaseDataItemAppend(total);
    TableOps::calculateMaterialList(table);
    if (progress)
        progress->setValue(start + share);
}

void ZgClQdBusiness::UpdateZgjClHzbSLAndTJ(ConstructionWorks* works, ProgressSink* progress)
{
    ZgjClHzTable* table = listOf(works);
    if (!table)
        return;
    BusinessFaultInjection::check();
    const ZgClQdGathering gathered(works->getOwner(), progress, 0, 90);
    for (BaseDataItem* item : table->items()) {
        if (!isMaterialRow(item))
            continue;
        const ZgClQdGathering::Material* m = gathered.find(ZgClQdGathering::keyOf(item));
        if (!m || !m->provisionalSomewhere) {
            update(item, QuestionMarkField, true); // no unit project holds it any more
            continue;
        }
        update(item, QuestionMarkField, false);
        update(item, 7, m->price());
        update(item, 9, std::round(m->quantity * 1000.0) / 1000.0);
        update(item, InconsistencyField, m->flags());
        CalculateZgjClItemHJ(item);
    }
    TableOps::calculateMaterialList(table);
    if (progress)
        progress->setValue(100);
}

int ZgClQdBusiness::GetTjByzClCount(ConstructionWorks* works)
{
    return MaterialListMarks::countWithBit(listOf(works), InconsistencyField, PriceDiffers);
}

int ZgClQdBusiness::GetBCzDyClCount(ConstructionWorks* works)
{
    return MaterialListMarks::countMarked(listOf(works), QuestionMarkField);
}

void ZgClQdBusiness::SetTjByzClBlock(ConstructionWorks* works)
{
    MaterialListMarks::blockWithBit(listOf(works), InconsistencyField, PriceDiffers);
}

void ZgClQdBusiness::ClearBCzDyClBj(ConstructionWorks* works)
{
    MaterialListMarks::clearMarks(listOf(works), QuestionMarkField);
}

void ZgClQdBusiness::RegenerateZgjClHzbXH(ConstructionWorks* works)
{
    MaterialListMarks::numberMaterialRows(listOf(works));
}

void ZgClQdBusiness::RegenerateZgjClHzbBM(ConstructionWorks* works, const QString& prefix,
                                          int start, int digits)
{
    ZgjClHzTable* table = listOf(works);
    if (!table)
        return;
    BusinessFaultInjection::check();
    QHash<ZgClQdGathering::Key, QString> codes;
    MaterialListMarks::codeMaterialRows(table, prefix, start, digits,
                                        [&](BaseDataItem* item, const QString& code) {
                                            codes.insert(ZgClQdGathering::keyOf(item), code);
                                        });
    // The unit projects' materials take the codes too.
    if (ProjectWorks* project = works->getOwner())
        for (ProTreeNode* node : project->unitProjectNodes())
            if (ConstructionWorks* unit = project->works(0, ProTreeNode::Id(node)))
                for (BaseDataItem* m : unit->getRcjHzTable()->items()) {
                    if (!m->getValue(ProvisionalField).toBool())
                        continue;
                    const auto it = codes.constFind(ZgClQdGathering::keyOf(m));
                    if (it != codes.cend())
                        update(m, UnitTenderCodeField, *it);
                }
}

int ZgClQdBusiness::UnitFieldOf(int listField)
{
    switch (listField) {
    case 2:
        return UnitTenderCodeField;
    case 7:
    case 8:
    case ProvisionalField:
    case 12:
    case 13:
    case 14:
    case 15:
        return listField;
    default:
        return -1;
    }
}

bool ZgClQdBusiness::ProcColunmValueChanged(ConstructionWorks*, ZgjClHzTable* table, int row,
                                            int field, const QVariant& value)
{
    BusinessFaultInjection::check();
    BaseDataItem* item = table ? table->at(row) : nullptr;
    if (!item || item->getKind() == Total || field < 0 || field == InconsistencyField)
        return false;
    QVariant stored;
    if (field == ProvisionalField) {
        bool ok = false;
        stored = toProvisional(value, &ok);
        if (!ok)
            return false; // neither yes nor no: nothing changes
    } else if (field == 6 || field == 7 || field == 9 || field == 10) {
        if (value.toString().trimmed().isEmpty()) {
            stored = QVariant();
        } else {
            stored = TableOps::normalise(value);
            if (stored.userType() != QMetaType::Double)
                return false; // a number field never takes text
        }
    } else {
        stored = TableOps::normalise(value);
        if (field != 1 && stored.userType() == QMetaType::Double)
            stored = value.toString().trimmed(); // codes, names and remarks stay text
    }
    item->setValue(field, stored);
    CalculateZgjClItemHJ(item);
    TableOps::calculateMaterialList(table);

    const int unitField = UnitFieldOf(field);
    ProjectWorks* project = table->getOwner();
    if (unitField < 0 || !project || !isMaterialRow(item))
        return true;
    // One material must carry the same setting in every unit project: set it there as well.
    const ZgClQdGathering::Key key = ZgClQdGathering::keyOf(item);
    for (ProTreeNode* node : project->unitProjectNodes()) {
        ConstructionWorks* unit = project->works(0, ProTreeNode::Id(node));
        if (!unit)
            continue;
        for (BaseDataItem* m : unit->getRcjHzTable()->items()) {
            if (!ZgClQdGathering::sameMaterial(m, key))
                continue;
            update(m, unitField, stored);
            if (unitField == 7)
                update(m, 10, fen(m->getDouble(9) * m->getDouble(7)));
        }
    }
    if (const int bit = bitOf(field))
        update(item, InconsistencyField, inconsistency(item) & ~bit);
    return true;
}

QColor ZgClQdBusiness::GetCellTextColor(ZgjClHzTable* table, int row, int field)
{
    const int flags = inconsistency(table ? table->at(row) : nullptr);
    return field == 7 && (flags & PriceDiffers) ? QColor(220, 0, 0) : QColor();
}

QColor ZgClQdBusiness::GetCellBackgroundColor(ZgjClHzTable* table, int row, int field)
{
    const int flags = inconsistency(table ? table->at(row) : nullptr);
    if (field == 3 && (flags & ProvisionalDiffers))
        return QColor(255, 214, 214);
    if ((field == 12 && (flags & OriginDiffers)) ||
        (field == 13 && (flags & ManufacturerDiffers)) || (field == 15 && (flags & RemarkDiffers)))
        return QColor(255, 242, 184);
    return QColor();
}
