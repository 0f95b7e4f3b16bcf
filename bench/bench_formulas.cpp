// Evaluating fee formulas over 200 fee variables, as a recalculation does: 1,000, 10,000 and
// 100,000 formulas (a project's rows share a thousand distinct texts), the variables taking new
// values on every pass; and the first evaluation of a thousand texts never seen (parsing).
#include "VXParseAlg.h"

#include <QHash>
#include <QStringList>

#include <benchmark/benchmark.h>

namespace {

QStringList variableNames()
{
    QStringList names;
    for (int v = 0; v < 200; ++v)
        names << QStringLiteral("费用变量%1").arg(v);
    return names;
}

QString formula(const QStringList& names, int i)
{
    return QStringLiteral("%1*%2/100+(%3-%4)*0.0%5")
        .arg(names.at(i % 200), QString::number(1 + i % 17), names.at((i * 7) % 200),
             names.at((i * 13) % 200))
        .arg(i % 9 + 1);
}

QHash<QString, double> values(const QStringList& names, int pass)
{
    QHash<QString, double> vars;
    for (int v = 0; v < names.size(); ++v)
        vars.insert(names.at(v), 1000.0 * v + pass);
    return vars;
}

} // namespace

static void BM_EvaluateFormulas(benchmark::State& state)
{
    const QStringList names = variableNames();
    QStringList formulas;
    for (int i = 0; i < state.range(0); ++i)
        formulas << formula(names, i % 1000);
    VXParseAlg* alg = VXParseAlg::getInstance();
    int pass = 0;
    for (auto _ : state) {
        const QHash<QString, double> vars = values(names, ++pass);
        double sum = 0;
        for (const QString& text : formulas) {
            double result = 0;
            QString error;
            alg->ExpCalc(text, vars, result, error);
            sum += result;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_EvaluateFormulas)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

// A thousand texts never evaluated before: what the first recalculation after opening pays.
static void BM_FirstEvaluation(benchmark::State& state)
{
    const QStringList names = variableNames();
    const QHash<QString, double> vars = values(names, 1);
    VXParseAlg* alg = VXParseAlg::getInstance();
    int pass = 0;
    for (auto _ : state) {
        state.PauseTiming();
        QStringList formulas;
        ++pass;
        for (int i = 0; i < 1000; ++i)
            formulas << formula(names, i) + QStringLiteral("+0*%1").arg(pass);
        state.ResumeTiming();
        for (const QString& text : formulas) {
            double result = 0;
            QString error;
            alg->ExpCalc(text, vars, result, error);
            benchmark::DoNotOptimize(result);
        }
    }
}
BENCHMARK(BM_FirstEvaluation)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
