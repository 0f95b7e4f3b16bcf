#pragma once

#include "LxGzXmQdModel.h"

// The submitted-version model of "零星工作项目人工单价清单": the same display, never editable.
class LxGzXmQdSsModel : public LxGzXmQdModel
{
    Q_OBJECT
public:
    explicit LxGzXmQdSsModel(QObject* parent = nullptr) : LxGzXmQdModel(parent)
    {
        setReadOnlyView(true);
    }
};
