#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

#include <stdexcept>
#include <string>

namespace DBM {

// A database failure: what() tells the statement and the reason.
class exDBM : public std::runtime_error
{
public:
    explicit exDBM(const QString& text) : std::runtime_error(text.toStdString()) {}
};

// The rows a statement gave, walked with next() and read by column name.
class clsDACResult
{
public:
    explicit clsDACResult(QList<QVariantMap> rows = {}) : m_rows(std::move(rows)) {}
    bool next() { return ++m_current < m_rows.size(); }
    QVariant value(const QString& column) const
    {
        return m_current >= 0 && m_current < m_rows.size() ? m_rows.at(m_current).value(column)
                                                           : QVariant();
    }
    int size() const { return m_rows.size(); }

private:
    QList<QVariantMap> m_rows;
    int m_current = -1;
};

// Statement access to an SQLite file for the maintenance dialogs: every failure throws exDBM.
class clsDAC
{
public:
    explicit clsDAC(const QString& path);
    clsDACResult execSql(const QString& sql);
    static void Exec(const QString& path, const QString& sql);

private:
    QString m_path;
};

} // namespace DBM
