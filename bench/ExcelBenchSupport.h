#pragma once

#include "PeakMemory.h"

#include <QString>

// The text of one cell of a materials list: name, model (规格型号), unit and the like.
inline QString materialCell(int row, int col)
{
    static const char* const names[] = {"商品混凝土", "钢筋",     "水泥",     "中砂", "碎石",
                                        "标准砖",     "防水卷材", "镀锌钢管", "电缆", "涂料"};
    switch (col) {
    case 0:
        return QStringLiteral("0101%1").arg(row, 6, 10, QLatin1Char('0'));
    case 1:
        return QString::fromUtf8(names[row % 10]);
    case 2:
        return QStringLiteral("HRB400 Φ%1").arg(8 + row % 25);
    case 3:
        return QStringLiteral("t");
    default:
        return QStringLiteral("%1 备注%2").arg(col).arg(row % 997);
    }
}
