#pragma once

#include "WorkbookWriter.h"

#include <QHash>
#include <QTemporaryDir>
#include <QVector>

struct lxw_workbook;
struct lxw_worksheet;
struct lxw_format;

// Writes .xlsx through libxlsxwriter. The library wants the file name up front, so the book is
// written into a private temporary folder and moved to its place by save().
class XlsxBookWriter : public WorkbookWriter
{
public:
    XlsxBookWriter();
    ~XlsxBookWriter() override;

    int addSheet(const QString& name) override;
    bool setCol(int sheet, int colFirst, int colLast, double width) override;
    bool setRow(int sheet, int row, double height) override;
    bool writeStr(int sheet, int row, int col, const QString& text, const ExcelFont& font,
                  int alignment) override;
    bool save(const QString& path, QString* error) override;
    int maxRow() const override { return 1048575; }
    int maxCol() const override { return 16383; }

private:
    lxw_format* formatFor(const ExcelFont& font, int alignment);
    QTemporaryDir m_dir;
    QString m_tempFile;
    lxw_workbook* m_book = nullptr;
    QVector<lxw_worksheet*> m_sheets;
    QHash<QPair<ExcelFont, int>, lxw_format*> m_formats; // by font and alignment
    // The last format asked for: a column of cells usually shares one.
    ExcelFont m_lastFont;
    int m_lastAlignment = -1;
    lxw_format* m_lastFormat = nullptr;
};
