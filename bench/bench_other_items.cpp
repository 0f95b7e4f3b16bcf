// Recalculating an other-items list after one edit, and evaluating formulas over fee variables.
#include "BenchSupport.h"

#include "FyBlBusiness.h"
#include "QtXmQdJJjbBusiness.h"
#include "VXParseAlg.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

static void BM_RecalculateOtherItems(benchmark::State& state)
{
    const int index = DataManagement::getInstance()->AddProjectWorks(makeProject(0));
    ConstructionWorks* works =
        DataManagement::getInstance()->GetProjectWorksByIndex(index)->works(0, 2);
    for (int v = 0; v < 200; ++v)
        FyBlBusiness::GetInstance()->setValue(works, QStringLiteral("费用变量%1").arg(v),
                                              1000.0 + v);
    QtXmQdHzTable* table = works->getTenderInventory()->getQtXmQdHzTable();
    for (int i = 0; i < 2000; ++i) {
        BaseDataItem* item = table->CreateItem();
        const bool calculation = i % 10 == 0; // 200 calculation rows
        item->loadState(calculation ? 3 : 0, false, 0, QString());
        item->loadValue(1, QString::number(i + 1));
        item->loadValue(2, QStringLiteral("项目%1").arg(i));
        item->loadValue(
            3,
            calculation
                ? QVariant(
                      QStringLiteral("费用变量%1*0.015+费用变量%2").arg(i % 200).arg((i + 7) % 200))
                : QVariant(100.0 + i));
        table->attach(table->count(), item);
    }
    QtXmQdJJjbBusiness::AddTotalItem(table);
    double value = 1;
    for (auto _ : state)
        QtXmQdJJjbBusiness::ProcColunmValueChanged(works, table, 1, 3, QVariant(value += 1));
    DataManagement::getInstance()->CloseProjectWorks(index);
}
BENCHMARK(BM_RecalculateOtherItems)->Unit(benchmark::kMillisecond);

static void BM_EvaluateFormulas(benchmark::State& state)
{
    QHash<QString, double> vars;
    for (int v = 0; v < 200; ++v)
        vars.insert(QStringLiteral("措施项目费用变量%1").arg(v), 1000.0 + v);
    QStringList formulas;
    for (int i = 0; i < 10000; ++i)
        formulas << QStringLiteral("(措施项目费用变量%1+措施项目费用变量%2)*0.0%3")
                        .arg(i % 200)
                        .arg((i * 7) % 200)
                        .arg(i % 9 + 1);
    for (auto _ : state) {
        double sum = 0;
        for (const QString& formula : formulas) {
            double result = 0;
            QString error;
            VXParseAlg::getInstance()->ExpCalc(formula, vars, result, error);
            sum += result;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.counters["formulas"] = 10000;
}
BENCHMARK(BM_EvaluateFormulas)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
