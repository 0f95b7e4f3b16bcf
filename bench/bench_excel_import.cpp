// The Excel import of the evaluated-materials list as the user waits for it, over a list of
// 1,000 / 10,000 / 100,000 materials (10 columns, a title and a header above, a subtotal row
// after every 20 materials): identifying the rows in the UI-free core, and in the dialog
// opening the workbook, identifying and scrolling to the end, each with its repaint.
#include "SjCqXPsClQd/PopupDialog/ImportExcelDataDialog.h"
#include "SjCqXPsClQd/PopupDialog/ImportExcelDataModel.h"

#include "EvaluatedMaterialImport.h"
#include "ExcelBenchSupport.h"
#include "LibXLExcel.h"
#include "LibXLExcelSheet.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QPushButton>
#include <QTableView>

#include <benchmark/benchmark.h>

namespace {

// Written once per size into the temporary folder and kept for later runs.
QString listFile(int materials)
{
    const QString dir = QDir::temp().filePath(QStringLiteral("tarvo-bench-import"));
    QDir().mkpath(dir);
    const QString file = dir + QStringLiteral("/list-%1.xlsx").arg(materials);
    if (QFileInfo::exists(file))
        return file;
    LibXLExcel book(LibXLExcel::BookXlsx);
    LibXLExcelSheet* sheet = book.AddSheet(QStringLiteral("需评审材料"));
    sheet->WriteStr(0, 0, QStringLiteral("需评审材料清单"));
    const QStringList header = EvaluatedMaterialImport::fieldNames();
    for (int c = 0; c < header.size(); ++c)
        sheet->WriteStr(1, c, header.at(c));
    int row = 2;
    for (int m = 0; m < materials; ++m) {
        sheet->WriteStr(row, 0, QString::number(m + 1));
        sheet->WriteStr(row, 1, materialCell(m, 0));
        sheet->WriteStr(row, 2, materialCell(m, 1));
        sheet->WriteStr(row, 3, materialCell(m, 2));
        sheet->WriteStr(row, 4, materialCell(m, 3));
        for (int c = 5; c < 10; ++c)
            sheet->WriteStr(row, c, materialCell(m, c));
        ++row;
        if ((m + 1) % 20 == 0)
            sheet->WriteStr(row++, 2, QStringLiteral("小计"));
    }
    if (!book.Save(file))
        qFatal("%s", qPrintable(book.ErrorMessage()));
    return file;
}

void setCounters(benchmark::State& state)
{
    state.counters["rows"] = double(state.range(0));
}

} // namespace

static void BM_IdentifyCore(benchmark::State& state)
{
    LibXLExcel book;
    if (!book.Open(listFile(int(state.range(0)))))
        state.SkipWithError("cannot open");
    const EvaluatedMaterialImport import(*book.GetSheet(0));
    const EvaluatedMaterialImport::Layout layout = import.findLayout();
    for (auto _ : state) {
        const auto found = import.identify(layout.fields, layout.firstDataRow);
        if (found.materialRows != state.range(0))
            state.SkipWithError("wrong material rows");
    }
    setCounters(state);
}
BENCHMARK(BM_IdentifyCore)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

static void BM_DialogOpen(benchmark::State& state)
{
    const QString file = listFile(int(state.range(0)));
    for (auto _ : state) {
        ImportExcelDataDialog dialog;
        dialog.resize(1100, 640);
        dialog.openFile(file);
        QPixmap shown = dialog.grab();
        benchmark::DoNotOptimize(shown.cacheKey());
    }
    setCounters(state);
}
BENCHMARK(BM_DialogOpen)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

static void BM_DialogIdentify(benchmark::State& state)
{
    ImportExcelDataDialog dialog;
    dialog.resize(1100, 640);
    dialog.openFile(listFile(int(state.range(0))));
    auto* identify = dialog.findChild<QPushButton*>(QStringLiteral("btnIdentifyLine"));
    for (auto _ : state) {
        identify->click();
        QPixmap shown = dialog.grab();
        benchmark::DoNotOptimize(shown.cacheKey());
    }
    if (dialog.model()->checkedMaterialRows().size() != state.range(0))
        state.SkipWithError("wrong material rows");
    setCounters(state);
}
BENCHMARK(BM_DialogIdentify)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

static void BM_DialogScrollToEnd(benchmark::State& state)
{
    ImportExcelDataDialog dialog;
    dialog.resize(1100, 640);
    dialog.openFile(listFile(int(state.range(0))));
    bool end = false;
    for (auto _ : state) {
        end = !end;
        if (end)
            dialog.view()->scrollToBottom();
        else
            dialog.view()->scrollToTop();
        QPixmap shown = dialog.grab();
        benchmark::DoNotOptimize(shown.cacheKey());
    }
    setCounters(state);
}
BENCHMARK(BM_DialogScrollToEnd)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
