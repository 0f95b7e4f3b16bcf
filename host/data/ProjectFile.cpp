#include "ProjectFile.h"

#include "ProjectRegion.h"
#include "ProjectWorks.h"
#include "TenderListStore.h"
#include "VariantStream.h"

#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QtEndian>

#include <sqlite3.h>

#include <cstdio>
#include <cstring>
#include <limits>
#include <unistd.h>

namespace {

enum FieldType : quint8 { Double = 1, Integer = 2, Text = 3, Boolean = 4, Other = 5 };

// The tables of a project file. Opening checks that each is a table with exactly these columns
// in this order; saving creates them from the same list. A new table is one more entry.
struct TableLayout
{
    const char* name;
    const char* columns;
    const char* key; // PRIMARY KEY columns, or null
};

const TableLayout kTables[] = {
    {"meta", "key TEXT PRIMARY KEY, value TEXT", nullptr},
    {"project", "id INTEGER, name TEXT, read_only INTEGER, bid_locked INTEGER, config BLOB",
     nullptr},
    {"node",
     "id INTEGER PRIMARY KEY, parent_id INTEGER, type INTEGER, name TEXT, ord INTEGER, "
     "submitted INTEGER",
     nullptr},
    {"works", "node_id INTEGER, audit INTEGER, name TEXT, xtbl BLOB, config BLOB",
     "node_id, audit"},
    {"list", "node_id INTEGER, audit INTEGER, table_type INTEGER, locked INTEGER",
     "node_id, audit, table_type"},
    {"row",
     "node_id INTEGER, audit INTEGER, table_type INTEGER, ord INTEGER, kind INTEGER, "
     "block INTEGER, height INTEGER, note TEXT, fields BLOB",
     nullptr},
};

QString createStatement(const TableLayout& table)
{
    QString sql = QStringLiteral("CREATE TABLE %1(%2")
                      .arg(QLatin1String(table.name), QLatin1String(table.columns));
    if (table.key)
        sql += QStringLiteral(", PRIMARY KEY(%1)").arg(QLatin1String(table.key));
    return sql + QLatin1Char(')');
}

QStringList columnNames(const TableLayout& table)
{
    QStringList names;
    for (const QString& column : QString::fromLatin1(table.columns).split(QLatin1Char(',')))
        names << column.trimmed().section(QLatin1Char(' '), 0, 0);
    return names;
}

// Whether `table` is a plain table of exactly the expected columns. A view or a virtual table
// under an expected name could run anything when read, so it is refused before any reading.
bool checkLayout(const QSqlDatabase& db, const TableLayout& table, QString* problem)
{
    const QString name = QLatin1String(table.name);
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT type, sql FROM sqlite_master WHERE name = ? COLLATE NOCASE"));
    q.addBindValue(name);
    if (!q.exec() || !q.next()) {
        *problem = QStringLiteral("缺少数据表“%1”").arg(name);
        return false;
    }
    if (q.value(0).toString() != QLatin1String("table") ||
        q.value(1).toString().startsWith(QLatin1String("CREATE VIRTUAL"), Qt::CaseInsensitive)) {
        *problem = QStringLiteral("“%1”不是普通数据表").arg(name);
        return false;
    }
    QStringList present;
    if (!q.exec(QStringLiteral("PRAGMA table_info(\"%1\")").arg(name))) {
        *problem = QStringLiteral("数据表“%1”的结构无法读取").arg(name);
        return false;
    }
    while (q.next())
        present << q.value(1).toString();
    if (present != columnNames(table)) {
        *problem = QStringLiteral("数据表“%1”的列（%2）与本程序不符")
                       .arg(name, present.join(QStringLiteral("、")));
        return false;
    }
    return true;
}

// Typed reads of one result row, from a QSqlQuery or (for the long row table) straight from a
// SQLite statement. SQLite keeps whatever type a value was written with, so a column of the
// wrong type or out of range is named with its table and row, never coerced.
class RowCheck
{
public:
    RowCheck(const char* table, const QSqlQuery& query)
        : m_table(table), m_query(&query), m_rowid(query.value(0).toLongLong())
    {
    }
    RowCheck(const char* table, sqlite3_stmt* statement)
        : m_table(table), m_statement(statement), m_rowid(sqlite3_column_int64(statement, 0))
    {
    }

