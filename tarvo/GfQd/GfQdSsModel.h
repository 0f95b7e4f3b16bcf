#pragma once

#include "GfQdModel.h"

// The submitted-version model of "规费税金清单": the same display, never editable.
class GfQdSsModel : public GfQdModel
{
    Q_OBJECT
public:
    explicit GfQdSsModel(QObject* parent = nullptr) : GfQdModel(parent) { setReadOnlyView(true); }
};
