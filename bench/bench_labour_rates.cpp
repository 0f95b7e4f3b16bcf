// Loading a region and time of 2,000 labour rates into the query panel's model, and saving
// pending changes.
#include "LxGzXmQd/SporadicTableModel.h"

#include "DB_Operation.h"
#include "HostConstants.h"
#include "InteractionSeam.h"
#include "SharedInterface.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

// A store with `count` rates for one region and time.
void makeStore(const QString& dir, int count = 2000)
{
    QDir().mkpath(dir + QStringLiteral("/Database"));
    for (const QString& base : {QStringLiteral("LXRG"), QStringLiteral("MASTER")}) {
        const QString path =
            dir + QStringLiteral("/Database/") + base + HostConstants::C_Db_Sqlite_Suffix;
        QFile(path).open(QIODevice::WriteOnly); // an empty file is an empty database
        DB_Operation db;
        db.openDB(path);
        db.excuteSQL(QStringLiteral("CREATE TABLE lxrg(FID INTEGER PRIMARY KEY, dq TEXT, sj TEXT, "
                                    "gz TEXT, dj TEXT, bz TEXT)"));
        db.excuteSQL(QStringLiteral("BEGIN"));
        for (int i = 1; i <= count; ++i)
            db.excuteSQL(
                QStringLiteral(
                    "INSERT INTO lxrg VALUES(%1, '成都市区', '2021年5月', '工种%2', '%3', '备注')")
                    .arg(i)
                    .arg(i)
                    .arg(100 + i % 80));
        db.excuteSQL(QStringLiteral("COMMIT"));
    }
}

} // namespace

static void BM_LoadRates(benchmark::State& state)
{
    QTemporaryDir dir;
    makeStore(dir.path());
    SharedInterface::SetAppPath(dir.path());
    SporadicTableModel model;
    for (auto _ : state)
        model.Load(QStringLiteral("成都市区"), QStringLiteral("2021年5月"));
    state.counters["rows"] = model.rowCount();
}
BENCHMARK(BM_LoadRates)->Unit(benchmark::kMillisecond);

// Saving 100, 1,000 and 10,000 pending changes: each its own statement, committed on its own.
static void BM_SavePendingChanges(benchmark::State& state)
{
    const int changes = int(state.range(0));
    QTemporaryDir dir;
    makeStore(dir.path(), qMax(2000, changes));
    SharedInterface::SetAppPath(dir.path());
    InteractionSeam::setScripted(true);
    SporadicTableModel model;
    for (auto _ : state) {
        state.PauseTiming();
        model.Load(QStringLiteral("成都市区"), QStringLiteral("2021年5月"));
        for (int i = 0; i < changes; ++i)
            model.setData(model.index(i, 1), QString::number(120 + i % 9));
        state.ResumeTiming();
        model.slotSaveModifyRecord();
    }
    state.counters["changes"] = changes;
    state.SetComplexityN(changes);
}
BENCHMARK(BM_SavePendingChanges)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Complexity();

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.debug=false");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
