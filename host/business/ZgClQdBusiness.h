#pragma once

#include "MaterialListBusiness.h"
#include "UnitProjectCalc.h"

#include "ProjectWorks.h"
#include "ZgjClHzTable.h"

#include <QList>
#include <QMap>
#include <QString>

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
};
