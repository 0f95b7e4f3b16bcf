#pragma once

#include <QHash>
#include <QString>

class QFont;

// The font of a written cell: what a table layout records of a grid cell's font.
struct ExcelFont
{
    QString family;       // empty: the workbook's default font
    double pointSize = 0; // 0 or less: the workbook's default size
    bool bold = false;
    bool italic = false;

    static ExcelFont fromQFont(const QFont& font);
    bool operator==(const ExcelFont& other) const
    {
        return family == other.family && pointSize == other.pointSize && bold == other.bold &&
               italic == other.italic;
    }
};

// Writers keep one cell format per distinct font: this keys them without building a text.
inline uint qHash(const ExcelFont& font, uint seed = 0)
{
    return qHash(font.family, seed) ^ qHash(font.pointSize, seed) ^
           (uint(font.bold) << 1 | uint(font.italic));
}
