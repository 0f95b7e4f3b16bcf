#pragma once

#include "ZgjClHzTable.h"

#include <QString>

#include <memory>

// A node of a provisional-materials tree: a unit project (type 0) or one of its materials
// (type 1). Nodes form a tree by id and parent id; a material node owns its material row,
// which is in no table. The unit projects' settings and the tender's provisional list are
// both shown as such trees.
class ZgClZsItem
{
public:
    enum Type { UnitProject = 0, Material = 1 };

    ZgClZsItem(int id, int parentId, int type) : m_id(id), m_parentId(parentId), m_type(type) {}

    int GetId() const { return m_id; }
    int GetParentId() const { return m_parentId; }
    int GetZgClZsItemType() const { return m_type; }

    QString GetZxGcName() const { return m_name; }
    void SetZxGcName(const QString& name) { m_name = name; }
    // The project-tree node id of the unit project the node belongs to; -1 when the node has
    // not been fitted to the project.
    int GetNodeId() const { return m_nodeId; }
    void SetNodeId(int nodeId) { m_nodeId = nodeId; }
    // The unit project's id in the tender file (unit-project nodes read from a file).
    QString GetDwGcKey() const { return m_dwGcKey; }
    void SetDwGcKey(const QString& key) { m_dwGcKey = key; }

    // The material of a material node (null for a unit-project node).
    ZgjClHzItem* GetZgjClHzItem() const { return m_material.get(); }
    ZgjClHzItem* EnsureZgjClHzItem()
    {
        if (!m_material)
            m_material = std::make_unique<ZgjClHzItem>();
        return m_material.get();
    }
    // Takes the row over.
    void SetZgjClHzItem(ZgjClHzItem* material) { m_material.reset(material); }
    // The material's own tender code: as set, or else the material row's tender code (field 2).
    QString GetOwnZbBm() const
    {
        if (m_hasOwnZbBm || !m_material)
            return m_ownZbBm;
        return m_material->getValue(2).toString().trimmed();
    }
    void SetOwnZbBm(const QString& code)
    {
        m_ownZbBm = code;
        m_hasOwnZbBm = true;
    }

    // A mark the business service sets on a node: in the unit projects' settings, a setting
    // that differs from another unit project; in the tender list, a tender material the unit
    // project's own provisional list has.
    int GetFlag() const { return m_flag; }
    void SetFlag(int flag) { m_flag = flag; }

private:
    int m_id;
    int m_parentId;
    int m_type;
    int m_nodeId = -1;
    int m_flag = 0;
    bool m_hasOwnZbBm = false;
    QString m_name;
    QString m_ownZbBm;
    QString m_dwGcKey;
    std::unique_ptr<ZgjClHzItem> m_material;
};
