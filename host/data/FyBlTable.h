#pragma once

#include "GeneralTableBase.h"

// A unit project's fee variables (费用变量). Fields: 1 id, 2 name, 3 value, 4 expression.
TARVO_DECLARE_TABLE(FyBlItem, FyBlTable, 202)
