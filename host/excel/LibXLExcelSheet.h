#pragma once

#include "ExcelFont.h"
#include "SheetContent.h"

#include <QString>
#include <QVariant>
#include <QVector>

class WorkbookWriter;

// One worksheet of a LibXLExcel book. A sheet of an opened book answers what its cells hold; a
// sheet added to a new book takes column widths, row heights and strings to write.
class LibXLExcelSheet
{
public:
    enum CellType { CellEmpty, CellNumber, CellString, CellBoolean, CellError, CellDate };
    enum SheetState { SheetVisible, SheetHidden, SheetVeryHidden };

    QString GetName() const { return m_name; }
    SheetState GetState() const { return m_state; }

    // Reading. Rows and columns count from 0; a sheet without cells has 0 rows and 0 columns.
    int RowCount() const { return m_rowCount; }
    int ColCount() const { return m_colCount; }
    int CellCount() const { return m_content.cells.size(); }
    CellType GetCellType(int row, int col) const;
    // The text an estimator sees in the cell: strings as written, numbers without exponent or
    // trailing zeros, dates as yyyy-MM-dd (and hh:mm:ss when they carry a time), booleans as
    // TRUE/FALSE, errors as their code (#DIV/0!). Formulas show their last calculated value.
    QString GetCellText(int row, int col) const;
    // The value: double, QString, bool, QDate/QDateTime/QTime for dates, or an invalid QVariant.
    QVariant GetCellValue(int row, int col) const;
    QVector<ExcelRange> GetMerges() const { return m_content.merges; }
    // The merged range that covers the cell, if any.
    bool MergeAt(int row, int col, ExcelRange* range) const;
    // Column width in characters and row height in points as the file sets them; -1 when not set.
    double GetColWidth(int col) const { return m_content.columnWidths.value(col, -1); }
    double GetRowHeight(int row) const { return m_content.rowHeights.value(row, -1); }

    // Writing (only on sheets added with LibXLExcel::AddSheet).
    // Width in characters for the columns colFirst..colLast.
    bool SetCol(int colFirst, int colLast, double width);
    // Height in points.
    bool SetRow(int row, double height);
    // A string cell with its font and its alignment, given as Qt::Alignment flags.
    bool WriteStr(int row, int col, const QString& text, const ExcelFont& font = ExcelFont(),
                  int alignment = 0);

    // Used by the readers and the book.
    LibXLExcelSheet(const QString& name, SheetState state, SheetContent content);
    LibXLExcelSheet(const QString& name, WorkbookWriter* writer, int index);

private:
    const ExcelCellRecord* find(int row, int col) const;
    QString m_name;
    SheetState m_state = SheetVisible;
    SheetContent m_content;
    int m_rowCount = 0;
    int m_colCount = 0;
    WorkbookWriter* m_writer = nullptr;
    int m_index = -1;
};
