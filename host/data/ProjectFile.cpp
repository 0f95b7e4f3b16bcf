#include "ProjectFile.h"

#include "ProjectWorks.h"
#include "TenderListStore.h"

#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QtEndian>

#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

enum FieldType : quint8 { Double = 1, Integer = 2, Text = 3, Boolean = 4, Other = 5 };

const char* const kSchema[] = {
    "CREATE TABLE meta(key TEXT PRIMARY KEY, value TEXT)",
    "CREATE TABLE project(id INTEGER, name TEXT, read_only INTEGER, bid_locked INTEGER, config "
    "BLOB)",
    "CREATE TABLE node(id INTEGER PRIMARY KEY, parent_id INTEGER, type INTEGER, name TEXT, ord "
    "INTEGER,"
    " submitted INTEGER)",
    "CREATE TABLE works(node_id INTEGER, audit INTEGER, name TEXT, xtbl BLOB, config BLOB,"
    " PRIMARY KEY(node_id, audit))",
    "CREATE TABLE list(node_id INTEGER, audit INTEGER, table_type INTEGER, locked INTEGER,"
    " PRIMARY KEY(node_id, audit, table_type))",
    "CREATE TABLE row(node_id INTEGER, audit INTEGER, table_type INTEGER, ord INTEGER, kind "
    "INTEGER,"
    " block INTEGER, height INTEGER, note TEXT, fields BLOB)",
};

QByteArray encodeMap(const QMap<int, QVariant>& map)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    out << map;
    return bytes;
}

QMap<int, QVariant> decodeMap(const QByteArray& bytes)
{
    QMap<int, QVariant> map;
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    in >> map;
    return map;
}

// One database connection with a unique name, removed when done.
class Connection
{
public:
    explicit Connection(const QString& path)
        : m_name(QStringLiteral("project-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(path);
    }
    ~Connection()
    {
        {
            QSqlDatabase db = QSqlDatabase::database(m_name, false);
            if (db.isOpen())
                db.close();
        }
        QSqlDatabase::removeDatabase(m_name);
    }
    QSqlDatabase db() const { return QSqlDatabase::database(m_name, false); }

private:
    QString m_name;
};

bool exec(QSqlQuery& query, const QString& sql, QString* failure)
{
    if (query.exec(sql))
        return true;
    *failure = query.lastError().text();
    return false;
}

QString cannotOpen(const QString& path, const QString& reason)
{
    return QStringLiteral("无法打开工程文件“%1”：%2").arg(QFileInfo(path).fileName(), reason);
}

bool looksLikeSqlite(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    return file.read(16) == QByteArray("SQLite format 3\0", 16);
}

void syncFile(const QString& path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadWrite))
        ::fsync(file.handle());
}

} // namespace

QByteArray ProjectFile::encodeFields(const QVector<QVariant>& values)
{
    QByteArray bytes;
    bytes.reserve(values.size() * 10);
    auto put = [&bytes](const void* data, int size) {
        bytes.append(static_cast<const char*>(data), size);
    };
    for (int field = 0; field < values.size() && field < 256; ++field) {
        const QVariant& v = values.at(field);
        if (!v.isValid())
            continue;
        const quint8 number = quint8(field);
        switch (v.userType()) {
        case QMetaType::Double:
        case QMetaType::Float: {
            const quint8 type = Double;
            const double d = v.toDouble();
            quint64 raw;
            std::memcpy(&raw, &d, sizeof raw);
            raw = qToLittleEndian(raw);
            put(&number, 1), put(&type, 1), put(&raw, 8);
            break;
        }
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt: {
            const quint8 type = Integer;
            const qint64 raw = qToLittleEndian(v.toLongLong());
            put(&number, 1), put(&type, 1), put(&raw, 8);
            break;
        }
        case QMetaType::Bool: {
            const quint8 type = Boolean;
            const quint8 b = v.toBool() ? 1 : 0;
            put(&number, 1), put(&type, 1), put(&b, 1);
            break;
        }
        case QMetaType::QString: {
            const quint8 type = Text;
            const QByteArray text = v.toString().toUtf8();
            const quint32 size = qToLittleEndian(quint32(text.size()));
            put(&number, 1), put(&type, 1), put(&size, 4), bytes.append(text);
            break;
        }
        default: {
            const quint8 type = Other;
            QByteArray data;
            QDataStream out(&data, QIODevice::WriteOnly);
            out.setVersion(QDataStream::Qt_5_15);
            out << v;
            const quint32 size = qToLittleEndian(quint32(data.size()));
            put(&number, 1), put(&type, 1), put(&size, 4), bytes.append(data);
            break;
        }
        }
    }
    return bytes;
}

