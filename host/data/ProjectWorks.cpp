#include "ProjectWorks.h"

ProjectWorks::ProjectWorks(qint64 id, const QString& name) : m_id(id), m_name(name) {}

ProjectWorks::~ProjectWorks()
{
    for (auto& map : m_works)
        qDeleteAll(map);
}

void ProjectWorks::setName(const QString& name)
{
    m_name = name;
    if (m_root)
        m_root->setName(name);
}

void ProjectWorks::setProjectIndex(int index)
{
    m_index = index;
    if (m_root)
        m_root->setProjectIndex(index);
}

ProTreeNode* ProjectWorks::AddNode(ProTreeNode* parent, int id, int type, const QString& name)
{
    ProTreeNode* node = nullptr;
    if (!m_root) {
        m_root = std::make_unique<ProTreeNode>(m_index, id, type, name);
        node = m_root.get();
    } else {
        node = new ProTreeNode(m_index, id, type, name, parent ? parent : m_root.get());
    }
    // The first node of an id is the one found by id.
    if (!m_nodes.contains(id))
        m_nodes.insert(id, node);
    return node;
}

ProTreeNode* ProjectWorks::nodeById(int id) const
{
    return m_nodes.value(id, nullptr);
}

QList<ProTreeNode*> ProjectWorks::unitProjectNodes() const
{
    QList<ProTreeNode*> list;
    if (m_root)
        for (ProTreeNode* node : m_root->subtree())
            if (node->isUnitProject())
                list << node;
    return list;
}

int ProjectWorks::nextNodeId() const
{
    int id = 0;
    if (m_root)
        for (ProTreeNode* node : m_root->subtree())
            id = qMax(id, ProTreeNode::Id(node));
    return id + 1;
}

ConstructionWorks* ProjectWorks::works(int auditVersion, int nodeId) const
{
    if (auditVersion < 0 || auditVersion > 1)
        return nullptr;
    return m_works[auditVersion].value(nodeId, nullptr);
}

ConstructionWorks* ProjectWorks::ensureWorks(int auditVersion, int nodeId)
{
    if (auditVersion < 0 || auditVersion > 1)
        return nullptr;
    ConstructionWorks*& w = m_works[auditVersion][nodeId];
    if (!w) {
        w = new ConstructionWorks;
        w->setIdentity(this, auditVersion, nodeId);
        if (ProTreeNode* node = nodeById(nodeId)) {
            w->setName(ProTreeNode::Name(node));
            if (auditVersion == 1)
                node->setHasSsVersion(true);
        }
    }
    return w;
}
