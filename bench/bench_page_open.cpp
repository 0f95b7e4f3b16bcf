// A bill page over 1,000 to 100,000 rows, a third of them with a height of their own: opening
// it on a node, switching it to another node and refreshing it (message 41, as after an undo),
// each with its first screen painted.
#include "BenchSupport.h"

#include "HostIds.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"

#include <QApplication>
#include <QPixmap>

#include <benchmark/benchmark.h>

namespace {

// A project of two unit projects (nodes 2 and 3) whose lists hold `rows` rows each.
int openProject(int rows)
{
    auto works = std::make_unique<ProjectWorks>(9, QStringLiteral("基准工程"));
    ProTreeNode* root =
        works->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准工程"));
    for (int node = 2; node <= 3; ++node) {
        works->AddNode(root, node, ProTreeNode::WorksNode, QStringLiteral("单位工程%1").arg(node));
        ZbrClGzfQdTable* table =
            works->ensureWorks(0, node)->getTenderInventory()->getZbrClGzfQdTable();
        for (int i = 0; i < rows; ++i) {
            BaseDataItem* item = table->CreateItem();
            item->loadState(1, false, i % 3 ? 0 : 28 + i % 5, QString());
            item->loadValue(1, i + 1);
            item->loadValue(3, QStringLiteral("电梯%1").arg(i));
            item->loadValue(5, QStringLiteral("台"));
            item->loadValue(7, 285000.0);
            item->loadValue(9, 2.0);
            item->loadValue(10, 570000.0);
            table->attach(table->count(), item);
        }
    }
    return DataManagement::getInstance()->AddProjectWorks(std::move(works));
}

QVariant nodePayload(int index, int id)
{
    return QVariant::fromValue(DataManagement::getInstance()->GetProTreeNodeByLocalId(index, id));
}

void paint(QWidget& page)
{
    QPixmap first = page.grab();
    benchmark::DoNotOptimize(first.cacheKey());
}

} // namespace

static void BM_OpenPage(benchmark::State& state)
{
    const int index = openProject(int(state.range(0)));
    QVariant node = nodePayload(index, 2);
    for (auto _ : state) {
        ZbrClGzfQdWidget page;
        page.resize(1200, 700);
        page.ProcMsg(MsgId::NodeClicked, &node);
        paint(page);
    }
    state.SetComplexityN(state.range(0));
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_OpenPage)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

static void BM_SwitchNode(benchmark::State& state)
{
    const int index = openProject(int(state.range(0)));
    QVariant nodes[] = {nodePayload(index, 2), nodePayload(index, 3)};
    ZbrClGzfQdWidget page;
    page.resize(1200, 700);
    page.ProcMsg(MsgId::NodeClicked, &nodes[0]);
    int next = 1;
    for (auto _ : state) {
        page.ProcMsg(MsgId::NodeClicked, &nodes[next]);
        paint(page);
        next = 1 - next;
    }
    state.SetComplexityN(state.range(0));
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_SwitchNode)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

static void BM_RefreshPage(benchmark::State& state)
{
    const int index = openProject(int(state.range(0)));
    QVariant node = nodePayload(index, 2);
    ZbrClGzfQdWidget page;
    page.resize(1200, 700);
    page.ProcMsg(MsgId::NodeClicked, &node);
    for (auto _ : state) {
        page.ProcMsg(MsgId::RefreshPages, nullptr);
        paint(page);
    }
    state.SetComplexityN(state.range(0));
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_RefreshPage)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
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
