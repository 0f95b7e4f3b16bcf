#pragma once

#include "DbZbZgClModel.h"

// The grid of the project-wide comparison: every tender material once, with the bid material
// of the whole project it corresponds to (no base price).
class DbZbZgSyClModel : public DbZbZgClModel
{
    Q_OBJECT
public:
    using DbZbZgClModel::DbZbZgClModel;

protected:
    const QVector<Column>& columns() const override;
};