bool ProjectFile::decodeFields(const QByteArray& bytes, QVector<QVariant>& values)
{
    const char* p = bytes.constData();
    const char* end = p + bytes.size();
    auto need = [&](qint64 n) { return end - p >= n; };
    while (p < end) {
        if (!need(2))
            return false;
        const int field = quint8(p[0]);
        const quint8 type = quint8(p[1]);
        p += 2;
        if (field >= values.size())
            values.resize(field + 1);
        switch (type) {
        case Double: {
            if (!need(8))
                return false;
            quint64 raw;
            std::memcpy(&raw, p, 8);
            raw = qFromLittleEndian(raw);
            double d;
            std::memcpy(&d, &raw, 8);
            values[field] = d;
            p += 8;
            break;
        }
        case Integer: {
            if (!need(8))
                return false;
            qint64 raw;
            std::memcpy(&raw, p, 8);
            const qint64 n = qFromLittleEndian(raw);
            values[field] = (n >= INT_MIN && n <= INT_MAX) ? QVariant(int(n)) : QVariant(n);
            p += 8;
            break;
        }
        case Boolean:
            if (!need(1))
                return false;
            values[field] = *p != 0;
            p += 1;
            break;
        case Text:
        case Other: {
            if (!need(4))
                return false;
            quint32 size;
            std::memcpy(&size, p, 4);
            size = qFromLittleEndian(size);
            p += 4;
            if (!need(size))
                return false;
            if (type == Text) {
                values[field] = QString::fromUtf8(p, int(size));
            } else {
                QDataStream in(QByteArray::fromRawData(p, int(size)));
                in.setVersion(QDataStream::Qt_5_15);
                QVariant v;
                in >> v;
                values[field] = v;
            }
            p += size;
            break;
        }
        default:
            return false;
        }
    }
    return true;
}

