#pragma once

#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QVector>

// One read cell. Texts live in the sheet's string pools: an index of 0 or more points into the
// book's shared strings, a negative one (~index) into the sheet's own strings.
struct ExcelCellRecord
{
    double number = 0;
    qint32 row = 0;
    qint32 col = 0;
    qint32 text = 0;
    quint8 type = 0;
};

// A rectangle of cells, rows and columns counted from 0, both ends included.
struct ExcelRange
{
    int firstRow = 0;
    int lastRow = 0;
    int firstCol = 0;
    int lastCol = 0;
    bool operator==(const ExcelRange& other) const
    {
        return firstRow == other.firstRow && lastRow == other.lastRow &&
               firstCol == other.firstCol && lastCol == other.lastCol;
    }
};

// What a reader fills in for one sheet; LibXLExcelSheet answers questions from it.
struct SheetContent
{
    QVector<ExcelCellRecord> cells; // sorted by row, then column, after finish()
    QSharedPointer<const QVector<QString>> sharedStrings;
    QVector<QString> ownStrings;
    QVector<ExcelRange> merges;
    QMap<int, double> columnWidths; // characters
    QMap<int, double> rowHeights;   // points
    bool sorted = true;

    void addCell(int row, int col, quint8 type, double number, qint32 text)
    {
        if (!cells.isEmpty()) {
            const ExcelCellRecord& last = cells.constLast();
            if (row < last.row || (row == last.row && col <= last.col))
                sorted = false;
        }
        ExcelCellRecord cell;
        cell.row = row;
        cell.col = col;
        cell.type = type;
        cell.number = number;
        cell.text = text;
        cells.append(cell);
    }
    qint32 addOwnString(const QString& text)
    {
        ownStrings.append(text);
        return ~qint32(ownStrings.size() - 1);
    }
    QString textOf(qint32 index) const
    {
        if (index < 0)
            return ownStrings.value(~index);
        return sharedStrings ? sharedStrings->value(index) : QString();
    }
    void finish();
};
