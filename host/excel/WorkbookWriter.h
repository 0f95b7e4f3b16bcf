#pragma once

#include "ExcelFont.h"

#include <QString>

// What LibXLExcel asks of a workbook format when it writes. Indices count from 0.
class WorkbookWriter
{
public:
    virtual ~WorkbookWriter() = default;
    virtual int addSheet(const QString& name) = 0;
    virtual bool setCol(int sheet, int colFirst, int colLast, double width) = 0;
    virtual bool setRow(int sheet, int row, double height) = 0;
    virtual bool writeStr(int sheet, int row, int col, const QString& text, const ExcelFont& font,
                          int alignment) = 0;
    virtual bool save(const QString& path, QString* error) = 0;

    // Limits of the format: the last row and column a cell may take.
    virtual int maxRow() const = 0;
    virtual int maxCol() const = 0;
};
