#include "XmBjHzbBusiness.h"

#include "DataManagement.h"

bool XmBjHzbBusiness::GetDeCdFl(int projectIndex, int auditVersion, int nodeId, QString& text)
{
    ConstructionWorks* works =
        DataManagement::getInstance()->GetProObjectForDisplay(projectIndex, auditVersion, nodeId);
    if (!works)
        return false;
    text = works->getConfig()->getItem(30).toString().trimmed();
    return !text.isEmpty();
}

bool XmBjHzbBusiness::GetSjFl(int projectIndex, int auditVersion, int nodeId, QString& text)
{
    ConstructionWorks* works =
        DataManagement::getInstance()->GetProObjectForDisplay(projectIndex, auditVersion, nodeId);
    if (!works)
        return false;
    for (const BaseDataItem* item : works->getTenderInventory()->getGfSjQdTable()->items())
        if (item->getKind() == 2) {
            text = item->getValueStr(4) + QLatin1Char('%');
            return true;
        }
    return false;
}

QString XmBjHzbBusiness::GetPureFormulaFromJss(const QString& stored)
{
    static const QString marker = QStringLiteral("JSS:");
    return stored.startsWith(marker) ? stored.mid(marker.size()) : stored;
}
