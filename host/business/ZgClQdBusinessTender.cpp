// The tender-list operations of ZgClQdBusiness.
#include "ZgClQdBusiness.h"

#include "TenderProjectFit.h"

#include "DataManagement.h"
#include "ZgClZsItem.h"

#include <QSet>

namespace {

QString materialKey(const BaseDataItem* row)
{
    return TenderProjectFit::NameKey(row->getValue(3).toString()) + QChar(0x1f) +
           TenderProjectFit::NameKey(row->getValue(4).toString()) + QChar(0x1f) +
           TenderProjectFit::NameKey(row->getValue(5).toString());
}

} // namespace

bool ZgClQdBusiness::GetGcZbZgClTreeList(qint64 projectId, int auditId, QList<ZgClZsItem*>& nodes)
{
    Q_UNUSED(auditId) // one tender list per project, whichever version is shown
    nodes.clear();
    ProjectWorks* project = DataManagement::getInstance()->findByWorksId(projectId);
    if (!project || !project->HasGcZbZgCl())
        return false;
    int id = 0;
    for (ProTreeNode* unit : project->unitProjectNodes()) {
        const int nodeId = ProTreeNode::Id(unit);
        auto* dw = new ZgClZsItem(++id, 0, ZgClZsItem::UnitProject);
        dw->SetZxGcName(ProTreeNode::Name(unit));
        dw->SetNodeId(nodeId);
        dw->SetDwGcKey(QString::number(nodeId));
        nodes.append(dw);
        QSet<QString> bid;
        if (ConstructionWorks* works = project->works(0, nodeId))
            for (const BaseDataItem* row : works->getTenderInventory()->getZgjClHzTable()->items())
                if (row->getKind() == Material)
                    bid.insert(materialKey(row));
        QList<ZgjClHzItem*> materials;
        project->GetDwZbZgCl({project->projectIndex(), nodeId}, materials);
        for (const ZgjClHzItem* material : materials) {
            auto* cl = new ZgClZsItem(++id, dw->GetId(), ZgClZsItem::Material);
            cl->SetNodeId(nodeId);
            auto* copy = new ZgjClHzItem;
            copy->copyFrom(*material);
            cl->SetZgjClHzItem(copy);
            cl->SetFlag(bid.contains(materialKey(material)) ? 1 : 0);
            nodes.append(cl);
        }
    }
    return true;
}

bool ZgClQdBusiness::AquireZbZgClMap(const QList<ZgClZsItem*>& nodes, ConstructionWorks* project,
                                     QMap<int, ProTreeNode*>& dwMap)
{
    dwMap.clear();
    ProjectWorks* works = project ? project->getOwner() : nullptr;
    if (!works)
        return false;
    for (const ZgClZsItem* node : nodes) {
        if (node->GetZgClZsItemType() != ZgClZsItem::UnitProject)
            continue;
        ProTreeNode* unit = works->nodeById(node->GetNodeId());
        if (!unit || !unit->isUnitProject()) {
            dwMap.clear();
            return false;
        }
        dwMap.insert(node->GetId(), unit);
    }
    return true;
}

bool ZgClQdBusiness::AquireGcZbZgClFromCJZRes(const QList<ZgClZsItem*>& nodes,
                                              const QMap<int, ProTreeNode*>& dwMap,
                                              ProjectWorks::ZbZgClMap& materials)
{
    materials.clear();
    for (auto it = dwMap.cbegin(); it != dwMap.cend(); ++it)
        materials.insert({ProTreeNode::ProjectIndex(it.value()), ProTreeNode::Id(it.value())}, {});
    for (const ZgClZsItem* node : nodes) {
        if (node->GetZgClZsItemType() == ZgClZsItem::UnitProject || !node->GetZgjClHzItem())
            continue;
        ProTreeNode* unit = dwMap.value(node->GetParentId(), nullptr);
        if (!unit) {
            for (QList<ZgjClHzItem*>& list : materials)
                qDeleteAll(list);
            materials.clear();
            return false;
        }
        auto* copy = new ZgjClHzItem;
        copy->copyFrom(*node->GetZgjClHzItem());
        materials[{ProTreeNode::ProjectIndex(unit), ProTreeNode::Id(unit)}].append(copy);
    }
    return true;
}
