#include "BiffBookWriter.h"

#include "CompoundFileWriter.h"

#include <QFile>
#include <QSaveFile>
#include <QtEndian>

#include <algorithm>

namespace {

constexpr int MaxRecordData = 8224;
constexpr int FirstCustomXf = 16; // 15 style records and the default cell record come first
const char* const DefaultFontFamily = "\xe5\xae\x8b\xe4\xbd\x93"; // the Chinese default, SimSun
constexpr double DefaultFontSize = 11;

void add16(QByteArray& data, quint16 value)
{
    char bytes[2];
    qToLittleEndian(value, bytes);
    data.append(bytes, 2);
}

void add32(QByteArray& data, quint32 value)
{
    char bytes[4];
    qToLittleEndian(value, bytes);
    data.append(bytes, 4);
}

void addRecord(QByteArray& out, quint16 type, const QByteArray& data)
{
    add16(out, type);
    add16(out, quint16(data.size()));
    out.append(data);
}

bool isLatin1(const QString& text)
{
    for (const QChar c : text)
        if (c.unicode() > 0xFF)
            return false;
    return true;
}

// Characters of a string in BIFF8's compressed (one byte) or UTF-16 form.
void addChars(QByteArray& data, const QString& text, int from, int count, bool wide)
{
    for (int i = from; i < from + count; ++i) {
        if (wide)
            add16(data, text.at(i).unicode());
        else
            data.append(char(text.at(i).unicode()));
    }
}

// A short string (one-byte length) as font and sheet names take it.
void addShortString(QByteArray& data, const QString& text)
{
    const QString cut = text.left(255);
    const bool wide = !isLatin1(cut);
    data.append(char(cut.size()));
    data.append(char(wide ? 1 : 0));
    addChars(data, cut, 0, cut.size(), wide);
}

quint8 alignmentByte(int alignment)
{
    quint8 horizontal = 0; // general
    if (alignment & Qt::AlignJustify)
        horizontal = 5;
    else if (alignment & Qt::AlignHCenter)
        horizontal = 2;
    else if (alignment & Qt::AlignRight)
        horizontal = 3;
    else if (alignment & Qt::AlignLeft)
        horizontal = 1;
    quint8 vertical = 2; // bottom, the workbook default
    if (alignment & Qt::AlignTop)
        vertical = 0;
    else if (alignment & Qt::AlignVCenter)
        vertical = 1;
    return quint8(horizontal | (vertical << 4));
}

QByteArray fontRecord(const ExcelFont& font)
{
    QByteArray data;
    const double size = font.pointSize > 0 ? font.pointSize : DefaultFontSize;
    add16(data, quint16(qBound(20.0, size * 20, 8180.0)));
    add16(data, font.italic ? 0x0002 : 0x0000);
    add16(data, 0x7FFF); // automatic colour
    add16(data, font.bold ? 700 : 400);
    add16(data, 0);          // no super- or subscript
    data.append(char(0));    // no underline
    data.append(char(0));    // family
    data.append(char(0x86)); // character set GB2312, so that CJK fonts are matched
    data.append(char(0));
    addShortString(data,
                   font.family.isEmpty() ? QString::fromUtf8(DefaultFontFamily) : font.family);
    return data;
}

QByteArray xfRecord(int font, quint8 alignment, bool style)
{
    QByteArray data;
    add16(data, quint16(font));
    add16(data, 0);                       // format: General
    add16(data, style ? 0xFFF5 : 0x0001); // locked; a style record has no parent
    data.append(char(alignment));
    data.append(char(0));                   // no rotation
    data.append(char(0));                   // no indent
    data.append(char(style ? 0x00 : 0xF8)); // cell records set their own attributes
    add32(data, 0);                         // no borders
    add32(data, 0);
    add16(data, 0x20C0); // pattern colours: automatic
    return data;
}

} // namespace

int BiffBookWriter::addSheet(const QString& name)
{
    Sheet sheet;
    sheet.name = name;
    m_sheets.append(sheet);
    return m_sheets.size() - 1;
}

bool BiffBookWriter::setCol(int sheet, int colFirst, int colLast, double width)
{
    if (sheet < 0 || sheet >= m_sheets.size() || colFirst < 0 || colLast < colFirst ||
        colLast > maxCol())
        return false;
    m_sheets[sheet].columns.append({colFirst, colLast, qBound(0.0, width, 255.0)});
    return true;
}

bool BiffBookWriter::setRow(int sheet, int row, double height)
{
    if (sheet < 0 || sheet >= m_sheets.size() || row < 0 || row > maxRow())
        return false;
    m_sheets[sheet].heights.insert(row, qBound(0.0, height, 409.0));
    return true;
}

