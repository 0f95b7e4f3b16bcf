// Saving and opening project files of 100,000 and 1,000,000 rows, and opening trees of
// 1,000 to 100,000 unit projects.
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

// A project of many unit projects, each with its own (empty) works: what the project tree and
// the works checks cost when a file is opened.
static void BM_OpenManyNodes(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("nodes.tarvo"));
    {
        ProjectWorks works(1, QStringLiteral("节点"));
        ProTreeNode* root = works.AddNode(nullptr, 1, ProTreeNode::WorksNode, works.name());
        works.ensureWorks(0, 1);
        ProTreeNode* single =
            works.AddNode(root, 2, ProTreeNode::SingleProjectNode, QStringLiteral("单项"));
        for (int i = 0; i < state.range(0); ++i) {
            works.AddNode(single, 3 + i, ProTreeNode::WorksNode, QStringLiteral("单位%1").arg(i));
            works.ensureWorks(0, 3 + i);
        }
        QString error;
        if (!ProjectFile::Save(&works, path, &error))
            state.SkipWithError(qPrintable(error));
    }
    for (auto _ : state) {
        QString error;
        std::unique_ptr<ProjectWorks> opened = ProjectFile::Open(path, &error);
        if (!opened)
            state.SkipWithError(qPrintable(error));
        benchmark::DoNotOptimize(opened.get());
    }
    state.counters["nodes"] = double(state.range(0));
}
BENCHMARK(BM_OpenManyNodes)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
