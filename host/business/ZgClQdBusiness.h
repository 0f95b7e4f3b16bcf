#pragma once

#include "MaterialListBusiness.h"
#include "UnitProjectCalc.h"

#include "ZgjClHzTable.h"

// Calculation of the provisional-price materials list (暂估材料(工程设备)清单).
class ZgClQdBusiness : public MaterialListBusiness<ZgjClHzTable>
{
public:
    static void CalculateZgjClHzTable(ConstructionWorks*, ZgjClHzTable* table)
    {
        TableOps::calculateMaterialList(table);
        UnitProjectCalc::RecalculateOwner(table);
    }
};
