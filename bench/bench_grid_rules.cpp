// The materials grids' rules at 10,000, 100,000 and 1,000,000 rows: the sort orders (with
// collation keys computed once per row) and keeping the first 30 rows.
#include "MaterialGridRules.h"
#include "ZbrClGzfQdTable.h"

#include <QCoreApplication>
#include <QStringList>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

void fill(ZbrClGzfQdTable& table, int rows)
{
    const QStringList names = {QStringLiteral("钢筋"),       QStringLiteral("水泥"),
                               QStringLiteral("电梯"),       QStringLiteral("安全网"),
                               QStringLiteral("商品混凝土"), QStringLiteral("防水卷材"),
                               QStringLiteral("铝合金窗")};
    for (int i = 0; i < rows; ++i) {
        BaseDataItem* item = table.CreateItem();
        item->loadState(1, false, 0, QString());
        item->loadValue(1, i + 1);
        item->loadValue(3, QString(names.at(i % names.size()) + QString::number(i % 977)));
        item->loadValue(7, double((i * 7919) % 10007));
        item->loadValue(9, double((i * 104729) % 1009));
        item->loadValue(10, double((i * 7919) % 10007) * double((i * 104729) % 1009));
        table.attach(table.count(), item);
    }
}

} // namespace

static void BM_SortOrder(benchmark::State& state)
{
    ZbrClGzfQdTable table;
    fill(table, int(state.range(1)));
    const auto key = MaterialGridRules::SortKey(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(MaterialGridRules::sortedOrder(table.items(), key));
    state.SetComplexityN(state.range(1));
}
BENCHMARK(BM_SortOrder)
    ->ArgsProduct({{MaterialGridRules::ByAmount, MaterialGridRules::ByName},
                   {10000, 100000, 1000000}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

static void BM_KeepFirst30(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto table = std::make_unique<ZbrClGzfQdTable>();
        fill(*table, int(state.range(0)));
        state.ResumeTiming();
        MaterialGridRules::keepFirstRows(table.get(), 30);
        state.PauseTiming();
        table.reset(); // the remaining rows are freed outside the measurement
        state.ResumeTiming();
    }
}
BENCHMARK(BM_KeepFirst30)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
