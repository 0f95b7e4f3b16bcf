// Opening a workbook as the import dialog does: .xlsx of 1,000 / 10,000 / 100,000 rows and .xls
// of 500 / 5,000 / 50,000 rows, 10 columns of text and numbers. Reports time, peak memory, the
// file's unpacked size and, measured in the same run on the same file, the time of python3's
// openpyxl (read-only) or xlrd and our speed-up over it.
#include "ExcelBenchSupport.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <ctime>
#include <xlsxwriter.h>
#include <zip.h>

namespace {

QString benchDir()
{
    const QString dir = QDir::temp().filePath(QStringLiteral("tarvo-bench-excel"));
    QDir().mkpath(dir);
    return dir;
}

QString xlsxFile(int rows)
{
    const QString file = benchDir() + QStringLiteral("/read-%1.xlsx").arg(rows);
    if (QFileInfo::exists(file))
        return file;
    lxw_workbook* book = workbook_new(file.toUtf8().constData());
    lxw_worksheet* sheet = workbook_add_worksheet(book, "清单");
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < 10; ++c) {
            if (c >= 5 && c <= 7)
                worksheet_write_number(sheet, lxw_row_t(r), lxw_col_t(c), r * 1.25 + c, nullptr);
            else
                worksheet_write_string(sheet, lxw_row_t(r), lxw_col_t(c),
                                       materialCell(r, c).toUtf8().constData(), nullptr);
        }
    workbook_close(book);
    return file;
}

QString xlsFile(int rows)
{
    const QString file = benchDir() + QStringLiteral("/read-%1.xls").arg(rows);
    if (QFileInfo::exists(file))
        return file;
    LibXLExcel book(LibXLExcel::BookXls);
    LibXLExcelSheet* sheet = book.AddSheet(QStringLiteral("清单"));
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < 10; ++c)
            sheet->WriteStr(r, c, materialCell(r, c));
    book.Save(file);
    return file;
}

double unpackedMiB(const QString& file)
{
    if (!file.endsWith(QLatin1String(".xlsx")))
        return QFileInfo(file).size() / 1048576.0;
    zip_t* zip = zip_open(file.toUtf8().constData(), ZIP_RDONLY, nullptr);
    double total = 0;
    for (zip_int64_t i = 0; zip && i < zip_get_num_entries(zip, 0); ++i) {
        zip_stat_t stat;
        if (zip_stat_index(zip, zip_uint64_t(i), 0, &stat) == 0)
            total += double(stat.size);
    }
    if (zip)
        zip_discard(zip);
    return total / 1048576.0;
}

// Wall and CPU seconds the independent reader takes, or -1 when it cannot run.
QPair<double, double> referenceSeconds(const QString& file)
{
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral(TARVO_BENCH_DIR "/excel_reference.py"), file});
    if (!python.waitForFinished(600000) || python.exitCode() != 0)
        return {-1, -1};
    const QList<QByteArray> fields = python.readAllStandardOutput().split(' ');
    return {fields.value(0).toDouble(), fields.value(1).toDouble()};
}

// Resident MiB before and at the peak of one read in a fresh process.
QPair<double, double> freshPeak(const QString& file)
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--peak"), file});
    if (!child.waitForFinished(600000))
        return {0, 0};
    const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
    return {fields.value(0).toDouble(), fields.value(1).toDouble()};
}

void readBook(benchmark::State& state, const QString& file)
{
    double seconds = 0;
    double cpuSeconds = 0;
    int cells = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t cpuStart = std::clock();
        LibXLExcel book;
        if (!book.Open(file)) {
            state.SkipWithError(book.ErrorMessage().toUtf8().constData());
            return;
        }
        cells = book.GetSheet(0)->CellCount();
        benchmark::DoNotOptimize(book.GetSheet(0)->GetCellText(1, 1));
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        cpuSeconds += double(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    }
    seconds /= double(state.iterations());
    cpuSeconds /= double(state.iterations());
    state.counters["cells"] = cells;
    const QPair<double, double> peak = freshPeak(file);
    state.counters["peak_MiB"] = peak.second;
    state.counters["used_MiB"] = peak.second - peak.first;
    state.counters["unpacked_MiB"] = unpackedMiB(file);
    state.counters["used_per_unpacked"] = (peak.second - peak.first) / unpackedMiB(file);
    // The machine may be shared: the CPU-time ratio is the steadier one.
    const QPair<double, double> reference = referenceSeconds(file);
    state.counters["python_s"] = reference.first;
    state.counters["python_cpu_s"] = reference.second;
    state.counters["speedup"] = reference.first > 0 ? reference.first / seconds : 0;
    state.counters["cpu_speedup"] = reference.second > 0 ? reference.second / cpuSeconds : 0;
}

void BM_ReadXlsx(benchmark::State& state)
{
    readBook(state, xlsxFile(int(state.range(0))));
}

void BM_ReadXls(benchmark::State& state)
{
    readBook(state, xlsFile(int(state.range(0))));
}

} // namespace

BENCHMARK(BM_ReadXlsx)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadXls)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // The files are written by a child process, so that writing them leaves no peak here.
    if (app.arguments().contains(QStringLiteral("--generate"))) {
        for (int rows : {1000, 10000, 100000})
            xlsxFile(rows);
        for (int rows : {500, 5000, 50000})
            xlsFile(rows);
        return 0;
    }
    // Peak memory of one read, in a fresh process: what it holds before, and its peak after.
    if (app.arguments().size() == 3 && app.arguments().at(1) == QLatin1String("--peak")) {
        const double before = peakMemoryMiB();
        LibXLExcel book;
        const bool opened = book.Open(app.arguments().at(2));
        printf("%f %f\n", before, opened ? peakMemoryMiB() : -1.0);
        return 0;
    }
    QProcess::execute(app.applicationFilePath(), {QStringLiteral("--generate")});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
