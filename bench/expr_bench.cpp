// clsEquation beside muparser on the same formulas: re-solving after X changes, one call over
// an array of X values, and parsing plus solving a new formula. Prints the ratios at the end.
#include <benchmark/benchmark.h>
#include <muParser.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>

#include "expr/equation.h"
#include "expr_formulas.h"

namespace quillet::bench {
namespace {

constexpr std::size_t kXCount = 64;  // X values visited in turn, so nothing is cached

std::array<double, kXCount> XValues(double around) {
    std::array<double, kXCount> xs{};
    for (std::size_t i = 0; i < kXCount; ++i) xs[i] = around * (0.75 + 0.5 * static_cast<double>(i) / kXCount);
    return xs;
}

void QuilletResolve(benchmark::State& state, const BenchFormula& f) {
    const auto xs = XValues(f.x);
    clsEquation eq;
    eq.Equation(f.quillet);
    const expr::VarSlot x = eq.Slot("x");
    std::size_t i = 0;
    for (auto _ : state) {
        eq.Var(x, xs[i++ % kXCount]);
        benchmark::DoNotOptimize(eq.Solution());
    }
}

void QuilletArray(benchmark::State& state, const BenchFormula& f) {
    const auto xs = XValues(f.x);
    std::array<double, kXCount> ys{};
    clsEquation eq;
    eq.Equation(f.quillet);
    const expr::VarSlot x = eq.Slot("x");
    for (auto _ : state) {
        eq.Solutions(x, xs, ys);
        benchmark::DoNotOptimize(ys.data());
    }
}

void MuparserResolve(benchmark::State& state, const BenchFormula& f) {
    const auto xs = XValues(f.x);
    double x = f.x;
    mu::Parser p;
    p.DefineVar("x", &x);
    p.SetExpr(f.muparser);
    std::size_t i = 0;
    for (auto _ : state) {
        x = xs[i++ % kXCount];
        benchmark::DoNotOptimize(p.Eval());
    }
}

// The object is kept, as a client that evaluates one formula after another would.
void QuilletParse(benchmark::State& state, const BenchFormula& f) {
    clsEquation eq;
    eq.Var("x", f.x);
    for (auto _ : state) {
        eq.Equation(f.quillet);
        benchmark::DoNotOptimize(eq.Solution());
    }
}

void MuparserParse(benchmark::State& state, const BenchFormula& f) {
    double x = f.x;
    mu::Parser p;
    p.DefineVar("x", &x);
    for (auto _ : state) {
        p.SetExpr(f.muparser);
        benchmark::DoNotOptimize(p.Eval());
    }
}

// Both evaluators must agree, or the comparison means nothing.
bool SameValues(const BenchFormula& f) {
    clsEquation eq;
    eq.Var("x", f.x);
    eq.Equation(f.quillet);
    double x = f.x;
    mu::Parser p;
    p.DefineVar("x", &x);
    p.SetExpr(f.muparser);
    const double a = eq.Solution(), b = p.Eval();
    std::printf("%-13s %5zu chars  clsEquation %.17g  muparser %.17g\n", f.name.c_str(), f.quillet.size(), a, b);
    std::fflush(stdout);
    return std::fabs(a - b) <= 1e-12 * std::fabs(b);
}

class Collect : public benchmark::ConsoleReporter {
public:
    Collect() : ConsoleReporter(OO_Tabular) {}
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) cpuNs[r.benchmark_name()] = r.GetAdjustedCPUTime();
    }
    std::map<std::string, double> cpuNs;
};

void PrintRatios(const std::vector<BenchFormula>& formulas, std::map<std::string, double>& t) {
    std::printf("\nCPU time; ratio = muparser / clsEquation (above 1: clsEquation is faster)\n");
    std::printf("%-13s %28s %6s %12s %6s %32s %6s\n", "formula", "re-solve ns: clsEq / muparser", "ratio",
                "array ns/X", "ratio", "parse+solve us: clsEq / muparser", "ratio");
    for (const auto& f : formulas) {
        const double rq = t["resolve/quillet/" + f.name], rm = t["resolve/muparser/" + f.name];
        const double aq = t["array/quillet/" + f.name] / kXCount;
        const double pq = t["parse/quillet/" + f.name] / 1000, pm = t["parse/muparser/" + f.name] / 1000;
        std::printf("%-13s %13.1f / %12.1f %6.2f %12.1f %6.2f %15.2f / %14.2f %6.2f\n", f.name.c_str(), rq, rm,
                    rm / rq, aq, rm / aq, pq, pm, pm / pq);
    }
}

}  // namespace
}  // namespace quillet::bench

int main(int argc, char** argv) {
    using namespace quillet::bench;
    static const std::vector<BenchFormula> formulas = Formulas();
    for (const auto& f : formulas)
        if (!SameValues(f)) return 1;
    for (const auto& f : formulas) {
        benchmark::RegisterBenchmark(("resolve/quillet/" + f.name).c_str(), QuilletResolve, f);
        benchmark::RegisterBenchmark(("resolve/muparser/" + f.name).c_str(), MuparserResolve, f);
        benchmark::RegisterBenchmark(("array/quillet/" + f.name).c_str(), QuilletArray, f);
        benchmark::RegisterBenchmark(("parse/quillet/" + f.name).c_str(), QuilletParse, f);
        benchmark::RegisterBenchmark(("parse/muparser/" + f.name).c_str(), MuparserParse, f);
    }
    benchmark::Initialize(&argc, argv);
    Collect reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    PrintRatios(formulas, reporter.cpuNs);
    benchmark::Shutdown();
}
