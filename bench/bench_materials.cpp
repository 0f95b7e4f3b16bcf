// Summarising the materials of 500 unit projects x 2,000 lines (against a plain hash
// aggregation of the same records), and sorting 100,000 list rows by each key.
#include "BenchSupport.h"

#include "MaterialSummary.h"
#include "RURecordControl.h"
#include "ZbrClGzfQd/ZbrClGzfQdSjWidget.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"
#include "ZbrClGzfQdBusiness.h"

#include <QApplication>
#include <QHash>

#include <benchmark/benchmark.h>

namespace {

int bigProject(int units, int lines)
{
    auto project = std::make_unique<ProjectWorks>(5, QStringLiteral("基准汇总"));
    ProTreeNode* root =
        project->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准汇总"));
    project->ensureWorks(0, 1);
    for (int u = 0; u < units; ++u) {
        project->AddNode(root, u + 2, ProTreeNode::WorksNode, QStringLiteral("单位工程%1").arg(u));
        RcjHzTable* table = project->ensureWorks(0, u + 2)->getRcjHzTable();
        for (int i = 0; i < lines; ++i) {
            BaseDataItem* item = table->CreateItem();
            item->loadValue(3, QStringLiteral("材料%1").arg(i % 3000));
            item->loadValue(4, QStringLiteral("型号%1").arg(i % 7));
            item->loadValue(5, QStringLiteral("t"));
            item->loadValue(7, 100.0 + (i + u) % 5);
            item->loadValue(9, 1.5);
            item->loadValue(11, i % 9 == 0);
            item->loadValue(12, QStringLiteral("四川"));
            table->attach(table->count(), item);
        }
    }
    return DataManagement::getInstance()->AddProjectWorks(std::move(project));
}

} // namespace

static void BM_SummariseMaterials(benchmark::State& state)
{
    const int index = bigProject(500, 2000);
    ConstructionWorks* root =
        DataManagement::getInstance()->GetProjectWorksByIndex(index)->works(0, 1);
    for (auto _ : state)
        ZbrClGzfQdBusiness::HzSyClToZbrCl(root, nullptr);
    state.counters["rows"] = root->getTenderInventory()->getZbrClGzfQdTable()->count();
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_SummariseMaterials)->Unit(benchmark::kMillisecond)->Iterations(3);

static void BM_HashAggregationBaseline(benchmark::State& state)
{
    const int index = bigProject(500, 2000);
    ProjectWorks* project = DataManagement::getInstance()->GetProjectWorksByIndex(index);
    for (auto _ : state) {
        QHash<QString, double> quantities;
        for (ProTreeNode* unit : project->unitProjectNodes())
            for (const BaseDataItem* m :
                 project->works(0, ProTreeNode::Id(unit))->getRcjHzTable()->items())
                quantities[MaterialSummary::Key(m)] += m->getDouble(9);
        benchmark::DoNotOptimize(quantities.size());
    }
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_HashAggregationBaseline)->Unit(benchmark::kMillisecond)->Iterations(3);

static void BM_SortList(benchmark::State& state)
{
    auto project = makeProject(0);
    ZbrClGzfQdTable* table = project->works(0, 2)->getTenderInventory()->getZbrClGzfQdTable();
    const QStringList names = {QStringLiteral("钢筋"),       QStringLiteral("水泥"),
                               QStringLiteral("电梯"),       QStringLiteral("安全网"),
                               QStringLiteral("商品混凝土"), QStringLiteral("防水卷材"),
                               QStringLiteral("铝合金窗")};
    const int rows = qEnvironmentVariableIntValue("SORT_ROWS") > 0
                         ? qEnvironmentVariableIntValue("SORT_ROWS")
                         : 100000;
    for (int i = 0; i < rows; ++i) {
        BaseDataItem* item = table->CreateItem();
        item->loadState(1, false, 0, QString());
        item->loadValue(1, i + 1);
        item->loadValue(3, QString(names.at(i % names.size()) + QString::number(i % 977)));
        item->loadValue(7, double((i * 7919) % 10007));
        item->loadValue(9, double((i * 104729) % 1009));
        item->loadValue(10, double((i * 7919) % 10007) * double((i * 104729) % 1009));
        table->attach(table->count(), item);
    }
    const int index = DataManagement::getInstance()->AddProjectWorks(std::move(project));
    ProTreeNode* node = DataManagement::getInstance()->GetProTreeNodeByLocalId(index, 2);
    ZbrClGzfQdWidget page;
    QVariant payload = QVariant::fromValue(node);
    page.ProcMsg(74, &payload);
    auto* grid = static_cast<ZbrClGzfQdSjWidget*>(page.sjWidget());
    const auto key = ZbrClGzfQdSjWidget::SortKey(state.range(0));
    for (auto _ : state) {
        grid->Sort(key);
        state.PauseTiming();
        RURecordControl::GetInstance()->ForgetHistory();
        state.ResumeTiming();
    }
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_SortList)->DenseRange(0, 4)->Unit(benchmark::kMillisecond)->Iterations(3);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
