#pragma once

#include <QMetaType>

// What one record (or one undo or redo of it) changed in one table: whether rows came,
// went or changed places, and the span of rows whose values changed. Views redraw that span,
// or rebuild when the rows themselves changed.
struct TableChange
{
    bool rowsChanged = false;
    int firstRow = -1; // -1: no row's values changed
    int lastRow = -1;
};

Q_DECLARE_METATYPE(TableChange)
