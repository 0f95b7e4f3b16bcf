#include "LxrgSql.h"

#include <QRegularExpression>

namespace {

bool quotedAt(const QString& pattern, int percent)
{
    // "'%1'" and the copy's "' %4'" are quoted; "fid = %1" and "dj=%3" are not.
    if (percent >= 1 && pattern.at(percent - 1) == QLatin1Char('\''))
        return true;
    return percent >= 2 && pattern.at(percent - 1) == QLatin1Char(' ') &&
           pattern.at(percent - 2) == QLatin1Char('\'');
}

bool plainNumber(const QString& value)
{
    static const QRegularExpression number(
        QStringLiteral("^-?[0-9]+(\\.[0-9]+)?([eE][-+]?[0-9]+)?$"));
    return number.match(value).hasMatch();
}

bool tableName(const QString& value)
{
    return value == QLatin1String("main.lxrg") || value == QLatin1String("lxrg");
}

} // namespace

QString LxrgSql::Fill(const QString& pattern, const QStringList& values, QString* why)
{
    auto broken = [why](const QString& reason) {
        if (why)
            *why = reason;
        return QString();
    };
    QString sql;
    sql.reserve(pattern.size() + 64);
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        int digits = 0;
        while (i + 1 + digits < pattern.size() && digits < 2 &&
               pattern.at(i + 1 + digits).isDigit())
            ++digits;
        const int number = digits ? pattern.mid(i + 1, digits).toInt() : 0;
        if (c != QLatin1Char('%') || number < 1 || number > values.size()) {
            sql += c;
            continue;
        }
        const QString& value = values.at(number - 1);
        if (value.contains(QLatin1Char('\'')) || value.contains(QChar(0)))
            return broken(QStringLiteral("值“%1”含有引号或空字符，语句未执行")
                              .arg(QString(value).replace(QChar(0), QLatin1Char(' '))));
        if (!quotedAt(pattern, i) && !plainNumber(value) && !tableName(value))
            return broken(QStringLiteral("值“%1”不是数字，语句未执行").arg(value));
        sql += value;
        i += digits;
    }
    return sql;
}
