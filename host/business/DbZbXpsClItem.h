#pragma once

#include "DbZbZgClItem.h"

#include "SjCqXPsClTable.h"

// One row of the comparison of the tender's evaluated-materials list with the bid's evaluated
// materials: a tender material with the bid material it corresponds to (or none), or a bid
// material marked for evaluation that no tender material took. The list is the project's, so
// there are no unit-project headings. The tender material is a row of the project's stored
// tender list and the bid material one of the dialog's bid materials; both are borrowed.
class DbZbXpsClItem : public DbZbZgClItem
{
public:
    DbZbXpsClItem(SjCqXPsClItem* zb, SjCqXPsClItem* tb, int state)
        : DbZbZgClItem(zb, tb, state), m_zbXps(zb)
    {
    }

    SjCqXPsClItem* GetZbXpsCl() const { return m_zbXps; }
    SjCqXPsClItem* GetTbXpsCl() const { return static_cast<SjCqXPsClItem*>(GetTbCl()); }

private:
    SjCqXPsClItem* m_zbXps;
};
