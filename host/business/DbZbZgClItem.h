#pragma once

#include "ZgClZsItem.h"

#include <memory>

class BaseDataItem;

// One row of a comparison of the tender's provisional list with the bid's materials: a unit
// project heading, a tender material with the bid material it corresponds to (or none), or a
// bid material that is marked provisional but corresponds to no tender material. The record
// owns its tender node; the bid material is a row of a unit project's own materials.
class DbZbZgClItem
{
public:
    enum State {
        Matched = 0,      // tender material with its bid material
        ZbOnly = 1,       // tender material without bid material
        TbOnly = 2,       // provisional bid material without tender material
        MatchedByNorm = 3 // paired by the normalised key only: the user should look at it
    };

    // zb: the tender node (a unit-project node for a heading), taken over; may be null for a
    // bid-only row. dwId: the project-tree id of the unit project the row belongs to (-1 for
    // the project-wide comparison).
    DbZbZgClItem(ZgClZsItem* zb, BaseDataItem* tb, int state, int dwId)
        : m_zb(zb), m_tb(tb), m_state(state), m_dwId(dwId)
    {
    }
    virtual ~DbZbZgClItem() = default;

    ZgClZsItem* GetZbZgClZsItem() const { return m_zb.get(); }
    // The tender material, or null (a heading or a bid-only row).
    BaseDataItem* GetZbCl() const { return m_zb ? m_zb->GetZgjClHzItem() : m_flatZb; }
    // The tender material's code: the node's own code, or field 2 of a flat list's material.
    QString GetZbBm() const
    {
        if (m_zb)
            return m_zb->GetOwnZbBm();
        return m_flatZb ? m_flatZb->getValue(2).toString().trimmed() : QString();
    }
    BaseDataItem* GetTbCl() const { return m_tb; }
    int GetState() const { return m_state; }
    int GetDwId() const { return m_dwId; }

    bool IsDwRow() const { return m_zb && m_zb->GetZgClZsItemType() == ZgClZsItem::UnitProject; }
    bool IsZbRow() const
    {
        return m_flatZb || (m_zb && m_zb->GetZgClZsItemType() != ZgClZsItem::UnitProject);
    }
    bool IsMatched() const { return IsZbRow() && (m_state == Matched || m_state == MatchedByNorm); }

    void Pair(BaseDataItem* tb, int state)
    {
        m_tb = tb;
        m_state = state;
    }
    void Unpair()
    {
        m_tb = nullptr;
        m_state = ZbOnly;
    }

    // A unit project of the tender list that the project no longer has: shown, never applied.
    bool IsOrphan() const { return m_orphan; }
    void SetOrphan(bool orphan) { m_orphan = orphan; }

protected:
    // A row of a flat tender list (no unit-project level): the tender material is borrowed.
    DbZbZgClItem(BaseDataItem* zb, BaseDataItem* tb, int state)
        : m_flatZb(zb), m_tb(tb), m_state(state), m_dwId(-1)
    {
    }

private:
    std::unique_ptr<ZgClZsItem> m_zb;
    BaseDataItem* m_flatZb = nullptr;
    BaseDataItem* m_tb;
    int m_state;
    int m_dwId;
    bool m_orphan = false;
};
