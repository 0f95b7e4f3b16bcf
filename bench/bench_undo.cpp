// Undo and redo of the bulk commands of a materials list (clear, delete block, keep N, sort,
// summarise) at 1,000, 10,000 and 100,000 rows, with the page open on the list: what the
// user waits for is the data put back, the page refreshed (message 41) and repainted.
#include "BenchSupport.h"

#include "HostIds.h"
#include "MaterialGridRules.h"
#include "RURecordControl.h"
#include "ZbrClGzfQd/ZbrClGzfQdWidget.h"
#include "ZbrClGzfQdBusiness.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>

#include <ctime>

#include <benchmark/benchmark.h>

namespace {

enum Command { ClearAll, DeleteBlock, KeepN, SortByAmount, Summarise };

// A project of ten unit projects. The list of unit project 2 holds `rows` materials and its
// total row; each unit project's materials add up to `rows` distinct materials for the
// summary of the whole project.
int openProject(int rows)
{
    auto project = std::make_unique<ProjectWorks>(9, QStringLiteral("基准工程"));
    ProTreeNode* root =
        project->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准工程"));
    project->ensureWorks(0, 1);
    for (int u = 0; u < 10; ++u) {
        project->AddNode(root, 2 + u, ProTreeNode::WorksNode, QStringLiteral("单位工程%1").arg(u));
        RcjHzTable* lines = project->ensureWorks(0, 2 + u)->getRcjHzTable();
        for (int i = u; i < rows; i += 10) {
            BaseDataItem* item = lines->CreateItem();
            item->loadValue(3, QStringLiteral("材料%1").arg(i));
            item->loadValue(4, QStringLiteral("型号%1").arg(i % 7));
            item->loadValue(5, QStringLiteral("t"));
            item->loadValue(7, 100.0 + i % 5);
            item->loadValue(9, 1.5);
            item->loadValue(11, true);
            lines->attach(lines->count(), item);
        }
    }
    ZbrClGzfQdTable* list = project->works(0, 2)->getTenderInventory()->getZbrClGzfQdTable();
    for (int i = 0; i <= rows; ++i) {
        BaseDataItem* item = list->CreateItem();
        item->loadState(i < rows ? 1 : 2, i >= rows / 4 && i < rows * 3 / 4, i % 3 ? 0 : 30,
                        QString());
        item->loadValue(1, i + 1);
        item->loadValue(3, QStringLiteral("材料%1").arg(i));
        item->loadValue(7, double((i * 7919) % 10007));
        item->loadValue(9, 2.0);
        item->loadValue(10, double((i * 7919) % 10007) * 2.0);
        list->attach(list->count(), item);
    }
    return DataManagement::getInstance()->AddProjectWorks(std::move(project));
}

void run(Command command, GeneralTableBase* list, ConstructionWorks* root)
{
    switch (command) {
    case ClearAll:
        MaterialGridRules::clearAllRows(list);
        break;
    case DeleteBlock: {
        const QList<int> rows = MaterialGridRules::blockRows(list);
        for (auto it = rows.crbegin(); it != rows.crend(); ++it)
            list->BaseDataItemRemoveAt(*it);
        break;
    }
    case KeepN:
        MaterialGridRules::keepFirstRows(list, list->count() / 10);
        break;
    case SortByAmount:
        list->SetItemOrder(
            MaterialGridRules::sortedOrder(list->items(), MaterialGridRules::ByAmount));
        break;
    case Summarise:
        ZbrClGzfQdBusiness::HzSyClToZbrCl(root, nullptr);
        break;
    }
}

void undoRedo(benchmark::State& state, Command command)
{
    const int rows = int(state.range(0));
    const int index = openProject(rows);
    ProjectWorks* project = DataManagement::getInstance()->GetProjectWorksByIndex(index);
    ConstructionWorks* root = project->works(0, 1);
    const int shown = command == Summarise ? 1 : 2;
    GeneralTableBase* list = project->works(0, shown)->getTenderInventory()->getZbrClGzfQdTable();
    ZbrClGzfQdWidget page;
    page.resize(1200, 700);
    QVariant node =
        QVariant::fromValue(DataManagement::getInstance()->GetProTreeNodeByLocalId(index, shown));
    page.ProcMsg(MsgId::NodeClicked, &node);
    RURecordControl* control = RURecordControl::GetInstance();
    control->BeginRecord();
    run(command, list, root);
    control->EndRecord(
        OperatingUIInfo(9, 0, shown, ZbrClGzfQdTable::Type, 8, QStringLiteral("批量")));
    // One step back or forth as the user sees it: the data, the page refreshed and painted.
    // Wall and CPU time of this thread are both kept, per step.
    struct Times
    {
        double wall = 0;
        double cpu = 0;
    };
    auto cpuNow = [] {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
    };
    auto step = [&](bool undo) {
        QElapsedTimer clock;
        clock.start();
        const double cpu = cpuNow();
        undo ? control->Undo() : control->Redo();
        page.ProcMsg(MsgId::RefreshPages, nullptr);
        benchmark::DoNotOptimize(page.grab().cacheKey());
        return Times{double(clock.nsecsElapsed()) / 1e6, cpuNow() - cpu};
    };
    Times undone;
    Times redone;
    for (auto _ : state) {
        const Times u = step(true);
        const Times r = step(false);
        undone.wall += u.wall;
        undone.cpu += u.cpu;
        redone.wall += r.wall;
        redone.cpu += r.cpu;
        state.SetIterationTime((u.wall + r.wall) / 2e3);
    }
    const auto mean = benchmark::Counter::kAvgIterations;
    state.counters["undo_ms"] = benchmark::Counter(undone.wall, mean);
    state.counters["redo_ms"] = benchmark::Counter(redone.wall, mean);
    state.counters["undo_cpu_ms"] = benchmark::Counter(undone.cpu, mean);
    state.counters["redo_cpu_ms"] = benchmark::Counter(redone.cpu, mean);
    state.SetComplexityN(rows);
    control->ForgetHistory();
    DataManagement::getInstance()->CloseProjectWorks(index);
}

} // namespace

// Reported time: the mean wall time of one undo and one redo, each with refresh and repaint;
// the CPU column is one undo and one redo together. The counters give each step alone.
#define UNDO_BENCH(name, command)                                                                  \
    static void name(benchmark::State& state)                                                      \
    {                                                                                              \
        undoRedo(state, command);                                                                  \
    }                                                                                              \
    BENCHMARK(name)                                                                                \
        ->RangeMultiplier(10)                                                                      \
        ->Range(1000, 100000)                                                                      \
        ->UseManualTime()                                                                          \
        ->Iterations(3)                                                                            \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->Complexity();

UNDO_BENCH(BM_UndoClearAll, ClearAll)
UNDO_BENCH(BM_UndoDeleteBlock, DeleteBlock)
UNDO_BENCH(BM_UndoKeepN, KeepN)
UNDO_BENCH(BM_UndoSortByAmount, SortByAmount)
UNDO_BENCH(BM_UndoSummarise, Summarise)

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.debug=false");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
