#pragma once

#include <QString>
#include <QVector>

#include <memory>

class LibXLExcelSheet;
class WorkbookWriter;

// The host's workbook: Open reads an .xls or .xlsx file (the kind is told by the file's first
// bytes, not its suffix); a new book of kind 1 (.xlsx) or 2 (.xls) takes sheets and is saved.
// Failures are a false return and a text naming the file and what is wrong with it.
class LibXLExcel
{
public:
    enum BookKind { BookXlsx = 1, BookXls = 2 };

    explicit LibXLExcel(int bookKind = BookXlsx);
    ~LibXLExcel();
    LibXLExcel(const LibXLExcel&) = delete;
    LibXLExcel& operator=(const LibXLExcel&) = delete;

    int GetBookKind() const { return m_kind; }

    // Reads the whole workbook; on failure the book holds no sheets and ErrorMessage says why.
    bool Open(const QString& path);
    QString ErrorMessage() const { return m_error; }

    QVector<LibXLExcelSheet*> GetSheets() const;
    int SheetCount() const { return int(m_sheets.size()); }
    LibXLExcelSheet* GetSheet(int index) const;
    bool Is1904() const { return m_date1904; }

    // Writing: a new sheet (names are made valid and unique as a workbook needs them), then Save.
    LibXLExcelSheet* AddSheet(const QString& name);
    bool Save(const QString& path);

    // Used by the readers.
    void adoptSheet(std::unique_ptr<LibXLExcelSheet> sheet);
    void setDate1904(bool on) { m_date1904 = on; }

private:
    void clear();
    int m_kind = BookXlsx;
    std::vector<std::unique_ptr<LibXLExcelSheet>> m_sheets;
    std::unique_ptr<WorkbookWriter> m_writer;
    QString m_error;
    bool m_date1904 = false;
};
