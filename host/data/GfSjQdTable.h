#pragma once

#include "GeneralTableBase.h"

// Statutory fees and taxes list (规费税金清单). Fields: 1 serial, 2 name, 3 calculation base
// (expression over fee variables), 4 rate in percent, 5 amount, 6 base amount, 7 remark. Kinds: 0
// fee row, 1 heading row, 2 tax row.
TARVO_DECLARE_TABLE(GfSjQdItem, GfSjQdTable, 104)
