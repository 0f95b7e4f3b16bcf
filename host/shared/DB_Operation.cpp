#include "DB_Operation.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

DB_Operation::DB_Operation(const QString& driver) : m_driver(driver) {}

DB_Operation::~DB_Operation()
{
    closeDB();
}

bool DB_Operation::openDB(const QString& path)
{
    closeDB();
    if (!QFileInfo(path).isFile()) {
        m_error = QStringLiteral("数据库文件不存在：%1").arg(path);
        return false;
    }
    m_connection = QStringLiteral("dbop-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(path);
    if (!db.open()) {
        m_error = db.lastError().text();
        closeDB();
        return false;
    }
    // Each statement outside a transaction commits on its own. With a write-ahead log and
    // synchronous=NORMAL a commit is an append to the log, synced only at checkpoints: a crash
    // of the program never loses a committed statement (the log is written before the
    // statement returns), and a power cut can lose at most the last commits, never corrupt
    // the file. The default rollback journal synced three times per statement. A file that
    // cannot take a log (read-only) keeps its journal; its reads are not affected.
    QSqlQuery pragma(db);
    pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    pragma.exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
    return true;
}

void DB_Operation::closeDB()
{
    if (m_connection.isEmpty())
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(m_connection, false);
        if (db.isOpen())
            db.close();
    }
    QSqlDatabase::removeDatabase(m_connection);
    m_connection.clear();
}

bool DB_Operation::isOpen() const
{
    return !m_connection.isEmpty() && QSqlDatabase::database(m_connection, false).isOpen();
}

QList<QVariantMap> DB_Operation::getMappedObjs(const QString& sql)
{
    QList<QVariantMap> rows;
    if (!isOpen())
        return rows;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!query.exec(sql)) {
        m_error = query.lastError().text();
        return rows;
    }
    while (query.next()) {
        QVariantMap row;
        const QSqlRecord record = query.record();
        for (int c = 0; c < record.count(); ++c)
            row.insert(record.fieldName(c), query.value(c));
        rows << row;
    }
    return rows;
}

bool DB_Operation::excuteSQL(const QString& sql)
{
    if (!isOpen())
        return false;
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    if (!query.exec(sql)) {
        m_error = query.lastError().text();
        return false;
    }
    return true;
}
