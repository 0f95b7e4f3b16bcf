#pragma once

#include <QVariant>

class ConstructionWorks;
class ProTreeNode;

// System variables (系统变量) of a works node, by number.
class XtBlBusiness
{
public:
    static bool ChangeXtBl(int projectIndex, int auditVersion, int nodeId, int id,
                           const QVariant& value);
    static QVariant GetXtBlValue(ConstructionWorks* works, int id);
    static QVariant GetSJXtBlValue(const ProTreeNode* node, int id);
    // By the project works' id and the node's version and id.
    static QVariant GetXtBlValue(qint64 projectWorksId, int auditVersion, int nodeId, int id);
};
