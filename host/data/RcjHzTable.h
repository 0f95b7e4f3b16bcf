#pragma once

#include "GeneralTableBase.h"

// A unit project's own materials (人材机). Fields: 1 code, 2 category (人/材/机), 3 name, 4 model
// (规格型号), 5 unit, 6 base price, 7 adjusted price, 8 variety, 9 quantity, 10 amount, 11
// provisional flag, 12 origin, 13 manufacturer, 14 quality grade, 15 remark, 16 evaluated flag, 17
// owner-supplied flag, 18 tender code.
TARVO_DECLARE_TABLE(RcjHzItem, RcjHzTable, 201)
