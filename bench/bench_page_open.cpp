// Opening a bill page over 10,000 rows and painting its first screen.
#include "BenchSupport.h"

#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"

#include <QApplication>
#include <QPixmap>

#include <benchmark/benchmark.h>

static void BM_OpenPage(benchmark::State& state)
{
    auto works = makeProject(0);
    ZbrClGzfQdTable* table = works->works(0, 2)->getTenderInventory()->getZbrClGzfQdTable();
    for (int i = 0; i < state.range(0); ++i) {
        BaseDataItem* item = table->CreateItem();
        item->loadState(1, false, 0, QString());
        item->loadValue(1, i + 1);
        item->loadValue(3, QStringLiteral("电梯%1").arg(i));
        item->loadValue(5, QStringLiteral("台"));
        item->loadValue(7, 285000.0);
        item->loadValue(9, 2.0);
        item->loadValue(10, 570000.0);
        table->attach(table->count(), item);
    }
    const int index = DataManagement::getInstance()->AddProjectWorks(std::move(works));
    ProTreeNode* node = DataManagement::getInstance()->GetProTreeNodeByLocalId(index, 2);
    for (auto _ : state) {
        ZbrClGzfQdWidget page;
        page.resize(1200, 700);
        QVariant payload = QVariant::fromValue(node);
        page.ProcMsg(74, &payload);
        QPixmap first = page.grab(); // paints the first screen
        benchmark::DoNotOptimize(first.cacheKey());
    }
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_OpenPage)->Arg(10000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
