#include "LxrgStore.h"

#include "SporadicTableModel.h"

#include <QDebug>

namespace LxrgStore {

QString Path()
{
    return SporadicTableModel::DatabasePath(QStringLiteral("LXRG"));
}

template <typename F> static bool guarded(const char* function, F&& body)
{
    const auto log = [function](const QString& text) {
        qDebug().noquote() << QStringLiteral("TLxrgwh") << function << text;
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

bool Exec(const QString& sql, const char* function)
{
    return guarded(function, [&] { DBM::clsDAC::Exec(Path(), sql); });
}

DBM::clsDACResult Query(const QString& sql, const char* function)
{
    DBM::clsDACResult result;
    guarded(function, [&] { result = DBM::clsDAC(Path()).execSql(sql); });
    return result;
}

} // namespace LxrgStore
