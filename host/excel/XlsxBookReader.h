#pragma once

#include <QString>

class LibXLExcel;

// Reads an .xlsx or .xlsm package (transitional or strict Office Open XML) with libzip, parsing
// each part with QXmlStreamReader straight from the zip stream: a sheet's XML is never held in
// memory, only the cells read from it.
class XlsxBookReader
{
public:
    static bool read(const QString& path, LibXLExcel* book, QString* error);
};
