#include "NumberInput.h"

#include "FormulaText.h"
#include "VXParseAlg.h"

#include <QRegularExpression>

namespace {

bool isNameChar(QChar c)
{
    return c.isLetter() || c == QLatin1Char('_') || c.unicode() >= 0x80;
}

bool isNumberChar(QChar c)
{
    return c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char(',');
}

// "1,500" and "2,345,678.50" are numbers in groups of three.
bool isGroupedNumber(const QString& run)
{
    static const QRegularExpression grouped(QStringLiteral("^[0-9]{1,3}(,[0-9]{3})+(\\.[0-9]*)?$"));
    return grouped.match(run).hasMatch();
}

} // namespace

bool NumberInput::Normalise(const QString& typed, QString& out, QString& error)
{
    out.clear();
    error.clear();
    QString text = FormulaText::ReplaceFormulaItem(typed);
    // No-break and thin spaces are blanks too.
    text.remove(QChar(0x00A0)).remove(QChar(0x2009)).remove(QChar(0x202F));
    text.replace(QChar(0x2212), QLatin1Char('-')); // the typographic minus
    QString result;
    result.reserve(text.size() + 8);
    for (int i = 0; i < text.size();) {
        const QChar c = text.at(i);
        const bool startsNumber = c.isDigit() && (i == 0 || !isNameChar(text.at(i - 1)));
        if (!startsNumber) {
            if (c == QLatin1Char(',')) {
                error = QStringLiteral("逗号只能用作千位分隔符：%1").arg(typed);
                return false;
            }
            if (c == QChar(0x2030) || c == QLatin1Char('%')) {
                error = QStringLiteral("百分号或千分号只能跟在数字后面：%1").arg(typed);
                return false;
            }
            result += c;
            ++i;
            continue;
        }
        int end = i;
        while (end < text.size() && isNumberChar(text.at(end)))
            ++end;
        QString run = text.mid(i, end - i);
        if (run.contains(QLatin1Char(','))) {
            if (!isGroupedNumber(run)) {
                error = QStringLiteral("逗号只能用作千位分隔符：%1").arg(typed);
                return false;
            }
            run.remove(QLatin1Char(','));
        }
        if (end < text.size() && text.at(end) == QLatin1Char('%')) {
            result += QLatin1Char('(') + run + QStringLiteral("/100)");
            ++end;
        } else if (end < text.size() && text.at(end) == QChar(0x2030)) {
            result += QLatin1Char('(') + run + QStringLiteral("/1000)");
            ++end;
        } else {
            result += run;
        }
        i = end;
    }
    out = result;
    return true;
}

bool NumberInput::ToNumber(const QString& typed, double& value, QString& error)
{
    error.clear();
    if (typed.trimmed().isEmpty())
        return false;
    return VXParseAlg::getInstance()->ExpCalc(typed, {}, value, error);
}
