// One edit on a unit project and the recalculation that follows it (every table, in dependency
// order, in one undo record): what the user waits for after typing an amount.
#include "BenchSupport.h"

#include "FyBlBusiness.h"
#include "GfQdBusiness.h"
#include "OperatingUIInfo.h"
#include "QtXmQdJJjbBusiness.h"
#include "RURecordControl.h"
#include "UnitProjectCalc.h"

#include <benchmark/benchmark.h>

namespace {

BaseDataItem* append(GeneralTableBase* table, int kind,
                     std::initializer_list<std::pair<int, QVariant>> fields)
{
    BaseDataItem* item = table->CreateItem();
    item->loadState(kind, false, 0, QString());
    for (const auto& f : fields)
        item->loadValue(f.first, f.second);
    table->attach(table->count(), item);
    return item;
}

// A unit project with `rows` rows across its tables: a tenth each on the other items, fees and
// daywork lists, the rest on the two materials lists; one calculation row in ten, fee rows over
// the labour figure, tax rows over the whole chain.
void fillUnit(ConstructionWorks* works, int rows)
{
    FyBlBusiness* fyBl = FyBlBusiness::GetInstance();
    fyBl->setValue(works, QStringLiteral("分部分项工程费"), 8650000);
    fyBl->setValue(works, QStringLiteral("措施项目费"), 1038000);
    fyBl->setValue(works, QStringLiteral("分部分项人工费"), 1903000);
    TenderInventory* inv = works->getTenderInventory();
    QtXmQdHzTable* other = inv->getQtXmQdHzTable();
    append(other, 0, {{1, QStringLiteral("1")}, {2, QStringLiteral("暂列金额")}, {3, 432500.0}});
    for (int i = 1; i < rows / 10; ++i) {
        if (i % 10 == 0)
            append(
                other, 3,
                {{1, QString::number(i + 1)},
                 {2, QStringLiteral("服务费%1").arg(i)},
                 {3,
                  QStringLiteral("其他项目暂列金额*0.0%1+分部分项工程费*0.001").arg(i % 9 + 1)}});
        else
            append(other, 0,
                   {{1, QString::number(i + 1)},
                    {2, QStringLiteral("项目%1").arg(i)},
                    {3, 1000.0 + i}});
    }
    QtXmQdJJjbBusiness::AddTotalItem(other);
    GfSjQdTable* fees = inv->getGfSjQdTable();
    for (int i = 0; i < rows / 10 - 1; ++i)
        append(fees, 0,
               {{2, QStringLiteral("规费%1").arg(i)},
                {3, QStringLiteral("分部分项人工费")},
                {4, 0.1 + (i % 50) / 100.0}});
    append(fees, 2,
           {{2, QStringLiteral("税金")},
            {3, QStringLiteral("分部分项工程费+措施项目费+其他项目合计+规费合计")},
            {4, 9.0}});
    GeneralTableBase* daywork = inv->getLxGzXmRgDjQdTable();
    for (int i = 0; i < rows / 10; ++i)
        append(daywork, 0, {{2, QStringLiteral("工种%1").arg(i)}, {4, 120.0 + i % 40}, {6, 10.0}});
    const int materials = rows - 3 * (rows / 10);
    for (GeneralTableBase* list : {static_cast<GeneralTableBase*>(inv->getZbrClGzfQdTable()),
                                   static_cast<GeneralTableBase*>(inv->getZgjClHzTable())}) {
        for (int i = 0; i < materials / 2; ++i)
            append(list, 1, {{3, QStringLiteral("材料%1").arg(i)}, {7, 100.0 + i % 300}, {9, 2.5}});
        append(list, 2, {{3, QStringLiteral("合计")}});
    }
    UnitProjectCalc::Recalculate(works);
}

// The project: the unit project edited (node 2, `rows` rows) and `others` more unit projects
// of 500 rows each.
int openProject(int rows, int others)
{
    auto project = std::make_unique<ProjectWorks>(9, QStringLiteral("基准工程"));
    ProTreeNode* root =
        project->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准工程"));
    for (int u = 0; u <= others; ++u) {
        project->AddNode(root, 2 + u, ProTreeNode::WorksNode, QStringLiteral("单位工程%1").arg(u));
        fillUnit(project->ensureWorks(0, 2 + u), u == 0 ? rows : 500);
    }
    return DataManagement::getInstance()->AddProjectWorks(std::move(project));
}

void editAndRecalculate(benchmark::State& state, int rows, int others)
{
    const int index = openProject(rows, others);
    ConstructionWorks* works =
        DataManagement::getInstance()->GetProjectWorksByIndex(index)->works(0, 2);
    QtXmQdHzTable* other = works->getTenderInventory()->getQtXmQdHzTable();
    RURecordControl* undo = RURecordControl::GetInstance();
    double amount = 432500;
    for (auto _ : state) {
        undo->BeginRecord();
        QtXmQdJJjbBusiness::ProcColunmValueChanged(works, other, 0, 3, QVariant(amount += 100));
        undo->EndRecord(
            OperatingUIInfo(9, 0, 2, QtXmQdHzTable::Type, 8, QStringLiteral("修改其他项目清单行")));
    }
    state.counters["rows"] = rows;
    state.counters["unit projects"] = others + 1;
    undo->ForgetHistory();
    DataManagement::getInstance()->CloseProjectWorks(index);
}

} // namespace

// Growth with the rows of the unit project edited.
static void BM_EditUnitProject(benchmark::State& state)
{
    editAndRecalculate(state, int(state.range(0)), 0);
}
BENCHMARK(BM_EditUnitProject)->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

// A 5,000-row unit project edited in projects of 1, 10 and 100 unit projects: the rest of the
// project is not touched.
static void BM_EditInLargerProject(benchmark::State& state)
{
    editAndRecalculate(state, 5000, int(state.range(0)));
}
BENCHMARK(BM_EditInLargerProject)->Arg(0)->Arg(9)->Arg(99)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
