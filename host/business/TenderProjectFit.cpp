#include "TenderProjectFit.h"

#include "ProTreeNode.h"
#include "TenderDocument.h"

#include <QSet>

namespace {

QString unitKey(const QString& single, const QString& unit)
{
    return TenderProjectFit::NameKey(single) + QChar(0x1f) + TenderProjectFit::NameKey(unit);
}

// The single project a unit project sits in; empty when it hangs from the root.
QString singleName(const ProTreeNode* unit)
{
    const ProTreeNode* parent = unit->parent();
    return parent && ProTreeNode::Types(parent) == ProTreeNode::SingleProjectNode
               ? ProTreeNode::Name(parent)
               : QString();
}

} // namespace

QString TenderProjectFit::NameKey(const QString& name)
{
    const QString folded = name.normalized(QString::NormalizationForm_KC).toCaseFolded();
    QString key;
    key.reserve(folded.size());
    for (const QChar c : folded)
        if (!c.isSpace())
            key.append(c);
    return key;
}

TenderProjectFit::Method TenderProjectFit::Fit(const TenderDocument& document, qint64 projectId,
                                               const QList<ProTreeNode*>& nodes,
                                               QHash<QString, int>* byUnitId)
{
    byUnitId->clear();
    QList<const ProTreeNode*> units;
    for (const ProTreeNode* node : nodes)
        if (node && node->isUnitProject())
            units << node;
    if (units.size() != document.unitProjectCount())
        return None;

    // By id: only ids written from this very project mean anything here.
    if (!document.projectId.isEmpty() && document.projectId == QString::number(projectId)) {
        QHash<int, const ProTreeNode*> unitById;
        for (const ProTreeNode* unit : units)
            unitById.insert(ProTreeNode::Id(unit), unit);
        QHash<QString, int> found;
        QSet<int> taken;
        bool all = true;
        for (const TenderSingleProject& single : document.singles)
            for (const TenderUnitProject& unit : single.units) {
                bool isNumber = false;
                const int id = unit.id.toInt(&isNumber);
                if (!isNumber || !unitById.contains(id) || taken.contains(id)) {
                    all = false;
                    break;
                }
                taken.insert(id);
                found.insert(unit.id, id);
            }
        if (all) {
            *byUnitId = found;
            return ById;
        }
    }

    // By names; a name pair that is not unique on either side cannot be put in correspondence.
    QHash<QString, int> unitByName;
    QSet<QString> ambiguous;
    for (const ProTreeNode* unit : units) {
        const QString key = unitKey(singleName(unit), ProTreeNode::Name(unit));
        if (unitByName.contains(key))
            ambiguous.insert(key);
        unitByName.insert(key, ProTreeNode::Id(unit));
    }
    QHash<QString, int> found;
    QSet<int> taken;
    for (const TenderSingleProject& single : document.singles)
        for (const TenderUnitProject& unit : single.units) {
            const QString key = unitKey(single.name, unit.name);
            if (!unitByName.contains(key) || ambiguous.contains(key))
                return None;
            const int id = unitByName.value(key);
            if (taken.contains(id))
                return None;
            taken.insert(id);
            found.insert(unit.id, id);
        }
    *byUnitId = found;
    return ByName;
}
