#pragma once

#include <QString>

class ZgjClHzItem;

// A node of the tender's provisional list as a tree: a unit-project node (type 0) with its
// tender material nodes (type 1) below it, placed by id and parent id. A material node owns
// its material row, which is not in any table.
class ZgClZsItem
{
public:
    enum ItemType { DwGcItem = 0, ClItem = 1 };

    ZgClZsItem(int id, int parentId, int type);
    ~ZgClZsItem();
    ZgClZsItem(const ZgClZsItem&) = delete;
    ZgClZsItem& operator=(const ZgClZsItem&) = delete;

    int GetId() const { return m_id; }
    int GetParentId() const { return m_parentId; }
    int GetZgClZsItemType() const { return m_type; }
    // The unit project's name (unit-project nodes).
    QString GetZxGcName() const { return m_name; }
    void SetZxGcName(const QString& name) { m_name = name; }
    // The project-tree node id of the unit project the node belongs to; -1 when the node
    // has not been fitted to the project.
    int GetDwGcNodeId() const { return m_dwGcNodeId; }
    void SetDwGcNodeId(int nodeId) { m_dwGcNodeId = nodeId; }
    // The unit project's id in the tender file (unit-project nodes read from a file).
    QString GetDwGcKey() const { return m_dwGcKey; }
    void SetDwGcKey(const QString& key) { m_dwGcKey = key; }
    // The material of a material node (fields as the provisional list's rows).
    ZgjClHzItem* GetZgjClHzItem() const { return m_material; }
    // Takes the row over.
    void SetZgjClHzItem(ZgjClHzItem* material);
    // The material's tender code (招标编码).
    QString GetOwnZbBm() const;
    // 1: the tender material is among the bid's provisional materials of its unit project.
    int GetFlag() const { return m_flag; }
    void SetFlag(int flag) { m_flag = flag; }

private:
    int m_id;
    int m_parentId;
    int m_type;
    int m_dwGcNodeId = -1;
    int m_flag = 0;
    QString m_name;
    QString m_dwGcKey;
    ZgjClHzItem* m_material = nullptr;
};