    bool ok() const { return m_problem.isEmpty(); }
    QString problem() const { return m_problem; }
    QString wrong(const QString& reason) const
    {
        return QStringLiteral("数据表“%1”第%2行：%3")
            .arg(QLatin1String(m_table))
            .arg(m_rowid)
            .arg(reason);
    }

    qint64 integer(int column, const char* name, qint64 min, qint64 max)
    {
        qint64 n = 0;
        if (m_statement && sqlite3_column_type(m_statement, column) == SQLITE_INTEGER) {
            n = sqlite3_column_int64(m_statement, column);
        } else {
            const QVariant v = value(column);
            if (m_statement ||
                (v.userType() != QMetaType::LongLong && v.userType() != QMetaType::Int))
                return refuse(column, name), 0;
            n = v.toLongLong();
        }
        if (n < min || n > max)
            return refuse(column, name), 0;
        return n;
    }
    bool flag(int column, const char* name) { return integer(column, name, 0, 1) != 0; }
    QString text(int column, const char* name)
    {
        if (m_statement) {
            switch (sqlite3_column_type(m_statement, column)) {
            case SQLITE_NULL:
                return QString();
            case SQLITE_TEXT:
                return QString::fromUtf8(
                    reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column)),
                    sqlite3_column_bytes(m_statement, column));
            default:
                return refuse(column, name), QString();
            }
        }
        const QVariant v = value(column);
        if (!v.isNull() && v.userType() != QMetaType::QString)
            return refuse(column, name), QString();
        return v.toString();
    }
    QByteArray blob(int column, const char* name)
    {
        const QVariant v = value(column);
        if (!v.isNull() && v.userType() != QMetaType::QByteArray)
            return refuse(column, name), QByteArray();
        return v.toByteArray();
    }
    // A blob column's bytes where SQLite holds them, valid until the statement steps on.
    const char* blobBytes(int column, const char* name, int* size)
    {
        *size = 0;
        const int type = sqlite3_column_type(m_statement, column);
        if (type == SQLITE_NULL)
            return nullptr;
        if (type != SQLITE_BLOB)
            return refuse(column, name), nullptr;
        const char* data = static_cast<const char*>(sqlite3_column_blob(m_statement, column));
        *size = sqlite3_column_bytes(m_statement, column);
        return data;
    }
    QMap<int, QVariant> intMap(int column, const char* name)
    {
        QMap<int, QVariant> map;
        QString why;
        const QByteArray bytes = blob(column, name);
        if (ok() && !VariantStream::readIntMap(bytes, &map, &why) && m_problem.isEmpty())
            m_problem = wrong(QStringLiteral("列“%1”无法解读：%2").arg(QLatin1String(name), why));
        return map;
    }

private:
    QVariant value(int column) const
    {
        if (!m_statement)
            return m_query->value(column);
        switch (sqlite3_column_type(m_statement, column)) {
        case SQLITE_INTEGER:
            return qlonglong(sqlite3_column_int64(m_statement, column));
        case SQLITE_FLOAT:
            return sqlite3_column_double(m_statement, column);
        case SQLITE_TEXT:
            return QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column)),
                sqlite3_column_bytes(m_statement, column));
        case SQLITE_BLOB:
            return QByteArray(static_cast<const char*>(sqlite3_column_blob(m_statement, column)),
                              sqlite3_column_bytes(m_statement, column));
        default:
            return QVariant();
        }
    }
    void refuse(int column, const char* name)
    {
        if (!m_problem.isEmpty())
            return;
        const QVariant v = value(column);
        QString shown = v.isNull() ? QStringLiteral("空值") : v.toString().left(40);
        m_problem = wrong(QStringLiteral("列“%1”的值“%2”无效").arg(QLatin1String(name), shown));
    }

    const char* m_table;
    const QSqlQuery* m_query = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    qint64 m_rowid;
    QString m_problem;
};

// A prepared statement on the connection's own SQLite handle, finalized when done.
class Statement
{
public:
    Statement(const QSqlDatabase& db, const char* sql)
    {
        const QVariant handle = db.driver()->handle();
        if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0)
            m_db = *static_cast<sqlite3* const*>(handle.constData());
        if (m_db && sqlite3_prepare_v2(m_db, sql, -1, &m_statement, nullptr) != SQLITE_OK)
            m_statement = nullptr;
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    sqlite3_stmt* get() const { return m_statement; }
    // Runs an insert with the values bound, ready for the next.
    bool run()
    {
        const bool done = sqlite3_step(m_statement) == SQLITE_DONE;
        sqlite3_reset(m_statement);
        return done;
    }
    QString error() const
    {
        return m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QStringLiteral("no SQLite handle");
    }

private:
    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_statement = nullptr;
};

