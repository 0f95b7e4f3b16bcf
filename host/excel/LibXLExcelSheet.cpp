#include "LibXLExcelSheet.h"

#include "ExcelText.h"
#include "WorkbookWriter.h"

#include <algorithm>

void SheetContent::addCell(int row, int col, quint8 type, double number, qint32 text)
{
    if (!cells.isEmpty()) {
        const ExcelCellRecord& last = cells.constLast();
        if (row < last.row || (row == last.row && col <= last.col))
            sorted = false;
    }
    ExcelCellRecord cell;
    cell.row = row;
    cell.col = quint16(col);
    cell.type = type;
    if (type == LibXLExcelSheet::CellNumber) {
        cell.value = numbers.size();
        numbers.append(number);
    } else if (type == LibXLExcelSheet::CellBoolean) {
        cell.value = number != 0 ? 1 : 0;
    } else {
        cell.value = text;
    }
    cells.append(cell);
}

void SheetContent::finish()
{
    if (!sorted) {
        std::stable_sort(cells.begin(), cells.end(),
                         [](const ExcelCellRecord& a, const ExcelCellRecord& b) {
                             return a.row != b.row ? a.row < b.row : a.col < b.col;
                         });
        // A cell given twice keeps its last value.
        QVector<ExcelCellRecord> unique;
        unique.reserve(cells.size());
        for (const ExcelCellRecord& cell : qAsConst(cells)) {
            if (!unique.isEmpty() && unique.constLast().row == cell.row &&
                unique.constLast().col == cell.col)
                unique.last() = cell;
            else
                unique.append(cell);
        }
        cells = unique;
        sorted = true;
    }
    cells.squeeze();
    numbers.squeeze();
    ownStrings.squeeze();
}

LibXLExcelSheet::LibXLExcelSheet(const QString& name, SheetState state, SheetContent content)
    : m_name(name), m_state(state), m_content(std::move(content))
{
    m_content.finish();
    for (const ExcelCellRecord& cell : qAsConst(m_content.cells)) {
        m_rowCount = qMax(m_rowCount, cell.row + 1);
        m_colCount = qMax(m_colCount, cell.col + 1);
    }
}

LibXLExcelSheet::LibXLExcelSheet(const QString& name, WorkbookWriter* writer, int index)
    : m_name(name), m_writer(writer), m_index(index)
{
}

const ExcelCellRecord* LibXLExcelSheet::find(int row, int col) const
{
    const auto& cells = m_content.cells;
    auto it = std::lower_bound(cells.cbegin(), cells.cend(), qMakePair(row, col),
                               [](const ExcelCellRecord& cell, const QPair<int, int>& key) {
                                   return cell.row != key.first ? cell.row < key.first
                                                                : cell.col < key.second;
                               });
    if (it == cells.cend() || it->row != row || it->col != col)
        return nullptr;
    return &*it;
}

bool LibXLExcelSheet::GetCellPosition(int index, int* row, int* col) const
{
    if (index < 0 || index >= m_content.cells.size())
        return false;
    *row = m_content.cells.at(index).row;
    *col = m_content.cells.at(index).col;
    return true;
}

LibXLExcelSheet::CellType LibXLExcelSheet::GetCellType(int row, int col) const
{
    const ExcelCellRecord* cell = find(row, col);
    return cell ? CellType(cell->type) : CellEmpty;
}

QString LibXLExcelSheet::GetCellText(int row, int col) const
{
    const ExcelCellRecord* cell = find(row, col);
    if (!cell)
        return QString();
    switch (cell->type) {
    case CellNumber:
        return ExcelText::number(m_content.numbers.value(cell->value));
    case CellBoolean:
        return cell->value != 0 ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    default:
        return m_content.textOf(cell->value);
    }
}

QVariant LibXLExcelSheet::GetCellValue(int row, int col) const
{
    const ExcelCellRecord* cell = find(row, col);
    if (!cell)
        return QVariant();
    switch (cell->type) {
    case CellNumber:
        return m_content.numbers.value(cell->value);
    case CellBoolean:
        return cell->value != 0;
    case CellDate:
        return ExcelText::dateValue(m_content.textOf(cell->value));
    case CellString:
    case CellError:
        return m_content.textOf(cell->value);
    default:
        return QVariant();
    }
}

bool LibXLExcelSheet::MergeAt(int row, int col, ExcelRange* range) const
{
    for (const ExcelRange& merge : m_content.merges) {
        if (row >= merge.firstRow && row <= merge.lastRow && col >= merge.firstCol &&
            col <= merge.lastCol) {
            if (range)
                *range = merge;
            return true;
        }
    }
    return false;
}

bool LibXLExcelSheet::SetCol(int colFirst, int colLast, double width)
{
    if (!m_writer || colFirst < 0 || colLast < colFirst || colLast > m_writer->maxCol())
        return false;
    return m_writer->setCol(m_index, colFirst, colLast, width);
}

bool LibXLExcelSheet::SetRow(int row, double height)
{
    if (!m_writer || row < 0 || row > m_writer->maxRow())
        return false;
    return m_writer->setRow(m_index, row, height);
}

bool LibXLExcelSheet::WriteStr(int row, int col, const QString& text, const ExcelFont& font,
                               int alignment)
{
    if (!m_writer || row < 0 || col < 0 || row > m_writer->maxRow() || col > m_writer->maxCol())
        return false;
    return m_writer->writeStr(m_index, row, col, text, font, alignment);
}
