#include "XtBlBusiness.h"

#include "DataManagement.h"

bool XtBlBusiness::ChangeXtBl(int projectIndex, int auditVersion, int nodeId, int id,
                              const QVariant& value)
{
    ConstructionWorks* works =
        DataManagement::getInstance()->GetProObjectForDisplay(projectIndex, auditVersion, nodeId);
    if (!works)
        return false;
    if (works->getXtBl(id) != value) {
        works->setXtBl(id, value);
        if (ProjectWorks* owner = works->getOwner())
            owner->setProjectWorkChanged(true);
    }
    return true;
}

QVariant XtBlBusiness::GetXtBlValue(ConstructionWorks* works, int id)
{
    return works ? works->getXtBl(id) : QVariant();
}

QVariant XtBlBusiness::GetSJXtBlValue(const ProTreeNode* node, int id)
{
    return GetXtBlValue(DataManagement::getInstance()->GetContructWorks(node), id);
}

QVariant XtBlBusiness::GetXtBlValue(qint64 projectWorksId, int auditVersion, int nodeId, int id)
{
    const ProjectWorks* project = DataManagement::getInstance()->findByWorksId(projectWorksId);
    return project ? GetXtBlValue(project->works(auditVersion, nodeId), id) : QVariant();
}
