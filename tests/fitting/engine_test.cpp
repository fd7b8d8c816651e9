// The series models' values and derivatives, and the fit itself: every model recovers known
// curves; limits, bounds and failures.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "fit_test_files.h"
#include "fitting/covariance.h"
#include "fitting/fit_engine.h"
#include "fitting/models.h"
#include "fitting/solver_options.h"
#include "fitting/streaming_qr.h"
#include "fitting/weights.h"

namespace quillet::fitting {
namespace {

using testing::CaseOf;
using testing::ModelCase;
using testing::ModelCases;

// A normal deviate from a portable engine, so the data are the same everywhere.
double Normal(std::mt19937_64& rng, double sigma) {
    const double u1 = (static_cast<double>(rng() >> 11) + 0.5) / 9007199254740992.0;
    const double u2 = static_cast<double>(rng() >> 11) / 9007199254740992.0;
    return sigma * std::sqrt(-2 * std::log(u1)) * std::cos(2 * 3.14159265358979323846 * u2);
}

struct Fixture {
    Model model;
    FitProblem problem;
};

Fixture Prepare(const ModelCase& c, double sigma, std::uint64_t seed, const std::array<std::string, 6>& solver) {
    Fixture f{Model(*FindModelKind(c.model), c.terms), {}};
    std::mt19937_64 rng(seed);
    const int n = 150;
    for (int i = 0; i < n; ++i) {
        const double u = c.u0 + (c.u1 - c.u0) * i / (n - 1);
        f.problem.u.push_back(u);
        f.problem.v.push_back(f.model.Value(c.truth.data(), u, nullptr) + Normal(rng, sigma));
    }
    f.problem.start = c.start;
    f.problem.options = MapSolverValues(c.model, solver);
    return f;
}

// Tight tolerances through the solver variables of each family.
std::array<std::string, 6> TightValues(int model) {
    if (model >= model::Sine) return {"200", "0", "", "1e-15", "1e-15", ""};
    return {"200", "0", "1e-15", "", "", ""};
}

FitResult Fit(Fixture& f) {
    f.problem.model = &f.model;
    SetModelBounds(f.problem);
    return RunEngine(f.problem);
}

// A curve of `terms` terms of model `id`, and starting values whose shape parameters are well
// off (centres by half a width, widths and rates by half again, frequencies a little below).
struct Recovery {
    std::vector<double> truth, start;
    double u0, u1;
};

Recovery RecoveryCase(int id, int terms) {
    const Model m(*FindModelKind(id), terms);
    Recovery c{std::vector<double>(static_cast<std::size_t>(m.parameterCount())), {}, 0, 10};
    c.start = c.truth;
    auto set = [&](int group, int i, double truth, double start) {
        const auto k = static_cast<std::size_t>(m.index(group, i));
        c.truth[k] = truth;
        c.start[k] = start;
    };
    if (m.kind().hasOffset) c.truth[0] = 0.2;
    for (int i = 1; i <= terms; ++i) {
        const double sign = i % 2 ? 1 : -1, centre = 1.5 + 1.8 * (i - 1), width = 0.6 + 0.1 * i;
        switch (id) {
            case model::ModifiedLorentzian:
                set(3, i, 0.3 * sign, 0);
                [[fallthrough]];
            case model::Lorentzian:
                set(0, i, 1 + 0.3 * i, 1);
                set(1, i, width, 1.5 * width);
                set(2, i, centre, centre + 0.35 * width * sign);
                break;
            case model::BellCurve:
                set(0, i, centre, centre + 0.3 * sign);
                set(1, i, 1 + 0.3 * i, 1);
                set(2, i, width / 2, 0.75 * width);
                break;
            case model::Exponential:
                c.u1 = 6;
                set(0, i, 1 + 0.5 * i, 1);
                set(1, i, -0.4 * std::pow(3, i - 1), -0.6 * std::pow(3, i - 1));
                break;
            case model::Power:
                set(0, i, sign / i, 1);
                c.u0 = -1.5;
                c.u1 = 1.5;
                break;
            case model::SineExponential:
                set(3, i, -0.1 * i, 0);
                [[fallthrough]];
            case model::Sine:
                c.u1 = 5;
                set(0, i, 1 + 0.2 * i, 1);
                set(1, i, 0.7 + 0.9 * (i - 1), 0.64 + 0.9 * (i - 1));
                set(2, i, 0.3 * i - 1, 0);
                break;
        }
    }
    return c;
}

TEST(FitEngine, EveryModelRecoversNoiseFreeCurvesOfOneToFiveTermsFromStartsWellOff) {
    for (int id = model::Lorentzian; id <= model::BellCurve; ++id)
        for (int terms = 1; terms <= 5; ++terms) {
            const Recovery c = RecoveryCase(id, terms);
            const Model m(*FindModelKind(id), terms);
            FitProblem fp;
            fp.model = &m;
            for (int j = 0; j < 400; ++j) {
                fp.u.push_back(c.u0 + (c.u1 - c.u0) * j / 399);
                fp.v.push_back(m.Value(c.truth.data(), fp.u.back(), nullptr));
            }
            fp.start = c.start;
            fp.options = MapSolverValues(id, {});
            SetModelBounds(fp);
            const FitResult r = RunEngine(fp);
            EXPECT_EQ(r.outcome, FitOutcome::Converged) << id << " x" << terms << ": " << r.reason;
            for (std::size_t k = 0; k < c.truth.size(); ++k)
                EXPECT_NEAR(r.params[k], c.truth[k], 1e-5 * std::max(1.0, std::fabs(c.truth[k])))
                    << "model " << id << " x" << terms << " " << m.parameterName(static_cast<int>(k));
        }
}

TEST(FitEngine, EveryModelRecoversNoisyCurvesWithinThreeStandardErrors) {
    std::uint64_t seed = 7;
    double ratios = 0;  // |error| / standard error: about 0.8 on average when the errors are right
    int count = 0;
    for (const auto& c : ModelCases()) {
        Fixture f = Prepare(c, 0.02, ++seed, {});
        FitResult r = Fit(f);
        ASSERT_EQ(r.outcome, FitOutcome::Converged) << c.model << ": " << r.reason;
        ASSERT_EQ(r.stdErrors.size(), c.truth.size()) << r.stdErrorsNote;
        for (std::size_t k = 0; k < c.truth.size(); ++k, ++count) {
            const double ratio = std::fabs(r.params[k] - c.truth[k]) / r.stdErrors[k];
            EXPECT_LE(ratio, 3) << "model " << c.model << " " << f.model.parameterName(static_cast<int>(k));
            ratios += ratio;
        }
    }
    EXPECT_GT(ratios / count, 0.4);  // errors several times too large would pass the test above
}

// Large data are taken in parts side by side: the sum of squares and the errors must still be
// those of every point.
TEST(FitEngine, LargeDataGiveTheSumOfSquaresOfEveryPoint) {
    const ModelCase& c = CaseOf(model::Lorentzian);
    Fixture f{Model(*FindModelKind(c.model), c.terms), {}};
    std::mt19937_64 rng(3);
    const int n = 40000;
    for (int i = 0; i < n; ++i) {
        const double u = c.u0 + (c.u1 - c.u0) * i / (n - 1);
        f.problem.u.push_back(u);
        f.problem.v.push_back(f.model.Value(c.truth.data(), u, nullptr) + Normal(rng, 0.02));
    }
    f.problem.start = c.start;
    f.problem.options = MapSolverValues(c.model, {});
    const FitResult r = Fit(f);
    ASSERT_EQ(r.outcome, FitOutcome::Converged) << r.reason;
    double rss = 0;
    for (int i = 0; i < n; ++i) {
        const double e = f.model.Value(r.params.data(), f.problem.u[i], nullptr) - f.problem.v[i];
        rss += e * e;
    }
    EXPECT_NEAR(r.weightedRss, rss, 1e-9 * rss);
    EXPECT_NEAR(rss / n, 0.02 * 0.02, 0.05 * 0.02 * 0.02);
}

TEST(FitEngine, SineFrequenciesStayBelowThirtyPercentAboveTheirStart) {
    // One period of a sine of frequency 1, started at 0.75: the fit presses against 0.975.
    const ModelCase c{model::Sine, 1, {0, 1, 1, 0}, {0, 1, 0.75, 0}, 0, 1};
    Fixture f = Prepare(c, 0, 1, {});
    FitResult r = Fit(f);
    EXPECT_LE(r.params[2], 0.975 * (1 + 1e-12));
    EXPECT_GT(r.params[2], 0.95);
}

TEST(FitEngine, EvalMaxStopsTheFitWithoutConvergence) {
    const ModelCase& sine = CaseOf(model::SineExponential);
    Fixture capped = Prepare(sine, 0.02, 3, {"", "", "4", "", "", ""});
    FitResult r = Fit(capped);
    EXPECT_EQ(r.outcome, FitOutcome::NotConverged);
    EXPECT_NE(r.reason.find("EvalMax"), std::string::npos) << r.reason;
    EXPECT_GE(r.evaluations, 4);
    EXPECT_LE(r.evaluations, 8);
}

TEST(FitEngine, ProgressLinesComeEveryNthIteration) {
    Fixture f = Prepare(CaseOf(model::ModifiedLorentzian), 0.02, 5, {"", "2", "", "", "", ""});
    std::vector<std::string> lines;
    f.problem.progress = [&](const std::string& line) { lines.push_back(line); };
    FitResult r = Fit(f);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(static_cast<int>(lines.size()), r.iterations / 2);
    EXPECT_EQ(lines[0].rfind("iteration 2: normalised RSS ", 0), 0u) << lines[0];
}

TEST(FitEngine, WeightedFitMinimisesTheWeightedSum) {
    const ModelCase& c = CaseOf(model::BellCurve);
    Fixture f = Prepare(c, 0.05, 11, TightValues(c.model));
    f.problem.weights = ResidualWeights(f.problem.v, true);
    FitResult r = Fit(f);
    ASSERT_EQ(r.outcome, FitOutcome::Converged) << r.reason;
    // At the minimum the gradient of the weighted sum vanishes.
    const std::size_t np = r.params.size();
    std::vector<double> grad(np), g(np, 0), scale(np, 0);
    for (std::size_t i = 0; i < f.problem.u.size(); ++i) {
        const double w2 = f.problem.weights[i] * f.problem.weights[i];
        const double res = f.model.Value(r.params.data(), f.problem.u[i], grad.data()) - f.problem.v[i];
        for (std::size_t k = 0; k < np; ++k) {
            g[k] += w2 * res * grad[k];
            scale[k] += std::fabs(w2 * res * grad[k]);
        }
    }
    for (std::size_t k = 0; k < np; ++k) EXPECT_LE(std::fabs(g[k]), 1e-5 * scale[k]) << k;
}

// R of a row-major matrix with `cols` columns, folded in blocks of two rows.
Eigen::MatrixXd Factor(const std::vector<double>& rowMajor, int cols) {
    StreamingQr qr(cols);
    const std::size_t c = static_cast<std::size_t>(cols), rows = rowMajor.size() / c;
    for (std::size_t first = 0; first < rows; first += 2) {
        const std::size_t n = std::min<std::size_t>(2, rows - first);
        std::vector<double> block(n * c);
        for (std::size_t j = 0; j < n; ++j)
            for (std::size_t k = 0; k < c; ++k) block[k * n + j] = rowMajor[(first + j) * c + k];
        qr.Fold(block.data(), n);
    }
    return qr.R();
}

// The errors come from the split's factor; they must be those of the full model's Jacobian,
// also where the split and the model's parameters part: negative widths, phases near +-pi.
TEST(FitEngine, StandardErrorsAreThoseOfTheFullModelsJacobian) {
    std::vector<ModelCase> cases = ModelCases();
    ModelCase lorentzian = CaseOf(model::Lorentzian), modified = CaseOf(model::ModifiedLorentzian),
              bell = CaseOf(model::BellCurve), sine = CaseOf(model::Sine);
    for (int k : {3, 4}) lorentzian.start[static_cast<std::size_t>(k)] *= -1;
    for (int k : {3, 4}) modified.start[static_cast<std::size_t>(k)] *= -1;
    for (int k : {4, 5}) bell.start[static_cast<std::size_t>(k)] *= -1;
    sine.truth[5] = sine.start[5] = 3.1;
    sine.truth[6] = sine.start[6] = -3.1;
    cases.insert(cases.end(), {lorentzian, modified, bell, sine});
    std::uint64_t seed = 40;
    for (const auto& c : cases) {
        Fixture f = Prepare(c, 0.02, ++seed, {});
        const FitResult r = Fit(f);
        ASSERT_EQ(r.outcome, FitOutcome::Converged) << c.model << ": " << r.reason;
        const std::size_t np = r.params.size();
        std::vector<double> rows, grad(np);
        for (double u : f.problem.u) {
            f.model.Value(r.params.data(), u, grad.data());
            rows.insert(rows.end(), grad.begin(), grad.end());
        }
        std::string note;
        const double variance = r.weightedRss / static_cast<double>(f.problem.u.size() - np);
        const std::vector<double> expected = StandardErrors(Factor(rows, static_cast<int>(np)), variance, note);
        ASSERT_EQ(r.stdErrors.size(), expected.size()) << c.model << ": " << r.stdErrorsNote << note;
        for (std::size_t k = 0; k < np; ++k)
            EXPECT_NEAR(r.stdErrors[k], expected[k], 1e-7 * expected[k])
                << "model " << c.model << " " << f.model.parameterName(static_cast<int>(k));
    }
}

TEST(StandardErrors, StraightLineErrorsFollowTheClosedForm) {
    // y = a + b x at x = 0..4: (J'J)^-1 = [[30, -10], [-10, 5]] / 50.
    std::vector<double> j;
    for (int x = 0; x < 5; ++x) j.insert(j.end(), {1.0, static_cast<double>(x)});
    std::string note;
    const std::vector<double> se = StandardErrors(Factor(j, 2), 4.0, note);
    ASSERT_EQ(se.size(), 2u) << note;
    EXPECT_NEAR(se[0], 2 * std::sqrt(0.6), 1e-14);
    EXPECT_NEAR(se[1], 2 * std::sqrt(0.1), 1e-14);
}

TEST(StandardErrors, DependentParametersHaveNone) {
    // Two parameters that move the curve the same way, exactly and within rounding.
    for (double twin : {1.0, 1.0 + 1e-9}) {
        std::vector<double> j;
        for (int x = 1; x <= 6; ++x) j.insert(j.end(), {static_cast<double>(x), twin * x, 1.0});
        std::string note;
        EXPECT_TRUE(StandardErrors(Factor(j, 3), 1.0, note).empty()) << twin;
        EXPECT_NE(note.find("rank deficient"), std::string::npos) << note;
    }
}

TEST(ResidualWeights, PointsNearTheAxisWeighAboutAHundredTimesMore) {
    const std::vector<double> w = ResidualWeights({0, 0.5, 1, -2}, true);
    ASSERT_EQ(w.size(), 4u);
    EXPECT_DOUBLE_EQ(w[0], 10);
    EXPECT_DOUBLE_EQ(w[1], std::sqrt(1 / 0.26));
    EXPECT_DOUBLE_EQ(w[2], std::sqrt(1 / 0.51));
    EXPECT_DOUBLE_EQ(w[3], std::sqrt(1 / 1.01));
    EXPECT_TRUE(ResidualWeights({0, 0.5}, false).empty());
    EXPECT_TRUE(ResidualWeights({0, 0}, true).empty());
}

Model Make(int id, int terms) {
    return Model(*FindModelKind(id), terms);
}

TEST(SeriesModels, AnalyticDerivativesMatchCentralDifferences) {
    for (const auto& c : ModelCases()) {
        Model m = Make(c.model, c.terms);
        ASSERT_EQ(m.parameterCount(), static_cast<int>(c.truth.size())) << c.model;
        std::vector<double> grad(c.truth.size());
        for (double u : {c.u0, 0.37 * c.u0 + 0.63 * c.u1, c.u1 - 0.21}) {
            m.Value(c.truth.data(), u, grad.data());
            for (std::size_t k = 0; k < c.truth.size(); ++k) {
                std::vector<double> p = c.truth;
                const double h = 1e-6 * std::max(1.0, std::fabs(p[k]));
                p[k] += h;
                const double up = m.Value(p.data(), u, nullptr);
                p[k] -= 2 * h;
                const double down = m.Value(p.data(), u, nullptr);
                EXPECT_NEAR(grad[k], (up - down) / (2 * h), 1e-6 * std::max(1.0, std::fabs(grad[k])))
                    << "model " << c.model << " " << m.parameterName(static_cast<int>(k)) << " at u = " << u;
            }
        }
    }
}

TEST(SeriesModels, ValuesFollowTheirFormulas) {
    const double pi = 3.14159265358979323846;
    struct Row {
        int model;
        std::vector<double> p;
        double u, expected;
    };  // p: one term
    const std::vector<Row> rows = {
        {model::Lorentzian, {0.5, 2.0, 4.0, 1.0}, 3.0, 0.5 + 2.0 / (1 + 1)},
        {model::ModifiedLorentzian, {0, 2.0, 4.0, 1.0, 3.0}, 3.0, (2.0 + 3.0) / (1 + 1)},
        {model::Exponential, {1.0, 2.0, -0.5}, 2.0, 1.0 + 2.0 * std::exp(-1.0)},
        {model::Sine, {0.1, 2.0, 0.25, 0.5}, 1.0, 0.1 + 2.0 * std::sin(pi / 2 + 0.5)},
        {model::SineExponential, {0, 2.0, 0.25, 0.5, -1.0}, 1.0, 2.0 * std::sin(pi / 2 + 0.5) * std::exp(-1.0)},
        {model::BellCurve, {1.0, 3.0, 0.5}, 2.0, 3.0 * std::exp(-2.0)},
    };
    for (const auto& r : rows)
        EXPECT_DOUBLE_EQ(Make(r.model, 1).Value(r.p.data(), r.u, nullptr), r.expected) << r.model;
    // The i-th power term is u^i.
    const std::vector<double> power = {1.0, 2.0, -3.0, 0.5};
    EXPECT_DOUBLE_EQ(Make(model::Power, 3).Value(power.data(), -2.0, nullptr), 1 - 4 - 12 - 4);
}

}  // namespace
}  // namespace quillet::fitting
