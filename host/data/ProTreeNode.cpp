#include "ProTreeNode.h"

ProTreeNode::ProTreeNode(int projectIndex, int id, int type, const QString& name,
                         ProTreeNode* parent)
    : m_projectIndex(projectIndex), m_id(id), m_type(type), m_name(name), m_parent(parent)
{
    if (parent)
        parent->m_children.append(this);
}

ProTreeNode::~ProTreeNode()
{
    qDeleteAll(m_children);
}

void ProTreeNode::setProjectIndex(int index)
{
    for (ProTreeNode* node : subtree())
        node->m_projectIndex = index;
}

QList<ProTreeNode*> ProTreeNode::subtree()
{
    QList<ProTreeNode*> list{this};
    for (ProTreeNode* child : m_children)
        list += child->subtree();
    return list;
}

ProTreeNode* ProTreeNode::FromVariant(const QVariant* payload)
{
    if (!payload)
        return nullptr;
    const int type = qMetaTypeId<ProTreeNode*>();
    if (payload->userType() == type)
        return payload->value<ProTreeNode*>();
    QVariant copy = *payload;
    return copy.convert(type) ? copy.value<ProTreeNode*>() : nullptr;
}
