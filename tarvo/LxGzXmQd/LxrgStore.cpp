#include "LxrgStore.h"

#include "LxrgSql.h"
#include "SporadicTableModel.h"

#include "ProcExceptionNew.h"

#include <QDebug>

namespace LxrgStore {

QString Path()
{
    return SporadicTableModel::DatabasePath(QStringLiteral("LXRG"));
}

template <typename F> static bool guarded(const char* function, F&& body)
{
    const QString name = QLatin1String(function);
    const QString tag =
        name.contains(QLatin1String("::")) ? name : QStringLiteral("TLxrgwh::") + name;
    const auto log = [function, &tag](const QString& text) {
        qDebug().noquote() << QStringLiteral("TLxrgwh") << function << text;
        ProcExceptionNew(std::runtime_error(text.toStdString()),
                         QStringLiteral("LxGzXmQd\\TLxrgwh"), 0, tag);
    };
    try {
        body();
        return true;
    } catch (const DBM::exDBM& e) {
        log(QString::fromStdString(e.what()));
    } catch (const char* e) {
        log(QString::fromUtf8(e));
    } catch (const QString& e) {
        log(e);
    } catch (const std::exception& e) {
        log(QString::fromStdString(e.what()));
    } catch (...) {
        log(QStringLiteral("未知异常"));
    }
    return false;
}

static QString statement(const QString& pattern, const QStringList& values)
{
    QString why;
    const QString sql = LxrgSql::Fill(pattern, values, &why);
    if (sql.isEmpty())
        throw DBM::exDBM(why);
    return sql;
}

bool Exec(const QString& pattern, const QStringList& values, const char* function)
{
    return guarded(function, [&] { DBM::clsDAC::Exec(Path(), statement(pattern, values)); });
}

DBM::clsDACResult Query(const QString& pattern, const QStringList& values, const char* function)
{
    DBM::clsDACResult result;
    guarded(function, [&] { result = DBM::clsDAC(Path()).execSql(statement(pattern, values)); });
    return result;
}

} // namespace LxrgStore
