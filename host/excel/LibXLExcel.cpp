#include "LibXLExcel.h"

#include "BiffBookWriter.h"
#include "CompoundFileReader.h"
#include "LibXLExcelSheet.h"
#include "XlsBookReader.h"
#include "XlsxBookReader.h"
#include "XlsxBookWriter.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace {

constexpr qint64 MaxFileBytes = qint64(1) << 30;

// What the first bytes say the file is, when it is no workbook we read.
QString foreignKind(const QByteArray& head)
{
    const QByteArray lower = head.left(512).toLower();
    if (lower.contains("urn:schemas-microsoft-com:office:spreadsheet"))
        return QStringLiteral("an XML Spreadsheet 2003 file, which is not read; save it as .xlsx "
                              "or .xls");
    if (lower.contains("<html") || lower.contains("<!doctype html") || lower.contains("<table"))
        return QStringLiteral("a web page saved under a workbook's name, not an Excel file");
    if (head.startsWith("%PDF"))
        return QStringLiteral("a PDF document, not an Excel file");
    if (head.startsWith("\x1f\x8b") || head.startsWith("Rar!") || head.startsWith("7z\xbc\xaf"))
        return QStringLiteral("a compressed archive, not an Excel file");
    return QStringLiteral("not an Excel file (its first bytes are neither an .xlsx package nor "
                          "an .xls compound file)");
}

// Sheet names: at most 31 characters, none of []:*?/\, not empty, unique ignoring case.
QString validSheetName(QString name, const QSet<QString>& taken)
{
    static const QString forbidden = QStringLiteral("[]:*?/\\");
    for (QChar& c : name)
        if (forbidden.contains(c) || c.unicode() < 0x20)
            c = QLatin1Char('_');
    name = name.trimmed();
    if (name.startsWith(QLatin1Char('\'')))
        name[0] = QLatin1Char('_');
    if (name.isEmpty())
        name = QStringLiteral("Sheet");
    name.truncate(31);
    QString candidate = name;
    for (int n = 2; taken.contains(candidate.toLower()); ++n) {
        const QString suffix = QStringLiteral("(%1)").arg(n);
        candidate = name.left(31 - suffix.size()) + suffix;
    }
    return candidate;
}

} // namespace

LibXLExcel::LibXLExcel(int bookKind) : m_kind(bookKind == BookXls ? BookXls : BookXlsx) {}

LibXLExcel::~LibXLExcel() = default;

void LibXLExcel::clear()
{
    m_sheets.clear();
    m_writer.reset();
    m_date1904 = false;
}

