#pragma once

#include "MaterialListBusiness.h"
#include "UnitProjectCalc.h"

#include "SjCqXPsClTable.h"

// Calculation of the list of materials subject to evaluation (需评审的材料清单).
class SjCqXPsClBusiness : public MaterialListBusiness<SjCqXPsClTable>
{
public:
    static void CalculateSjCqXPsClItemHJ(ConstructionWorks*, SjCqXPsClTable* table)
    {
        TableOps::calculateMaterialList(table);
        UnitProjectCalc::RecalculateOwner(table);
    }
};
