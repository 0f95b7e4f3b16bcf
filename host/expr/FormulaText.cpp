#include "FormulaText.h"

QString FormulaText::ReplaceFormulaItem(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        const ushort u = c.unicode();
        if (u >= 0xFF01 && u <= 0xFF5E)
            out += QChar(u - 0xFEE0); // the full-width copy of printable ASCII
        else if (u == 0x00D7)
            out += QLatin1Char('*');
        else if (u == 0x00F7)
            out += QLatin1Char('/');
        else if (u == 0x3001)
            out += QLatin1Char(',');
        else if (u == 0x3000 || c == QLatin1Char(' ') || c == QLatin1Char('\t'))
            continue;
        else
            out += c;
    }
    return out;
}
