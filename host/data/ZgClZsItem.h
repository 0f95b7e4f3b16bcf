#pragma once

#include "ZgjClHzTable.h"

#include <QString>

#include <memory>

// A node of a provisional-materials tree: a unit project (type 0) or one of its materials
// (type 1). Nodes form a tree by id and parent id; a material node owns its material row.
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
    // The project-tree node id of the unit project the node belongs to.
    int GetNodeId() const { return m_nodeId; }
    void SetNodeId(int nodeId) { m_nodeId = nodeId; }

    // The material of a material node (null for a unit-project node).
    ZgjClHzItem* GetZgjClHzItem() const { return m_material.get(); }
    ZgjClHzItem* EnsureZgjClHzItem()
    {
        if (!m_material)
            m_material = std::make_unique<ZgjClHzItem>();
        return m_material.get();
    }
    // The material's own tender code in its unit project.
    QString GetOwnZbBm() const { return m_ownZbBm; }
    void SetOwnZbBm(const QString& code) { m_ownZbBm = code; }

    // A mark the business service sets on a node (see the service that fills the tree).
    int GetFlag() const { return m_flag; }
    void SetFlag(int flag) { m_flag = flag; }

private:
    int m_id;
    int m_parentId;
    int m_type;
    int m_nodeId = -1;
    int m_flag = 0;
    QString m_name;
    QString m_ownZbBm;
    std::unique_ptr<ZgjClHzItem> m_material;
};
