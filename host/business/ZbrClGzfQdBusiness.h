#pragma once

#include "MaterialListBusiness.h"

#include "ZbrClGzfQdTable.h"

// Calculation of the tenderer-purchased materials fee list (招标人材料购置费清单).
class ZbrClGzfQdBusiness : public MaterialListBusiness<ZbrClGzfQdTable>
{
public:
    static void CalGzfQdTable(ConstructionWorks*, ZbrClGzfQdTable* table) { TableOps::calculateMaterialList(table); }
};
