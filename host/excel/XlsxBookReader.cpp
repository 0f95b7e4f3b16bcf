#include "XlsxBookReader.h"

#include "ExcelText.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "XmlPartScanner.h"

#include <QFile>
#include <QIODevice>
#include <QXmlStreamReader>

#include <zip.h>

#include <charconv>
#include <memory>

namespace {

constexpr qint64 MaxPartBytes = qint64(4) << 30; // what one part may unpack to
constexpr qint64 MaxSmallPartBytes = 64 << 20;   // relationships, workbook, styles
constexpr qint64 MaxCellsPerBook = 20000000;
constexpr int MaxSharedStrings = 20000000;

// One part of the package as a sequential device, read from the zip as the parser asks.
class ZipPartDevice : public QIODevice
{
public:
    ZipPartDevice(zip_file_t* file, qint64 limit) : m_file(file), m_limit(limit)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    ~ZipPartDevice() override { zip_fclose(m_file); }
    bool isSequential() const override { return true; }
    bool failed() const { return m_failed; }
    bool tooLarge() const { return m_tooLarge; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        if (m_failed)
            return -1;
        const zip_int64_t n = zip_fread(m_file, data, zip_uint64_t(maxSize));
        if (n < 0) {
            m_failed = true;
            return -1;
        }
        m_total += n;
        if (m_total > m_limit) {
            m_failed = m_tooLarge = true;
            return -1;
        }
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    zip_file_t* m_file;
    qint64 m_limit;
    qint64 m_total = 0;
    bool m_failed = false;
    bool m_tooLarge = false;
};

struct Relationship
{
    QString id;
    QString type;
    QString target;
};

// Text of a shared or inline string: its <t> elements, rich runs joined, phonetic runs left out.
// Office escapes characters XML cannot hold as _xHHHH_.
QString unescape(const QString& text)
{
    if (!text.contains(QLatin1String("_x")))
        return text;
    QString out;
    out.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('_') && i + 6 < text.size() &&
            text.at(i + 1) == QLatin1Char('x') && text.at(i + 6) == QLatin1Char('_')) {
            bool ok = false;
            const ushort code = text.mid(i + 2, 4).toUShort(&ok, 16);
            if (ok) {
                out.append(QChar(code));
                i += 6;
                continue;
            }
        }
        out.append(text.at(i));
    }
    return out;
}

class Package
{
public:
    ~Package()
    {
        if (m_zip)
            zip_discard(m_zip);
    }

