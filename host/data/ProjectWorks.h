#pragma once

#include "ConstructionWorks.h"
#include "ProTreeNode.h"

#include <QHash>
#include <QString>

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

private:
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
};
