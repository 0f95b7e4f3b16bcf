// Summarising the materials of 500 unit projects x 2,000 lines (against a plain hash
// aggregation of the same records); sorting list rows by each key; one cell edit.
#include "BenchSupport.h"

#include "MaterialSummary.h"
#include "RURecordControl.h"
#include "ZbrClGzfQd/ZbrClGzfQdSjWidget.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"
#include "ZbrClGzfQdBusiness.h"
#include "common/BillModel.h"
#include "zTableView.h"

#include <QApplication>
#include <QHash>
#include <QPixmap>

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

namespace {

// A project whose tenderer-purchased list holds `rows` materials and its total row, with a
// page open on it.
struct OpenList
{
    explicit OpenList(int rows, bool middleBlock = false)
    {
        auto project = makeProject(0);
        table = project->works(0, 2)->getTenderInventory()->getZbrClGzfQdTable();
        const QStringList names = {QStringLiteral("钢筋"),       QStringLiteral("水泥"),
                                   QStringLiteral("电梯"),       QStringLiteral("安全网"),
                                   QStringLiteral("商品混凝土"), QStringLiteral("防水卷材"),
                                   QStringLiteral("铝合金窗")};
        for (int i = 0; i <= rows; ++i) {
            BaseDataItem* item = table->CreateItem();
            item->loadState(i < rows ? 1 : 2, middleBlock && i >= rows / 4 && i < rows * 3 / 4, 0,
                            QString());
            item->loadValue(1, i + 1);
            item->loadValue(3, QString(names.at(i % names.size()) + QString::number(i % 977)));
            item->loadValue(7, double((i * 7919) % 10007));
            item->loadValue(9, double((i * 104729) % 1009));
            item->loadValue(10, double((i * 7919) % 10007) * double((i * 104729) % 1009));
            table->attach(table->count(), item);
        }
        index = DataManagement::getInstance()->AddProjectWorks(std::move(project));
        page.resize(1200, 700);
        QVariant node =
            QVariant::fromValue(DataManagement::getInstance()->GetProTreeNodeByLocalId(index, 2));
        page.ProcMsg(74, &node);
        grid = static_cast<ZbrClGzfQdSjWidget*>(page.sjWidget());
    }
    ~OpenList()
    {
        RURecordControl::GetInstance()->ForgetHistory();
        DataManagement::getInstance()->CloseProjectWorks(index);
    }
    ZbrClGzfQdTable* table = nullptr;
    int index = -1;
    ZbrClGzfQdWidget page;
    ZbrClGzfQdSjWidget* grid = nullptr;
};

} // namespace

// Sorting by amount (0), quantity (1), price (2), name (3), serial (4) at 1,000 to 100,000 rows.
static void BM_SortList(benchmark::State& state)
{
    OpenList list(int(state.range(1)));
    const auto key = ZbrClGzfQdSjWidget::SortKey(state.range(0));
    for (auto _ : state) {
        list.grid->Sort(key);
        state.PauseTiming();
        RURecordControl::GetInstance()->ForgetHistory();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(1));
}
BENCHMARK(BM_SortList)
    ->ArgsProduct({{0, 1, 2, 3, 4}, {1000, 10000, 100000}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

// One price typed into a list of 1,000 to 100,000 rows: the edit, the list and the unit
// project recalculated, the page repainted.
static void BM_EditCell(benchmark::State& state)
{
    OpenList list(int(state.range(0)));
    BillModel* model = list.grid->model();
    const int column = list.grid->view()->columnOfField(7);
    const QModelIndex cell = model->index(int(state.range(0)) / 2, column);
    int price = 100;
    for (auto _ : state) {
        model->setData(cell, QString::number(++price), Qt::EditRole);
        benchmark::DoNotOptimize(list.page.grab().cacheKey());
        state.PauseTiming();
        RURecordControl::GetInstance()->ForgetHistory();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_EditCell)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

// The same edit on a page that is shown: what the user waits for is the edit and the
// repaint of what it made dirty (the edited row and the total row), as the event loop
// paints it, not a picture of the whole page.
static void BM_EditCellShown(benchmark::State& state)
{
    OpenList list(int(state.range(0)));
    list.page.show();
    QApplication::processEvents();
    BillModel* model = list.grid->model();
    const int column = list.grid->view()->columnOfField(7);
    const int row = int(state.range(0)) / 2;
    list.grid->view()->scrollTo(model->index(row, column));
    QApplication::processEvents();
    const QModelIndex cell = model->index(row, column);
    int price = 100;
    for (auto _ : state) {
        model->setData(cell, QString::number(++price), Qt::EditRole);
        QApplication::processEvents();
        state.PauseTiming();
        RURecordControl::GetInstance()->ForgetHistory();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_EditCellShown)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

// "删除定义块内所有行" over the middle half of a list of 1,000 to 100,000 rows: the rows
// removed, the unit project recalculated, the page repainted. Undone between runs.
static void BM_DeleteBlock(benchmark::State& state)
{
    OpenList list(int(state.range(0)), true);
    for (auto _ : state) {
        list.grid->DeleteBlockRows();
        benchmark::DoNotOptimize(list.page.grab().cacheKey());
        state.PauseTiming();
        RURecordControl::GetInstance()->Undo();
        RURecordControl::GetInstance()->ForgetHistory();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_DeleteBlock)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Complexity();

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