    bool open(const QString& path, QString* error)
    {
        int code = 0;
        m_zip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &code);
        if (!m_zip) {
            zip_error_t zerror;
            zip_error_init_with_code(&zerror, code);
            const QString reason = QString::fromUtf8(zip_error_strerror(&zerror));
            zip_error_fini(&zerror);
            *error = QStringLiteral("the file is corrupt or truncated: its zip directory cannot "
                                    "be read (%1)")
                         .arg(reason);
            return false;
        }
        return true;
    }

    qint64 locate(QString name) const
    {
        while (name.startsWith(QLatin1Char('/')))
            name.remove(0, 1);
        return zip_name_locate(m_zip, name.toUtf8().constData(), ZIP_FL_NOCASE);
    }
    bool has(const QString& name) const { return locate(name) >= 0; }

    std::unique_ptr<ZipPartDevice> part(const QString& name, qint64 limit, QString* error) const
    {
        const qint64 index = locate(name);
        if (index < 0) {
            *error = QStringLiteral("the package has no part %1").arg(name);
            return nullptr;
        }
        zip_file_t* file = zip_fopen_index(m_zip, zip_uint64_t(index), 0);
        if (!file) {
            const int code = zip_error_code_zip(zip_get_error(m_zip));
            if (code == ZIP_ER_NOPASSWD || code == ZIP_ER_WRONGPASSWD || code == ZIP_ER_ENCRNOTSUPP)
                *error = QStringLiteral("the workbook is encrypted (part %1 needs a password)")
                             .arg(name);
            else
                *error = QStringLiteral("part %1 cannot be read (%2): the file is corrupt")
                             .arg(name, QString::fromUtf8(zip_strerror(m_zip)));
            return nullptr;
        }
        return std::make_unique<ZipPartDevice>(file, limit);
    }

    // After a parse: a read failure of the zip stream is a damaged file, else the XML is bad
    // (where: "line L, column C" or "line L").
    static QString parseError(const QString& name, const ZipPartDevice& device,
                              const QString& where, const QString& what)
    {
        if (device.tooLarge())
            return QStringLiteral("part %1 unpacks to more than the reader accepts").arg(name);
        if (device.failed())
            return QStringLiteral("the file is corrupt or truncated: part %1 cannot be unpacked")
                .arg(name);
        return QStringLiteral("part %1 is not well-formed XML (%2: %3)").arg(name, where, what);
    }
    static QString parseError(const QString& name, const QXmlStreamReader& xml,
                              const ZipPartDevice& device)
    {
        return parseError(
            name, device,
            QStringLiteral("line %1, column %2").arg(xml.lineNumber()).arg(xml.columnNumber()),
            xml.errorString());
    }

    bool relationships(const QString& partName, QVector<Relationship>* out, QString* error) const
    {
        const int slash = partName.lastIndexOf(QLatin1Char('/'));
        const QString dir = partName.left(slash + 1);
        const QString relsName =
            dir + QStringLiteral("_rels/") + partName.mid(slash + 1) + QStringLiteral(".rels");
        if (!has(relsName))
            return true;
        auto device = part(relsName, MaxSmallPartBytes, error);
        if (!device)
            return false;
        QXmlStreamReader xml(device.get());
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement &&
                xml.name() == QLatin1String("Relationship")) {
                const QXmlStreamAttributes attributes = xml.attributes();
                if (attributes.value(QLatin1String("TargetMode")) == QLatin1String("External"))
                    continue;
                Relationship rel;
                rel.id = attributes.value(QLatin1String("Id")).toString();
                rel.type = attributes.value(QLatin1String("Type")).toString();
                rel.target = resolve(dir, attributes.value(QLatin1String("Target")).toString());
                if (out->size() < 100000)
                    out->append(rel);
            }
        }
        if (xml.hasError()) {
            *error = parseError(relsName, xml, *device);
            return false;
        }
        return true;
    }

    static QString resolve(const QString& dir, QString target)
    {
        QString path = target.startsWith(QLatin1Char('/')) ? target.mid(1) : dir + target;
        QStringList parts;
        for (const QString& piece : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
            if (piece == QLatin1String(".."))
                parts.isEmpty() ? void() : parts.removeLast();
            else if (piece != QLatin1String("."))
                parts.append(piece);
        }
        return parts.join(QLatin1Char('/'));
    }

private:
    zip_t* m_zip = nullptr;
};

bool typeIs(const QString& type, const char* kind)
{
    return type.endsWith(QLatin1Char('/') + QLatin1String(kind));
}

QString relationshipId(const QXmlStreamAttributes& attributes)
{
    for (const QXmlStreamAttribute& attribute : attributes)
        if (attribute.name() == QLatin1String("id") && !attribute.namespaceUri().isEmpty())
            return attribute.value().toString();
    return QString();
}

// Gathers the text of the element the reader stands on: <t> pieces outside phonetic runs.
// Gathers the text of the element the scanner stands on: <t> pieces outside phonetic runs.
bool stringItem(XmlPartScanner& xml, QString* text)
{
    QByteArray bytes;
    int rph = 0;
    int depth = 1;
    bool inText = false;
    while (depth > 0) {
        switch (xml.next()) {
        case XmlPartScanner::StartElement:
            ++depth;
            if (xml.name() == "t")
                inText = rph == 0;
            else if (xml.name() == "rPh")
                ++rph;
            break;
        case XmlPartScanner::EndElement:
            --depth;
            if (xml.name() == "t")
                inText = false;
            else if (xml.name() == "rPh")
                --rph;
            break;
        case XmlPartScanner::Text:
            if (inText)
                bytes += xml.text();
            break;
        default:
            return false;
        }
    }
    *text = unescape(QString::fromUtf8(bytes));
    return true;
}

