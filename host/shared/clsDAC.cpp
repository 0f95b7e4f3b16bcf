#include "clsDAC.h"

#include "DB_Operation.h"

namespace DBM {

clsDAC::clsDAC(const QString& path) : m_path(path) {}

clsDACResult clsDAC::execSql(const QString& sql)
{
    DB_Operation db;
    if (!db.openDB(m_path))
        throw exDBM(db.lastError());
    // A statement that gives no rows is run as such; one that fails throws.
    const bool isQuery = sql.trimmed().startsWith(QStringLiteral("select"), Qt::CaseInsensitive);
    if (!isQuery) {
        if (!db.excuteSQL(sql))
            throw exDBM(QStringLiteral("%1 (%2)").arg(db.lastError(), sql));
        return clsDACResult();
    }
    QList<QVariantMap> rows = db.getMappedObjs(sql);
    if (rows.isEmpty() && !db.lastError().isEmpty())
        throw exDBM(QStringLiteral("%1 (%2)").arg(db.lastError(), sql));
    return clsDACResult(std::move(rows));
}

void clsDAC::Exec(const QString& path, const QString& sql)
{
    clsDAC(path).execSql(sql);
}

} // namespace DBM
