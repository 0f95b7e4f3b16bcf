#pragma once

#include <QtGlobal>

class ProjectWorks;

// Anything that belongs to one version (audit id) of one project-tree node of a project.
// Tables hang below their unit project and take its identity.
class WorkBaseObject
{
public:
    explicit WorkBaseObject(WorkBaseObject* parent = nullptr) : m_parent(parent) {}
    virtual ~WorkBaseObject() = default;

    ProjectWorks* getOwner() const { return m_parent ? m_parent->getOwner() : m_owner; }
    qint64 getProjectWorksId() const;
    int getAuditId() const { return m_parent ? m_parent->getAuditId() : m_auditId; }
    int getNodeId() const { return m_parent ? m_parent->getNodeId() : m_nodeId; }
    WorkBaseObject* parentObject() const { return m_parent; }

    void setIdentity(ProjectWorks* owner, int auditId, int nodeId)
    {
        m_owner = owner;
        m_auditId = auditId;
        m_nodeId = nodeId;
    }

private:
    WorkBaseObject* m_parent = nullptr;
    ProjectWorks* m_owner = nullptr;
    int m_auditId = 0;
    int m_nodeId = 0;
};
