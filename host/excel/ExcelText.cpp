#include "ExcelText.h"

#include <QDate>
#include <QDateTime>
#include <QTime>

#include <cmath>

namespace ExcelText {

QString number(double value)
{
    if (std::isnan(value) || std::isinf(value))
        return QStringLiteral("#NUM!");
    const double magnitude = std::fabs(value);
    if (value == std::floor(value) && magnitude < 1e15)
        return QString::number(qint64(value));
    if (magnitude >= 1e15 || magnitude < 1e-10)
        return QString::number(value, 'g', 15);
    const int exponent = int(std::floor(std::log10(magnitude)));
    const int decimals = qBound(0, 14 - exponent, 24);
    QString text = QString::number(value, 'f', decimals);
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    if (text == QLatin1String("-0"))
        text = QStringLiteral("0");
    return text;
}

QString dateText(double serial, bool date1904)
{
    if (!(serial >= 0) || serial > 2958466)
        return QString();
    qint64 days = qint64(std::floor(serial));
    qint64 seconds = qRound64((serial - double(days)) * 86400.0);
    if (seconds >= 86400) {
        ++days;
        seconds -= 86400;
    }
    const QString time = QTime(0, 0).addSecs(int(seconds)).toString(QStringLiteral("HH:mm:ss"));
    if (days == 0 && seconds > 0)
        return time;
    QString date;
    if (date1904) {
        date = QDate(1904, 1, 1).addDays(days).toString(Qt::ISODate);
    } else if (days == 0) {
        date = QStringLiteral("1900-01-00"); // the day before the first, as the workbook shows it
    } else if (days == 60) {
        date = QStringLiteral("1900-02-29"); // the 1900 system counts a leap day that never was
    } else {
        date = QDate(1899, 12, days < 60 ? 31 : 30).addDays(days).toString(Qt::ISODate);
    }
    return seconds > 0 ? date + QLatin1Char(' ') + time : date;
}

QVariant dateValue(const QString& text)
{
    if (text.size() == 10) {
        const QDate date = QDate::fromString(text, Qt::ISODate);
        return date.isValid() ? QVariant(date) : QVariant(text);
    }
    if (text.size() == 8) {
        const QTime time = QTime::fromString(text, QStringLiteral("HH:mm:ss"));
        return time.isValid() ? QVariant(time) : QVariant(text);
    }
    const QDateTime stamp = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return stamp.isValid() ? QVariant(stamp) : QVariant(text);
}

bool isDateFormat(int formatId, const QString& formatCode)
{
    if ((formatId >= 14 && formatId <= 22) || (formatId >= 27 && formatId <= 36) ||
        (formatId >= 45 && formatId <= 47) || (formatId >= 50 && formatId <= 58))
        return true;
    if (formatCode.isEmpty())
        return false;
    // Only the first section counts; quoted text, escapes and [colour] or [$-locale] do not.
    bool quoted = false;
    bool bracket = false;
    for (int i = 0; i < formatCode.size(); ++i) {
        const QChar c = formatCode.at(i);
        if (quoted) {
            quoted = c != QLatin1Char('"');
            continue;
        }
        if (bracket) {
            if (c == QLatin1Char(']'))
                bracket = false;
            else if (i > 0 && formatCode.at(i - 1) == QLatin1Char('[') &&
                     QStringLiteral("hHmMsS").contains(c))
                return true; // elapsed time such as [h]:mm
            continue;
        }
        if (c == QLatin1Char('"'))
            quoted = true;
        else if (c == QLatin1Char('['))
            bracket = true;
        else if (c == QLatin1Char('\\') || c == QLatin1Char('_') || c == QLatin1Char('*'))
            ++i;
        else if (c == QLatin1Char(';'))
            return false;
        else if (QStringLiteral("yYmMdDhHsS").contains(c))
            return true;
    }
    return false;
}

bool parseReference(const QStringView reference, int* row, int* col)
{
    int i = 0;
    qint64 column = 0;
    while (i < reference.size() && reference.at(i).isLetter() && i < 4) {
        const QChar c = reference.at(i).toUpper();
        if (c < QLatin1Char('A') || c > QLatin1Char('Z'))
            return false;
        column = column * 26 + (c.unicode() - 'A' + 1);
        ++i;
    }
    if (i == 0 || i == reference.size())
        return false;
    qint64 line = 0;
    for (; i < reference.size(); ++i) {
        const QChar c = reference.at(i);
        if (!c.isDigit() || line > 10000000)
            return false;
        line = line * 10 + (c.unicode() - '0');
    }
    if (column < 1 || column > 16384 || line < 1 || line > 1048576)
        return false;
    *row = int(line - 1);
    *col = int(column - 1);
    return true;
}

} // namespace ExcelText
