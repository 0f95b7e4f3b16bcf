// tarvo-xl: looks into workbooks as the module reads them, and converts between .xls and .xlsx.
//
//   tarvo-xl dump FILE [SHEET]      sheets, merged ranges and every cell with its display text
//   tarvo-xl convert FROM TO        rewrites FROM's cells as strings into TO (.xls or .xlsx by
//                                   TO's suffix), keeping column widths and row heights
//   tarvo-xl materials FILE [SHEET] the evaluated-materials list as the import reads it: the
//                                   header row, each column's field and the material rows,
//                                   tab-separated in the list's column order
#include "EvaluatedMaterialImport.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

namespace {

QString columnName(int col)
{
    QString name;
    for (int c = col + 1; c > 0; c = (c - 1) / 26)
        name.prepend(QChar('A' + (c - 1) % 26));
    return name;
}

QString typeName(LibXLExcelSheet::CellType type)
{
    switch (type) {
    case LibXLExcelSheet::CellNumber:
        return QStringLiteral("number");
    case LibXLExcelSheet::CellString:
        return QStringLiteral("string");
    case LibXLExcelSheet::CellBoolean:
        return QStringLiteral("boolean");
    case LibXLExcelSheet::CellError:
        return QStringLiteral("error");
    case LibXLExcelSheet::CellDate:
        return QStringLiteral("date");
    default:
        return QStringLiteral("empty");
    }
}

QString stateName(LibXLExcelSheet::SheetState state)
{
    switch (state) {
    case LibXLExcelSheet::SheetHidden:
        return QStringLiteral("hidden");
    case LibXLExcelSheet::SheetVeryHidden:
        return QStringLiteral("very hidden");
    default:
        return QStringLiteral("visible");
    }
}

// Control characters are shown escaped so that one cell stays on one line.
QString quoted(const QString& text)
{
    QString out;
    for (const QChar c : text) {
        if (c == QLatin1Char('\n'))
            out += QStringLiteral("\\n");
        else if (c == QLatin1Char('\r'))
            out += QStringLiteral("\\r");
        else if (c == QLatin1Char('\t'))
            out += QStringLiteral("\\t");
        else if (c == QLatin1Char('\\'))
            out += QStringLiteral("\\\\");
        else
            out += c;
    }
    return QLatin1Char('"') + out + QLatin1Char('"');
}

int dump(const QString& path, const QString& only, QTextStream& out, QTextStream& err)
{
    LibXLExcel book;
    if (!book.Open(path)) {
        err << book.ErrorMessage() << Qt::endl;
        return 1;
    }
    out << "file " << QFileInfo(path).fileName() << ": "
        << (book.GetBookKind() == LibXLExcel::BookXls ? "xls" : "xlsx") << ", " << book.SheetCount()
        << " sheet(s), date system " << (book.Is1904() ? "1904" : "1900") << Qt::endl;
    bool found = only.isEmpty();
    for (const LibXLExcelSheet* sheet : book.GetSheets()) {
        if (!only.isEmpty() && sheet->GetName() != only)
            continue;
        found = true;
        out << "sheet " << quoted(sheet->GetName()) << " (" << stateName(sheet->GetState())
            << "): " << sheet->RowCount() << " rows, " << sheet->ColCount() << " columns, "
            << sheet->CellCount() << " cells" << Qt::endl;
        for (const ExcelRange& merge : sheet->GetMerges())
            out << "  merged " << columnName(merge.firstCol) << merge.firstRow + 1 << ':'
                << columnName(merge.lastCol) << merge.lastRow + 1 << Qt::endl;
        for (int i = 0; i < sheet->CellCount(); ++i) {
            int r = 0;
            int c = 0;
            sheet->GetCellPosition(i, &r, &c);
            out << "  " << columnName(c) << r + 1 << ' ' << typeName(sheet->GetCellType(r, c))
                << ' ' << quoted(sheet->GetCellText(r, c)) << Qt::endl;
        }
    }
    if (!found) {
        err << QFileInfo(path).fileName() << ": no sheet named " << quoted(only) << Qt::endl;
        return 1;
    }
    return 0;
}

int convert(const QString& from, const QString& to, QTextStream& err)
{
    LibXLExcel source;
    if (!source.Open(from)) {
        err << source.ErrorMessage() << Qt::endl;
        return 1;
    }
    const bool xls = QFileInfo(to).suffix().compare(QLatin1String("xls"), Qt::CaseInsensitive) == 0;
    LibXLExcel target(xls ? LibXLExcel::BookXls : LibXLExcel::BookXlsx);
    const int maxRow = xls ? 65535 : 1048575;
    const int maxCol = xls ? 255 : 16383;
    for (const LibXLExcelSheet* sheet : source.GetSheets()) {
        LibXLExcelSheet* out = target.AddSheet(sheet->GetName());
        if (!out) {
            err << target.ErrorMessage() << Qt::endl;
            return 1;
        }
        if (sheet->RowCount() - 1 > maxRow || sheet->ColCount() - 1 > maxCol) {
            err << QFileInfo(from).fileName() << ": sheet " << quoted(sheet->GetName())
                << " is larger than an " << (xls ? ".xls" : ".xlsx") << " sheet can hold"
                << Qt::endl;
            return 1;
        }
        for (int c = 0; c < sheet->ColCount(); ++c)
            if (sheet->GetColWidth(c) >= 0)
                out->SetCol(c, c, sheet->GetColWidth(c));
        for (int r = 0; r < sheet->RowCount(); ++r)
            if (sheet->GetRowHeight(r) >= 0)
                out->SetRow(r, sheet->GetRowHeight(r));
        for (int i = 0; i < sheet->CellCount(); ++i) {
            int r = 0;
            int c = 0;
            sheet->GetCellPosition(i, &r, &c);
            out->WriteStr(r, c, sheet->GetCellText(r, c));
        }
    }
    if (target.SheetCount() == 0)
        target.AddSheet(QStringLiteral("Sheet1"));
    if (!target.Save(to)) {
        err << target.ErrorMessage() << Qt::endl;
        return 1;
    }
    return 0;
}

// One field per cell of a tab-separated line: tabs and line breaks inside become blanks.
QString field(QString text)
{
    text.replace(QLatin1Char('\t'), QLatin1Char(' '));
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
}

int materials(const QString& path, const QString& only, QTextStream& out, QTextStream& err)
{
    LibXLExcel book;
    if (!book.Open(path)) {
        err << book.ErrorMessage() << Qt::endl;
        return 1;
    }
    const LibXLExcelSheet* sheet = nullptr;
    if (only.isEmpty()) {
        sheet = book.GetSheet(EvaluatedMaterialImport::findListSheet(book));
    } else {
        for (const LibXLExcelSheet* candidate : book.GetSheets())
            if (candidate->GetName() == only)
                sheet = candidate;
    }
    if (!sheet) {
        err << QFileInfo(path).fileName() << ": "
            << (only.isEmpty() ? QStringLiteral("the workbook has no sheet")
                               : QStringLiteral("no sheet named ") + quoted(only))
            << Qt::endl;
        return 1;
    }
    const EvaluatedMaterialImport import(*sheet);
    const EvaluatedMaterialImport::Layout layout = import.findLayout();
    out << "# sheet " << sheet->GetName() << Qt::endl;
    out << "# header row ";
    if (layout.headerRow < 0)
        out << "none";
    else if (layout.headerRows == 2)
        out << layout.headerRow + 1 << '-' << layout.headerRow + 2;
    else
        out << layout.headerRow + 1;
    out << Qt::endl;
    for (int col = 0; col < layout.fields.size(); ++col) {
        const QString name = EvaluatedMaterialImport::fieldName(layout.fields.at(col));
        out << "# column " << columnName(col) << ' '
            << (name.isEmpty() ? QStringLiteral("-") : name) << Qt::endl;
    }
    const EvaluatedMaterialImport::Identification found =
        import.identify(layout.fields, layout.firstDataRow);
    for (int row = 0; row < found.kinds.size(); ++row) {
        if (found.kinds.at(row) != EvaluatedMaterialImport::MaterialRow)
            continue;
        QStringList values;
        for (const QString& value :
             EvaluatedMaterialImport::values(import.record(layout.fields, row)))
            values << field(value);
        out << values.join(QLatin1Char('\t')) << Qt::endl;
    }
    if (!found.message.isEmpty()) {
        err << found.message << Qt::endl;
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args.size() <= 4 && args.at(1) == QLatin1String("dump"))
        return dump(args.at(2), args.value(3), out, err);
    if (args.size() == 4 && args.at(1) == QLatin1String("convert"))
        return convert(args.at(2), args.at(3), err);
    if (args.size() >= 3 && args.size() <= 4 && args.at(1) == QLatin1String("materials"))
        return materials(args.at(2), args.value(3), out, err);
    err << "usage: tarvo-xl dump FILE [SHEET]\n"
           "       tarvo-xl convert FROM TO   (TO's suffix .xls or .xlsx chooses the format)\n"
           "       tarvo-xl materials FILE [SHEET]\n";
    return 2;
}
