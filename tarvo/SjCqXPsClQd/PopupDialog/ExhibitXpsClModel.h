#pragma once

#include "ZgClQd/PopupDialog/ExhibitFZgClModel.h"

class SjCqXPsClItem;

// The bid materials offered for pairing with the tender's evaluated list (tab "所有材料"):
// material name, model and unit.
class ExhibitXpsClModel : public ExhibitFZgClModel
{
    Q_OBJECT
public:
    using ExhibitFZgClModel::ExhibitFZgClModel;

    void setXpsMaterials(const QList<SjCqXPsClItem*>& materials);
    SjCqXPsClItem* xpsMaterial(int row) const;
};
