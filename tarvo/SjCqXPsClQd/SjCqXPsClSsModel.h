#pragma once

#include "SjCqXPsClModel.h"

// The submitted-version model of "需评审的材料清单": the same display, never editable.
class SjCqXPsClSsModel : public SjCqXPsClModel
{
    Q_OBJECT
public:
    explicit SjCqXPsClSsModel(QObject* parent = nullptr) : SjCqXPsClModel(parent)
    {
        setReadOnlyView(true);
    }
};
