// clsEquation beside muparser on the same formulas: re-solving after X changes, one call over
// an array of X values, and parsing plus solving a new formula. Repetitions run interleaved;
// the table at the end pairs them and gives each ratio's median and range.
#include <benchmark/benchmark.h>
#include <muParser.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>

#include "expr/equation.h"
#include "expr/native.h"
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

// The same re-solve with machine code turned off: the steps' own time.
void StepsResolve(benchmark::State& state, const BenchFormula& f) {
    expr::AllowNativeCode(false);
    QuilletResolve(state, f);
    expr::AllowNativeCode(true);
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

// Keeps every repetition's CPU time per benchmark, in the order the repetitions ran; prints
// only the machine's description, the table comes at the end.
class Collect : public benchmark::ConsoleReporter {
public:
    Collect() : ConsoleReporter(OO_None) {}
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& r : runs)
            if (r.run_type == Run::RT_Iteration && !r.error_occurred)
                cpuNs[r.benchmark_name()].push_back(r.GetAdjustedCPUTime());
    }
    std::map<std::string, std::vector<double>> cpuNs;
};

double Median(std::vector<double> v) {
    if (v.empty()) return std::nan("");
    std::sort(v.begin(), v.end());
    const std::size_t n = v.size();
    return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

// The ratio muparser / clsEquation of each pair of repetitions: the i-th of one beside the
// i-th of the other, which ran close in time when the repetitions are interleaved.
std::vector<double> PairRatios(const std::vector<double>& quillet, const std::vector<double>& muparser,
                               double quilletScale = 1) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < quillet.size() && i < muparser.size(); ++i)
        ratios.push_back(muparser[i] / (quillet[i] * quilletScale));
    return ratios;
}

void PrintRatios(const std::vector<BenchFormula>& formulas, std::map<std::string, std::vector<double>>& t) {
    std::printf("\nCPU time, medians of %zu interleaved repetitions; ratio = muparser / clsEquation per pair of\n"
                "repetitions (above 1: clsEquation is faster), its median and its range min-max\n",
                t.empty() ? std::size_t{0} : t.begin()->second.size());
    std::printf("%-13s %9s %9s %9s %6s %13s | %9s %6s | %9s %9s %6s\n", "", "re-solve", "", "", "", "",
                "array", "", "parse+", "solve us", "");
    std::printf("%-13s %9s %9s %9s %6s %13s | %9s %6s | %9s %9s %6s\n", "formula", "clsEq ns", "steps ns",
                "muparser", "ratio", "min-max", "ns per X", "ratio", "clsEq", "muparser", "ratio");
    for (const auto& f : formulas) {
        const auto& rq = t["resolve/quillet/" + f.name];
        const auto& rm = t["resolve/muparser/" + f.name];
        const auto resolve = PairRatios(rq, rm);
        const auto array = PairRatios(t["array/quillet/" + f.name], rm, 1.0 / kXCount);
        const auto parse = PairRatios(t["parse/quillet/" + f.name], t["parse/muparser/" + f.name]);
        const auto [lo, hi] = resolve.empty() ? std::pair(std::nan(""), std::nan(""))
                                              : std::pair(*std::min_element(resolve.begin(), resolve.end()),
                                                          *std::max_element(resolve.begin(), resolve.end()));
        char range[32];
        std::snprintf(range, sizeof range, "%.2f-%.2f", lo, hi);
        std::printf("%-13s %9.1f %9.1f %9.1f %6.2f %13s | %9.1f %6.2f | %9.2f %9.2f %6.2f\n", f.name.c_str(),
                    Median(rq), Median(t["resolve/steps/" + f.name]), Median(rm), Median(resolve), range,
                    Median(t["array/quillet/" + f.name]) / kXCount, Median(array), Median(t["parse/quillet/" + f.name]) / 1000,
                    Median(t["parse/muparser/" + f.name]) / 1000, Median(parse));
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
        benchmark::RegisterBenchmark(("resolve/steps/" + f.name).c_str(), StepsResolve, f);
        benchmark::RegisterBenchmark(("array/quillet/" + f.name).c_str(), QuilletArray, f);
        benchmark::RegisterBenchmark(("parse/quillet/" + f.name).c_str(), QuilletParse, f);
        benchmark::RegisterBenchmark(("parse/muparser/" + f.name).c_str(), MuparserParse, f);
    }
    // Defaults that the command line may override, as later flags win.
    std::vector<char*> args{argv[0]};
    std::string defaults[] = {"--benchmark_repetitions=21", "--benchmark_enable_random_interleaving=true",
                              "--benchmark_min_time=0.05"};
    for (auto& d : defaults) args.push_back(d.data());
    for (int i = 1; i < argc; ++i) args.push_back(argv[i]);
    int count = static_cast<int>(args.size());
    benchmark::Initialize(&count, args.data());
    Collect reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    PrintRatios(formulas, reporter.cpuNs);
    benchmark::Shutdown();
}
