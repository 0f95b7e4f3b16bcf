// Saving and opening project files of 100,000 and 1,000,000 rows.
#include "BenchSupport.h"

#include "ProjectFile.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

static void BM_SaveProject(benchmark::State& state)
{
    std::unique_ptr<ProjectWorks> works = makeProject(int(state.range(0)));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bench.tarvo"));
    resetPeakMemory();
    for (auto _ : state) {
        QString error;
        if (!ProjectFile::Save(works.get(), path, &error))
            state.SkipWithError(qPrintable(error));
    }
    state.counters["rows"] = double(state.range(0));
    state.counters["file_MiB"] = double(QFileInfo(path).size()) / (1024.0 * 1024.0);
    state.counters["peak_MiB"] = peakMemoryMiB();
}
BENCHMARK(BM_SaveProject)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);

static void BM_OpenProject(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bench.tarvo"));
    {
        std::unique_ptr<ProjectWorks> works = makeProject(int(state.range(0)));
        QString error;
        ProjectFile::Save(works.get(), path, &error);
    }
    resetPeakMemory();
    for (auto _ : state) {
        QString error;
        std::unique_ptr<ProjectWorks> opened = ProjectFile::Open(path, &error);
        if (!opened)
            state.SkipWithError(qPrintable(error));
        benchmark::DoNotOptimize(opened.get());
        state.counters["peak_MiB"] = peakMemoryMiB(); // while the opened project is resident
    }
}
BENCHMARK(BM_OpenProject)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