int BiffBookWriter::fontIndex(const ExcelFont& font)
{
    static const QString defaultFamily = QString::fromUtf8(DefaultFontFamily);
    const bool isDefault = (font.family.isEmpty() || font.family == defaultFamily) &&
                           (font.pointSize <= 0 || font.pointSize == DefaultFontSize) &&
                           !font.bold && !font.italic;
    if (isDefault)
        return 0;
    auto found = m_fontIndex.constFind(font);
    if (found != m_fontIndex.constEnd())
        return found.value();
    m_fonts.append(font);
    // Font index 4 does not exist in BIFF: the fifth record is font 5.
    const int index = 4 + m_fonts.size();
    m_fontIndex.insert(font, index);
    return index;
}

int BiffBookWriter::xfIndex(int font, int alignment)
{
    const quint8 align = alignmentByte(alignment);
    const quint32 key = (quint32(font) << 8) | align;
    auto found = m_xfIndex.constFind(key);
    if (found != m_xfIndex.constEnd())
        return found.value();
    m_xfs.append({font, align});
    const int index = FirstCustomXf + m_xfs.size() - 1;
    m_xfIndex.insert(key, index);
    return index;
}

bool BiffBookWriter::writeStr(int sheet, int row, int col, const QString& text,
                              const ExcelFont& font, int alignment)
{
    if (sheet < 0 || sheet >= m_sheets.size() || row < 0 || row > maxRow() || col < 0 ||
        col > maxCol())
        return false;
    const int xf = xfIndex(fontIndex(font), alignment);
    if (xf > 4000)
        return false; // the format allows 4050 cell formats
    // A cell holds at most 32767 characters.
    const QString cut = text.left(32767);
    auto found = m_stringIndex.constFind(cut);
    quint32 index;
    if (found != m_stringIndex.constEnd()) {
        index = found.value();
    } else {
        index = quint32(m_strings.size());
        m_strings.append(cut);
        m_stringIndex.insert(cut, index);
    }
    ++m_stringUses;
    m_sheets[sheet].cells.append({quint16(row), quint16(col), quint16(xf), index});
    return true;
}

QByteArray BiffBookWriter::sheetStream(const Sheet& sheet) const
{
    QByteArray out;
    QByteArray bof;
    add16(bof, 0x0600);
    add16(bof, 0x0010);
    add16(bof, 0x0DBB);
    add16(bof, 0x07CC);
    add32(bof, 0);
    add32(bof, 6);
    addRecord(out, 0x0809, bof);

    for (const Column& column : sheet.columns) {
        QByteArray info;
        add16(info, quint16(column.first));
        add16(info, quint16(column.last));
        add16(info, quint16(qMin(65535.0, column.width * 256)));
        add16(info, 15);
        add16(info, 0);
        add16(info, 0);
        addRecord(out, 0x007D, info);
    }

    QVector<Cell> cells = sheet.cells;
    // Later writes to the same cell win; records go in row order.
    std::stable_sort(cells.begin(), cells.end(), [](const Cell& a, const Cell& b) {
        return a.row != b.row ? a.row < b.row : a.col < b.col;
    });
    QVector<Cell> unique;
    unique.reserve(cells.size());
    for (const Cell& cell : cells) {
        if (!unique.isEmpty() && unique.constLast().row == cell.row &&
            unique.constLast().col == cell.col)
            unique.last() = cell;
        else
            unique.append(cell);
    }

    QByteArray dimensions;
    quint32 lastRow = 0;
    quint16 firstCol = 0xFFFF;
    quint16 lastCol = 0;
    for (const Cell& cell : unique) {
        lastRow = qMax<quint32>(lastRow, cell.row);
        firstCol = qMin(firstCol, cell.col);
        lastCol = qMax(lastCol, cell.col);
    }
    const bool empty = unique.isEmpty();
    add32(dimensions, empty ? 0 : unique.constFirst().row);
    add32(dimensions, empty ? 0 : lastRow + 1);
    add16(dimensions, empty ? 0 : firstCol);
    add16(dimensions, empty ? 0 : quint16(lastCol + 1));
    add16(dimensions, 0);
    addRecord(out, 0x0200, dimensions);

    for (auto it = sheet.heights.constBegin(); it != sheet.heights.constEnd(); ++it) {
        QByteArray row;
        add16(row, quint16(it.key()));
        add16(row, 0);
        add16(row, empty ? 0 : quint16(lastCol + 1));
        add16(row, quint16(qRound(it.value() * 20)) & 0x7FFF);
        add16(row, 0);
        add16(row, 0);
        add32(row, 0x0100 | 0x0040 | (15u << 16)); // custom height
        addRecord(out, 0x0208, row);
    }

    for (const Cell& cell : unique) {
        QByteArray label;
        add16(label, cell.row);
        add16(label, cell.col);
        add16(label, cell.xf);
        add32(label, cell.sst);
        addRecord(out, 0x00FD, label);
    }

    QByteArray window;
    add16(window, &sheet == &m_sheets.constFirst() ? 0x06B6 : 0x00B6);
    add16(window, 0);
    add16(window, 0);
    add32(window, 0x40);
    add16(window, 0);
    add16(window, 0);
    add32(window, 0);
    addRecord(out, 0x023E, window);
    addRecord(out, 0x000A, QByteArray());
    return out;
}

