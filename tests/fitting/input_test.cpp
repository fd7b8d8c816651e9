// What a run reads: response file answers, data points, solver variables, number texts.
#include <gtest/gtest.h>


#include "fit_test_files.h"
#include "fitting/data_file.h"
#include "fitting/fit_error.h"
#include "fitting/fit_settings.h"
#include "fitting/number_text.h"
#include "fitting/solver_options.h"
#include "model/catalogue.h"
#include "support/test_env.h"

namespace quillet::fitting {
namespace {

using testing::ResponseAnswers;
using testing::TempDir;
using testing::WriteBytes;

ResponseAnswers LorentzianAnswers() {
    ResponseAnswers r;
    r.answers = {"", "pts.dat", "Lorentzian", "3", "50", "2", "10", "100", "0.25", "1  2", "0.5, 0.6", "-1  1", ""};
    return r;
}

// The message of the FitInputError that `call` raised.
template <class F>
std::string InputError(F call) {
    try {
        call();
    } catch (const FitInputError& e) {
        return e.what();
    }
    return "(no error)";
}

std::string ErrorOf(const std::string& folder, const ResponseAnswers& r) {
    testing::WriteResponse(folder, "t.Fit", r);
    return InputError([&] { ReadFitSettings(folder, "t.Fit"); });
}

TEST(FitSettings, ReadsTheAnswersAsNumbers) {
    TempDir dir;
    ResponseAnswers r = LorentzianAnswers();
    r.weighted = true;
    r.solver = {"30", "2", "1e-9", "1", ".2", ""};
    testing::WriteResponse(dir.path(), "Run1.Fit", r);
    FitSettings s = ReadFitSettings(dir.path(), "Run1.Fit");
    EXPECT_EQ(s.title, "Run1");
    EXPECT_EQ(s.modelId, model::Lorentzian);
    EXPECT_EQ(s.firstLine, 3);
    EXPECT_DOUBLE_EQ(s.y0, 0.25);
    EXPECT_EQ(s.series, (std::vector<std::vector<double>>{{1, 2}, {0.5, 0.6}, {-1, 1}}));
    EXPECT_TRUE(s.weighted);
    EXPECT_EQ(s.solverValues[2], "1e-9");
    EXPECT_EQ(s.solverValues[5], "-EOF-");  // five lines written, six read

    // The bell curve has no offset; starting values beyond the terms are dropped.
    r.answers = {"", "b.dat", "Bell Curve", "1", "40", "1", "1", "1", "", "0.5  9", "2", "0.3", ""};
    testing::WriteResponse(dir.path(), "b.Fit", r);
    s = ReadFitSettings(dir.path(), "b.Fit");
    EXPECT_DOUBLE_EQ(s.y0, 0);
    EXPECT_EQ(s.series[0], std::vector<double>{0.5});
}

TEST(FitSettings, RefusesAnswersThatCannotBeFitted) {
    struct Row { int question; std::string value, message; };
    const std::vector<Row> rows = {
        {2, "Gaussian", "Question 2 (model) names no model of the list: \"Gaussian\"."},
        {4, "0", "Question 4 (number of points) must be a whole number from 1 up: \"0\"."},
        {4, "", "Question 4 (number of points) has no answer."},
        {5, "2.5", "Question 5 (number of terms) must be a whole number from 1 up: \"2.5\"."},
        {6, "0", "Question 6 (X-axis normalization factor) must not be 0."},
        {8, "1,5", "Question 8 (Y-axis offset) is not a number: \"1,5\"."},
        {9, "1  x", "Question 9 (A starting values) holds \"x\", which is not a number."},
        {11, "-1", "Question 11 (t0 starting values) gives 1 starting values for 2 terms."},
    };
    TempDir dir;
    for (const auto& row : rows) {
        ResponseAnswers r = LorentzianAnswers();
        r.answers[static_cast<std::size_t>(row.question)] = row.value;
        EXPECT_EQ(ErrorOf(dir.path(), r), row.message) << "question " << row.question;
    }
    ResponseAnswers sine;
    sine.answers = {"", "s.dat", "Sine", "1", "50", "1", "1", "1", "0", "1", "0", "0", ""};
    EXPECT_EQ(ErrorOf(dir.path(), sine),
              "Question 10 (B starting values): every frequency must be above 0.");
}

TEST(DataFile, ReadsPointsFromTheirFirstLineAndNamesTheLineOfBadData) {
    TempDir dir;
    const std::string path = dir / "d.txt";
    WriteBytes(path, "title\r\nX Y\r\n1 2\r\n3\t4.5\r\n-5,  6e-1\n 7 ,\t+8 \r\nnot read\r\n");
    DataPoints d = ReadDataPoints(path, 3, 4);
    EXPECT_EQ(d.x, (std::vector<double>{1, 3, -5, 7}));
    EXPECT_EQ(d.y, (std::vector<double>{2, 4.5, 0.6, 8}));

    struct Row { std::string bytes, message; };
    const std::vector<Row> rows = {
        {"1 2\r\n3 abc\r\n", "Line 2 of the data file \"" + path + "\" holds \"abc\", which is not a number."},
        {"1 2\r\n3 4 5\r\n", "Line 2 of the data file \"" + path + "\" does not hold one X and one Y value: \"3 4 5\"."},
        {"1 2\r\n\r\n3 4\r\n", "Line 2 of the data file \"" + path + "\" does not hold one X and one Y value: \"\"."},
        {"1 2\r\n3 4\r\n", "The data file \"" + path + "\" holds 2 points from line 1 on; question 4 asks for 3."},
    };
    for (const auto& row : rows) {
        WriteBytes(path, row.bytes);
        EXPECT_EQ(InputError([&] { ReadDataPoints(path, 1, 3); }), row.message);
    }
    EXPECT_THROW(ReadDataPoints(dir / "none.txt", 1, 3), FitInputError);
}

// Many points are read in two halves at once: every point in order, and of two bad lines the
// earlier one is named, whichever half it lies in.
TEST(DataFile, ManyPointsComeInOrderAndTheFirstBadLineIsNamed) {
    TempDir dir;
    const std::string path = dir / "big.txt";
    const int n = 50001;
    auto text = [&](int badA, int badB) {
        std::string t = "X Y\r\n";
        for (int i = 0; i < n; ++i)
            t += (i == badA || i == badB) ? "oops\r\n" : std::to_string(i) + " " + std::to_string(2 * i) + "\r\n";
        return t;
    };
    WriteBytes(path, text(-1, -1));
    const DataPoints d = ReadDataPoints(path, 2, n);
    ASSERT_EQ(d.x.size(), static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) ASSERT_TRUE(d.x[i] == i && d.y[i] == 2 * i) << i;
    struct Row { int badA, badB; long line; };
    for (const Row& row : {Row{10, -1, 12}, Row{40000, -1, 40002}, Row{30000, 40000, 30002}, Row{24999, 25000, 25001}}) {
        WriteBytes(path, text(row.badA, row.badB));
        EXPECT_EQ(InputError([&] { ReadDataPoints(path, 2, n); }),
                  "Line " + std::to_string(row.line) + " of the data file \"" + path +
                      "\" does not hold one X and one Y value: \"oops\".");
    }
}

// The options, one field each ("-" for a test the family does not have), or the error the values raise.
std::string Described(int model, const std::array<std::string, 6>& values) {
    try {
        const EngineOptions o = MapSolverValues(model, values);
        auto f = [](const auto& v) { return v ? FormatShort(static_cast<double>(*v)) : std::string("-"); };
        return std::to_string(o.maxIterations) + " " + std::to_string(o.progressEvery) + " " + f(o.stepTolerance) +
               " " + f(o.maxEvaluations) + " " + f(o.functionTolerance) + " " + f(o.gradientTolerance) + " " +
               FormatShort(o.firstDamping) + " " + FormatShort(o.dampingThreshold);
    } catch (const FitInputError& e) {
        return e.what();
    }
}

TEST(SolverOptions, BlanksTakeTheTabsDefaultsOfTheFamilyAndValuesOutOfRangeAreRefused) {
    struct Row {
        int model;
        std::array<std::string, 6> values;
        // iterations, progress, DELTA, EvalMax, ZERO, ACCURACY, first damping, damping threshold
        std::string expected;
    };
    const std::vector<Row> rows = {
        {model::Exponential, {"", "", "", "", "", ""}, "20 0 1e-07 - - - 0 0.2"},
        {model::Power, {"7", "3", "1e-9", "0.25", "1", "-EOF-"}, "7 3 1e-09 - - - 3 1"},
        {model::Sine, {"", "", "", "", "", ""}, "20 0 - 2000 1e-06 0.001 0.02 0.25"},
        {model::SineExponential, {"30", "5", "400", "1e-9", ".01", ".5"}, "30 5 - 400 1e-09 0.01 0.5 0.25"},
        {model::BellCurve, {"", "", "", "", "", "junk"}, "20 0 - 2000 1e-06 0.001 0.02 0.25"},
        {model::Power, {"0", "", "", "", "", ""}, "Solver variable 1 (REMAX) must be a whole number from 1 up: \"0\"."},
        {model::Power, {"", "", "tiny", "", "", ""}, "Solver variable 3 (DELTA) is not a number: \"tiny\"."},
        {model::Power, {"", "", "", "1.5", "", ""}, "Solver variable 4 (PREDAMP) must lie in 0 < value <= 1: \"1.5\"."},
        {model::Sine, {"", "", "2.5", "", "", ""}, "Solver variable 3 (EvalMax) must be a whole number from 1 up: \"2.5\"."},
        {model::Sine, {"", "", "", "", "", "-1"}, "Solver variable 6 (RHO) must be above 0: \"-1\"."},
    };
    for (const auto& row : rows) EXPECT_EQ(Described(row.model, row.values), row.expected) << row.model;
}

TEST(NumberText, ReadsNumbersAsPeopleTypeThem) {
    const std::vector<std::pair<std::string, double>> good = {
        {"1.E-7", 1e-7}, {".2", 0.2}, {"+3", 3}, {" -1.5e3 ", -1500}, {"2.", 2}, {"-.5", -0.5}};
    for (const auto& [text, value] : good) EXPECT_EQ(ParseNumber(text), value) << text;
    for (const char* bad : {"", " ", "abc", "1.2.3", "1,5", "--1", "+-1", "inf", "nan", "1e999", "0x10", "1 2"})
        EXPECT_FALSE(ParseNumber(bad)) << bad;
    for (double v : {0.1, 1.0 / 3, -2.5e-300, 6.02214076e23, 123456789.125})
        EXPECT_EQ(ParseNumber(FormatNumber(v)), v) << FormatNumber(v);
    EXPECT_EQ(FormatNumber(1e-5), "1e-05");
}

}  // namespace
}  // namespace quillet::fitting