QByteArray encodeMap(const QMap<int, QVariant>& map)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    out << map;
    return bytes;
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

namespace {

// Appends a row's fields in the file's compact encoding.
void appendFields(const RowFields& values, QByteArray& bytes)
{
    auto put = [&bytes](const void* data, int size) {
        bytes.append(static_cast<const char*>(data), size);
    };
    auto header = [&put](int field, quint8 type) {
        const quint8 number = quint8(field);
        put(&number, 1), put(&type, 1);
    };
    auto putDouble = [&](int field, double d) {
        quint64 raw;
        std::memcpy(&raw, &d, sizeof raw);
        raw = qToLittleEndian(raw);
        header(field, Double), put(&raw, 8);
    };
    auto putInteger = [&](int field, qint64 n) {
        const qint64 raw = qToLittleEndian(n);
        header(field, Integer), put(&raw, 8);
    };
    auto sized = [&](int field, quint8 type, const QByteArray& data) {
        header(field, type);
        const quint32 size = qToLittleEndian(quint32(data.size()));
        put(&size, 4), bytes.append(data);
    };
    for (int field = 0; field < values.size() && field < RowFields::MaxFields; ++field) {
        switch (values.type(field)) {
        case RowFields::Invalid:
            break;
        case RowFields::Double:
            putDouble(field, values.doubleAt(field));
            break;
        case RowFields::Int:
        case RowFields::LongLong:
            putInteger(field, values.integerAt(field));
            break;
        case RowFields::Bool: {
            const quint8 b = values.boolAt(field) ? 1 : 0;
            header(field, Boolean), put(&b, 1);
            break;
        }
        case RowFields::Text:
            sized(field, Text, values.textAt(field).toUtf8());
            break;
        case RowFields::Other: {
            // A float is written as a double and an unsigned as an integer, as they always were.
            const QVariant v = values.value(field);
            if (v.userType() == QMetaType::Float) {
                putDouble(field, v.toDouble());
                break;
            }
            if (v.userType() == QMetaType::UInt) {
                putInteger(field, v.toLongLong());
                break;
            }
            QByteArray data;
            QDataStream out(&data, QIODevice::WriteOnly);
            out.setVersion(QDataStream::Qt_5_15);
            out << v;
            sized(field, Other, data);
            break;
        }
        }
    }
}

// Texts read from a file repeat down a list (units, names, models, makers): the same bytes
// give the same shared QString. A small direct-mapped table of short texts, so that a file of
// a million different codes holds only a few thousand texts at a time.
class TextInterner
{
public:
    QString text(const char* utf8, int size)
    {
        if (size > MaxBytes)
            return QString::fromUtf8(utf8, size);
        Entry& e = m_entries[qHashBits(utf8, size_t(size)) & (Size - 1)];
        if (e.size == size && !e.text.isNull() && std::memcmp(e.bytes, utf8, size_t(size)) == 0)
            return e.text;
        e.size = size;
        std::memcpy(e.bytes, utf8, size_t(size));
        e.text = QString::fromUtf8(utf8, size);
        return e.text;
    }

private:
    static constexpr int MaxBytes = 56;
    static constexpr int Size = 4096;
    struct Entry
    {
        int size = -1;
        char bytes[MaxBytes];
        QString text;
    };
    QVector<Entry> m_entries = QVector<Entry>(Size);
};

// Walks the encoded fields, handing each to `take(field, type, payload, size)`; false (with
// the reason) when the bytes are cut short or a header is invalid, or when `take` refuses.
template <typename Take> bool walkFields(const char* p, qint64 length, QString* why, Take take)
{
    auto fail = [why](const QString& text) {
        if (why)
            *why = text;
        return false;
    };
    const QString cut = QStringLiteral("数据不完整");
    const char* end = p + length;
    auto need = [&](qint64 n) { return end - p >= n; };
    while (p < end) {
        if (!need(2))
            return fail(cut);
        const int field = quint8(p[0]);
        const quint8 type = quint8(p[1]);
        p += 2;
        quint32 size = 0;
        switch (type) {
        case Double:
        case Integer:
            size = 8;
            break;
        case Boolean:
            size = 1;
            if (need(1) && quint8(*p) > 1)
                return fail(QStringLiteral("字段%1的逻辑值%2无效").arg(field).arg(quint8(*p)));
            break;
        case Text:
        case Other:
            if (!need(4))
                return fail(cut);
            std::memcpy(&size, p, 4);
            size = qFromLittleEndian(size);
            p += 4;
            if (!need(size))
                return fail(QStringLiteral("字段%1的长度%2超出数据").arg(field).arg(size));
            break;
        default:
            return fail(QStringLiteral("字段%1的类型%2无效").arg(field).arg(type));
        }
        if (!need(size))
            return fail(cut);
        if (!take(field, type, p, int(size)))
            return false;
        p += size;
    }
    return true;
}

// Decodes one row's fields straight from the file's bytes: one pass to check the bytes and
// find the highest field, so that the row's storage is allocated once, then one to fill it.
bool decodeRow(const char* p, qint64 length, RowFields& values, QString* why,
               TextInterner* interner)
{
    int highest = -1;
    if (!walkFields(p, length, why, [&](int field, quint8, const char*, int) {
            highest = qMax(highest, field);
            return true;
        }))
        return false;
    values.clear(); // what the row held before is replaced whole
    values.reserve(highest + 1);
    return walkFields(p, length, why, [&](int field, quint8 type, const char* data, int size) {
        switch (type) {
        case Double: {
            quint64 raw;
            std::memcpy(&raw, data, 8);
            raw = qFromLittleEndian(raw);
            double d;
            std::memcpy(&d, &raw, 8);
            values.setDouble(field, d);
            return true;
        }
        case Integer: {
            qint64 raw;
            std::memcpy(&raw, data, 8);
            values.setInteger(field, qFromLittleEndian(raw));
            return true;
        }
        case Boolean:
            values.setBool(field, *data != 0);
            return true;
        case Text:
            values.setText(field,
                           interner ? interner->text(data, size) : QString::fromUtf8(data, size));
            return true;
        default: {
            QVariant v;
            QString reason;
            if (!VariantStream::readVariant(QByteArray::fromRawData(data, size), &v, &reason)) {
                if (why)
                    *why = QStringLiteral("字段%1：%2").arg(field).arg(reason);
                return false;
            }
            values.set(field, v);
            return true;
        }
        }
    });
}

} // namespace

