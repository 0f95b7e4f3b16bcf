#pragma once

#include "GeneralTableBase.h"

// Daywork labour unit-price list (零星工作项目人工单价清单). Fields: 1 serial, 2 trade, 3 unit, 4
// labour unit price, 5 remark, 6 provisional quantity, 7 amount. Kinds: 0 labour row, 1 summary
// row.
TARVO_DECLARE_TABLE(LxGzXmRgDjQdItem, LxGzXmRgDjQdTable, 103)