QString scanError(const QString& name, const XmlPartScanner& xml, const ZipPartDevice& device)
{
    return Package::parseError(name, device, QStringLiteral("line %1").arg(xml.lineNumber()),
                               xml.errorString());
}

// Leading and trailing blanks are not part of a number, an index or a reference.
XmlBytes trimmed(XmlBytes bytes)
{
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    while (bytes.size > 0 && blank(bytes.data[0])) {
        ++bytes.data;
        --bytes.size;
    }
    while (bytes.size > 0 && blank(bytes.data[bytes.size - 1]))
        --bytes.size;
    return bytes;
}

bool toNumber(XmlBytes bytes, double* value)
{
    bytes = trimmed(bytes);
    if (bytes.size > 0 && bytes.data[0] == '+') {
        ++bytes.data;
        --bytes.size;
    }
    if (bytes.isEmpty())
        return false;
    const auto result = std::from_chars(bytes.data, bytes.data + bytes.size, *value);
    return result.ec == std::errc() && result.ptr == bytes.data + bytes.size;
}

bool toInt(XmlBytes bytes, int* value)
{
    bytes = trimmed(bytes);
    const auto result = std::from_chars(bytes.data, bytes.data + bytes.size, *value);
    return bytes.size > 0 && result.ec == std::errc() && result.ptr == bytes.data + bytes.size;
}

// "B12" to row 11, column 1; false when it is not a cell of a sheet.
bool toReference(XmlBytes bytes, int* row, int* col)
{
    bytes = trimmed(bytes);
    int i = 0;
    int column = 0;
    for (; i < bytes.size && i < 4; ++i) {
        char c = bytes.data[i];
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
        if (c < 'A' || c > 'Z')
            break;
        column = column * 26 + (c - 'A' + 1);
    }
    if (i == 0 || i == bytes.size)
        return false;
    qint64 line = 0;
    for (; i < bytes.size; ++i) {
        const char c = bytes.data[i];
        if (c < '0' || c > '9' || line > 10000000)
            return false;
        line = line * 10 + (c - '0');
    }
    if (column < 1 || column > 16384 || line < 1 || line > 1048576)
        return false;
    *row = int(line - 1);
    *col = column - 1;
    return true;
}

QString shown(XmlBytes bytes)
{
    return QString::fromUtf8(bytes.data, qMin(bytes.size, 40));
}

struct Styles
{
    QVector<bool> dateXf;
};

bool readStyles(const Package& package, const QString& name, Styles* styles, QString* error)
{
    auto device = package.part(name, MaxSmallPartBytes, error);
    if (!device)
        return false;
    QXmlStreamReader xml(device.get());
    QHash<int, QString> formats;
    bool inCellXfs = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const QStringRef tag = xml.name();
            if (tag == QLatin1String("numFmt")) {
                const QXmlStreamAttributes attributes = xml.attributes();
                formats.insert(attributes.value(QLatin1String("numFmtId")).toInt(),
                               attributes.value(QLatin1String("formatCode")).toString());
            } else if (tag == QLatin1String("cellXfs")) {
                inCellXfs = true;
            } else if (tag == QLatin1String("xf") && inCellXfs && styles->dateXf.size() < 100000) {
                const int id = xml.attributes().value(QLatin1String("numFmtId")).toInt();
                styles->dateXf.append(ExcelText::isDateFormat(id, formats.value(id)));
            }
        } else if (token == QXmlStreamReader::EndElement &&
                   xml.name() == QLatin1String("cellXfs")) {
            inCellXfs = false;
        }
    }
    if (xml.hasError()) {
        *error = Package::parseError(name, xml, *device);
        return false;
    }
    return true;
}

