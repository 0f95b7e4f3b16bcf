#pragma once

#include "GeneralTableBase.h"

// Materials subject to evaluation (需评审的材料清单). Fields as the provisional list: 1 serial, 2
// tender code, 3 name, 4 model (规格型号), 5 unit, 6 base price, 7 unit price, 8 variety, 9
// quantity, 10 amount, 12 origin, 13 manufacturer, 14 quality grade, 15 remark, 22 question mark.
// Kinds: 1 material, 2 total.
TARVO_DECLARE_TABLE(SjCqXPsClItem, SjCqXPsClTable, 106)
