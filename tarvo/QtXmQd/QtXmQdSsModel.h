#pragma once

#include "QtXmQdModel.h"

// The submitted-version model of "其他项目清单": the same display, never editable.
class QtXmQdSsModel : public QtXmQdModel
{
    Q_OBJECT
public:
    explicit QtXmQdSsModel(QObject* parent = nullptr) : QtXmQdModel(parent)
    {
        setReadOnlyView(true);
    }
};
