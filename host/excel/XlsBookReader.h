#pragma once

#include <QByteArray>
#include <QString>

class LibXLExcel;

// Reads an .xls workbook (BIFF8, and BIFF5 as older programs write it) by our own walk over the
// records, which streams the cells straight into the sheets: values, shared strings (held once
// per book), sheet visibility, merged ranges, the last values of formulas, booleans and errors,
// column widths and row heights, and the refusal of encrypted files and of absurd dimensions.
// FreeXL can give the cell values instead (cellsFromFreeXl): the tests read every sample both
// ways and compare, so FreeXL stays the independent check on our walk.
class XlsBookReader
{
public:
    static bool read(const QString& path, const QByteArray& workbookStream, LibXLExcel* book,
                     QString* error, bool cellsFromFreeXl = false);
};
