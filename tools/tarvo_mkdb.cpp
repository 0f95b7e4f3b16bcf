// Builds an SQLite database from a seed SQL file, one statement per line:
//   tarvo_mkdb <seed.sql> <output.db>...
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <cstdio>

static bool build(const QString& seed, const QString& output)
{
    QFile file(seed);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(seed));
        return false;
    }
    QDir().mkpath(QFileInfo(output).absolutePath());
    const QString temp = output + QStringLiteral(".building");
    QFile::remove(temp);
    bool ok = true;
    {
        QSqlDatabase db =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("seed"));
        db.setDatabaseName(temp);
        ok = db.open() && db.transaction();
        QSqlQuery query(db);
        for (const QByteArray& raw : file.readAll().split('\n')) {
            const QString line = QString::fromUtf8(raw).trimmed();
            if (!ok || line.isEmpty() || line.startsWith(QStringLiteral("--")))
                continue;
            if (!query.exec(line)) {
                std::fprintf(stderr, "%s: %s\n", qPrintable(line),
                             qPrintable(query.lastError().text()));
                ok = false;
            }
        }
        ok = ok && db.commit();
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("seed"));
    if (ok) {
        QFile::remove(output);
        ok = QFile::rename(temp, output);
    }
    return ok;
}

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3) {
        std::fprintf(stderr, "usage: tarvo_mkdb <seed.sql> <output.db>...\n");
        return 2;
    }
    for (int i = 2; i < args.size(); ++i)
        if (!build(args.at(1), args.at(i)))
            return 1;
    return 0;
}