bool readSharedStrings(const Package& package, const QString& name, ExcelStringPool* strings,
                       QString* error)
{
    auto device = package.part(name, MaxPartBytes, error);
    if (!device)
        return false;
    XmlPartScanner xml(device.get());
    for (;;) {
        const XmlPartScanner::Token token = xml.next();
        if (token == XmlPartScanner::EndOfDocument)
            return true;
        if (token == XmlPartScanner::Invalid)
            break;
        if (token != XmlPartScanner::StartElement || !(xml.name() == "si"))
            continue;
        if (strings->size() >= MaxSharedStrings) {
            *error = QStringLiteral("part %1 holds more than %2 strings, more than the "
                                    "reader accepts")
                         .arg(name)
                         .arg(MaxSharedStrings);
            return false;
        }
        QString text;
        if (!stringItem(xml, &text))
            break;
        strings->add(text);
    }
    *error = scanError(name, xml, *device);
    return false;
}

struct SheetReading
{
    const Package& package;
    QString part;
    QString sheetName;
    const Styles& styles;
    QSharedPointer<const ExcelStringPool> shared;
    bool date1904 = false;
    qint64* cellBudget = nullptr;
    int sharedCount = 0;
    QByteArray& value; // a cell's value text, reused for every cell
};

QString cellName(int row, int col)
{
    QString name;
    for (int c = col + 1; c > 0; c = (c - 1) / 26)
        name.prepend(QChar(ushort('A' + (c - 1) % 26)));
    return name + QString::number(row + 1);
}

bool badCell(const SheetReading& in, const QString& what, QString* error)
{
    *error = QStringLiteral("sheet \"%1\" (part %2): %3").arg(in.sheetName, in.part, what);
    return false;
}

