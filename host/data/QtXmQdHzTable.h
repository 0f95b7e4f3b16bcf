#pragma once

#include "GeneralTableBase.h"

// Other items list (其他项目清单). Fields: 1 serial, 2 name, 3 amount (a formula on calculation
// rows), 4 remark, 5 unit, 6 evaluated amount of a calculation row. Kinds: 0 ordinary, 1 new empty,
// 2 subtotal, 3 calculation, 4 total.
TARVO_DECLARE_TABLE(QtXmQdHzItem, QtXmQdHzTable, 101)
