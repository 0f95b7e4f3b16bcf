#pragma once

#include "ConstructionWorks.h"
#include "ProTreeNode.h"

#include <QHash>
#include <QMap>
#include <QPair>
#include <QString>

#include <algorithm>
#include <memory>

// One construction project (建设项目) and one project file: the project tree, and for every
// works node its data in the current version (audit 0) and, where the node has one, the
// submitted version (audit 1).
class ProjectWorks
{
public:
    explicit ProjectWorks(qint64 id = 0, const QString& name = QString());
    ~ProjectWorks();
    ProjectWorks(const ProjectWorks&) = delete;
    ProjectWorks& operator=(const ProjectWorks&) = delete;

    qint64 GetSjId() const { return m_id; }
    QString name() const { return m_name; }
    void setName(const QString& name);
    int projectIndex() const { return m_index; }
    void setProjectIndex(int index);

    QString filePath() const { return m_filePath; }
    void setFilePath(const QString& path) { m_filePath = path; }

    ProTreeNode* root() const { return m_root.get(); }
    // Adds a node below parent (the root when parent is null and a root exists).
    ProTreeNode* AddNode(ProTreeNode* parent, int id, int type, const QString& name);
    ProTreeNode* nodeById(int id) const;
    QList<ProTreeNode*> unitProjectNodes() const;
    int nextNodeId() const;

    // The works data of a works node; created on first request for the given version.
    ConstructionWorks* works(int auditVersion, int nodeId) const;
    ConstructionWorks* ensureWorks(int auditVersion, int nodeId);
    ConstructionWorks* GetConstructionWorksNode() const
    {
        return works(0, m_root ? ProTreeNode::Id(m_root.get()) : -1);
    }

    bool IsReadOnly() const { return m_readOnly; }
    void SetReadOnly(bool readOnly) { m_readOnly = readOnly; }
    // Lock of the current (bid) side: the tables may be viewed, not edited.
    bool GetDqdZdSd() const { return m_dqdZdSd; }
    void SetDqdZdSd(bool locked) { m_dqdZdSd = locked; }

    bool isProjectWorkChanged() const { return m_changed; }
    void setProjectWorkChanged(bool changed) { m_changed = changed; }

    ConfigOfConstruction* GetPriceModelConfig() { return &m_config; }

    // The tender's lists, as read from a tender file (招标文件): per unit project the
    // provisional-price materials it agrees, and the materials subject to evaluation.
    // Keys are (project index, unit-project node id).
    using DwKey = QPair<int, int>;
    using ZbZgClMap = QMap<DwKey, QList<ZgjClHzItem*>>;
    // Replaces the stored provisional list with the given one, taking every row over. Refused
    // (rows deleted, stored list untouched) when sjId is not this project's id or a key is not
    // one of its unit projects.
    bool SetGcZbZgCl(qint64 sjId, ZbZgClMap& materials);
    // The stored tender materials of one unit project (borrowed); false when the project
    // holds no tender list.
    bool GetDwZbZgCl(const DwKey& dwKey, QList<ZgjClHzItem*>& materials) const;
    bool HasGcZbZgCl() const { return m_hasZbZgCl; }
    // The unit-project node ids the stored tender list has materials for, ascending; a unit
    // project deleted since the list was stored is still among them.
    QList<int> GcZbZgClUnitIds() const
    {
        QList<int> ids = m_zbZgCl.keys();
        std::sort(ids.begin(), ids.end());
        return ids;
    }
    // Replaces the stored evaluated-materials list, taking the rows over.
    bool SetGcZbXPsCl(qint64 sjId, QList<SjCqXPsClItem*>& materials);
    // The name the evaluated-materials comparison stores a loaded list under.
    bool SetZbXpsCl(qint64 sjId, QList<SjCqXPsClItem*>& materials)
    {
        return SetGcZbXPsCl(sjId, materials);
    }
    const QList<SjCqXPsClItem*>& GetGcZbXPsCl() const { return m_zbXPsCl; }
    bool HasGcZbXPsCl() const { return m_hasZbXPsCl; }
    // The tender file the lists were read from (its file name).
    QString GetZbFileName() const { return m_zbFileName; }
    void SetZbFileName(const QString& name) { m_zbFileName = name; }
    // Read-only protection that also forbids reports and data output.
    bool LockExport() const { return m_lockExport; }
    void SetLockExport(bool locked) { m_lockExport = locked; }

private:
    void clearTenderLists(bool provisional, bool evaluated);

    qint64 m_id;
    QString m_name;
    int m_index = -1;
    QString m_filePath;
    std::unique_ptr<ProTreeNode> m_root;
    QHash<int, ProTreeNode*> m_nodes; // by id, for lookups that stay cheap in large trees
    QHash<int, ConstructionWorks*> m_works[2];
    bool m_readOnly = false;
    bool m_dqdZdSd = false;
    bool m_changed = false;
    ConfigOfConstruction m_config;
    QHash<int, QList<ZgjClHzItem*>> m_zbZgCl;
    QList<SjCqXPsClItem*> m_zbXPsCl;
    bool m_hasZbZgCl = false;
    bool m_hasZbXPsCl = false;
    bool m_lockExport = false;
    QString m_zbFileName;
};
