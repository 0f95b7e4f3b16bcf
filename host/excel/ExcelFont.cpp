#include "ExcelFont.h"

#include <QFont>

ExcelFont ExcelFont::fromQFont(const QFont& font)
{
    ExcelFont result;
    result.family = font.family();
    result.pointSize = font.pointSizeF() > 0 ? font.pointSizeF() : 0;
    // Demi-bold and up count as bold, any slanted style as italic, as the table layout says.
    result.bold = font.weight() > 57;
    result.italic = font.style() != QFont::StyleNormal;
    return result;
}
