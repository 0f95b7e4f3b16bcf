#pragma once

#include <QJsonObject>
#include <QString>

class LibXLExcel;

// Writes a table-layout description (TableLayout) into a workbook: the header titles in
// sheet row 1 and the data rows from sheet row 2 (rows count from 0), column widths and row
// heights converted from pixels, every cell a string with its font and alignment.
// No widgets: the description is all it needs.
class TableLayoutExport
{
public:
    // Book kind 2 (.xls) only when the suffix is exactly "xls"; anything else, "XLS"
    // included, is written as .xlsx (kind 1).
    static int BookKindFor(const QString& path);
    // Column width in characters for a width in pixels: (w - 5) / 7, or 1 for 5 and less.
    static double ColumnWidth(int pixels);
    // Fills a new sheet of the book from the description.
    static bool Fill(const QJsonObject& layout, LibXLExcel& book, double screenFactor,
                     QString* error);
    // Makes the book of the path's kind, fills it and saves it. Given the description as a
    // temporary (or moved), each row's memory is let go once the row is in the book.
    static bool Save(QJsonObject layout, const QString& path, double screenFactor, QString* error);
};
