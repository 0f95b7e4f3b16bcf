#pragma once

#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QVector>

// Texts kept end to end in one buffer: a text costs its characters and one offset, not a
// QString of its own. A QString is made only when a caller asks for one.
class ExcelStringPool
{
public:
    int size() const { return m_ends.size(); }
    bool isEmpty() const { return m_ends.isEmpty(); }
    // The new text's index.
    qint32 add(const QChar* chars, int length)
    {
        m_chars.append(chars, length);
        m_ends.append(quint32(m_chars.size()));
        return qint32(m_ends.size() - 1);
    }
    qint32 add(const QString& text) { return add(text.constData(), text.size()); }
    // An empty text for an index out of range.
    QString at(int index) const
    {
        if (index < 0 || index >= m_ends.size())
            return QString();
        const quint32 start = index > 0 ? m_ends.at(index - 1) : 0;
        return QString(m_chars.constData() + start, int(m_ends.at(index) - start));
    }
    void reserve(int texts) { m_ends.reserve(texts); }
    void squeeze()
    {
        m_chars.squeeze();
        m_ends.squeeze();
    }

private:
    QString m_chars;
    QVector<quint32> m_ends; // where each text ends in m_chars
};

// One read cell, packed. What `value` holds depends on the type: for a number the index of
// its value in the sheet's numbers, for a boolean 0 or 1, for a text (string, error, date)
// its index into the string pools: 0 or more into the book's shared strings, a negative one
// (~index) into the sheet's own strings.
struct ExcelCellRecord
{
    qint32 row = 0;
    quint16 col = 0;
    quint8 type = 0;
    quint8 spare = 0;
    qint32 value = 0;
};
Q_DECLARE_TYPEINFO(ExcelCellRecord, Q_PRIMITIVE_TYPE);

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

// What a reader fills in for one sheet; LibXLExcelSheet answers questions from it. Columns
// must lie below 65536 (an .xlsx sheet has 16384, an .xls one 256).
struct SheetContent
{
    QVector<ExcelCellRecord> cells; // sorted by row, then column, after finish()
    QVector<double> numbers;
    QSharedPointer<const ExcelStringPool> sharedStrings;
    ExcelStringPool ownStrings;
    QVector<ExcelRange> merges;
    QMap<int, double> columnWidths; // characters
    QMap<int, double> rowHeights;   // points
    bool sorted = true;

    // `number` is kept for numbers and booleans, `text` for the other types.
    void addCell(int row, int col, quint8 type, double number, qint32 text);
    qint32 addOwnString(const QString& text) { return ~ownStrings.add(text); }
    QString textOf(qint32 index) const
    {
        if (index < 0)
            return ownStrings.at(~index);
        return sharedStrings ? sharedStrings->at(index) : QString();
    }
    void finish();
};
