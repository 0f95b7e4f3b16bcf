#pragma once

#include "WorkBaseObject.h"

// A table of a unit project, identified by its type code.
class TableBaseObject : public WorkBaseObject
{
public:
    TableBaseObject(int tableType, WorkBaseObject* works) : WorkBaseObject(works), m_type(tableType)
    {
    }

    int getTableType() const { return m_type; }
    int getId() const { return m_type; }

    static bool GetReadOnlyLocked(const TableBaseObject* table)
    {
        return table && table->m_readOnlyLocked;
    }
    void SetReadOnlyLocked(bool locked) { m_readOnlyLocked = locked; }

private:
    int m_type;
    bool m_readOnlyLocked = false;
};