QByteArray ProjectFile::encodeFields(const RowFields& values)
{
    QByteArray bytes;
    bytes.reserve(values.size() * 10);
    appendFields(values, bytes);
    return bytes;
}

bool ProjectFile::decodeFields(const QByteArray& bytes, RowFields& values, QString* why)
{
    return decodeRow(bytes.constData(), bytes.size(), values, why, nullptr);
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
        // Large pages: fewer pages to write, to read and to check when the file is opened.
        ok = ok && exec(q, QStringLiteral("PRAGMA page_size=65536"), &failure) &&
             exec(q, QStringLiteral("PRAGMA journal_mode=OFF"), &failure) &&
             exec(q, QStringLiteral("PRAGMA synchronous=OFF"), &failure) && db.transaction();
        for (const TableLayout& table : kTables)
            ok = ok && exec(q, createStatement(table), &failure);
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
        QSqlQuery nodeQuery(db), worksQuery(db), listQuery(db);
        // Rows go straight to SQLite: one prepared insert, the fields encoded into one buffer.
        Statement rowInsert(db, "INSERT INTO row VALUES(?,?,?,?,?,?,?,?,?)");
        if (ok && !rowInsert.get())
            ok = false, failure = rowInsert.error();
        QByteArray fields;
        fields.reserve(4096);
        nodeQuery.prepare(QStringLiteral("INSERT INTO node VALUES(?,?,?,?,?,?)"));
        worksQuery.prepare(QStringLiteral("INSERT INTO works VALUES(?,?,?,?,?)"));
        listQuery.prepare(QStringLiteral("INSERT INTO list VALUES(?,?,?,?)"));
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
                    sqlite3_stmt* insert = rowInsert.get();
                    for (int r = 0; ok && r < table->count(); ++r) {
                        const BaseDataItem* item = table->at(r);
                        sqlite3_bind_int(insert, 1, id);
                        sqlite3_bind_int(insert, 2, audit);
                        sqlite3_bind_int(insert, 3, table->getTableType());
                        sqlite3_bind_int(insert, 4, r);
                        sqlite3_bind_int(insert, 5, item->getKind());
                        sqlite3_bind_int(insert, 6, item->IsBlock() ? 1 : 0);
                        sqlite3_bind_int(insert, 7, item->getRowHeight());
                        const QByteArray note = item->getNote().toUtf8();
                        if (note.isEmpty())
                            sqlite3_bind_null(insert, 8);
                        else
                            sqlite3_bind_text(insert, 8, note.constData(), note.size(),
                                              SQLITE_STATIC);
                        fields.resize(0); // keeps the reserved capacity
                        appendFields(item->rawValues(), fields);
                        sqlite3_bind_blob(insert, 9, fields.constData(), fields.size(),
                                          SQLITE_STATIC);
                        ok = rowInsert.run() || (failure = rowInsert.error(), false);
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
    auto damaged = [&](const QString& reason) {
        return fail(QStringLiteral("文件已损坏（%1）。").arg(reason));
    };
    // The database's own words are for whoever looks into the file: the user reads first
    // what happened and what to do, in Chinese.
    auto unreadable = [&](const QString& what, const QString& technical) {
        return fail(QStringLiteral("文件已损坏（%1）。请改用该工程的备份文件。\n技术信息：%2")
                        .arg(what, technical));
    };
    auto readFailed = [&](const char* table, const QSqlQuery& query) {
        return unreadable(QStringLiteral("数据表“%1”无法读取").arg(QLatin1String(table)),
                          query.lastError().text());
    };

    QSqlQuery q(db);
    q.setForwardOnly(true);
    // SQLite's own check of pages and records, before any content is trusted.
    if (!q.exec(QStringLiteral("PRAGMA quick_check")))
        return unreadable(QStringLiteral("数据库完整性检查无法进行"), q.lastError().text());
    if (!q.next() || q.value(0).toString() != QLatin1String("ok"))
        return unreadable(QStringLiteral("数据库完整性检查未通过，文件中的数据已被破坏"),
                          q.value(0).toString());

    QString layoutProblem;
    if (!checkLayout(db, kTables[0], &layoutProblem))
        return fail(QStringLiteral("不是本系统的工程文件。"));
    QHash<QString, QString> meta;
    if (!q.exec(QStringLiteral("SELECT key, value FROM meta")))
        return readFailed("meta", q);
    while (q.next())
        meta.insert(q.value(0).toString(), q.value(1).toString());
    if (meta.value(QStringLiteral("application")) != ApplicationId)
        return fail(QStringLiteral("不是本系统的工程文件。"));
    const QString versionText = meta.value(QStringLiteral("schema_version"));
    if (versionText.isEmpty())
        return damaged(QStringLiteral("没有记录工程文件的版本"));
    bool versionOk = false;
    const int version = versionText.toInt(&versionOk);
    if (!versionOk)
        return damaged(QStringLiteral("工程文件的版本“%1”无法识别").arg(versionText));
    if (version < OldestSchemaVersion || version > SchemaVersion)
        return fail(QStringLiteral("工程文件的版本为%1，本程序只能打开版本%2至%3的工程文件。")
                        .arg(version)
                        .arg(OldestSchemaVersion)
                        .arg(SchemaVersion));
    bool countOk = false;
    const qint64 expectedRows = meta.value(QStringLiteral("row_count")).toLongLong(&countOk);
    if (!countOk || expectedRows < 0)
        return damaged(QStringLiteral("没有记录有效的数据行数"));
    for (const TableLayout& table : kTables)
        if (!checkLayout(db, table, &layoutProblem))
            return damaged(layoutProblem);

    // project: exactly one record.
    if (!q.exec(
            QStringLiteral("SELECT rowid, id, name, read_only, bid_locked, config FROM project")))
        return readFailed("project", q);
    if (!q.next())
        return damaged(QStringLiteral("数据表“project”没有工程记录"));
    RowCheck project("project", q);
    const qint64 projectId = project.integer(1, "id", 0, std::numeric_limits<qint64>::max());
    const QString projectName = project.text(2, "name");
    const bool readOnly = project.flag(3, "read_only");
    const bool bidLocked = project.flag(4, "bid_locked");
    const QMap<int, QVariant> projectConfig = project.intMap(5, "config");
    if (!project.ok())
        return damaged(project.problem());
    const QVariant region = projectConfig.value(ProjectRegion::ConfigItem);
    const QString regionProblem = ProjectRegion::Problem(region);
    if (!regionProblem.isEmpty())
        return damaged(
            project.wrong(QStringLiteral("列“config”第%1项（工程所在地区）的值“%2”无效：%3")
                              .arg(ProjectRegion::ConfigItem)
                              .arg(region.toString().isEmpty() ? QLatin1String(region.typeName())
                                                               : region.toString().left(40))
                              .arg(regionProblem)));
    if (q.next())
        return damaged(QStringLiteral("数据表“project”有多条工程记录"));
    auto works = std::make_unique<ProjectWorks>(projectId, projectName);
    works->SetReadOnly(readOnly);
    works->SetDqdZdSd(bidLocked);
    for (auto it = projectConfig.begin(); it != projectConfig.end(); ++it)
        works->GetPriceModelConfig()->setItem(it.key(), it.value());

    // node: pre-order, so a parent always comes before its children. The tree has three
    // levels at most: the construction project, single projects, unit projects.
    if (!q.exec(QStringLiteral(
            "SELECT rowid, id, parent_id, type, name, submitted FROM node ORDER BY ord, rowid")))
        return readFailed("node", q);
    QHash<int, ProTreeNode*> nodes;
    QSet<int> submitted;
    while (q.next()) {
        RowCheck node("node", q);
        const int id = int(node.integer(1, "id", 0, INT_MAX));
        const bool isRoot = q.value(2).isNull();
        const int parentId = isRoot ? -1 : int(node.integer(2, "parent_id", 0, INT_MAX));
        const int type = int(node.integer(3, "type", 0, 1));
        const QString name = node.text(4, "name");
        const bool announcesSubmitted = node.flag(5, "submitted");
        if (!node.ok())
            return damaged(node.problem());
        if (nodes.contains(id))
            return damaged(node.wrong(QStringLiteral("工程节点编号%1重复").arg(id)));
        ProTreeNode* parent = isRoot ? nullptr : nodes.value(parentId, nullptr);
        if (isRoot != nodes.isEmpty())
            return damaged(
                node.wrong(QStringLiteral("工程结构不完整（根节点只能有一个且须在最前）")));
        if (!isRoot && !parent)
            return damaged(
                node.wrong(QStringLiteral("工程结构不完整（上级节点%1不存在）").arg(parentId)));
        if (isRoot && type != ProTreeNode::WorksNode)
            return damaged(node.wrong(QStringLiteral("建设项目节点的类型%1无效").arg(type)));
        if (parent && parent->parent() &&
            ProTreeNode::Types(parent) != ProTreeNode::SingleProjectNode)
            return damaged(node.wrong(QStringLiteral("节点“%1”不能位于单位工程之下").arg(name)));
        if (parent && type == ProTreeNode::SingleProjectNode && parent->parent())
            return damaged(
                node.wrong(QStringLiteral("单项工程“%1”只能位于建设项目之下").arg(name)));
        if (announcesSubmitted)
            submitted.insert(id);
        nodes.insert(id, works->AddNode(parent, id, type, name));
    }
    if (q.lastError().isValid())
        return readFailed("node", q);
    if (!works->root())
        return damaged(QStringLiteral("没有工程节点"));

    if (!q.exec(QStringLiteral("SELECT rowid, node_id, audit, name, xtbl, config FROM works")))
        return readFailed("works", q);
    QSet<QPair<int, int>> seenWorks;
    while (q.next()) {
        RowCheck row("works", q);
        const int nodeId = int(row.integer(1, "node_id", 0, INT_MAX));
        const int audit = int(row.integer(2, "audit", 0, 1));
        const QString name = row.text(3, "name");
        const QMap<int, QVariant> xtbl = row.intMap(4, "xtbl");
        const QMap<int, QVariant> config = row.intMap(5, "config");
        if (!row.ok())
            return damaged(row.problem());
        ProTreeNode* node = nodes.value(nodeId, nullptr);
        if (!node)
            return damaged(row.wrong(QStringLiteral("工程节点%1不存在").arg(nodeId)));
        if (ProTreeNode::Types(node) != ProTreeNode::WorksNode)
            return damaged(row.wrong(
                QStringLiteral("单项工程“%1”不能有工程数据").arg(ProTreeNode::Name(node))));
        if (seenWorks.contains({nodeId, audit}))
            return damaged(row.wrong(QStringLiteral("工程节点%1的工程数据重复").arg(nodeId)));
        seenWorks.insert({nodeId, audit});
        ConstructionWorks* cw = works->ensureWorks(audit, nodeId);
        cw->setName(name);
        for (auto it = xtbl.begin(); it != xtbl.end(); ++it)
            cw->setXtBl(it.key(), it.value());
        for (auto it = config.begin(); it != config.end(); ++it)
            cw->getConfig()->setItem(it.key(), it.value());
    }
    if (q.lastError().isValid())
        return readFailed("works", q);

    // The submitted version a node announces must be there, and only there.
    for (ProTreeNode* node : std::as_const(nodes)) {
        if (ProTreeNode::CheckWithSSVersion(node) != submitted.contains(ProTreeNode::Id(node)))
            return damaged(QStringLiteral("送审版本数据不完整"));
    }

    if (!q.exec(QStringLiteral("SELECT rowid, node_id, audit, table_type, locked FROM list")))
        return readFailed("list", q);
    while (q.next()) {
        RowCheck row("list", q);
        const int nodeId = int(row.integer(1, "node_id", 0, INT_MAX));
        const int audit = int(row.integer(2, "audit", 0, 1));
        const int type = int(row.integer(3, "table_type", 0, INT_MAX));
        const bool locked = row.flag(4, "locked");
        if (!row.ok())
            return damaged(row.problem());
        ConstructionWorks* cw = works->works(audit, nodeId);
        GeneralTableBase* table = cw ? cw->tableByType(type) : nullptr;
        if (!table)
            return damaged(row.wrong(QStringLiteral("表格%1不存在").arg(type)));
        table->SetReadOnlyLocked(locked);
    }
    if (q.lastError().isValid())
        return readFailed("list", q);

    // Rows are written table by table in order, so the insertion order is the load order.
    // A million rows are read straight from SQLite's statement: each row's fields are decoded
    // from the bytes SQLite holds into the row's own storage, with no copy in between.
    Statement rowStatement(db, "SELECT rowid, node_id, audit, table_type, ord, kind, block, "
                               "height, note, fields FROM row ORDER BY rowid");
    if (!rowStatement.get())
        return unreadable(QStringLiteral("数据表“row”无法读取"), rowStatement.error());
    qint64 rows = 0;
    int lastNode = -1, lastAudit = -1, lastType = -1;
    GeneralTableBase* table = nullptr;
    TextInterner interner;
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(rowStatement.get())) == SQLITE_ROW) {
        RowCheck row("row", rowStatement.get());
        const int node = int(row.integer(1, "node_id", 0, INT_MAX));
        const int audit = int(row.integer(2, "audit", 0, 1));
        const int type = int(row.integer(3, "table_type", 0, INT_MAX));
        row.integer(4, "ord", 0, INT_MAX);
        const int kind = int(row.integer(5, "kind", INT_MIN, INT_MAX));
        const bool block = row.flag(6, "block");
        const int height = int(row.integer(7, "height", 0, std::numeric_limits<qint16>::max()));
        const QString note = row.text(8, "note");
        int size = 0;
        const char* fields = row.blobBytes(9, "fields", &size);
        if (!row.ok())
            return damaged(row.problem());
        if (node != lastNode || audit != lastAudit || type != lastType) {
            ConstructionWorks* cw = works->works(audit, node);
            table = cw ? cw->tableByType(type) : nullptr;
            lastNode = node, lastAudit = audit, lastType = type;
        }
        if (!table)
            return damaged(row.wrong(QStringLiteral("表格数据与结构不符")));
        RowFields values;
        QString why;
        if (!decodeRow(fields, size, values, &why, &interner))
            return damaged(row.wrong(QStringLiteral("字段无法解读：%1").arg(why)));
        BaseDataItem* item = table->CreateItem();
        item->loadValues(std::move(values));
        item->loadState(kind, block, height, note);
        table->attach(table->count(), item);
        ++rows;
    }
    if (step != SQLITE_DONE)
        return unreadable(QStringLiteral("数据表“row”无法读取"), rowStatement.error());
    if (rows != expectedRows)
        return damaged(QStringLiteral("数据行数不符"));
    QString tenderFailure;
    if (version >= 2 && !TenderListStore::Load(db, works.get(), &tenderFailure))
        return damaged(tenderFailure);
    works->setFilePath(path);
    works->setProjectWorkChanged(false);
    return works;
}
