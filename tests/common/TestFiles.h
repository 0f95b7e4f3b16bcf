#pragma once

#include <QByteArray>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

// Files a test makes on the spot: bytes written as they are, and an SQLite file (a saved
// project) changed with plain SQL the way a hand-edited or damaged file would be.
namespace TestFiles {

// Writes the bytes over whatever is at path; returns path, or an empty text if it could not.
inline QString write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        return QString();
    return path;
}

// Runs the statements on the SQLite file at path; returns the first failure as
// "statement: error", or an empty text when every statement ran.
inline QString runSql(const QString& path, const QStringList& statements)
{
    const QString connection = QStringLiteral("TestFiles.runSql");
    QString failure;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(path);
        if (!db.open())
            failure = path + QStringLiteral(": ") + db.lastError().text();
        for (const QString& sql : statements) {
            QSqlQuery query(db);
            if (failure.isEmpty() && !query.exec(sql))
                failure = sql + QStringLiteral(": ") + query.lastError().text();
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    return failure;
}

// Copies the file at from to to (replacing it) and runs the statements on the copy.
inline QString copyWithSql(const QString& from, const QString& to, const QStringList& statements)
{
    QFile::remove(to);
    if (!QFile::copy(from, to))
        return QStringLiteral("cannot copy ") + from + QStringLiteral(" to ") + to;
    return runSql(to, statements);
}

} // namespace TestFiles
