// Export of a list to .xlsx: LibXLExcel against the same cells written straight with
// libxlsxwriter (the floor), and the .xls writer. 10 string columns; rows 500, 5,000, 50,000.
#include "ExcelBenchSupport.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QTemporaryDir>
#include <QVector>

#include <benchmark/benchmark.h>
#include <xlsxwriter.h>

namespace {

constexpr int Columns = 10;

const QVector<QString>& cells(int rows)
{
    static QVector<QString> table;
    if (table.size() < rows * Columns) {
        table.clear();
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < Columns; ++c)
                table.append(materialCell(r, c));
    }
    return table;
}

void writeThroughFacade(benchmark::State& state, int kind)
{
    const int rows = int(state.range(0));
    const QVector<QString>& table = cells(rows);
    QTemporaryDir dir;
    const QString file = dir.filePath(kind == LibXLExcel::BookXls ? "out.xls" : "out.xlsx");
    ExcelFont font;
    font.family = QStringLiteral("宋体");
    font.pointSize = 10;
    for (auto _ : state) {
        LibXLExcel book(kind);
        LibXLExcelSheet* sheet = book.AddSheet(QStringLiteral("清单"));
        for (int c = 0; c < Columns; ++c)
            sheet->SetCol(c, c, 15);
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < Columns; ++c)
                sheet->WriteStr(r, c, table.at(r * Columns + c), font,
                                Qt::AlignLeft | Qt::AlignVCenter);
        if (!book.Save(file))
            state.SkipWithError(book.ErrorMessage().toUtf8().constData());
    }
    state.counters["cells"] = double(rows) * Columns;
}

void BM_WriteXlsxLibXLExcel(benchmark::State& state)
{
    writeThroughFacade(state, LibXLExcel::BookXlsx);
}

void BM_WriteXlsLibXLExcel(benchmark::State& state)
{
    writeThroughFacade(state, LibXLExcel::BookXls);
}

// The floor: the cells already in UTF-8, one format made once, libxlsxwriter called directly.
void BM_WriteXlsxLibxlsxwriterDirect(benchmark::State& state)
{
    const int rows = int(state.range(0));
    const QVector<QString>& table = cells(rows);
    QVector<QByteArray> utf8;
    utf8.reserve(table.size());
    for (const QString& text : table)
        utf8.append(text.toUtf8());
    QTemporaryDir dir;
    const QByteArray file = dir.filePath("direct.xlsx").toUtf8();
    for (auto _ : state) {
        lxw_workbook* book = workbook_new(file.constData());
        lxw_worksheet* sheet = workbook_add_worksheet(book, "清单");
        lxw_format* format = workbook_add_format(book);
        format_set_font_name(format, "宋体");
        format_set_font_size(format, 10);
        format_set_align(format, LXW_ALIGN_LEFT);
        format_set_align(format, LXW_ALIGN_VERTICAL_CENTER);
        worksheet_set_column(sheet, 0, Columns - 1, 15, nullptr);
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < Columns; ++c)
                worksheet_write_string(sheet, lxw_row_t(r), lxw_col_t(c),
                                       utf8.at(r * Columns + c).constData(), format);
        if (workbook_close(book) != LXW_NO_ERROR)
            state.SkipWithError("workbook_close failed");
    }
    state.counters["cells"] = double(rows) * Columns;
}

} // namespace

BENCHMARK(BM_WriteXlsxLibxlsxwriterDirect)
    ->Arg(500)
    ->Arg(5000)
    ->Arg(50000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteXlsxLibXLExcel)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteXlsLibXLExcel)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
