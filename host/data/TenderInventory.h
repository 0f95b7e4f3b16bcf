#pragma once

#include "GfSjQdTable.h"
#include "LxGzXmRgDjQdTable.h"
#include "QtXmQdHzTable.h"
#include "SjCqXPsClTable.h"
#include "ZbrClGzfQdTable.h"
#include "ZgjClHzTable.h"

#include <QList>

// The six tender bill tables of one unit project (or of the construction project's root).
class TenderInventory
{
public:
    explicit TenderInventory(WorkBaseObject* works)
        : m_qtXmQd(works), m_zbrClGzfQd(works), m_lxGzXm(works), m_gfSjQd(works), m_zgjClHz(works),
          m_sjCqXPsCl(works)
    {
    }

    QtXmQdHzTable* getQtXmQdHzTable() { return &m_qtXmQd; }
    ZbrClGzfQdTable* getZbrClGzfQdTable() { return &m_zbrClGzfQd; }
    LxGzXmRgDjQdTable* getLxGzXmRgDjQdTable() { return &m_lxGzXm; }
    GfSjQdTable* getGfSjQdTable() { return &m_gfSjQd; }
    ZgjClHzTable* getZgjClHzTable() { return &m_zgjClHz; }
    SjCqXPsClTable* getSjCqXPsClHzTable() { return &m_sjCqXPsCl; }

    QList<GeneralTableBase*> tables()
    {
        return {&m_qtXmQd, &m_zbrClGzfQd, &m_lxGzXm, &m_gfSjQd, &m_zgjClHz, &m_sjCqXPsCl};
    }

private:
    QtXmQdHzTable m_qtXmQd;
    ZbrClGzfQdTable m_zbrClGzfQd;
    LxGzXmRgDjQdTable m_lxGzXm;
    GfSjQdTable m_gfSjQd;
    ZgjClHzTable m_zgjClHz;
    SjCqXPsClTable m_sjCqXPsCl;
};
