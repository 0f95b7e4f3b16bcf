#pragma once

#include "ZgClQd/PopupDialog/TbZbZgClDialog.h"

// The save options of the evaluated-materials comparison: set the evaluated attribute on
// matched materials that lack it, cancel it on unmatched materials that carry it. "保存" goes
// on with the boxes as ticked; "取消" returns to editing.
class TbZbXpsClDialog : public TbZbZgClDialog
{
    Q_OBJECT
public:
    TbZbXpsClDialog(bool setAttribute, bool cancelAttribute, QWidget* parent = nullptr);

    bool setAttribute() const { return chosen(0); }
    bool cancelAttribute() const { return chosen(1); }
};
