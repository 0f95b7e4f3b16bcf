// Matching the tender's provisional list (four materials per unit project: two spelled as in
// the bid, one spelled otherwise, one the bid lacks) over 5, 50 and 500 unit projects x 2,000
// bid lines, against a plain hash join of the same keys in the same run; and applying the
// result to every unit project inside one undo record: time and the record's size.
#include "BenchSupport.h"

#include "DbZbZgClItem.h"
#include "MaterialMatcher.h"
#include "RURecordControl.h"
#include "ZgClQdBusiness.h"

#include <QHash>
#include <QUndoStack>

#include <benchmark/benchmark.h>

namespace {

constexpr int kLines = 2000;

QString modelOf(int i)
{
    return QStringLiteral("HRB400 Φ%1").arg(6 + i % 7);
}

ZgjClHzItem* tender(const QString& code, const QString& name, const QString& model, double price)
{
    auto* item = new ZgjClHzItem;
    item->loadValue(2, code);
    item->loadValue(3, name);
    item->loadValue(4, model);
    item->loadValue(5, QStringLiteral("t"));
    item->loadValue(7, price);
    return item;
}

int bigProject(int units)
{
    auto project = std::make_unique<ProjectWorks>(6, QStringLiteral("基准对应"));
    ProTreeNode* root =
        project->AddNode(nullptr, 1, ProTreeNode::WorksNode, QStringLiteral("基准对应"));
    project->ensureWorks(0, 1);
    ProjectWorks::ZbZgClMap map;
    for (int u = 0; u < units; ++u) {
        const int id = u + 2;
        project->AddNode(root, id, ProTreeNode::WorksNode, QStringLiteral("单位工程%1").arg(u));
        RcjHzTable* table = project->ensureWorks(0, id)->getRcjHzTable();
        for (int i = 0; i < kLines; ++i) {
            BaseDataItem* item = table->CreateItem();
            item->loadValue(3, QStringLiteral("材料%1").arg(i % 3000));
            item->loadValue(4, modelOf(i));
            item->loadValue(5, QStringLiteral("t"));
            item->loadValue(6, 100.0);
            item->loadValue(7, 100.0 + (i + u) % 5);
            item->loadValue(9, 1.5);
            item->loadValue(11, (i + u % 2) % 9 == 0);
            table->attach(table->count(), item);
        }
        const int a = u % kLines, b = (u + 500) % kLines, c = (u + 1000) % kLines;
        map.insert(
            {-1, id},
            {tender(QStringLiteral("A%1").arg(u), QStringLiteral("材料%1").arg(a), modelOf(a), 120),
             tender(QStringLiteral("B%1").arg(u), QStringLiteral("材料%1").arg(b), modelOf(b), 120),
             tender(QStringLiteral("C%1").arg(u), QStringLiteral("材料%1").arg(c),
                    modelOf(c).toLower().replace(QChar(0x03A6), QChar(0x03C6)), 120),
             tender(QStringLiteral("D%1").arg(u), QStringLiteral("不存在材料%1").arg(u), QString(),
                    120)});
    }
    const int index = DataManagement::getInstance()->AddProjectWorks(std::move(project));
    ProjectWorks* added = DataManagement::getInstance()->GetProjectWorksByIndex(index);
    ProjectWorks::ZbZgClMap keyed;
    for (auto it = map.begin(); it != map.end(); ++it)
        keyed.insert({index, it.key().second}, it.value());
    added->SetGcZbZgCl(6, keyed);
    return index;
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

static void BM_FirstMatching(benchmark::State& state)
{
    Fixture f(int(state.range(0)));
    int matched = 0, unmatched = 0;
    for (auto _ : state) {
        QList<DbZbZgClItem*> records;
        ZgClQdBusiness::TbClMap tbCl;
        ZgClQdBusiness::DwMap dwMap;
        ZgClQdBusiness::InitMatchZbZgCl(f.root, records, tbCl, dwMap, nullptr);
        state.PauseTiming();
        ZgClQdBusiness::CountZbZgCl(records, matched, unmatched);
        qDeleteAll(records);
        state.ResumeTiming();
    }
    state.counters["bidLines"] = double(state.range(0)) * kLines;
    state.counters["matched"] = matched;
    state.counters["unmatched"] = unmatched;
}
BENCHMARK(BM_FirstMatching)
    ->Arg(5)
    ->Arg(50)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

// What any matching must at least do: per unit project, the tender keys in a hash and every
// bid line's key looked up in it.
static void BM_MatchingHashJoinBaseline(benchmark::State& state)
{
    Fixture f(int(state.range(0)));
    for (auto _ : state) {
        int hits = 0;
        for (ProTreeNode* unit : f.project->unitProjectNodes()) {
            const int id = ProTreeNode::Id(unit);
            QList<ZgjClHzItem*> materials;
            f.project->GetDwZbZgCl({f.index, id}, materials);
            QHash<MaterialMatcher::Key, int> tenders;
            for (int i = 0; i < materials.size(); ++i)
                tenders.insert({materials.at(i)->getValue(3).toString(),
                                materials.at(i)->getValue(4).toString(),
                                materials.at(i)->getValue(5).toString()},
                               i);
            for (const BaseDataItem* line : f.project->works(0, id)->getRcjHzTable()->items())
                hits +=
                    tenders.contains({line->getValue(3).toString(), line->getValue(4).toString(),
                                      line->getValue(5).toString()});
        }
        benchmark::DoNotOptimize(hits);
    }
}
BENCHMARK(BM_MatchingHashJoinBaseline)
    ->Arg(5)
    ->Arg(50)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

// Applying with every option and rebuilding the list, as one undo record; the record is
// undone after each run. "changedFields" counts the unit projects' field changes the record
// journals (the rebuilt list comes on top).
static void BM_ApplyMatching(benchmark::State& state)
{
    Fixture f(int(state.range(0)));
    QList<DbZbZgClItem*> records;
    ZgClQdBusiness::TbClMap tbCl;
    ZgClQdBusiness::DwMap dwMap;
    ZgClQdBusiness::InitMatchZbZgCl(f.root, records, tbCl, dwMap, nullptr);
    RURecordControl* undo = RURecordControl::GetInstance();
    int changed = 0;
    for (auto _ : state) {
        state.PauseTiming();
        QVector<QVariant> before;
        for (const auto& lines : std::as_const(tbCl))
            for (const BaseDataItem* line : lines)
                before << line->getValue(7) << line->getValue(11) << line->getValue(18);
        state.ResumeTiming();
        {
            RURecordControl::Scope scope;
            ZgClQdBusiness::ApplyZbZgClModifyToProject(dwMap, records, tbCl, true, true, true,
                                                       nullptr, 50);
            ZgClQdBusiness::ClearBCzDyClBj(f.root);
            ZgClQdBusiness::RegenerateZgjClHzb(f.root, nullptr, 50, 50);
            scope.commit(OperatingUIInfo(6, 0, 1, 0, 10, QStringLiteral("对应整理投标暂估材料")));
        }
        state.PauseTiming();
        changed = 0;
        int k = 0;
        for (const auto& lines : std::as_const(tbCl))
            for (const BaseDataItem* line : lines) {
                changed += line->getValue(7) != before.at(k) ? 2 : 0; // price and amount
                changed += line->getValue(11) != before.at(k + 1);
                changed += line->getValue(18) != before.at(k + 2);
                k += 3;
            }
        undo->Undo();
        undo->ForgetHistory();
        state.ResumeTiming();
    }
    qDeleteAll(records);
    state.counters["changedFields"] = changed;
}
BENCHMARK(BM_ApplyMatching)
    ->Arg(5)
    ->Arg(50)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

BENCHMARK_MAIN();
