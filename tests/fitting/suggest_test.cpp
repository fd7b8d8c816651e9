// Starting values proposed from the data: shapes close to the truth for every model, peaks by
// prominence, frequencies inside the solver's bound, and quillet-cli's suggest.
#include "fitting/suggest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "fit_test_files.h"
#include "fitting/models.h"
#include "fitting/number_text.h"
#include "support/run_command.h"
#include "support/test_env.h"

namespace quillet::fitting {
namespace {

std::vector<double> Values(const Suggestion& s, int question) {
    std::vector<double> values;
    const auto it = s.answers.find(question);
    if (it == s.answers.end()) return values;
    for (auto field : SplitFields(it->second)) values.push_back(*ParseNumber(field));
    return values;
}

// `n` points of model `id` with parameters p (normalised = physical: Xnorm = Ynorm = 1).
DataPoints Curve(int id, int terms, const std::vector<double>& p, double u0, double u1, int n = 500) {
    const Model m(*FindModelKind(id), terms);
    DataPoints d;
    for (int j = 0; j < n; ++j) {
        d.x.push_back(u0 + (u1 - u0) * j / (n - 1));
        d.y.push_back(m.Value(p.data(), d.x.back(), nullptr));
    }
    return d;
}

TEST(Suggest, ShapesComeCloseToTheTruthForEveryModel) {
    struct Row {
        int model, terms;
        std::vector<double> truth;  // laid out as the model's parameters
        double u0, u1;
        int question;  // the shape answer checked
        std::vector<double> expected;
        double tolerance;  // absolute
    };
    const std::vector<Row> rows = {
        // Peaks: centres from the smoothed maxima, widths at half height.
        {model::Lorentzian, 2, {0.5, 2, 1, 0.8, 0.5, 3, 6}, 0, 10, 11, {3, 6}, 0.02},
        {model::Lorentzian, 2, {0.5, 2, 1, 0.8, 0.5, 3, 6}, 0, 10, 10, {0.8, 0.5}, 0.08},
        {model::ModifiedLorentzian, 1, {0.1, 1.5, 0.6, 4, 0}, 0, 10, 11, {4}, 0.02},
        {model::BellCurve, 3, {2, 5, 8, 1, 2, 1.5, 0.3, 0.5, 0.4}, 0, 10, 11, {0.3, 0.5, 0.4}, 0.04},
        {model::BellCurve, 3, {2, 5, 8, 1, 2, 1.5, 0.3, 0.5, 0.4}, 0, 10, 9, {2, 5, 8}, 0.02},
        // Rates by the matrix pencil, on an offset.
        {model::Exponential, 1, {0.3, 2, -1.5}, 0, 4, 10, {-1.5}, 0.01},
        {model::Exponential, 2, {0.3, 2, 1, -4, -0.5}, 0, 6, 10, {-4, -0.5}, 0.05},
        // Frequencies from the periodogram, to well within 1 / (2 T).
        {model::Sine, 2, {0.1, 1, 0.5, 0.7, 2.3, 0.3, -1}, 0, 10, 10, {0.7, 2.3}, 0.01},
        {model::SineExponential, 1, {0, 1, 1.2, 0.5, -0.2}, 0, 8, 10, {1.2}, 0.01},
        {model::SineExponential, 1, {0, 1, 1.2, 0.5, -0.2}, 0, 8, 12, {-0.2}, 0.05},
    };
    for (const auto& r : rows) {
        const Suggestion s = SuggestStart(Curve(r.model, r.terms, r.truth, r.u0, r.u1), r.model, r.terms, 1, 1, false);
        const std::vector<double> got = Values(s, r.question);
        ASSERT_EQ(got.size(), r.expected.size()) << r.model << " question " << r.question;
        for (std::size_t i = 0; i < got.size(); ++i)
            EXPECT_NEAR(got[i], r.expected[i], r.tolerance) << r.model << " question " << r.question << " term " << i;
        EXPECT_TRUE(s.remarks.empty()) << r.model << ": " << s.remarks.front();
    }
}

TEST(Suggest, OffsetAndAmplitudesAreTheBestForTheProposedShapes) {
    // y = 2 + 3 x^2 is a power series: the proposal is the fit itself.
    const Suggestion s = SuggestStart(Curve(model::Power, 2, {2, 0, 3}, -1, 1), model::Power, 2, 1, 1, false);
    EXPECT_NEAR(Values(s, 8)[0], 2, 1e-9);
    EXPECT_NEAR(Values(s, 9)[1], 3, 1e-4);
}

TEST(Suggest, PeaksAreTakenByProminenceAndMissingOnesAreSaid) {
    // Three peaks of heights 1, 3 and 2: two terms take the two most prominent.
    const std::vector<double> three = {0, 1, 3, 2, 0.5, 0.5, 0.5, 2, 5, 8};
    const DataPoints d = Curve(model::Lorentzian, 3, three, 0, 10);
    Suggestion s = SuggestStart(d, model::Lorentzian, 2, 1, 1, false);
    std::vector<double> centres = Values(s, 11);
    ASSERT_EQ(centres.size(), 2u);
    EXPECT_NEAR(centres[0], 5, 0.05);
    EXPECT_NEAR(centres[1], 8, 0.05);
    // A single peak for two terms: the second goes to what is left, and the proposal says so.
    s = SuggestStart(Curve(model::Lorentzian, 1, {0, 1, 0.5, 5}, 0, 10), model::Lorentzian, 2, 1, 1, false);
    ASSERT_EQ(Values(s, 11).size(), 2u);
    ASSERT_EQ(s.remarks.size(), 1u);
    EXPECT_EQ(s.remarks[0], "found 1 peak for 2 terms: the other terms start at the largest bumps left over");
}

TEST(Suggest, DipsAreFoundAsWellAsPeaks) {
    const Suggestion s =
        SuggestStart(Curve(model::BellCurve, 1, {6, -2, 0.5}, 0, 10), model::BellCurve, 1, 1, 1, false);
    EXPECT_NEAR(Values(s, 9)[0], 6, 0.02);
    EXPECT_NEAR(Values(s, 10)[0], -2, 1e-3);
}

TEST(Suggest, FrequenciesOfUnevenlySpacedDataLieInsideTheSolversBound) {
    // x at uneven places; the fit keeps each frequency between 0 and 130% of its start.
    DataPoints d;
    for (int j = 0; j < 300; ++j) {
        const double x = 20.0 * (j + 0.45 * std::sin(7.3 * j)) / 300;
        d.x.push_back(x);
        d.y.push_back(1 + std::sin(2 * 3.14159265358979 * 0.31 * x) + 0.5 * std::cos(2 * 3.14159265358979 * 1.7 * x));
    }
    const std::vector<double> f = Values(SuggestStart(d, model::Sine, 2, 1, 1, false), 10);
    ASSERT_EQ(f.size(), 2u);
    EXPECT_NEAR(f[0], 0.31, 0.5 / 20 / 2);
    EXPECT_NEAR(f[1], 1.7, 0.5 / 20 / 2);
}

TEST(Suggest, BlankNormalisationsBecomePowersOfTenNearTheLargestValues) {
    DataPoints d = Curve(model::Exponential, 1, {0, 1, -1}, 0, 5);
    for (double& x : d.x) x *= 200;
    for (double& y : d.y) y *= 0.02;
    const Suggestion s = SuggestStart(d, model::Exponential, 1, 0, 0, false);
    EXPECT_EQ(s.answers.at(6), "1000");
    EXPECT_EQ(s.answers.at(7), "0.01");
    // Given normalisations are kept, not proposed.
    EXPECT_EQ(SuggestStart(d, model::Exponential, 1, 100, 1, false).answers.count(6), 0u);
}

TEST(SuggestCommand, PrintsTheProposalAndStoresItWithWrite) {
    testing::TempDir dir;
    const DataPoints d = Curve(model::Lorentzian, 1, {0.2, 3, 1, 40}, 0, 100, 200);
    testing::WriteData(dir / "peak.dat", d.x, d.y);
    testing::ResponseAnswers r;
    r.answers = {"", "peak.dat", "Lorentzian", "3", "200", "1", "", "", "", "", "", "", ""};
    testing::WriteResponse(dir.path(), "P.Fit", r);
    auto run = testing::RunProgram(QUILLET_CLI, {"suggest", "P.Fit"}, "", dir.path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(
        run.out.find("\"Answers\": [\n    null,\n    null,\n    null,\n    null,\n    null,\n    \"100\",\n    \"1\","),
        std::string::npos)
        << run.out;
    run = testing::RunProgram(QUILLET_CLI, {"suggest", "--write", "P.Fit"}, "", dir.path());
    EXPECT_EQ(run.status, 0) << run.err;
    run = testing::RunProgram(QUILLET_CLI, {"fit", "P.Fit"}, "", dir.path());
    EXPECT_EQ(run.status, 0) << run.err;
    // Bad data: the fit's own message, exit 2.
    testing::WriteBytes(dir / "peak.dat", "x y\r\ny x\r\n1 2\r\n3 abc\r\n");
    run = testing::RunProgram(QUILLET_CLI, {"suggest", "P.Fit"}, "", dir.path());
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "quillet-cli suggest: Line 4 of the data file \"" + dir / "peak.dat" +
                           "\" holds \"abc\", which is not a number.\n");
}

}  // namespace
}  // namespace quillet::fitting
