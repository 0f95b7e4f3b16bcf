#pragma once

#include <QByteArray>
#include <QString>

class LibXLExcel;

// Reads an .xls workbook (BIFF8, and BIFF5 as older programs write it). FreeXL gives the cell
// values; a pass of our own over the records adds what FreeXL leaves out: sheet visibility,
// merged ranges, the last values of formulas, booleans and errors, column widths and row
// heights, and the refusal of encrypted files and of absurd sheet dimensions before FreeXL
// sizes anything after them.
class XlsBookReader
{
public:
    // ownCellsOnly: take the cells from our own record walk, not from FreeXL. Workbooks are
    // opened that way (FreeXL can crash on a crafted stream); the FreeXL way remains for the
    // tests, which compare both readers on real workbooks.
    static bool read(const QString& path, const QByteArray& workbookStream, LibXLExcel* book,
                     QString* error, bool ownCellsOnly = false);
};
