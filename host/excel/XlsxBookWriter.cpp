#include "XlsxBookWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <xlsxwriter.h>

namespace {

uint8_t horizontalOf(int alignment)
{
    if (alignment & Qt::AlignJustify)
        return LXW_ALIGN_JUSTIFY;
    if (alignment & Qt::AlignHCenter)
        return LXW_ALIGN_CENTER;
    if (alignment & Qt::AlignRight)
        return LXW_ALIGN_RIGHT;
    if (alignment & Qt::AlignLeft)
        return LXW_ALIGN_LEFT;
    return LXW_ALIGN_NONE;
}

uint8_t verticalOf(int alignment)
{
    if (alignment & Qt::AlignTop)
        return LXW_ALIGN_VERTICAL_TOP;
    if (alignment & Qt::AlignVCenter)
        return LXW_ALIGN_VERTICAL_CENTER;
    if (alignment & Qt::AlignBottom)
        return LXW_ALIGN_VERTICAL_BOTTOM;
    return LXW_ALIGN_NONE;
}

} // namespace

XlsxBookWriter::XlsxBookWriter()
{
    if (!m_dir.isValid())
        return;
    m_tempFile = m_dir.filePath(QStringLiteral("book.xlsx"));
    const QByteArray name = QFile::encodeName(m_tempFile);
    const QByteArray tmp = QFile::encodeName(m_dir.path());
    lxw_workbook_options options = {};
    options.constant_memory = LXW_FALSE;
    options.tmpdir = const_cast<char*>(tmp.constData());
    m_book = workbook_new_opt(name.constData(), &options);
}

XlsxBookWriter::~XlsxBookWriter()
{
    if (m_book)
        workbook_close(m_book); // writes into the temporary folder, which goes with this object
}

int XlsxBookWriter::addSheet(const QString& name)
{
    if (!m_book)
        return -1;
    lxw_worksheet* sheet = workbook_add_worksheet(m_book, name.toUtf8().constData());
    if (!sheet)
        return -1;
    m_sheets.append(sheet);
    return m_sheets.size() - 1;
}

bool XlsxBookWriter::setCol(int sheet, int colFirst, int colLast, double width)
{
    return worksheet_set_column(m_sheets.value(sheet), lxw_col_t(colFirst), lxw_col_t(colLast),
                                width, nullptr) == LXW_NO_ERROR;
}

bool XlsxBookWriter::setRow(int sheet, int row, double height)
{
    return worksheet_set_row(m_sheets.value(sheet), lxw_row_t(row), height, nullptr) ==
           LXW_NO_ERROR;
}

lxw_format* XlsxBookWriter::formatFor(const ExcelFont& font, int alignment)
{
    if (m_lastFormat && alignment == m_lastAlignment && font == m_lastFont)
        return m_lastFormat;
    lxw_format*& format = m_formats[qMakePair(font, alignment)];
    if (!format) {
        format = workbook_add_format(m_book);
        // The default font is the one Chinese editions of the spreadsheet programs start with,
        // the same as the .xls writer's.
        format_set_font_name(format, font.family.isEmpty() ? "\xe5\xae\x8b\xe4\xbd\x93"
                                                           : font.family.toUtf8().constData());
        format_set_font_size(format, font.pointSize > 0 ? font.pointSize : 11);
        if (font.bold)
            format_set_bold(format);
        if (font.italic)
            format_set_italic(format);
        if (const uint8_t h = horizontalOf(alignment))
            format_set_align(format, h);
        if (const uint8_t v = verticalOf(alignment))
            format_set_align(format, v);
    }
    m_lastFont = font;
    m_lastAlignment = alignment;
    m_lastFormat = format;
    return format;
}

bool XlsxBookWriter::writeStr(int sheet, int row, int col, const QString& text,
                              const ExcelFont& font, int alignment)
{
    lxw_worksheet* target = m_sheets.value(sheet);
    if (!target)
        return false;
    return worksheet_write_string(target, lxw_row_t(row), lxw_col_t(col), text.toUtf8().constData(),
                                  formatFor(font, alignment)) == LXW_NO_ERROR;
}

bool XlsxBookWriter::save(const QString& path, QString* error)
{
    if (!m_book) {
        *error = QStringLiteral("%1: the workbook could not be prepared (no temporary folder)")
                     .arg(path);
        return false;
    }
    const lxw_error result = workbook_close(m_book);
    m_book = nullptr;
    m_sheets.clear(); // closing freed them
    if (result != LXW_NO_ERROR) {
        *error = QStringLiteral("%1: writing the workbook failed: %2")
                     .arg(path, QString::fromUtf8(lxw_strerror(result)));
        return false;
    }
    if (QFileInfo::exists(path) && !QFile::remove(path)) {
        *error = QStringLiteral("%1: the file exists and cannot be replaced (is it open in "
                                "another program?)")
                     .arg(path);
        return false;
    }
    if (!QFile::rename(m_tempFile, path) && !QFile::copy(m_tempFile, path)) {
        *error = QStringLiteral("%1: the file cannot be written").arg(path);
        return false;
    }
    return true;
}
