#pragma once

#include "MaterialListBusiness.h"
#include "UnitProjectCalc.h"

#include "ProjectWorks.h"
#include "ZgjClHzTable.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

class DbZbZgClItem;
class ProTreeNode;
class ProgressSink;
class ZgClZsItem;

// The provisional-price materials list (暂估材料(工程设备)清单) of a construction project: one row
// per material (equal name, model (规格型号) and unit) that some unit project holds as
// provisional, with the three kinds of disagreement between unit projects, and the properties
// that are set in the list once for every unit project.
class ZgClQdBusiness : public MaterialListBusiness<ZgjClHzTable>
{
public:
    // Disagreements between unit projects, kept in field 30 of a list row.
    enum Inconsistency {
        PriceDiffers = 1,        // adjusted price (7)
        ProvisionalDiffers = 2,  // provisional attribute (11)
        OriginDiffers = 4,       // origin (12)
        ManufacturerDiffers = 8, // manufacturer (13)
        RemarkDiffers = 16       // remark (15)
    };
    static constexpr int InconsistencyField = 30;
    static constexpr int QuestionMarkField = 22;
    // Field of a list row that holds the provisional attribute, and of a unit-project
    // material that holds its tender code.
    static constexpr int ProvisionalField = 11;
    static constexpr int UnitTenderCodeField = 18;
    // Material rows a cleared list is padded to.
    static constexpr int MinimumRows = 10;

    using MaterialListBusiness::InsertItem;
    static BaseDataItem* InsertItem(ZgjClHzTable* table, int row);
    static void CalculateZgjClHzTable(ConstructionWorks*, ZgjClHzTable* table)
    {
        TableOps::calculateMaterialList(table);
        UnitProjectCalc::RecalculateOwner(table);
    }
    static void CalculateZgjClItemHJ(BaseDataItem* item);
    // Pads the list to MinimumRows material rows and a closing total row.
    static void CompleteEmptyRows(ZgjClHzTable* table);
    // Keeps the first n material rows and the total row.
    static void RemoveAllAndKeepNRow(ZgjClHzTable* table, int n);

    // Rebuilds the list from all unit projects; progress runs from start over share points.
    static void RegenerateZgjClHzb(ConstructionWorks* works, ProgressSink* progress, int share,
                                   int start);
    // Takes quantities and prices from the unit projects into the rows of the list; rows whose
    // material no unit project holds as provisional any more get the question mark.
    static void UpdateZgjClHzbSLAndTJ(ConstructionWorks* works, ProgressSink* progress);
    static int GetTjByzClCount(ConstructionWorks* works);
    static int GetBCzDyClCount(ConstructionWorks* works);
    static void SetTjByzClBlock(ConstructionWorks* works);
    static void ClearBCzDyClBj(ConstructionWorks* works);
    static void RegenerateZgjClHzbXH(ConstructionWorks* works);
    // Tender codes prefix + running number from start, zero-padded to digits; the codes are
    // written to the unit projects' materials too.
    static void RegenerateZgjClHzbBM(ConstructionWorks* works, const QString& prefix, int start,
                                     int digits);

    // A cell edit. A property that must agree between unit projects (see docs/business-rules.md)
    // is written to every unit project holding the material, in the same undo record.
    static bool ProcColunmValueChanged(ConstructionWorks* works, ZgjClHzTable* table, int row,
                                       int field, const QVariant& value);
    static bool ProcColunmValueChanged(ZgjClHzTable* table, int row, int field,
                                       const QVariant& value)
    {
        return ProcColunmValueChanged(nullptr, table, row, field, value);
    }
    // The unit-project field a list field is carried down to, or -1 for list-only fields.
    static int UnitFieldOf(int listField);

    // Text red where the adjusted price differs; backgrounds where the provisional attribute
    // (name cell), the origin, the manufacturer or the remark differ.
    static QColor GetCellTextColor(ZgjClHzTable* table, int row, int field);
    static QColor GetCellBackgroundColor(ZgjClHzTable* table, int row, int field);

    // The provisional materials of every unit project, as a tree of nodes (a unit-project node,
    // then its materials) that the caller owns. A material node is flagged 1 when a setting
    // differs from the same material in another unit project.
    static void GetGcZgSz(ConstructionWorks* works, QList<ZgClZsItem*>& nodes,
                          ProgressSink* progress);

    // --- The tender's provisional list (ZgClQdBusinessTender.cpp) ---

    // The tender list stored in the project, as nodes the caller owns: each unit project of
    // the project tree in order, with its tender materials below it; flag 1 on a material the
    // unit project's own provisional list has (same name, model and unit). False, and
    // no nodes, when the project holds no tender list.
    static bool GetGcZbZgClTreeList(qint64 projectId, int auditId, QList<ZgClZsItem*>& nodes);
    // Maps each unit-project node of a tender node list (by node id) to the project's tree
    // node; false when one has none in the project of the given works.
    static bool AquireZbZgClMap(const QList<ZgClZsItem*>& nodes, ConstructionWorks* project,
                                QMap<int, ProTreeNode*>& dwMap);
    // Copies of the tender materials per unit project, keyed (project index, node id), for
    // ProjectWorks::SetGcZbZgCl to take over; every mapped unit project gets an entry.
    static bool AquireGcZbZgClFromCJZRes(const QList<ZgClZsItem*>& nodes,
                                         const QMap<int, ProTreeNode*>& dwMap,
                                         ProjectWorks::ZbZgClMap& materials);

