#pragma once

#include "ZbrClGzfQdModel.h"

// The submitted-version model of "招标人材料购置费清单": the same display, never editable.
class ZbrClGzfQdSsModel : public ZbrClGzfQdModel
{
    Q_OBJECT
public:
    explicit ZbrClGzfQdSsModel(QObject* parent = nullptr) : ZbrClGzfQdModel(parent)
    {
        setReadOnlyView(true);
    }
};