bool LibXLExcel::Open(const QString& path)
{
    clear();
    m_error.clear();
    auto fail = [&](const QString& why) {
        m_sheets.clear();
        m_error = QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), why);
        return false;
    };
    const QFileInfo info(path);
    if (!info.exists())
        return fail(QStringLiteral("the file does not exist"));
    if (info.isDir())
        return fail(QStringLiteral("this is a folder, not a file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("the file cannot be opened; it may be in use by another "
                                   "program or not readable (%1)")
                        .arg(file.errorString()));
    const qint64 size = file.size();
    if (size == 0)
        return fail(QStringLiteral("the file is empty (0 bytes), not an Excel file"));
    if (size > MaxFileBytes)
        return fail(QStringLiteral("the file is larger than the 1 GiB a workbook may have"));
    const QByteArray head = file.peek(4096);
    static const QByteArray ole("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    if (head.startsWith("PK\x03\x04")) {
        file.close();
        QString why;
        if (!XlsxBookReader::read(path, this, &why))
            return fail(why);
        m_kind = BookXlsx;
        return true;
    }
    if (head.startsWith("PK\x05\x06"))
        return fail(QStringLiteral("an empty zip archive, not an Excel workbook"));
    if (head.startsWith(ole)) {
        // The workbook stream is read where it lies in the file's bytes when its sectors run
        // in order (the bytes then stay until the book is read), and copied out of them
        // otherwise (the bytes then go at once).
        QByteArray bytes;
        QByteArray stream;
        QString why;
        {
            bytes = file.readAll();
            file.close();
            if (bytes.size() != size)
                return fail(QStringLiteral("the file could not be read whole; it may be in use by "
                                           "another program"));
            CompoundFileReader compound;
            if (!compound.open(bytes, &why))
                return fail(why);
            if (compound.hasStream(QStringLiteral("EncryptedPackage")) ||
                compound.hasStream(QStringLiteral("EncryptionInfo")))
                return fail(QStringLiteral("the workbook is encrypted (protected by a password "
                                           "to open); remove the password in Excel and save it "
                                           "again"));
            QString streamName;
            if (compound.hasStream(QStringLiteral("Workbook")))
                streamName = QStringLiteral("Workbook");
            else if (compound.hasStream(QStringLiteral("Book")))
                streamName = QStringLiteral("Book");
            if (streamName.isEmpty()) {
                if (compound.hasStream(QStringLiteral("WordDocument")))
                    return fail(QStringLiteral("this is a Word document, not an Excel workbook"));
                return fail(QStringLiteral("a compound document without a workbook in it, not an "
                                           "Excel file"));
            }
            stream = compound.streamInPlace(streamName, &why);
        }
        if (stream.isEmpty())
            return fail(why.isEmpty() ? QStringLiteral("the workbook stream is empty") : why);
        const quintptr streamAt = quintptr(stream.constData());
        if (streamAt < quintptr(bytes.constData()) ||
            streamAt >= quintptr(bytes.constData()) + quintptr(bytes.size()))
            bytes.clear(); // a copy: the file's bytes are no longer needed
        // Cells come from our own record walk, which checks every record's length against the
        // stream: FreeXL dereferences what a crafted stream tells it and can crash the
        // program, so it only serves the tests as a second reader to compare with.
        if (!XlsBookReader::read(path, stream, this, &why, true))
            return fail(why);
        m_kind = BookXls;
        return true;
    }
    if (head.size() >= 4 && quint8(head.at(0)) == 0x09 && quint8(head.at(2)) <= 0x10 &&
        (quint8(head.at(1)) == 0x00 || quint8(head.at(1)) == 0x02 || quint8(head.at(1)) == 0x04))
        return fail(QStringLiteral("an Excel 2.x-4.x worksheet, a format too old to be read; "
                                   "save it as .xls or .xlsx"));
    return fail(foreignKind(head));
}

QVector<LibXLExcelSheet*> LibXLExcel::GetSheets() const
{
    QVector<LibXLExcelSheet*> sheets;
    sheets.reserve(int(m_sheets.size()));
    for (const auto& sheet : m_sheets)
        sheets.append(sheet.get());
    return sheets;
}

LibXLExcelSheet* LibXLExcel::GetSheet(int index) const
{
    return index >= 0 && index < int(m_sheets.size()) ? m_sheets[size_t(index)].get() : nullptr;
}

void LibXLExcel::adoptSheet(std::unique_ptr<LibXLExcelSheet> sheet)
{
    m_sheets.push_back(std::move(sheet));
}

LibXLExcelSheet* LibXLExcel::AddSheet(const QString& name)
{
    if (!m_writer) {
        if (!m_sheets.empty()) {
            m_error = QStringLiteral("an opened workbook is read only; create a new one to write");
            return nullptr;
        }
        if (m_kind == BookXls)
            m_writer = std::make_unique<BiffBookWriter>();
        else
            m_writer = std::make_unique<XlsxBookWriter>();
    }
    QSet<QString> taken;
    for (const auto& sheet : m_sheets)
        taken.insert(sheet->GetName().toLower());
    const QString valid = validSheetName(name, taken);
    const int index = m_writer->addSheet(valid);
    if (index < 0) {
        m_error = QStringLiteral("the sheet \"%1\" cannot be added").arg(valid);
        return nullptr;
    }
    m_sheets.push_back(std::make_unique<LibXLExcelSheet>(valid, m_writer.get(), index));
    return m_sheets.back().get();
}

bool LibXLExcel::Save(const QString& path)
{
    m_error.clear();
    if (!m_writer) {
        m_error = QStringLiteral("%1: nothing to save; add a sheet first").arg(path);
        return false;
    }
    return m_writer->save(path, &m_error);
}
