#pragma once

#include "ZgClQdModel.h"

// The submitted-version model of "暂估材料(工程设备)清单": the same display, never editable.
class ZgClQdSsModel : public ZgClQdModel
{
    Q_OBJECT
public:
    explicit ZgClQdSsModel(QObject* parent = nullptr) : ZgClQdModel(parent)
    {
        setReadOnlyView(true);
    }
};