bool ProjectFile::Save(ProjectWorks* works, const QString& path, QString* error)
{
    QString failure;
    const QString temp = path + QStringLiteral(".tmp");
    QFile::remove(temp);
    bool ok = false;
    {
        Connection connection(temp);
        QSqlDatabase db = connection.db();
        ok = db.open();
        if (!ok)
            failure = db.lastError().text();
        QSqlQuery q(db);
        // The file is renamed into place only when complete, so no journal is needed.
        ok = ok && exec(q, QStringLiteral("PRAGMA journal_mode=OFF"), &failure) &&
             exec(q, QStringLiteral("PRAGMA synchronous=OFF"), &failure) && db.transaction();
        for (const char* statement : kSchema)
            ok = ok && exec(q, QString::fromLatin1(statement), &failure);
        ok = ok && TenderListStore::CreateTables(db, &failure);

        qint64 rowCount = 0;
        if (ok) {
            QSqlQuery project(db);
            project.prepare(QStringLiteral("INSERT INTO project VALUES(?,?,?,?,?)"));
            project.addBindValue(works->GetSjId());
            project.addBindValue(works->name());
            project.addBindValue(works->IsReadOnly() ? 1 : 0);
            project.addBindValue(works->GetDqdZdSd() ? 1 : 0);
            project.addBindValue(encodeMap(works->GetPriceModelConfig()->items()));
            ok = project.exec() || (failure = project.lastError().text(), false);
        }
        const QList<ProTreeNode*> nodes =
            works->root() ? works->root()->subtree() : QList<ProTreeNode*>();
        QSqlQuery nodeQuery(db), worksQuery(db), listQuery(db), rowQuery(db);
        nodeQuery.prepare(QStringLiteral("INSERT INTO node VALUES(?,?,?,?,?,?)"));
        worksQuery.prepare(QStringLiteral("INSERT INTO works VALUES(?,?,?,?,?)"));
        listQuery.prepare(QStringLiteral("INSERT INTO list VALUES(?,?,?,?)"));
        rowQuery.prepare(QStringLiteral("INSERT INTO row VALUES(?,?,?,?,?,?,?,?,?)"));
        for (int order = 0; ok && order < nodes.size(); ++order) {
            ProTreeNode* node = nodes.at(order);
            const int id = ProTreeNode::Id(node);
            nodeQuery.bindValue(0, id);
            nodeQuery.bindValue(1, node->parent() ? QVariant(ProTreeNode::Id(node->parent()))
                                                  : QVariant());
            nodeQuery.bindValue(2, ProTreeNode::Types(node));
            nodeQuery.bindValue(3, ProTreeNode::Name(node));
            nodeQuery.bindValue(4, order);
            nodeQuery.bindValue(5, ProTreeNode::CheckWithSSVersion(node) ? 1 : 0);
            ok = nodeQuery.exec() || (failure = nodeQuery.lastError().text(), false);
            for (int audit = 0; ok && audit < 2; ++audit) {
                ConstructionWorks* cw = works->works(audit, id);
                if (!cw)
                    continue;
                worksQuery.bindValue(0, id);
                worksQuery.bindValue(1, audit);
                worksQuery.bindValue(2, cw->getName());
                worksQuery.bindValue(3, encodeMap(cw->xtBl()));
                worksQuery.bindValue(4, encodeMap(cw->getConfig()->items()));
                ok = worksQuery.exec() || (failure = worksQuery.lastError().text(), false);
                for (GeneralTableBase* table : cw->allTables()) {
                    if (!ok)
                        break;
                    if (TableBaseObject::GetReadOnlyLocked(table)) {
                        listQuery.bindValue(0, id);
                        listQuery.bindValue(1, audit);
                        listQuery.bindValue(2, table->getTableType());
                        listQuery.bindValue(3, 1);
                        ok = listQuery.exec() || (failure = listQuery.lastError().text(), false);
                    }
                    for (int r = 0; ok && r < table->count(); ++r) {
                        const BaseDataItem* item = table->at(r);
                        rowQuery.bindValue(0, id);
                        rowQuery.bindValue(1, audit);
                        rowQuery.bindValue(2, table->getTableType());
                        rowQuery.bindValue(3, r);
                        rowQuery.bindValue(4, item->getKind());
                        rowQuery.bindValue(5, item->IsBlock() ? 1 : 0);
                        rowQuery.bindValue(6, item->getRowHeight());
                        rowQuery.bindValue(
                            7, item->getNote().isEmpty() ? QVariant() : QVariant(item->getNote()));
                        rowQuery.bindValue(8, encodeFields(item->rawValues()));
                        ok = rowQuery.exec() || (failure = rowQuery.lastError().text(), false);
                        ++rowCount;
                    }
                }
            }
        }
        ok = ok && TenderListStore::Save(db, works, &failure);
        if (ok) {
            QSqlQuery meta(db);
            meta.prepare(QStringLiteral("INSERT INTO meta VALUES(?,?)"));
            const QList<QPair<QString, QString>> entries = {
                {QStringLiteral("application"), ApplicationId},
                {QStringLiteral("schema_version"), QString::number(SchemaVersion)},
                {QStringLiteral("row_count"), QString::number(rowCount)}};
            for (const auto& entry : entries) {
                meta.bindValue(0, entry.first);
                meta.bindValue(1, entry.second);
                ok = ok && (meta.exec() || (failure = meta.lastError().text(), false));
            }
        }
        ok = ok && (db.commit() || (failure = db.lastError().text(), false));
        if (!ok && db.isOpen())
            db.rollback();
    }
    if (ok) {
        syncFile(temp);
        ok = std::rename(QFile::encodeName(temp).constData(),
                         QFile::encodeName(path).constData()) == 0;
        if (!ok)
            failure = QStringLiteral("无法替换原文件");
    }
    if (!ok) {
        QFile::remove(temp);
        if (error)
            *error =
                QStringLiteral("保存工程文件“%1”失败：%2").arg(QFileInfo(path).fileName(), failure);
        return false;
    }
    works->setFilePath(path);
    works->setProjectWorkChanged(false);
    return true;
}

