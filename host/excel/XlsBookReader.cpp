#include "XlsBookReader.h"

#include "ExcelText.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QFile>
#include <QHash>
#include <QTextCodec>
#include <QtEndian>

#include <freexl.h>

#include <memory>

namespace {

constexpr int MaxRows = 65536;
constexpr int MaxCols = 256;

struct Extra
{
    quint8 type = 0;
    double number = 0;
    QString text;
};

struct SheetInfo
{
    QString name;
    quint32 offset = 0;
    int state = 0;
    int kind = 0;
    QVector<ExcelRange> merges;
    QMap<int, double> widths;
    QMap<int, double> heights;
    QHash<quint32, Extra> extras; // formula results and booleans, by row << 8 | column
    int cellCount = 0;            // cells the records give, an upper bound
    int numberCount = 0;
};

class RecordReader
{
public:
    explicit RecordReader(const QByteArray& data, int at) : m_data(data), m_at(at) {}
    bool next()
    {
        if (m_at + 4 > m_data.size())
            return false;
        type = qFromLittleEndian<quint16>(m_data.constData() + m_at);
        const int length = qFromLittleEndian<quint16>(m_data.constData() + m_at + 2);
        if (m_at + 4 + length > m_data.size())
            return false;
        body = QByteArray::fromRawData(m_data.constData() + m_at + 4, length);
        m_at += 4 + length;
        return true;
    }
    quint16 type = 0;
    QByteArray body;

private:
    const QByteArray& m_data;
    int m_at;
};

quint16 u16(const QByteArray& body, int at)
{
    return at + 2 <= body.size() ? qFromLittleEndian<quint16>(body.constData() + at) : 0;
}

quint8 u8(const QByteArray& body, int at)
{
    return at >= 0 && at < body.size() ? quint8(body.at(at)) : 0;
}

quint32 u32(const QByteArray& body, int at)
{
    return at + 4 <= body.size() ? qFromLittleEndian<quint32>(body.constData() + at) : 0;
}

QString errorText(quint8 code)
{
    switch (code) {
    case 0x00:
        return QStringLiteral("#NULL!");
    case 0x07:
        return QStringLiteral("#DIV/0!");
    case 0x0F:
        return QStringLiteral("#VALUE!");
    case 0x17:
        return QStringLiteral("#REF!");
    case 0x1D:
        return QStringLiteral("#NAME?");
    case 0x24:
        return QStringLiteral("#NUM!");
    case 0x2A:
        return QStringLiteral("#N/A");
    default:
        return QStringLiteral("#ERROR!");
    }
}

// A string with a 16-bit (long) or 8-bit (short) count: UTF-16 or Latin-1 in BIFF8, the
// workbook's code page in BIFF5.
QString readString(const QByteArray& body, int at, bool longCount, bool biff8, QTextCodec* codec)
{
    const int count = longCount ? u16(body, at) : u8(body, at);
    at += longCount ? 2 : 1;
    if (!biff8) {
        const QByteArray bytes = body.mid(at, count);
        return codec ? codec->toUnicode(bytes) : QString::fromLatin1(bytes);
    }
    const quint8 flags = u8(body, at);
    ++at;
    if (flags & 0x08)
        at += 2; // rich text run count
    if (flags & 0x04)
        at += 4; // phonetic block size
    QString text;
    if (flags & 0x01) {
        for (int i = 0; i < count && at + 2 <= body.size(); ++i, at += 2)
            text.append(QChar(u16(body, at)));
    } else {
        text = QString::fromLatin1(body.mid(at, count));
    }
    return text;
}

// Reads the shared string table across its CONTINUE records. Only strings that run over more
// than one record boundary are kept: FreeXL reads the others well, but garbles those.
class SegmentCursor
{
public:
    explicit SegmentCursor(const QVector<QByteArray>& segments) : m_segments(segments) {}
    bool atEnd() const { return m_segment >= m_segments.size(); }
    bool byte(quint8* out)
    {
        while (m_segment < m_segments.size() && m_at >= m_segments.at(m_segment).size())
            nextSegment();
        if (atEnd())
            return false;
        *out = quint8(m_segments.at(m_segment).at(m_at++));
        return true;
    }
    bool word(quint16* out)
    {
        quint8 lo = 0, hi = 0;
        if (!byte(&lo) || !byte(&hi))
            return false;
        *out = quint16(lo | (hi << 8));
        return true;
    }
    bool skip(qint64 bytes)
    {
        quint8 ignored;
        for (qint64 i = 0; i < bytes; ++i)
            if (!byte(&ignored))
                return false;
        return true;
    }
    // Characters: at a record boundary inside a string, a new flags byte says their width.
    // Within one record they are taken as a run.
    bool chars(int count, bool wide, QString* out, int* boundaries)
    {
        while (count > 0) {
            if (atEnd() || m_at >= m_segments.at(m_segment).size()) {
                nextSegment();
                quint8 flags = 0;
                if (!byte(&flags))
                    return false;
                wide = flags & 0x01;
                ++*boundaries;
            }
            const QByteArray& segment = m_segments.at(m_segment);
            const char* at = segment.constData() + m_at;
            const int left = segment.size() - m_at;
            if (!wide) {
                const int run = qMin(count, left);
                out->append(QLatin1String(at, run));
                m_at += run;
                count -= run;
            } else if (left >= 2) {
                const int run = qMin(count, left / 2);
                const int start = out->size();
                out->resize(start + run);
                QChar* to = out->data() + start;
                for (int i = 0; i < run; ++i)
                    to[i] = QChar(qFromLittleEndian<quint16>(at + 2 * i));
                m_at += 2 * run;
                count -= run;
            } else {
                quint16 c = 0; // a character split by the boundary
                if (!word(&c))
                    return false;
                out->append(QChar(c));
                --count;
            }
        }
        return true;
    }

private:
    void nextSegment()
    {
        ++m_segment;
        m_at = 0;
    }
    const QVector<QByteArray>& m_segments;
    int m_segment = 0;
    int m_at = 0;
};

struct SharedStrings
{
    QSharedPointer<ExcelStringPool> texts;
    bool beyondFreeXl = false; // a text runs over more than one record boundary
};

// With keep false, only finds out whether FreeXL can read the table.
SharedStrings readSharedStrings(const QVector<QByteArray>& segments, bool keep)
{
    SharedStrings result;
    result.texts = QSharedPointer<ExcelStringPool>::create();
    if (segments.isEmpty() || segments.constFirst().size() < 8)
        return result;
    const quint32 unique = u32(segments.constFirst(), 4);
    SegmentCursor cursor(segments);
    cursor.skip(8);
    QString text; // one buffer for every text
    for (quint32 i = 0; i < unique && !cursor.atEnd(); ++i) {
        quint16 count = 0;
        quint8 flags = 0;
        if (!cursor.word(&count) || !cursor.byte(&flags))
            break;
        quint16 runs = 0;
        quint16 extLo = 0, extHi = 0;
        if ((flags & 0x08) && !cursor.word(&runs))
            break;
        if ((flags & 0x04) && (!cursor.word(&extLo) || !cursor.word(&extHi)))
            break;
        text.resize(0);
        int boundaries = 0;
        if (!cursor.chars(count, flags & 0x01, &text, &boundaries))
            break;
        if (boundaries > 1)
            result.beyondFreeXl = true;
        if (keep)
            result.texts->add(text);
        if (!cursor.skip(qint64(runs) * 4 + (qint64(extHi) << 16 | extLo)))
            break;
    }
    return result;
}

// What the cell records of a sheet need from the workbook's globals.
struct Globals
{
    bool biff8 = true;
    QTextCodec* codec = nullptr;
    bool date1904 = false;
    SharedStrings shared;
    QVector<quint16> xfFormat;
    QHash<int, QString> formats;
    bool isDate(quint16 xf) const
    {
        const int format = xf < xfFormat.size() ? xfFormat.at(xf) : 0;
        return ExcelText::isDateFormat(format, formats.value(format));
    }
};

double rkValue(quint32 rk)
{
    double value;
    if (rk & 0x02) {
        value = double(qint32(rk) >> 2);
    } else {
        const quint64 bits = quint64(rk & 0xFFFFFFFC) << 32;
        memcpy(&value, &bits, sizeof value);
    }
    return (rk & 0x01) ? value / 100 : value;
}

void addNumber(SheetContent* own, const Globals& globals, int row, int col, quint16 xf,
               double value)
{
    if (globals.isDate(xf)) {
        const QString text = ExcelText::dateText(value, globals.date1904);
        if (!text.isEmpty()) {
            own->addCell(row, col, LibXLExcelSheet::CellDate, value, own->addOwnString(text));
            return;
        }
    }
    own->addCell(row, col, LibXLExcelSheet::CellNumber, value, 0);
}

QTextCodec* codecFor(quint16 codepage)
{
    if (codepage == 1200 || codepage == 0)
        return nullptr;
    if (codepage == 0x8000 || codepage == 10000)
        return QTextCodec::codecForName("Apple Roman");
    if (codepage == 936)
        return QTextCodec::codecForName("GBK");
    if (codepage == 950)
        return QTextCodec::codecForName("Big5");
    if (codepage == 932)
        return QTextCodec::codecForName("Shift_JIS");
    return QTextCodec::codecForName("windows-" + QByteArray::number(codepage));
}

// Walks a sheet's records for what FreeXL leaves out. Without `own`, it counts the cells the
// records give and, with `extras`, keeps the values FreeXL does not give; with `own`, it adds
// every cell to it in the order of the records.
bool scanSheet(const QByteArray& stream, const Globals& globals, SheetInfo* sheet,
               SheetContent* own, bool extras, QString* error)
{
    const bool biff8 = globals.biff8;
    QTextCodec* codec = globals.codec;
    sheet->merges.clear();
    sheet->widths.clear();
    sheet->heights.clear();
    sheet->extras.clear();
    if (own) {
        // Counted by the walk before, from records present in the stream.
        own->cells.reserve(sheet->cellCount);
        own->numbers.reserve(sheet->numberCount);
    }
    sheet->cellCount = 0;
    sheet->numberCount = 0;
    // A cell's value: added to `own`, or kept for FreeXL's cells when asked.
    const auto extra = [&](quint32 key, quint8 type, double number, const QString& text) {
        const int row = int(key >> 8);
        const int col = int(key & 0xFF);
        if (own)
            own->addCell(row, col, type, number,
                         type == LibXLExcelSheet::CellString || type == LibXLExcelSheet::CellError
                             ? own->addOwnString(text)
                             : 0);
        else if (extras)
            sheet->extras.insert(key, Extra{type, number, text});
    };
    RecordReader records(stream, int(sheet->offset));
    if (!records.next() || records.type != 0x0809) {
        *error = QStringLiteral("sheet \"%1\" does not start where the workbook says (the file "
                                "is damaged or truncated)")
                     .arg(sheet->name);
        return false;
    }
    int depth = 1;
    quint32 pendingString = 0xFFFFFFFF;
    while (depth > 0) {
        if (!records.next()) {
            *error =
                QStringLiteral("sheet \"%1\" ends early (the file is truncated)").arg(sheet->name);
            return false;
        }
        const QByteArray& body = records.body;
        switch (records.type) {
        case 0x0809:
            ++depth;
            break;
        case 0x000A:
            --depth;
            break;
        case 0x0200: { // DIMENSIONS
            const quint32 lastRow = biff8 ? u32(body, 4) : u16(body, 2);
            const quint32 lastCol = biff8 ? u16(body, 10) : u16(body, 6);
            if (depth == 1 && (lastRow > quint32(MaxRows) || lastCol > quint32(MaxCols))) {
                *error = QStringLiteral("sheet \"%1\" claims %2 rows and %3 columns, beyond what "
                                        "an .xls sheet can hold (65536 x 256): the file is "
                                        "damaged")
                             .arg(sheet->name)
                             .arg(lastRow)
                             .arg(lastCol);
                return false;
            }
            break;
        }
        case 0x00E5: { // MERGEDCELLS
            if (depth != 1)
                break;
            const int count = u16(body, 0);
            for (int i = 0; i < count && 2 + 8 * i + 8 <= body.size(); ++i) {
                const int at = 2 + 8 * i;
                ExcelRange range{u16(body, at), u16(body, at + 2), u16(body, at + 4),
                                 u16(body, at + 6)};
                if (range.lastRow >= range.firstRow && range.lastCol >= range.firstCol &&
                    range.lastCol < MaxCols && sheet->merges.size() < 100000)
                    sheet->merges.append(range);
            }
            break;
        }
        case 0x007D: { // COLINFO
            const int first = u16(body, 0);
            const int last = qMin<int>(u16(body, 2), MaxCols - 1);
            for (int c = first; c <= last; ++c)
                sheet->widths.insert(c, u16(body, 4) / 256.0);
            break;
        }
        case 0x0208: { // ROW
            const quint16 height = u16(body, 6);
            if ((u16(body, 12) & 0x0040) && !(height & 0x8000))
                sheet->heights.insert(u16(body, 0), height / 20.0);
            break;
        }
        case 0x0006: { // FORMULA: its last calculated value
            if (depth != 1 || body.size() < 14)
                break;
            ++sheet->cellCount;
            const quint32 key = (quint32(u16(body, 0)) << 8) | (u16(body, 2) & 0xFF);
            if (u16(body, 12) == 0xFFFF) {
                const quint8 kind = quint8(body.at(6));
                if (kind == 0)
                    pendingString = key;
                else if (kind == 1)
                    extra(key, LibXLExcelSheet::CellBoolean, body.at(8) ? 1 : 0, QString());
                else if (kind == 2)
                    extra(key, LibXLExcelSheet::CellError, 0, errorText(quint8(body.at(8))));
                else
                    extra(key, LibXLExcelSheet::CellString, 0, QString()); // an empty string
            } else {
                ++sheet->numberCount;
                extra(key, LibXLExcelSheet::CellNumber,
                      qFromLittleEndian<double>(body.constData() + 6), QString());
            }
            break;
        }
        case 0x0207: // STRING: the text result of the formula before it
            if (pendingString == 0xFFFFFFFF)
                break;
            extra(pendingString, LibXLExcelSheet::CellString, 0,
                  readString(body, 0, true, biff8, codec));
            pendingString = 0xFFFFFFFF;
            break;
        case 0x00FD: // LABELSST
            if (depth == 1 && body.size() >= 10)
                ++sheet->cellCount;
            if (own && depth == 1 && body.size() >= 10) {
                const quint32 index = u32(body, 6);
                if (index < quint32(globals.shared.texts->size()))
                    own->addCell(u16(body, 0), u16(body, 2) & 0xFF, LibXLExcelSheet::CellString, 0,
                                 qint32(index));
            }
            break;
        case 0x0204: // LABEL
        case 0x00D6: // RSTRING
            if (depth == 1 && body.size() >= 8)
                ++sheet->cellCount;
            if (own && depth == 1 && body.size() >= 8)
                own->addCell(u16(body, 0), u16(body, 2) & 0xFF, LibXLExcelSheet::CellString, 0,
                             own->addOwnString(readString(body, 6, true, biff8, codec)));
            break;
        case 0x0203: // NUMBER
            if (depth == 1 && body.size() >= 14) {
                ++sheet->cellCount;
                ++sheet->numberCount;
            }
            if (own && depth == 1 && body.size() >= 14)
                addNumber(own, globals, u16(body, 0), u16(body, 2) & 0xFF, u16(body, 4),
                          qFromLittleEndian<double>(body.constData() + 6));
            break;
        case 0x027E: // RK
            if (depth == 1 && body.size() >= 10) {
                ++sheet->cellCount;
                ++sheet->numberCount;
            }
            if (own && depth == 1 && body.size() >= 10)
                addNumber(own, globals, u16(body, 0), u16(body, 2) & 0xFF, u16(body, 4),
                          rkValue(u32(body, 6)));
            break;
        case 0x00BD: // MULRK
            if (depth == 1 && body.size() >= 6) {
                const int first = u16(body, 2);
                for (int i = 0; 4 + 6 * i + 6 <= body.size() - 2 && first + i < MaxCols; ++i) {
                    ++sheet->cellCount;
                    ++sheet->numberCount;
                    if (own)
                        addNumber(own, globals, u16(body, 0), first + i, u16(body, 4 + 6 * i),
                                  rkValue(u32(body, 6 + 6 * i)));
                }
            }
            break;
        case 0x0205: { // BOOLERR
            if (depth != 1 || body.size() < 8)
                break;
            ++sheet->cellCount;
            const quint32 key = (quint32(u16(body, 0)) << 8) | (u16(body, 2) & 0xFF);
            if (body.at(7))
                extra(key, LibXLExcelSheet::CellError, 0, errorText(quint8(body.at(6))));
            else
                extra(key, LibXLExcelSheet::CellBoolean, body.at(6) ? 1 : 0, QString());
            break;
        }
        default:
            break;
        }
    }
    return true;
}

QString freexlError(int code)
{
    switch (code) {
    case FREEXL_INSUFFICIENT_MEMORY:
        return QStringLiteral("not enough memory to read it");
    case FREEXL_BIFF_INVALID_SST:
    case FREEXL_BIFF_ILLEGAL_SST_INDEX:
        return QStringLiteral("its shared string table is damaged");
    case FREEXL_CRAFTED_FILE:
        return QStringLiteral("its records contradict each other (a damaged or crafted file)");
    case FREEXL_UNSUPPORTED_CHARSET:
        return QStringLiteral("it uses a character set that cannot be read");
    default:
        return QStringLiteral("the file is damaged or truncated (FreeXL error %1)").arg(code);
    }
}

struct FreeXlHandle
{
    const void* handle = nullptr;
    ~FreeXlHandle()
    {
        if (handle)
            freexl_close(handle);
    }
};

} // namespace

