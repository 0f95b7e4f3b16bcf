// Undo of one bulk change over 100,000 rows.
#include "BenchSupport.h"

#include "RURecordControl.h"

#include <QApplication>

#include <benchmark/benchmark.h>

static void BM_UndoBulkChange(benchmark::State& state)
{
    const int index =
        DataManagement::getInstance()->AddProjectWorks(makeProject(int(state.range(0))));
    GeneralTableBase* table =
        DataManagement::getInstance()->GetProjectWorksByIndex(index)->works(0, 2)->getRcjHzTable();
    RURecordControl* control = RURecordControl::GetInstance();
    for (auto _ : state) {
        state.PauseTiming();
        control->BeginRecord();
        for (BaseDataItem* item : table->items())
            item->setValue(7, item->getDouble(7) * 1.03);
        control->EndRecord(OperatingUIInfo(9, 0, 2, 201, 8, QStringLiteral("调价")));
        state.ResumeTiming();
        control->Undo();
    }
    control->ForgetHistory();
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_UndoBulkChange)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv); // the undo stack lives in QtWidgets
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