std::unique_ptr<ProjectWorks> ProjectFile::Open(const QString& path, QString* error)
{
    auto fail = [&](const QString& reason) {
        if (error)
            *error = cannotOpen(path, reason);
        return std::unique_ptr<ProjectWorks>();
    };
    const QFileInfo info(path);
    if (!info.exists())
        return fail(QStringLiteral("文件不存在。"));
    if (!info.isFile() || !info.isReadable())
        return fail(QStringLiteral("文件无法读取。"));
    if (!looksLikeSqlite(path))
        return fail(QStringLiteral("不是本系统的工程文件（文件格式无法识别）。"));

    Connection connection(path);
    QSqlDatabase db = connection.db();
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    if (!db.open())
        return fail(QStringLiteral("文件无法打开（%1）。").arg(db.lastError().text()));
    const QString damaged = QStringLiteral("文件已损坏（%1）。");

    QSqlQuery q(db);
    QHash<QString, QString> meta;
    if (!q.exec(QStringLiteral("SELECT key, value FROM meta"))) {
        const QString text = q.lastError().text();
        if (text.contains(QLatin1String("no such table")))
            return fail(QStringLiteral("不是本系统的工程文件。"));
        return fail(damaged.arg(text));
    }
    while (q.next())
        meta.insert(q.value(0).toString(), q.value(1).toString());
    if (meta.value(QStringLiteral("application")) != ApplicationId)
        return fail(QStringLiteral("不是本系统的工程文件。"));
    bool versionOk = false;
    const int version = meta.value(QStringLiteral("schema_version")).toInt(&versionOk);
    if (!versionOk || version < OldestSchemaVersion || version > SchemaVersion)
        return fail(QStringLiteral("工程文件的版本为%1，本程序只能打开版本%2至%3的工程文件。")
                        .arg(meta.value(QStringLiteral("schema_version")))
                        .arg(OldestSchemaVersion)
                        .arg(SchemaVersion));

    if (!q.exec(QStringLiteral("SELECT id, name, read_only, bid_locked, config FROM project")) ||
        !q.next())
        return fail(damaged.arg(q.lastError().text()));
    auto works = std::make_unique<ProjectWorks>(q.value(0).toLongLong(), q.value(1).toString());
    works->SetReadOnly(q.value(2).toInt() != 0);
    works->SetDqdZdSd(q.value(3).toInt() != 0);
    const QMap<int, QVariant> projectConfig = decodeMap(q.value(4).toByteArray());
    for (auto it = projectConfig.begin(); it != projectConfig.end(); ++it)
        works->GetPriceModelConfig()->setItem(it.key(), it.value());

    if (!q.exec(
            QStringLiteral("SELECT id, parent_id, type, name, submitted FROM node ORDER BY ord")))
        return fail(damaged.arg(q.lastError().text()));
    QSet<int> submitted;
    while (q.next()) {
        if (q.value(4).toInt() != 0)
            submitted.insert(q.value(0).toInt());
        ProTreeNode* parent = q.value(1).isNull() ? nullptr : works->nodeById(q.value(1).toInt());
        if (!q.value(1).isNull() && !parent)
            return fail(damaged.arg(QStringLiteral("工程结构不完整")));
        if (q.value(1).isNull() && works->root())
            return fail(damaged.arg(QStringLiteral("工程结构不完整")));
        works->AddNode(parent, q.value(0).toInt(), q.value(2).toInt(), q.value(3).toString());
    }
    if (!works->root())
        return fail(damaged.arg(QStringLiteral("没有工程节点")));

    if (!q.exec(QStringLiteral("SELECT node_id, audit, name, xtbl, config FROM works")))
        return fail(damaged.arg(q.lastError().text()));
    while (q.next()) {
        ConstructionWorks* cw = works->ensureWorks(q.value(1).toInt(), q.value(0).toInt());
        if (!cw || !works->nodeById(q.value(0).toInt()))
            return fail(damaged.arg(QStringLiteral("工程数据与结构不符")));
        cw->setName(q.value(2).toString());
        const QMap<int, QVariant> xtbl = decodeMap(q.value(3).toByteArray());
        for (auto it = xtbl.begin(); it != xtbl.end(); ++it)
            cw->setXtBl(it.key(), it.value());
        const QMap<int, QVariant> config = decodeMap(q.value(4).toByteArray());
        for (auto it = config.begin(); it != config.end(); ++it)
            cw->getConfig()->setItem(it.key(), it.value());
    }

    // The submitted version a node announces must be there, and only there.
    for (ProTreeNode* node : works->root()->subtree()) {
        if (ProTreeNode::CheckWithSSVersion(node) != submitted.contains(ProTreeNode::Id(node)))
            return fail(damaged.arg(QStringLiteral("送审版本数据不完整")));
    }

    if (!q.exec(QStringLiteral("SELECT node_id, audit, table_type FROM list WHERE locked <> 0")))
        return fail(damaged.arg(q.lastError().text()));
    while (q.next()) {
        ConstructionWorks* cw = works->works(q.value(1).toInt(), q.value(0).toInt());
        if (GeneralTableBase* table = cw ? cw->tableByType(q.value(2).toInt()) : nullptr)
            table->SetReadOnlyLocked(true);
    }

    // Rows are written table by table in order, so the insertion order is the load order.
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral(
            "SELECT node_id, audit, table_type, kind, block, height, note, fields FROM row"
            " ORDER BY rowid")))
        return fail(damaged.arg(q.lastError().text()));
    qint64 rows = 0;
    int lastNode = -1, lastAudit = -1, lastType = -1;
    GeneralTableBase* table = nullptr;
    QVector<QVariant> values;
    while (q.next()) {
        const int node = q.value(0).toInt(), audit = q.value(1).toInt(), type = q.value(2).toInt();
        if (node != lastNode || audit != lastAudit || type != lastType) {
            ConstructionWorks* cw = works->works(audit, node);
            table = cw ? cw->tableByType(type) : nullptr;
            lastNode = node, lastAudit = audit, lastType = type;
        }
        if (!table)
            return fail(damaged.arg(QStringLiteral("表格数据与结构不符")));
        values.clear();
        if (!decodeFields(q.value(7).toByteArray(), values))
            return fail(damaged.arg(QStringLiteral("行数据无法解读")));
        BaseDataItem* item = table->CreateItem();
        for (int f = 0; f < values.size(); ++f)
            item->loadValue(f, values.at(f));
        item->loadState(q.value(3).toInt(), q.value(4).toInt() != 0, q.value(5).toInt(),
                        q.value(6).toString());
        table->attach(table->count(), item);
        ++rows;
    }
    if (q.lastError().isValid())
        return fail(damaged.arg(q.lastError().text()));
    if (rows != meta.value(QStringLiteral("row_count")).toLongLong())
        return fail(damaged.arg(QStringLiteral("数据行数不符")));
    QString tenderFailure;
    if (version >= 2 && !TenderListStore::Load(db, works.get(), &tenderFailure))
        return fail(damaged.arg(tenderFailure));
    works->setFilePath(path);
    works->setProjectWorkChanged(false);
    return works;
}