QByteArray BiffBookWriter::workbookStream() const
{
    QByteArray globals;
    QByteArray bof;
    add16(bof, 0x0600);
    add16(bof, 0x0005);
    add16(bof, 0x0DBB);
    add16(bof, 0x07CC);
    add32(bof, 0);
    add32(bof, 6);
    addRecord(globals, 0x0809, bof);
    QByteArray codepage;
    add16(codepage, 1200); // UTF-16
    addRecord(globals, 0x0042, codepage);
    QByteArray window;
    for (quint16 v : {0, 0, 0x4000, 0x2000, 0x0038, 0, 0, 1, 0x0258})
        add16(window, v);
    addRecord(globals, 0x003D, window);
    QByteArray dateMode;
    add16(dateMode, 0);
    addRecord(globals, 0x0022, dateMode);

    const QByteArray defaultFont = fontRecord(ExcelFont());
    for (int i = 0; i < 4; ++i)
        addRecord(globals, 0x0031, defaultFont);
    for (const ExcelFont& font : m_fonts)
        addRecord(globals, 0x0031, fontRecord(font));

    for (int i = 0; i < 15; ++i)
        addRecord(globals, 0x00E0, xfRecord(0, 0x20, true));
    addRecord(globals, 0x00E0, xfRecord(0, 0x20, false));
    for (const auto& xf : m_xfs)
        addRecord(globals, 0x00E0, xfRecord(xf.first, xf.second, false));

    QByteArray style;
    add16(style, 0x8000);
    style.append(char(0));
    style.append(char(0xFF));
    addRecord(globals, 0x0293, style);

    // Sheet records carry the stream offset of their sheet, known once the globals are laid out.
    QVector<int> offsetFields;
    for (const Sheet& sheet : m_sheets) {
        QByteArray bound;
        add32(bound, 0);
        bound.append(char(0)); // visible
        bound.append(char(0)); // worksheet
        addShortString(bound, sheet.name);
        offsetFields.append(globals.size() + 4);
        addRecord(globals, 0x0085, bound);
    }

    // Shared strings: split over CONTINUE records; a string cut in two repeats its flags byte.
    QByteArray record;
    add32(record, m_stringUses);
    add32(record, quint32(m_strings.size()));
    quint16 recordType = 0x00FC;
    QVector<QPair<quint32, quint16>> buckets; // EXTSST: stream offset and offset in the record
    // EXTSST holds one record's worth of buckets at most.
    const int bucketSize = qMax(8, int(m_strings.size()) / 1000 + 1);
    auto flush = [&]() {
        addRecord(globals, recordType, record);
        record.clear();
        recordType = 0x003C;
    };
    for (int i = 0; i < m_strings.size(); ++i) {
        const QString& text = m_strings.at(i);
        const bool wide = !isLatin1(text);
        const int charSize = wide ? 2 : 1;
        if (record.size() + 3 + charSize > MaxRecordData)
            flush();
        if (i % bucketSize == 0)
            buckets.append(
                {quint32(globals.size() + 4 + record.size()), quint16(4 + record.size())});
        add16(record, quint16(text.size()));
        record.append(char(wide ? 1 : 0));
        int done = 0;
        for (;;) {
            const int room = (MaxRecordData - record.size()) / charSize;
            const int part = qMin(room, int(text.size()) - done);
            addChars(record, text, done, part, wide);
            done += part;
            if (done >= text.size())
                break;
            flush();
            record.append(char(wide ? 1 : 0));
        }
    }
    flush();
    QByteArray extsst;
    add16(extsst, bucketSize);
    for (const auto& bucket : buckets) {
        add32(extsst, bucket.first);
        add16(extsst, bucket.second);
        add16(extsst, 0);
    }
    if (extsst.size() <= MaxRecordData)
        addRecord(globals, 0x00FF, extsst);
    addRecord(globals, 0x000A, QByteArray());

    QByteArray stream = globals;
    for (int i = 0; i < m_sheets.size(); ++i) {
        qToLittleEndian(quint32(stream.size()), stream.data() + offsetFields.at(i));
        stream.append(sheetStream(m_sheets.at(i)));
    }
    return stream;
}

bool BiffBookWriter::save(const QString& path, QString* error)
{
    if (m_sheets.isEmpty()) {
        *error = QStringLiteral("%1: a workbook needs at least one sheet").arg(path);
        return false;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = QStringLiteral("%1: the file cannot be written: %2").arg(path, file.errorString());
        return false;
    }
    file.write(CompoundFileWriter::build(QStringLiteral("Workbook"), workbookStream()));
    if (!file.commit()) {
        *error = QStringLiteral("%1: the file cannot be written: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}