// The cell whose start tag the scanner just returned.
bool readCell(const SheetReading& in, XmlPartScanner& xml, int* row, int* col,
              SheetContent* content, QString* error)
{
    enum Kind { Number, Shared, Formula, Inline, Boolean, Error, Iso } kind = Number;
    int style = 0;
    XmlBytes attribute;
    if (xml.attribute("r", &attribute)) {
        if (!toReference(attribute, row, col))
            return badCell(in,
                           QStringLiteral("cell reference \"%1\" is not a cell of a sheet "
                                          "(1048576 rows x 16384 columns at most)")
                               .arg(shown(attribute)),
                           error);
    } else {
        ++*col;
        if (*row < 0)
            *row = 0;
        if (*col > 16383)
            return badCell(in, QStringLiteral("a row has more than 16384 cells"), error);
    }
    if (xml.attribute("t", &attribute)) {
        if (attribute.isEmpty() || attribute == "n")
            kind = Number;
        else if (attribute == "s")
            kind = Shared;
        else if (attribute == "str")
            kind = Formula;
        else if (attribute == "inlineStr")
            kind = Inline;
        else if (attribute == "b")
            kind = Boolean;
        else if (attribute == "e")
            kind = Error;
        else if (attribute == "d")
            kind = Iso;
    }
    if (xml.attribute("s", &attribute) && !toInt(attribute, &style))
        style = 0;

    // The value: <v> text, or the <is> of an inline string; <f> and the rest are passed over.
    QByteArray& value = in.value;
    value.resize(0);
    QString inlineText;
    bool hasValue = false;
    bool hasInline = false;
    for (;;) {
        const XmlPartScanner::Token token = xml.next();
        if (token == XmlPartScanner::EndElement)
            break;
        if (token == XmlPartScanner::StartElement) {
            if (xml.name() == "v") {
                hasValue = true;
                for (XmlPartScanner::Token inner = xml.next(); inner != XmlPartScanner::EndElement;
                     inner = xml.next()) {
                    if (inner == XmlPartScanner::Text)
                        value += xml.text();
                    else if (inner != XmlPartScanner::StartElement || !xml.skipElement())
                        return false;
                }
            } else if (xml.name() == "is") {
                if (!stringItem(xml, &inlineText))
                    return false;
                hasInline = true;
            } else if (!xml.skipElement()) {
                return false;
            }
        } else if (token != XmlPartScanner::Text) {
            return false;
        }
    }
    if (--*in.cellBudget < 0)
        return badCell(in,
                       QStringLiteral("the workbook holds more cells than the reader accepts "
                                      "(%1)")
                           .arg(MaxCellsPerBook),
                       error);
    const XmlBytes bytes = trimmed({value.constData(), int(value.size())});
    if (kind == Inline) {
        if (hasInline)
            content->addCell(*row, *col, LibXLExcelSheet::CellString, 0,
                             content->addOwnString(inlineText));
    } else if (!hasValue || (bytes.isEmpty() && kind != Formula && kind != Error)) {
        // A formatted but empty cell, or a formula never calculated (written without a result).
    } else if (kind == Shared) {
        int index = -1;
        if (!toInt(bytes, &index) || index < 0 || index >= in.sharedCount)
            return badCell(in,
                           QStringLiteral("cell %1 refers to shared string \"%2\", but the "
                                          "workbook has %3 shared strings")
                               .arg(cellName(*row, *col), shown(bytes))
                               .arg(in.sharedCount),
                           error);
        content->addCell(*row, *col, LibXLExcelSheet::CellString, 0, index);
    } else if (kind == Formula) {
        content->addCell(*row, *col, LibXLExcelSheet::CellString, 0,
                         content->addOwnString(unescape(QString::fromUtf8(value))));
    } else if (kind == Boolean) {
        content->addCell(*row, *col, LibXLExcelSheet::CellBoolean,
                         bytes == "1" || bytes == "true" ? 1 : 0, 0);
    } else if (kind == Error) {
        content->addCell(*row, *col, LibXLExcelSheet::CellError, 0,
                         content->addOwnString(QString::fromUtf8(value)));
    } else if (kind == Iso) {
        // Strict files may store dates as ISO 8601 text.
        QString text = QString::fromUtf8(bytes.data, bytes.size);
        text.replace(QLatin1Char('T'), QLatin1Char(' '));
        if (text.endsWith(QLatin1Char('Z')))
            text.chop(1);
        if (text.endsWith(QLatin1String(" 00:00:00")))
            text.chop(9);
        const int dot = text.indexOf(QLatin1Char('.'));
        if (dot > 0)
            text.truncate(dot);
        content->addCell(*row, *col, LibXLExcelSheet::CellDate, 0, content->addOwnString(text));
    } else {
        double number = 0;
        if (!toNumber(bytes, &number))
            return badCell(in,
                           QStringLiteral("cell %1 is a number cell whose value \"%2\" is not a "
                                          "number")
                               .arg(cellName(*row, *col), shown(bytes)),
                           error);
        const bool isDate =
            style >= 0 && style < in.styles.dateXf.size() && in.styles.dateXf.at(style);
        const QString date = isDate ? ExcelText::dateText(number, in.date1904) : QString();
        if (!date.isEmpty())
            content->addCell(*row, *col, LibXLExcelSheet::CellDate, number,
                             content->addOwnString(date));
        else
            content->addCell(*row, *col, LibXLExcelSheet::CellNumber, number, 0);
    }
    return true;
}

bool readRow(const SheetReading& in, XmlPartScanner& xml, int* row, int* col, SheetContent* content,
             QString* error)
{
    XmlBytes attribute;
    if (xml.attribute("r", &attribute)) {
        int r = 0;
        if (!toInt(attribute, &r) || r < 1 || r > 1048576)
            return badCell(in,
                           QStringLiteral("row number \"%1\" is not a row of a sheet (1 to "
                                          "1048576)")
                               .arg(shown(attribute)),
                           error);
        *row = r - 1;
    } else {
        ++*row;
        if (*row > 1048575)
            return badCell(in, QStringLiteral("more than 1048576 rows"), error);
    }
    *col = -1;
    double height = 0;
    if (xml.attribute("customHeight", &attribute) && (attribute == "1" || attribute == "true") &&
        xml.attribute("ht", &attribute) && toNumber(attribute, &height))
        content->rowHeights.insert(*row, height);
    return true;
}

