#pragma once

#include "MaterialListBusiness.h"
#include "UnitProjectCalc.h"

#include "SjCqXPsClTable.h"

#include <QList>
#include <QString>

class DbZbXpsClItem;
class ProgressSink;
class ProjectWorks;

// The list of materials subject to evaluation (需评审的材料清单) of a construction project: the
// bid's materials the tender wants evaluated, gathered from the unit projects by material
// identity (equal name, model (规格型号) and unit). A unit project marks such a material with
// its evaluated flag; the list and those flags are kept in step (docs/business-rules.md).
class SjCqXPsClBusiness : public MaterialListBusiness<SjCqXPsClTable>
{
public:
    // Disagreements between unit projects, kept in field 30 of a list row.
    enum Inconsistency { PriceDiffers = 1, OriginDiffers = 4 };
    static constexpr int InconsistencyField = 30;
    static constexpr int QuestionMarkField = 22;
    // Fields of a unit project's material (人材机).
    static constexpr int UnitProvisionalField = 11;
    static constexpr int UnitEvaluatedField = 16;
    static constexpr int UnitOwnerSuppliedField = 17;
    // A unit project's tender code of the evaluated list (18 is the provisional list's).
    static constexpr int UnitEvaluatedCodeField = 19;
    // On a bid material of the comparison with the tender: the project marks it for evaluation
    // (the list holds it or some unit project flags it).
    static constexpr int TbMarkedField = 16;
    // Material rows a cleared list is padded to.
    static constexpr int MinimumRows = 10;

    // What SynchGljClState carries down: rows deleted from the list or rows cleared in place.
    enum SynchKind { RowsDeleted = 0, RowsCleared = 1 };

    // One material as the list knows it, for carrying a change down after its row is gone.
    struct Key
    {
        QString name, model, unit;
        bool operator==(const Key& other) const
        {
            return name == other.name && model == other.model && unit == other.unit;
        }
    };
    static Key KeyOf(const BaseDataItem* item);

    using MaterialListBusiness::InsertItem;
    static BaseDataItem* InsertItem(SjCqXPsClTable* table, int row)
    {
        return MaterialListBusiness::InsertItem(nullptr, table, row);
    }
    static void CalculateSjCqXPsClItemHJ(ConstructionWorks*, SjCqXPsClTable* table)
    {
        TableOps::calculateMaterialList(table);
        UnitProjectCalc::RecalculateOwner(table);
    }
    // One row's amount after its quantity or price changed.
    static void CalculateSjCqXPsClItemHJ(BaseDataItem* item);
    static void RemoveAllAndKeepNRow(SjCqXPsClTable* table, int n);
    // Pads the list to MinimumRows material rows and a closing total row "合计".
    static void CompleteEmptyRows(SjCqXPsClTable* table);

    // Rebuilds the list from the materials some unit project flags evaluated.
    static void HzSjCqXPsCl(ConstructionWorks* works, ProgressSink* progress);
    // Appends the provisional-price (ZjGcZgjCl) or owner-supplied (ZjGcJgCl) materials of the
    // unit projects that the list does not hold yet; those materials become evaluated in every
    // unit project holding them.
    static void ZjGcZgjCl(ConstructionWorks* works, ProgressSink* progress);
    static void ZjGcJgCl(ConstructionWorks* works, ProgressSink* progress);
    // Takes quantities and prices from the unit projects into the rows; a row whose material
    // no unit project holds gets the question mark.
    static void UpdateSjCqXPsClSLAndTJ(ConstructionWorks* works, ProgressSink* progress);
    static int GetTjByzClCount(ConstructionWorks* works);
    static int GetBCzDyClCount(ConstructionWorks* works);
    static void SetTjByzClBlock(ConstructionWorks* works);
    static void ClearBCzDyClBj(ConstructionWorks* works);

