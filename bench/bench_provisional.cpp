// Summarising the provisional-price materials of 5, 50 and 500 unit projects x 2,000 lines
// into the project's list, and refreshing the list, each against a plain hash aggregation of
// the same records measured in the same run.
#include "BenchSupport.h"

#include "MaterialSummary.h"
#include "ZgClQdBusiness.h"

#include <QHash>

#include <benchmark/benchmark.h>

namespace {

constexpr int kLines = 2000;

// Every ninth line provisional; prices, origins and provisional flags differ between units.
int bigProject(int units)
{
    auto project = std::make_unique<ProjectWorks>(6, QStringLiteral("基准暂估"));
    ProTreeNode* root =
        project->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准暂估"));
    project->ensureWorks(0, 1);
    for (int u = 0; u < units; ++u) {
        project->AddNode(root, u + 2, ProTreeNode::WorksNode, QStringLiteral("单位工程%1").arg(u));
        RcjHzTable* table = project->ensureWorks(0, u + 2)->getRcjHzTable();
        for (int i = 0; i < kLines; ++i) {
            BaseDataItem* item = table->CreateItem();
            item->loadValue(3, QStringLiteral("材料%1").arg(i % 3000));
            item->loadValue(4, QStringLiteral("型号%1").arg(i % 7));
            item->loadValue(5, QStringLiteral("t"));
            item->loadValue(6, 100.0);
            item->loadValue(7, 100.0 + (i + u) % 5);
            item->loadValue(9, 1.5);
            item->loadValue(11, (i + u % 2) % 9 == 0);
            item->loadValue(12, u % 7 == 0 ? QStringLiteral("重庆") : QStringLiteral("四川"));
            table->attach(table->count(), item);
        }
    }
    return DataManagement::getInstance()->AddProjectWorks(std::move(project));
}

struct Fixture
{
    explicit Fixture(int units) : index(bigProject(units))
    {
        project = DataManagement::getInstance()->GetProjectWorksByIndex(index);
        root = project->works(0, 1);
    }
    ~Fixture() { DataManagement::getInstance()->CloseProjectWorks(index); }
    int index;
    ProjectWorks* project;
    ConstructionWorks* root;
};

} // namespace

static void BM_ProvisionalSummary(benchmark::State& state)
{
    Fixture f(int(state.range(0)));
    for (auto _ : state)
        ZgClQdBusiness::RegenerateZgjClHzb(f.root, nullptr, 100, 0);
    state.counters["lines"] = double(state.range(0)) * kLines;
    state.counters["rows"] = f.root->getTenderInventory()->getZgjClHzTable()->count();
}
BENCHMARK(BM_ProvisionalSummary)
    ->Arg(5)
    ->Arg(50)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

static void BM_ProvisionalRefresh(benchmark::State& state)
{
    Fixture f(int(state.range(0)));
    ZgClQdBusiness::RegenerateZgjClHzb(f.root, nullptr, 100, 0);
    for (auto _ : state)
        ZgClQdBusiness::UpdateZgjClHzbSLAndTJ(f.root, nullptr);
    state.counters["lines"] = double(state.range(0)) * kLines;
}
BENCHMARK(BM_ProvisionalRefresh)
    ->Arg(5)
    ->Arg(50)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

// What any summary must at least do: read every line's identity and quantity into a hash.
static void BM_ProvisionalHashBaseline(benchmark::State& state)
{
    Fixture f(int(state.range(0)));
    for (auto _ : state) {
        QHash<QString, double> quantities;
        for (ProTreeNode* unit : f.project->unitProjectNodes())
            for (const BaseDataItem* m :
                 f.project->works(0, ProTreeNode::Id(unit))->getRcjHzTable()->items())
                quantities[MaterialSummary::Key(m)] += m->getDouble(9);
        benchmark::DoNotOptimize(quantities.size());
    }
}
BENCHMARK(BM_ProvisionalHashBaseline)
    ->Arg(5)
    ->Arg(50)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

BENCHMARK_MAIN();