bool readSheet(const SheetReading& in, SheetContent* content, QString* error)
{
    auto device = in.package.part(in.part, MaxPartBytes, error);
    if (!device)
        return false;
    content->sharedStrings = in.shared;
    XmlPartScanner xml(device.get());
    int row = -1;
    int col = -1;
    for (;;) {
        const XmlPartScanner::Token token = xml.next();
        if (token == XmlPartScanner::EndOfDocument)
            return true;
        if (token == XmlPartScanner::Invalid)
            break;
        if (token != XmlPartScanner::StartElement)
            continue;
        const XmlBytes tag = xml.name();
        XmlBytes attribute;
        if (tag == "c") {
            error->clear();
            if (!readCell(in, xml, &row, &col, content, error)) {
                if (!error->isEmpty())
                    return false;
                break; // the XML went wrong inside the cell
            }
        } else if (tag == "row") {
            if (!readRow(in, xml, &row, &col, content, error))
                return false;
        } else if (tag == "col") {
            int first = 0;
            int last = 0;
            double width = 0;
            if (xml.attribute("min", &attribute) && toInt(attribute, &first) &&
                xml.attribute("max", &attribute) && toInt(attribute, &last) &&
                xml.attribute("width", &attribute) && toNumber(attribute, &width) && first >= 1 &&
                last >= first && last <= 16384 && last - first < 300)
                for (int c = first; c <= last; ++c)
                    content->columnWidths.insert(c - 1, width);
        } else if (tag == "mergeCell") {
            QByteArray ref;
            if (xml.attribute("ref", &attribute))
                xml.decode(attribute, &ref);
            const QList<QByteArray> ends = ref.split(':');
            ExcelRange range;
            auto end = [](const QByteArray& text) {
                return XmlBytes{text.constData(), int(text.size())};
            };
            if (ends.size() > 2 ||
                !toReference(end(ends.first()), &range.firstRow, &range.firstCol) ||
                !toReference(end(ends.last()), &range.lastRow, &range.lastCol) ||
                range.lastRow < range.firstRow || range.lastCol < range.firstCol)
                return badCell(in,
                               QStringLiteral("merged range \"%1\" is not a range")
                                   .arg(QString::fromUtf8(ref.left(40))),
                               error);
            if (content->merges.size() < 1000000)
                content->merges.append(range);
        }
    }
    *error = scanError(in.part, xml, *device);
    return false;
}

} // namespace