bool XlsBookReader::read(const QString& path, const QByteArray& stream, LibXLExcel* book,
                         QString* error, bool ownCellsOnly)
{
    RecordReader records(stream, 0);
    if (!records.next() || (records.type != 0x0809 && records.type != 0x0409)) {
        *error = QStringLiteral("the workbook stream does not begin with a BOF record: not an "
                                "Excel workbook, or a damaged one");
        return false;
    }
    const quint16 version = u16(records.body, 0);
    if (records.type != 0x0809 || (version != 0x0600 && version != 0x0500)) {
        *error = QStringLiteral("the workbook is in an Excel format older than Excel 5 (BIFF "
                                "version %1), which is not read; save it as .xls or .xlsx")
                     .arg(version, 4, 16, QLatin1Char('0'));
        return false;
    }
    Globals globals;
    globals.biff8 = version == 0x0600;
    const bool biff8 = globals.biff8;
    QVector<SheetInfo> sheets;
    QVector<QByteArray> sstSegments;
    bool inSst = false;
    bool ended = false;
    while (!ended && records.next()) {
        const QByteArray& body = records.body;
        if (records.type == 0x00FC || (inSst && records.type == 0x003C)) {
            sstSegments.append(body);
            inSst = true;
            continue;
        }
        inSst = false;
        switch (records.type) {
        case 0x002F: // FILEPASS
            *error = QStringLiteral("the workbook is encrypted (protected by a password to "
                                    "open); remove the password in Excel and save it again");
            return false;
        case 0x0042:
            globals.codec = codecFor(u16(body, 0));
            break;
        case 0x0022:
            globals.date1904 = u16(body, 0) == 1;
            break;
        case 0x0085: {
            SheetInfo sheet;
            sheet.offset = u32(body, 0);
            sheet.state = u8(body, 4) & 0x03;
            sheet.kind = u8(body, 5);
            sheet.name = readString(body, 6, false, biff8, globals.codec);
            if (sheets.size() < 4096)
                sheets.append(sheet);
            break;
        }
        case 0x00E0: // XF: its number format
            if (globals.xfFormat.size() < 65536)
                globals.xfFormat.append(u16(body, 2));
            break;
        case 0x041E: // FORMAT
            if (globals.formats.size() < 65536)
                globals.formats.insert(u16(body, 0),
                                       readString(body, 2, biff8, biff8, globals.codec));
            break;
        case 0x000A:
            ended = true;
            break;
        default:
            break;
        }
    }
    if (!ended) {
        *error = QStringLiteral("the workbook ends early (the file is truncated)");
        return false;
    }
    if (biff8)
        globals.shared = readSharedStrings(sstSegments, ownCellsOnly);

    // FreeXL reads the cells unless the shared strings hold a text it garbles (one that runs
    // over more than two records); then, or when FreeXL cannot list every sheet, the cells
    // come from our own walk over the records.
    bool ownCells = ownCellsOnly || globals.shared.beyondFreeXl;
    FreeXlHandle xl;
    QHash<QString, unsigned int> freexlIndex;
    for (SheetInfo& sheet : sheets) {
        if (sheet.kind != 0)
            continue; // charts, macro and dialogue sheets hold no cells
        if (sheet.offset >= quint32(stream.size())) {
            *error = QStringLiteral("sheet \"%1\" lies beyond the end of the workbook (the file "
                                    "is truncated)")
                         .arg(sheet.name);
            return false;
        }
        if (!scanSheet(stream, globals, &sheet, nullptr, !ownCells, error))
            return false;
    }
    if (!ownCells) {
        const int opened = freexl_open(QFile::encodeName(path).constData(), &xl.handle);
        if (opened != FREEXL_OK) {
            *error = freexlError(opened);
            return false;
        }
        unsigned int count = 0;
        freexl_get_info(xl.handle, FREEXL_BIFF_SHEET_COUNT, &count);
        for (unsigned int i = 0; i < count; ++i) {
            const char* name = nullptr;
            if (freexl_get_worksheet_name(xl.handle, quint16(i), &name) == FREEXL_OK && name)
                freexlIndex.insert(QString::fromUtf8(name), i);
        }
        for (const SheetInfo& sheet : qAsConst(sheets))
            if (sheet.kind == 0 && !freexlIndex.contains(sheet.name))
                ownCells = true;
    }

    if (ownCells && biff8 && globals.shared.texts->isEmpty())
        globals.shared = readSharedStrings(sstSegments, true);
    sstSegments.clear();

    book->setDate1904(globals.date1904);
    for (SheetInfo& sheet : sheets) {
        if (sheet.kind != 0 && sheet.kind != 2)
            continue;
        SheetContent content;
        QHash<quint32, Extra> extras = std::move(sheet.extras);
        if (sheet.kind == 0 && ownCells) {
            extras.clear(); // the walk adds formulas, booleans and errors where they lie
            content.sharedStrings = globals.shared.texts;
            if (!scanSheet(stream, globals, &sheet, &content, false, error))
                return false;
        } else if (sheet.kind == 0 &&
                   freexl_select_active_worksheet(
                       xl.handle, quint16(freexlIndex.value(sheet.name))) == FREEXL_OK) {
            unsigned int rows = 0;
            unsigned short cols = 0;
            if (freexl_worksheet_dimensions(xl.handle, &rows, &cols) != FREEXL_OK)
                rows = cols = 0;
            rows = qMin<unsigned int>(rows, MaxRows);
            cols = qMin<unsigned short>(cols, MaxCols);
            // Counted first, so that the cells are allocated once.
            int filled = 0;
            for (unsigned int r = 0; r < rows; ++r)
                for (unsigned short c = 0; c < cols; ++c) {
                    FreeXL_CellValue value;
                    if (freexl_get_cell_value(xl.handle, r, c, &value) == FREEXL_OK &&
                        value.type != FREEXL_CELL_NULL)
                        ++filled;
                }
            content.cells.reserve(filled + extras.size());
            // FreeXL hands out each shared string from one place: one QString per string.
            QHash<const void*, qint32> known;
            for (unsigned int r = 0; r < rows; ++r) {
                for (unsigned short c = 0; c < cols; ++c) {
                    FreeXL_CellValue value;
                    if (freexl_get_cell_value(xl.handle, r, c, &value) != FREEXL_OK)
                        continue;
                    switch (value.type) {
                    case FREEXL_CELL_INT:
                        content.addCell(int(r), c, LibXLExcelSheet::CellNumber,
                                        value.value.int_value, 0);
                        break;
                    case FREEXL_CELL_DOUBLE:
                        content.addCell(int(r), c, LibXLExcelSheet::CellNumber,
                                        value.value.double_value, 0);
                        break;
                    case FREEXL_CELL_SST_TEXT: {
                        auto found = known.constFind(value.value.text_value);
                        if (found == known.constEnd())
                            found = known.insert(
                                value.value.text_value,
                                content.addOwnString(QString::fromUtf8(value.value.text_value)));
                        content.addCell(int(r), c, LibXLExcelSheet::CellString, 0, found.value());
                        break;
                    }
                    case FREEXL_CELL_TEXT:
                        content.addCell(
                            int(r), c, LibXLExcelSheet::CellString, 0,
                            content.addOwnString(QString::fromUtf8(value.value.text_value)));
                        break;
                    case FREEXL_CELL_DATE:
                    case FREEXL_CELL_DATETIME:
                    case FREEXL_CELL_TIME:
                        content.addCell(
                            int(r), c, LibXLExcelSheet::CellDate, 0,
                            content.addOwnString(QString::fromUtf8(value.value.text_value)));
                        break;
                    default:
                        break;
                    }
                }
            }
        }
        content.merges = sheet.merges;
        content.columnWidths = sheet.widths;
        content.rowHeights = sheet.heights;
        // Values FreeXL does not give (formulas, booleans and errors); where a cell was read
        // too, this record's own type is the better answer.
        for (auto it = extras.constBegin(); it != extras.constEnd(); ++it) {
            const qint32 text =
                it->type == LibXLExcelSheet::CellString || it->type == LibXLExcelSheet::CellError
                    ? content.addOwnString(it->text)
                    : 0;
            content.addCell(int(it.key() >> 8), int(it.key() & 0xFF), it->type, it->number, text);
        }
        const LibXLExcelSheet::SheetState state = sheet.state == 1 ? LibXLExcelSheet::SheetHidden
                                                  : sheet.state == 2
                                                      ? LibXLExcelSheet::SheetVeryHidden
                                                      : LibXLExcelSheet::SheetVisible;
        sheet.extras.clear();
        book->adoptSheet(std::make_unique<LibXLExcelSheet>(sheet.name, state, std::move(content)));
    }
    return true;
}
