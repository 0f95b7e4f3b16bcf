#pragma once

#include "LibXLExcelSheet.h"

#include <QStringList>
#include <QVector>

#include <memory>

// A worksheet made in memory, one QStringList per row: "" leaves a cell empty, a text starting
// with '=' is stored as the number after it ("=1" is the number 1), anything else as a string.
inline std::unique_ptr<LibXLExcelSheet>
makeSheet(const QVector<QStringList>& rows, const QVector<ExcelRange>& merges = {},
          const QString& name = QStringLiteral("Sheet1"),
          LibXLExcelSheet::SheetState state = LibXLExcelSheet::SheetVisible)
{
    SheetContent content;
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < rows.at(r).size(); ++c) {
            const QString& text = rows.at(r).at(c);
            if (text.isEmpty())
                continue;
            if (text.startsWith(QLatin1Char('=')))
                content.addCell(r, c, LibXLExcelSheet::CellNumber, text.mid(1).toDouble(), 0);
            else
                content.addCell(r, c, LibXLExcelSheet::CellString, 0, content.addOwnString(text));
        }
    }
    content.merges = merges;
    return std::make_unique<LibXLExcelSheet>(name, state, std::move(content));
}
