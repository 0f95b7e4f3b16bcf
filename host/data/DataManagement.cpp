#include "DataManagement.h"
#include "RURecordControl.h"

DataManagement* DataManagement::getInstance()
{
    static DataManagement* instance = new DataManagement;
    return instance;
}

int DataManagement::AddProjectWorks(std::unique_ptr<ProjectWorks> works)
{
    int index = m_projects.indexOf(nullptr);
    if (index < 0) {
        index = m_projects.size();
        m_projects.append(nullptr);
    }
    works->setProjectIndex(index);
    m_projects[index] = works.release();
    emit projectOpened(index);
    return index;
}

void DataManagement::CloseProjectWorks(int index)
{
    ProjectWorks* works = GetProjectWorksByIndex(index);
    if (!works)
        return;
    // Records refer to rows of this project: they must go before the rows do.
    RURecordControl::GetInstance()->ForgetHistory();
    emit projectClosed(index);
    m_projects[index] = nullptr;
    delete works;
}

QList<ProjectWorks*> DataManagement::openProjects() const
{
    QList<ProjectWorks*> list;
    for (ProjectWorks* p : m_projects)
        if (p)
            list << p;
    return list;
}

ProjectWorks* DataManagement::GetProjectWorksByIndex(int index) const
{
    return index >= 0 && index < m_projects.size() ? m_projects.at(index) : nullptr;
}

ConstructionWorks* DataManagement::GetProObjectForDisplay(int projectIndex, int auditVersion,
                                                          int nodeId) const
{
    const ProjectWorks* works = GetProjectWorksByIndex(projectIndex);
    return works ? works->works(auditVersion, nodeId) : nullptr;
}

ConstructionWorks* DataManagement::GetContructWorks(const ProTreeNode* node) const
{
    return GetProObjectForDisplay(ProTreeNode::ProjectIndex(node), ProTreeNode::AuditVersion(node),
                                  ProTreeNode::Id(node));
}

ProTreeNode* DataManagement::GetProTreeNodeByLocalId(int projectIndex, int nodeId) const
{
    const ProjectWorks* works = GetProjectWorksByIndex(projectIndex);
    return works ? works->nodeById(nodeId) : nullptr;
}

QList<ProTreeNode*> DataManagement::GetProTreeNodeListInOrder(int projectIndex) const
{
    const ProjectWorks* works = GetProjectWorksByIndex(projectIndex);
    return works && works->root() ? works->root()->subtree() : QList<ProTreeNode*>();
}

PriceModelConfig* DataManagement::GetSJPriceModelConfig(const ProTreeNode* node) const
{
    ConstructionWorks* works = GetContructWorks(node);
    return works ? works->getConfig() : nullptr;
}

PriceModelConfig* DataManagement::GetPriceModelConfig(int projectIndex) const
{
    ProjectWorks* works = GetProjectWorksByIndex(projectIndex);
    return works ? works->GetPriceModelConfig() : nullptr;
}

ProjectWorks* DataManagement::findByWorksId(qint64 projectWorksId) const
{
    for (ProjectWorks* p : m_projects)
        if (p && p->GetSjId() == projectWorksId)
            return p;
    return nullptr;
}
