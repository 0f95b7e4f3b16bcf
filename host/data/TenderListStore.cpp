#include "TenderListStore.h"

#include "ProjectFile.h"
#include "ProjectWorks.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {

enum List { Provisional = 1, Evaluated = 2 };

bool failed(const QSqlQuery& q, QString* failure)
{
    *failure = q.lastError().text();
    return false;
}

} // namespace

bool TenderListStore::CreateTables(QSqlDatabase& db, QString* failure)
{
    QSqlQuery q(db);
    return (q.exec(QStringLiteral(
                "CREATE TABLE tender_list(list INTEGER PRIMARY KEY, source TEXT)")) &&
            q.exec(QStringLiteral("CREATE TABLE tender_row(list INTEGER, node_id INTEGER, ord "
                                  "INTEGER, fields BLOB)"))) ||
           failed(q, failure);
}

bool TenderListStore::Save(QSqlDatabase& db, ProjectWorks* works, QString* failure)
{
    QSqlQuery list(db), row(db);
    list.prepare(QStringLiteral("INSERT INTO tender_list VALUES(?,?)"));
    row.prepare(QStringLiteral("INSERT INTO tender_row VALUES(?,?,?,?)"));
    auto addList = [&](int kind) {
        list.bindValue(0, kind);
        list.bindValue(1, works->GetZbFileName());
        return list.exec() || failed(list, failure);
    };
    auto addRow = [&](int kind, int node, int ord, const BaseDataItem* item) {
        row.bindValue(0, kind);
        row.bindValue(1, node);
        row.bindValue(2, ord);
        row.bindValue(3, ProjectFile::encodeFields(item->rawValues()));
        return row.exec() || failed(row, failure);
    };
    if (works->HasGcZbZgCl()) {
        if (!addList(Provisional))
            return false;
        for (ProTreeNode* unit : works->unitProjectNodes()) {
            QList<ZgjClHzItem*> materials;
            works->GetDwZbZgCl({works->projectIndex(), ProTreeNode::Id(unit)}, materials);
            for (int i = 0; i < materials.size(); ++i)
                if (!addRow(Provisional, ProTreeNode::Id(unit), i, materials.at(i)))
                    return false;
        }
    }
    if (works->HasGcZbXPsCl()) {
        if (!addList(Evaluated))
            return false;
        const int root = ProTreeNode::Id(works->root());
        const QList<SjCqXPsClItem*>& materials = works->GetGcZbXPsCl();
        for (int i = 0; i < materials.size(); ++i)
            if (!addRow(Evaluated, root, i, materials.at(i)))
                return false;
    }
    return true;
}

bool TenderListStore::Load(QSqlDatabase& db, ProjectWorks* works, QString* failure)
{
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT list, source FROM tender_list")))
        return failed(q, failure);
    bool provisional = false, evaluated = false;
    while (q.next()) {
        const int kind = q.value(0).toInt();
        if (kind == Provisional)
            provisional = true;
        else if (kind == Evaluated)
            evaluated = true;
        else {
            *failure = QStringLiteral("招标清单种类%1无法识别").arg(q.value(0).toString());
            return false;
        }
        works->SetZbFileName(q.value(1).toString());
    }
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("SELECT list, node_id, fields FROM tender_row ORDER BY list, "
                               "node_id, ord")))
        return failed(q, failure);
    ProjectWorks::ZbZgClMap zgCl;
    QList<SjCqXPsClItem*> xpsCl;
    auto discard = [&](const QString& reason) {
        for (QList<ZgjClHzItem*>& list : zgCl)
            qDeleteAll(list);
        qDeleteAll(xpsCl);
        *failure = reason;
        return false;
    };
    while (q.next()) {
        const int kind = q.value(0).toInt();
        const int node = q.value(1).toInt();
        RowFields values;
        if (!ProjectFile::decodeFields(q.value(2).toByteArray(), values))
            return discard(QStringLiteral("招标清单行无法解读"));
        BaseDataItem* item = nullptr;
        if (kind == Provisional && provisional) {
            ProTreeNode* unit = works->nodeById(node);
            if (!unit || !unit->isUnitProject())
                return discard(QStringLiteral("招标清单与工程结构不符"));
            auto* material = new ZgjClHzItem;
            zgCl[{works->projectIndex(), node}].append(material);
            item = material;
        } else if (kind == Evaluated && evaluated) {
            auto* material = new SjCqXPsClItem;
            xpsCl.append(material);
            item = material;
        } else {
            return discard(QStringLiteral("招标清单行不属于任何清单"));
        }
        item->loadValues(std::move(values));
        item->loadState(1, false, 0, QString());
    }
    if (q.lastError().isValid())
        return discard(q.lastError().text());
    if (provisional)
        works->SetGcZbZgCl(works->GetSjId(), zgCl);
    if (evaluated)
        works->SetGcZbXPsCl(works->GetSjId(), xpsCl);
    return true;
}
