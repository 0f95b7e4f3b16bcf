// The unit projects' provisional settings side by side (查看单位工程暂估设置).
#include "ZgClQdBusiness.h"

#include "ZgClQdGathering.h"

#include "ProgressSink.h"
#include "ProjectWorks.h"
#include "ZgClZsItem.h"

#include <QHash>
#include <QStringList>

namespace {

// The settings that must agree between unit projects, as one comparable text.
QString settingsOf(const BaseDataItem* m)
{
    QStringList parts;
    for (int field : {7, 8, 12, 13, 14, 15})
        parts << m->getValueStr(field);
    return parts.join(QChar(0x1F));
}

} // namespace

void ZgClQdBusiness::GetGcZgSz(ConstructionWorks* works, QList<ZgClZsItem*>& nodes,
                               ProgressSink* progress)
{
    ProjectWorks* project = works ? works->getOwner() : nullptr;
    if (!project)
        return;
    BusinessFaultInjection::check();
    struct Seen
    {
        QString settings;
        bool differs = false;
        bool plainSomewhere = false;
        QList<ZgClZsItem*> nodes;
    };
    QHash<ZgClQdGathering::Key, Seen> seen;
    const QList<ProTreeNode*> units = project->unitProjectNodes();
    int id = 0;
    for (int u = 0; u < units.size(); ++u) {
        const int nodeId = ProTreeNode::Id(units.at(u));
        auto* unitNode = new ZgClZsItem(++id, 0, ZgClZsItem::UnitProject);
        unitNode->SetZxGcName(ProTreeNode::Name(units.at(u)));
        unitNode->SetNodeId(nodeId);
        nodes << unitNode;
        if (ConstructionWorks* unit = project->works(0, nodeId))
            for (const BaseDataItem* m : unit->getRcjHzTable()->items()) {
                const ZgClQdGathering::Key key = ZgClQdGathering::keyOf(m);
                if (key.name.isEmpty())
                    continue;
                Seen& s = seen[key];
                if (!m->getValue(ProvisionalField).toBool()) {
                    s.plainSomewhere = true;
                    continue;
                }
                auto* node = new ZgClZsItem(++id, unitNode->GetId(), ZgClZsItem::Material);
                node->SetNodeId(nodeId);
                node->SetOwnZbBm(m->getValue(UnitTenderCodeField).toString().trimmed());
                ZgjClHzItem* item = node->EnsureZgjClHzItem();
                item->loadState(Material, false, 0, QString());
                for (int field : {3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15})
                    item->loadValue(field, m->getValue(field));
                item->loadValue(2, node->GetOwnZbBm());
                const QString settings = settingsOf(m);
                if (s.nodes.isEmpty())
                    s.settings = settings;
                else if (s.settings != settings)
                    s.differs = true;
                s.nodes << node;
                nodes << node;
            }
        if (progress)
            progress->setValue(int(100.0 * (u + 1) / units.size()));
    }
    // Green: the material's settings differ from the same material in another unit project
    // (price, variety, origin, manufacturer, quality grade, remark, or provisional there).
    for (const Seen& s : qAsConst(seen))
        if (s.differs || (s.plainSomewhere && !s.nodes.isEmpty()))
            for (ZgClZsItem* node : s.nodes)
                node->SetFlag(1);
}
