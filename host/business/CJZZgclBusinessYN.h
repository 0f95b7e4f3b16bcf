#pragma once

#include "TenderDocument.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

#include <memory>

class ProTreeNode;
class SjCqXPsClItem;
class ZgClZsItem;
class ZgjClHzItem;

// Reads a tender data-exchange file for the current project: the unit projects' provisional
// materials (and the project's materials subject to evaluation), fitted to the project tree.
// The rows it hands out stay its own and go with it.
class CJZZgclBusinessYN
{
public:
    // Materials by the file's unit-project id.
    using DwClMap = QMap<QString, QList<ZgjClHzItem*>>;

    CJZZgclBusinessYN();
    ~CJZZgclBusinessYN();
    CJZZgclBusinessYN(const CJZZgclBusinessYN&) = delete;
    CJZZgclBusinessYN& operator=(const CJZZgclBusinessYN&) = delete;

    // Reads the file and fits its tree to the project's (nodes in order, the root first).
    // With provisional the unit projects' provisional materials come out (empty when the tree
    // does not fit); without, the evaluated materials under the key "". False when the file
    // cannot be read: LastError() names the file and the problem.
    bool LoadDwgcZgclData(const QString& path, const QList<ProTreeNode*>& nodes, DwClMap& materials,
                          bool provisional);
    // The tender list as nodes (unit projects with their materials, copies the caller owns);
    // empty when the file's tree does not fit the project.
    bool GetGcZbZgClTreeList(qint64 projectId, int auditId, QList<ZgClZsItem*>& nodes,
                             const DwClMap& materials);
    // Copies of the file's evaluated materials, for the caller to own.
    QList<SjCqXPsClItem*> TakeGcZbXPsClList() const;

    QString LastError() const { return m_error; }
    bool Fits() const { return !m_fit.isEmpty() || m_fitsEmpty; }
    const TenderDocument& Document() const { return m_document; }

private:
    void clear();

    TenderDocument m_document;
    QHash<QString, int> m_fit; // file unit id -> project unit node id
    bool m_fitsEmpty = false;
    qint64 m_projectId = 0;
    QList<ZgjClHzItem*> m_rows;
    QString m_error;
};
