#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

// Batch access to an SQLite database file: open, run statements, close. Each open uses a
// connection of its own.
class DB_Operation
{
public:
    explicit DB_Operation(const QString& driver = QStringLiteral("sqlite"));
    ~DB_Operation();
    DB_Operation(const DB_Operation&) = delete;
    DB_Operation& operator=(const DB_Operation&) = delete;

    // False when the file does not exist or cannot be opened (a missing file is not created).
    bool openDB(const QString& path);
    void closeDB();
    bool isOpen() const;
    // The rows of a query as maps from column name to value; empty on failure.
    QList<QVariantMap> getMappedObjs(const QString& sql);
    bool excuteSQL(const QString& sql);
    QString lastError() const { return m_error; }

private:
    QString m_driver;
    QString m_connection;
    QString m_error;
};
