// Saving and opening a project file as the user waits for it: each save and each open runs in
// a fresh process (this program started again with --child), so the heap is cold and the
// peak resident memory (VmHWM) is that process's own, not a counter reset in a warm one.
// Bytes per row = (peak of opening N rows - peak of opening an empty project) / N.
#include "BenchSupport.h"

#include "ProjectFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <sys/resource.h>

namespace {

double cpuMs()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3 +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
}

// The child: "--child save PATH ROWS" builds a project and saves it; "--child open PATH" opens
// it. Prints "ms cpu_ms peak_kib" of the timed step, or an error on stderr.
int runChild(const QStringList& args)
{
    const QString mode = args.value(2);
    const QString path = args.value(3);
    QString error;
    QElapsedTimer timer;
    double cpuStart = 0;
    bool ok = false;
    std::unique_ptr<ProjectWorks> works;
    if (mode == QLatin1String("save")) {
        works = makeProject(args.value(4).toInt());
        timer.start();
        cpuStart = cpuMs();
        ok = ProjectFile::Save(works.get(), path, &error);
    } else {
        timer.start();
        cpuStart = cpuMs();
        works = ProjectFile::Open(path, &error);
        ok = works != nullptr;
    }
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    const double cpu = cpuMs() - cpuStart;
    if (!ok) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    std::printf("%.3f %.3f %.0f\n", ms, cpu, peakMemoryMiB() * 1024.0);
    return 0;
}

struct ChildResult
{
    double ms = 0;
    double cpuMs = 0;
    double peakKiB = 0;
    double processMs = 0;
};

bool child(const QStringList& args, ChildResult* result, QString* error)
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{QStringLiteral("--child")} + args);
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        *error = QString::fromUtf8(process.readAllStandardError());
        return false;
    }
    result->processMs = double(timer.nsecsElapsed()) / 1e6;
    const QStringList parts =
        QString::fromLatin1(process.readAllStandardOutput()).split(QLatin1Char(' '));
    result->ms = parts.value(0).toDouble();
    result->cpuMs = parts.value(1).toDouble();
    result->peakKiB = parts.value(2).toDouble();
    return true;
}

QTemporaryDir& files()
{
    static QTemporaryDir dir;
    return dir;
}

QString fileOf(int rows)
{
    return files().filePath(QStringLiteral("fresh-%1.tarvo").arg(rows));
}

// Saves a project of `rows` rows in a child; the file stays for the opens.
bool save(int rows, ChildResult* result, QString* error)
{
    return child({QStringLiteral("save"), fileOf(rows), QString::number(rows)}, result, error);
}

bool ensureFile(int rows, QString* error)
{
    ChildResult ignored;
    return QFileInfo::exists(fileOf(rows)) || save(rows, &ignored, error);
}

// 10,000 to 1,000,000 rows, one run each: the time is the child's own figure.
void threeSizes(benchmark::internal::Benchmark* b)
{
    b->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(1);
    b->Unit(benchmark::kMillisecond);
}

void BM_SaveFreshProcess(benchmark::State& state)
{
    const int rows = int(state.range(0));
    for (auto _ : state) {
        ChildResult r;
        QString error;
        if (!save(rows, &r, &error)) {
            state.SkipWithError(qPrintable(error));
            return;
        }
        state.SetIterationTime(r.ms / 1e3);
        state.counters["cpu_ms"] = r.cpuMs;
        state.counters["file_MiB"] = double(QFileInfo(fileOf(rows)).size()) / (1024.0 * 1024.0);
    }
    state.counters["rows"] = rows;
}
BENCHMARK(BM_SaveFreshProcess)->Apply(threeSizes);

void BM_OpenFreshProcess(benchmark::State& state)
{
    const int rows = int(state.range(0));
    QString error;
    ChildResult empty;
    if (!ensureFile(0, &error) || !ensureFile(rows, &error) ||
        !child({QStringLiteral("open"), fileOf(0)}, &empty, &error)) {
        state.SkipWithError(qPrintable(error));
        return;
    }
    for (auto _ : state) {
        ChildResult r;
        if (!child({QStringLiteral("open"), fileOf(rows)}, &r, &error)) {
            state.SkipWithError(qPrintable(error));
            return;
        }
        state.SetIterationTime(r.ms / 1e3);
        state.counters["cpu_ms"] = r.cpuMs;
        state.counters["process_ms"] = r.processMs;
        state.counters["peak_MiB"] = r.peakKiB / 1024.0;
        state.counters["bytes_per_row"] = (r.peakKiB - empty.peakKiB) * 1024.0 / rows;
    }
    state.counters["rows"] = rows;
}
BENCHMARK(BM_OpenFreshProcess)->Apply(threeSizes);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == QLatin1String("--child"))
        return runChild(app.arguments());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
