#pragma once

#include "GeneralTableBase.h"

// Tenderer-purchased materials fee list (招标人材料购置费清单). Fields: 1 serial, 2 code, 3 name, 4
// model (规格型号), 5 unit, 6 base price, 7 unit price, 9 quantity, 10 amount, 12 origin, 13
// manufacturer, 15 remark, 22 question mark. Kinds: 1 material, 2 total.
TARVO_DECLARE_TABLE(ZbrClGzfQdItem, ZbrClGzfQdTable, 102)