    // Numbers the non-empty material rows 1, 2, 3 ...
    static void RegenerateSjCqXPsClXH(ConstructionWorks* works);
    // Tender codes: prefix + running number from start, zero-padded to digits (at most 32).
    static void RegenerateSjCqXPsClTableBM(ConstructionWorks* works, const QString& prefix,
                                           int start, int digits);
    // Numbers the rows after the tender's list stored in the project: a row whose material the
    // tender lists takes the tender's serial and code; the others follow in list order after
    // the highest tender serial, their codes untouched. False when the project holds no
    // tender list (nothing changes).
    static bool RegenerateSjCqXPsClXHByZbQd(ConstructionWorks* works);
    // "仅保留招标信息": every material row keeps what the tender's list has (serial, code,
    // name, model, unit, variety, origin, manufacturer, quality grade, remark) and loses its
    // quantity, prices, amount, question mark and disagreements.
    static void KeepZbInfoOnly(SjCqXPsClTable* table);

    // Carries deleted or cleared rows down to the unit projects: a material the list no longer
    // holds gets its evaluated flag set to flag in every unit project (false: no longer
    // evaluated). kind is a SynchKind; both kinds act alike, the rows' materials being given.
    static void SynchGljClState(SjCqXPsClTable* table, const QList<Key>& rows,
                                ProgressSink* progress, int kind, bool flag);
    static void SynchGljClState(SjCqXPsClTable* table, const Key& row, ProgressSink* progress,
                                int kind, bool flag)
    {
        SynchGljClState(table, QList<Key>{row}, progress, kind, flag);
    }

    // The comparison with the tender's evaluated list (docs/business-rules.md). Bid materials
    // are copies the caller owns and deletes, each with TbMarkedField; the records are the
    // caller's too and borrow both materials.
    //
    // The bid's evaluated materials: the list's material rows, then the materials some unit
    // project flags evaluated that the list lacks.
    static void AquireXmTbXpsCl(ConstructionWorks* works, QList<SjCqXPsClItem*>& tbCl);
    // Every material of every unit project, summarised, as candidates.
    static void HzSyClAsTbXpsCl(ConstructionWorks* works, QList<SjCqXPsClItem*>& tbCl);
    // One record per tender material, paired through MaterialMatcher (exact identity, then the
    // normalised key: state 3), then one bid-only record (state 2) per marked bid material no
    // tender material took. tbOnly: every bid material left without a tender material. False
    // when the project holds no tender list (no records).
    static bool InitMatchZbXpsCl(ConstructionWorks* works, const QList<SjCqXPsClItem*>& tbCl,
                                 QList<DbZbXpsClItem*>& records, QList<SjCqXPsClItem*>& tbOnly);
    // After a pair was made or removed by hand: the bid-only records and tbOnly again.
    static void RefreshXpsTbOnlyRows(QList<DbZbXpsClItem*>& records,
                                     const QList<SjCqXPsClItem*>& tbCl,
                                     QList<SjCqXPsClItem*>& tbOnly);
    static void CountZbXpsCl(const QList<DbZbXpsClItem*>& records, int& matched, int& unmatched);
    // A: matched records whose bid material is not marked; B: bid-only records (marked, no
    // tender material); C: matched records whose bid material is marked, which take the
    // tender's serial and code.
    static void AnalysisXmXpsModify(ConstructionWorks* works, const QList<DbZbXpsClItem*>& records,
                                    QList<DbZbXpsClItem*>& a, QList<DbZbXpsClItem*>& b,
                                    QList<DbZbXpsClItem*>& c);
    // Writes C (and A when setAttribute) into the list and the unit projects: evaluated, the
    // tender's serial and code; B loses its tender code, and with cancelAttribute also its
    // evaluated flag and its row.
    static void ApplyZbXpsClModifyToProject(ConstructionWorks* works,
                                            const QList<DbZbXpsClItem*>& a,
                                            const QList<DbZbXpsClItem*>& b,
                                            const QList<DbZbXpsClItem*>& c, bool setAttribute,
                                            bool cancelAttribute);

    // Red text for a price that differs between unit projects; a yellow origin cell where the
    // origin differs.
    static QColor GetCellTextColor(SjCqXPsClTable* table, int row, int field);
    static QColor GetCellBackgroundColor(SjCqXPsClTable* table, int row, int field);

private:
    static void append(ConstructionWorks* works, int unitFlag, ProgressSink* progress);
};

inline uint qHash(const SjCqXPsClBusiness::Key& key, uint seed = 0)
{
    return qHash(key.name, seed) ^ (qHash(key.model, seed) * 31u) ^ (qHash(key.unit, seed) * 131u);
}
