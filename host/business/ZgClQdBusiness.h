#pragma once

#include "MaterialListBusiness.h"

#include "ProjectWorks.h"
#include "ZgjClHzTable.h"

#include <QList>
#include <QMap>

class ProTreeNode;
class ZgClZsItem;

// Calculation of the provisional-price materials list (暂估材料(工程设备)清单).
class ZgClQdBusiness : public MaterialListBusiness<ZgjClHzTable>
{
public:
    static void CalculateZgjClHzTable(ConstructionWorks*, ZgjClHzTable* table)
    {
        TableOps::calculateMaterialList(table);
    }

    // --- The tender's provisional list (ZgClQdBusinessTender.cpp) ---

    // The tender list stored in the project, as nodes the caller owns: each unit project of
    // the project tree in order, with its tender materials below it; flag 1 on a material the
    // unit project's own provisional list has (same name, specification and unit). False, and
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