    // --- Matching the bid's materials to the tender list (ZgClQdBusinessMatch.cpp) ---

    // The material lines of each unit project, by project-tree id: rows of the unit
    // projects' own materials (人材机), borrowed.
    using TbClMap = QHash<int, QList<BaseDataItem*>>;
    using DwMap = QMap<int, ProTreeNode*>;

    // Gathers the bid materials of every unit project and makes the first matching of the
    // stored tender list: per unit project a heading, its tender materials (matched or not)
    // and its provisional materials that no tender material took. Tender materials of unit
    // projects the project no longer has are shown under an orphan heading. False, and no
    // records, when the project holds no tender list.
    static bool InitMatchZbZgCl(ConstructionWorks* project, QList<DbZbZgClItem*>& records,
                                TbClMap& tbCl, DwMap& dwMap, ProgressSink* progress);
    // Carries the pairs of the project-wide comparison into the per-unit-project records: a
    // tender material takes the unit project's line of the bid material its equal took over
    // all materials. resetAll: every tender record is unpaired first; otherwise only
    // unmatched ones take a pair.
    static void MatchZbZgClByDbRes(ConstructionWorks* project,
                                   const QList<DbZbZgClItem*>& syRecords, bool resetAll,
                                   QList<DbZbZgClItem*>& records, const TbClMap& tbCl,
                                   const DwMap& dwMap, ProgressSink* progress, int share);
    // Matches again the tender materials of one unit project, after they were unpaired.
    static void MatchDqZxGcZbZgCl(int dwId, ProTreeNode* dwNode, QList<DbZbZgClItem*>& records,
                                  const TbClMap& tbCl);
    // The unit project's line equal (name, model, unit) to the given material, or null.
    static BaseDataItem* CheckFZgClExistInDw(const QList<BaseDataItem*>& dwCl,
                                             const BaseDataItem* material);
    // The material with these properties, or null.
    static BaseDataItem* CheckMaterialExists(const QList<BaseDataItem*>& materials,
                                             const QString& name, const QString& model,
                                             const QString& unit, double price);
    // The project's bid materials, one line per material (name, model, unit), in the order
    // of the unit projects.
    static QList<BaseDataItem*> GetAllTbCl(const TbClMap& tbCl, const DwMap& dwMap);
    // Rebuilds the bid-only rows of one unit project (-1: the project-wide comparison): its
    // provisional materials that no tender record of it holds.
    static void RefreshTbOnlyRows(int dwId, QList<DbZbZgClItem*>& records, const TbClMap& tbCl);
    // Tender records matched (states 0 and 3) and unmatched (state 1).
    static void CountZbZgCl(const QList<DbZbZgClItem*>& records, int& matched, int& unmatched);

    // b1: a matched material's adjusted price differs from the tender's provisional price;
    // b2: a matched material is not provisional; b3: a material no tender material took is
    // provisional. Orphan rows do not count.
    static void AnalyzeZbZgClModifyProperty(const QList<DbZbZgClItem*>& records,
                                            const TbClMap& tbCl, bool& b1, bool& b2, bool& b3);
    // Writes the pairs into the unit projects: the tender code to every line of the paired
    // material, and as chosen the provisional price as adjusted price, the provisional
    // attribute on matched materials, and no provisional attribute on the rest. Progress
    // runs from 0 over share points. Journalled in the caller's record.
    static void ApplyZbZgClModifyToProject(const DwMap& dwMap, const QList<DbZbZgClItem*>& records,
                                           const TbClMap& tbCl, bool modifyPrice,
                                           bool setProvisional, bool cancelProvisional,
                                           ProgressSink* progress, int share);

    // The project-wide comparison: the tender materials and the bid materials of all unit
    // projects, each once per material, as records with dwId -1. tbCl and dwMap are filled
    // as by InitMatchZbZgCl. False when the project holds no tender list.
    static bool GetGcZbAndTbCl(ConstructionWorks* project, QList<DbZbZgClItem*>& records,
                               TbClMap& tbCl, DwMap& dwMap, ProgressSink* progress);
    static void AutoMatchZbSyCl(QList<DbZbZgClItem*>& records, const TbClMap& tbCl,
                                const DwMap& dwMap);
    static void AnalyzeSyZbZgClModifyProperty(const QList<DbZbZgClItem*>& records,
                                              const TbClMap& tbCl, const DwMap& dwMap, bool& b1,
                                              bool& b2, bool& b3);
    // As ApplyZbZgClModifyToProject, for every unit project holding a paired material.
    static void ApplySyZbZgClModifyToProject(const DwMap& dwMap,
                                             const QList<DbZbZgClItem*>& records,
                                             const TbClMap& tbCl, bool modifyPrice,
                                             bool setProvisional, bool cancelProvisional,
                                             ProgressSink* progress, int share);
};
