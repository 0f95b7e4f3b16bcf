#pragma once

#include <QHash>
#include <QList>
#include <QString>

class ProTreeNode;
struct TenderDocument;

// Whether a tender file's project tree fits a project, and how its unit projects correspond
// to the project's (docs/tender-file.md, "Fitting a file to the project"):
// by id when the file was written from this very project and every id is found, otherwise by
// single-project and unit-project names. Either way every unit project on each side must
// have exactly one counterpart.
class TenderProjectFit
{
public:
    enum Method { None, ById, ByName };

    // nodes: the project tree in order (the root first). On success byUnitId maps each unit
    // project id of the file to the project's unit-project node id.
    static Method Fit(const TenderDocument& document, qint64 projectId,
                      const QList<ProTreeNode*>& nodes, QHash<QString, int>* byUnitId);
    // Names compare after NFKC (full-width forms become half-width), without blanks, without
    // case.
    static QString NameKey(const QString& name);
};
