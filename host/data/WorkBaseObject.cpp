#include "WorkBaseObject.h"
#include "ProjectWorks.h"

qint64 WorkBaseObject::getProjectWorksId() const
{
    const ProjectWorks* owner = getOwner();
    return owner ? owner->GetSjId() : 0;
}
