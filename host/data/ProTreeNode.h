#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariant>

// A node of the project tree. Types: 0 works node (the construction project and each unit
// project), 1 single project (单项工程). The static accessors are what messages carry.
class ProTreeNode
{
public:
    enum Type { WorksNode = 0, SingleProjectNode = 1 };

    ProTreeNode(int projectIndex, int id, int type, const QString& name,
                ProTreeNode* parent = nullptr);
    ~ProTreeNode();
    ProTreeNode(const ProTreeNode&) = delete;
    ProTreeNode& operator=(const ProTreeNode&) = delete;

    static int ProjectIndex(const ProTreeNode* node) { return node ? node->m_projectIndex : -1; }
    static int AuditVersion(const ProTreeNode* node) { return node ? node->m_auditVersion : 0; }
    static int Id(const ProTreeNode* node) { return node ? node->m_id : -1; }
    static int Types(const ProTreeNode* node) { return node ? node->m_type : -1; }
    static QString Name(const ProTreeNode* node) { return node ? node->m_name : QString(); }
    static bool CheckWithSSVersion(const ProTreeNode* node) { return node && node->m_hasSs; }
    // The node a message payload carries, directly or by conversion; null when it carries none.
    static ProTreeNode* FromVariant(const QVariant* payload);

    ProTreeNode* parent() const { return m_parent; }
    const QList<ProTreeNode*>& children() const { return m_children; }
    bool isUnitProject() const { return m_type == WorksNode && m_parent != nullptr; }
    void setName(const QString& name) { m_name = name; }
    void setHasSsVersion(bool has) { m_hasSs = has; }
    void setProjectIndex(int index);
    // Pre-order list of this node and all below it.
    QList<ProTreeNode*> subtree();

private:
    int m_projectIndex;
    int m_auditVersion = 0;
    int m_id;
    int m_type;
    QString m_name;
    bool m_hasSs = false;
    ProTreeNode* m_parent;
    QList<ProTreeNode*> m_children;
};

Q_DECLARE_METATYPE(ProTreeNode*)