bool XlsxBookReader::read(const QString& path, LibXLExcel* book, QString* error)
{
    Package package;
    if (!package.open(path, error))
        return false;

    QVector<Relationship> rootRels;
    if (!package.relationships(QString(), &rootRels, error))
        return false;
    QString workbookPart;
    for (const Relationship& rel : qAsConst(rootRels))
        if (typeIs(rel.type, "officeDocument"))
            workbookPart = rel.target;
    if (workbookPart.isEmpty() && package.has(QStringLiteral("xl/workbook.xml")))
        workbookPart = QStringLiteral("xl/workbook.xml");
    if (workbookPart.isEmpty()) {
        if (package.has(QStringLiteral("word/document.xml")))
            *error = QStringLiteral("this is a Word document, not an Excel workbook");
        else if (package.has(QStringLiteral("ppt/presentation.xml")))
            *error = QStringLiteral("this is a PowerPoint presentation, not an Excel workbook");
        else
            *error = QStringLiteral("a zip archive, but not an Excel workbook (it has no "
                                    "workbook part)");
        return false;
    }
    if (workbookPart.endsWith(QLatin1String(".bin"), Qt::CaseInsensitive)) {
        *error = QStringLiteral("an Excel binary workbook (.xlsb), which is not read; save it as "
                                ".xlsx or .xls");
        return false;
    }
    if (!package.has(workbookPart)) {
        *error = QStringLiteral("the package names %1 as its workbook, but has no such part")
                     .arg(workbookPart);
        return false;
    }

    QVector<Relationship> bookRels;
    if (!package.relationships(workbookPart, &bookRels, error))
        return false;
    QHash<QString, Relationship> byId;
    QString sharedPart;
    QString stylesPart;
    for (const Relationship& rel : qAsConst(bookRels)) {
        byId.insert(rel.id, rel);
        if (typeIs(rel.type, "sharedStrings"))
            sharedPart = rel.target;
        else if (typeIs(rel.type, "styles"))
            stylesPart = rel.target;
    }

    struct SheetEntry
    {
        QString name;
        QString state;
        QString relId;
    };
    QVector<SheetEntry> entries;
    bool date1904 = false;
    {
        auto device = package.part(workbookPart, MaxSmallPartBytes, error);
        if (!device)
            return false;
        QXmlStreamReader xml(device.get());
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            const QXmlStreamAttributes attributes = xml.attributes();
            if (xml.name() == QLatin1String("workbookPr")) {
                // Extensions repeat this element with other attributes: only date1904 counts.
                const QStringRef value = attributes.value(QLatin1String("date1904"));
                if (!value.isEmpty())
                    date1904 = value == QLatin1String("1") || value == QLatin1String("true");
            } else if (xml.name() == QLatin1String("sheet") && entries.size() < 4096) {
                entries.append({attributes.value(QLatin1String("name")).toString(),
                                attributes.value(QLatin1String("state")).toString(),
                                relationshipId(attributes)});
            }
        }
        if (xml.hasError()) {
            *error = Package::parseError(workbookPart, xml, *device);
            return false;
        }
    }
    if (entries.isEmpty()) {
        *error = QStringLiteral("the workbook part %1 lists no sheets").arg(workbookPart);
        return false;
    }

    Styles styles;
    if (!stylesPart.isEmpty()) {
        if (!package.has(stylesPart)) {
            *error = QStringLiteral("the workbook names the styles part %1, but the package has "
                                    "no such part")
                         .arg(stylesPart);
            return false;
        }
        if (!readStyles(package, stylesPart, &styles, error))
            return false;
    }
    auto shared = QSharedPointer<ExcelStringPool>::create();
    if (!sharedPart.isEmpty()) {
        if (!package.has(sharedPart)) {
            *error = QStringLiteral("the workbook names the shared strings part %1, but the "
                                    "package has no such part")
                         .arg(sharedPart);
            return false;
        }
        if (!readSharedStrings(package, sharedPart, shared.data(), error))
            return false;
        shared->squeeze();
    }

    book->setDate1904(date1904);
    qint64 budget = MaxCellsPerBook;
    QByteArray value;
    value.reserve(256); // reserved capacity survives resize(0)
    for (const SheetEntry& entry : qAsConst(entries)) {
        const LibXLExcelSheet::SheetState state =
            entry.state == QLatin1String("hidden")       ? LibXLExcelSheet::SheetHidden
            : entry.state == QLatin1String("veryHidden") ? LibXLExcelSheet::SheetVeryHidden
                                                         : LibXLExcelSheet::SheetVisible;
        auto rel = byId.constFind(entry.relId);
        if (rel == byId.constEnd()) {
            *error = QStringLiteral("sheet \"%1\" points at relationship \"%2\", which the "
                                    "workbook does not have")
                         .arg(entry.name, entry.relId);
            return false;
        }
        SheetContent content;
        if (typeIs(rel->type, "worksheet")) {
            if (!package.has(rel->target)) {
                *error = QStringLiteral("sheet \"%1\" is part %2, which the package does not "
                                        "have")
                             .arg(entry.name, rel->target);
                return false;
            }
            SheetReading reading{package,  rel->target, entry.name,     styles, shared,
                                 date1904, &budget,     shared->size(), value};
            if (!readSheet(reading, &content, error))
                return false;
        }
        book->adoptSheet(std::make_unique<LibXLExcelSheet>(entry.name, state, std::move(content)));
    }
    return true;
}
