#pragma once

#include <QMetaType>
#include <QString>

// What an undo record is about: which unit project and table, which kind of operation,
// and the label the user sees in Edit > Undo.
struct OperatingUIInfo
{
    qint64 projectWorksId = 0;
    int auditId = 0;
    int nodeId = 0;
    int tableId = 0;
    int operType = 0;
    QString text;

    OperatingUIInfo() = default;
    OperatingUIInfo(qint64 worksId, int audit, int node, int table, int type, const QString& label)
        : projectWorksId(worksId), auditId(audit), nodeId(node), tableId(table), operType(type),
          text(label)
    {
    }
};

Q_DECLARE_METATYPE(OperatingUIInfo)
