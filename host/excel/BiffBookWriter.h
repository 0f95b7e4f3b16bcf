#pragma once

#include "WorkbookWriter.h"

#include <QHash>
#include <QMap>
#include <QVector>

// Writes .xls (BIFF8 in an OLE2 compound file): string cells in a shared string table, fonts,
// horizontal and vertical alignment, column widths and row heights; nothing more.
class BiffBookWriter : public WorkbookWriter
{
public:
    int addSheet(const QString& name) override;
    bool setCol(int sheet, int colFirst, int colLast, double width) override;
    bool setRow(int sheet, int row, double height) override;
    bool writeStr(int sheet, int row, int col, const QString& text, const ExcelFont& font,
                  int alignment) override;
    bool save(const QString& path, QString* error) override;
    int maxRow() const override { return 65535; }
    int maxCol() const override { return 255; }

    // The workbook stream alone (tests look at its records).
    QByteArray workbookStream() const;

private:
    struct Cell
    {
        quint16 row;
        quint16 col;
        quint16 xf;
        quint32 sst;
    };
    struct Column
    {
        int first;
        int last;
        double width;
    };
    struct Sheet
    {
        QString name;
        QVector<Column> columns;
        QMap<int, double> heights;
        QVector<Cell> cells;
    };
    int fontIndex(const ExcelFont& font);
    int xfIndex(int font, int alignment);
    QByteArray sheetStream(const Sheet& sheet) const;

    QVector<Sheet> m_sheets;
    QVector<ExcelFont> m_fonts; // beyond the four default ones
    QHash<ExcelFont, int> m_fontIndex;
    QVector<QPair<int, quint8>> m_xfs; // font record index, alignment byte
    QHash<quint32, int> m_xfIndex;
    QVector<QString> m_strings;
    QHash<QString, quint32> m_stringIndex;
    quint32 m_stringUses = 0;
};
