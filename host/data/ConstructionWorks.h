#pragma once

#include "FyBlTable.h"
#include "JfszTable.h"
#include "PriceModelConfig.h"
#include "RcjHzTable.h"
#include "TenderInventory.h"

#include <QMap>
#include <QString>
#include <QVariant>

// A works node's data: the project root or one unit project (单位工程) in one version.
class ConstructionWorks : public WorkBaseObject
{
public:
    ConstructionWorks() : m_inventory(this), m_rcj(this), m_fyBl(this) {}

    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }

    TenderInventory* getTenderInventory() { return &m_inventory; }
    RcjHzTable* getRcjHzTable() { return &m_rcj; }
    FyBlTable* getFyBlTable() { return &m_fyBl; }
    ConfigOfConstruction* getConfig() { return &m_config; }
    JfszTable* getJfszTable() { return &m_jfsz; }

    // System variables (系统变量) by number.
    QVariant getXtBl(int id) const { return m_xtBl.value(id); }
    // Journalled while an undo record is open.
    void setXtBl(int id, const QVariant& value);
    const QMap<int, QVariant>& xtBl() const { return m_xtBl; }

    // Every table of the works, for saving and loading.
    QList<GeneralTableBase*> allTables()
    {
        QList<GeneralTableBase*> list = m_inventory.tables();
        list << &m_rcj << &m_fyBl;
        return list;
    }
    GeneralTableBase* tableByType(int type)
    {
        for (GeneralTableBase* t : allTables())
            if (t->getTableType() == type)
                return t;
        return nullptr;
    }

private:
    QString m_name;
    TenderInventory m_inventory;
    RcjHzTable m_rcj;
    FyBlTable m_fyBl;
    ConfigOfConstruction m_config;
    JfszTable m_jfsz;
    QMap<int, QVariant> m_xtBl;
};
