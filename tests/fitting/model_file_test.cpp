// The math-model file read back by the calculator: equal to the fitted curve at every data X.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <filesystem>
#include <sstream>

#include "env/text.h"
#include "fit_test_files.h"
#include "fitting/equ_writer.h"
#include "fitting/number_text.h"
#include "fitting/run_fit.h"
#include "model/calculator.h"
#include "model/form_events.h"
#include "support/fake_dialogs.h"
#include "support/run_command.h"
#include "support/test_env.h"

namespace quillet::fitting {
namespace {

using testing::ResponseAnswers;
using testing::TempDir;

struct PlotRow {
    double x, y, fit;
};

std::vector<PlotRow> ReadPlotRows(const std::string& path) {
    std::istringstream in(testing::ReadBytes(path));
    std::vector<PlotRow> rows;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        auto f = SplitFields(line);
        rows.push_back({*ParseNumber(f.at(0)), *ParseNumber(f.at(1)), *ParseNumber(f.at(2))});
    }
    return rows;
}

// X as a person types it: plain decimals that read back to the same double.
std::string Typed(double x) {
    char buf[400];
    auto [end, ec] = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::fixed);
    return std::string(buf, end);
}

// Runs the fit of `folder`/`name` and checks the calculator against the plot file's fitted
// values at every data X; every `cliEvery`-th X also through `quillet-cli calc`.
void CheckModelFileAgainstFit(const std::string& folder, const std::string& name, std::size_t cliEvery) {
    std::ostringstream out, err;
    ASSERT_EQ(RunFit(name, "", folder, out, err), 0) << name << ": " << err.str();
    const std::string output = folder + "/output/";
    const std::vector<PlotRow> rows = ReadPlotRows(output + LCase(name.substr(0, name.rfind('.'))) + ".plt");
    double largest = 0;
    for (const auto& r : rows) largest = std::max(largest, std::fabs(r.y));
    const double tolerance = 1e-10 * largest;

    const std::string equ = EquFileName(name);
    std::istringstream lines(testing::ReadBytes(output + equ));
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 101u) << line;  // and its CR

    testing::FakeDialogs dialogs;  // any message box fails the test
    AppState s;
    s.env.dialogs = &dialogs;
    InitFormDesign(s);
    s.form.calcFolder = output;
    s.form.calcSelectedFile = equ;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        s.form.tbXvalue.text = Typed(rows[i].x);
        const std::optional<double> y = cmdCalculate_Click(s);
        ASSERT_TRUE(y) << name << " at X = " << s.form.tbXvalue.text;
        EXPECT_NEAR(*y, rows[i].fit, tolerance) << name << " at X = " << s.form.tbXvalue.text;
        if (i % cliEvery != 0) continue;
        auto calc = testing::RunProgram(QUILLET_CLI, {"calc", "--", output + equ, s.form.tbXvalue.text});
        ASSERT_EQ(calc.status, 0) << calc.err;
        std::string& shown = calc.out;
        if (!shown.empty() && shown.back() == '\n') shown.pop_back();
        const auto fields = SplitFields(shown);
        ASSERT_EQ(fields.size(), 2u) << shown;
        EXPECT_NEAR(*ParseNumber(fields[0]), rows[i].fit, tolerance) << name << " at X = " << s.form.tbXvalue.text;
        EXPECT_EQ(fields[1], s.form.tbDeviation.text);
    }
    EXPECT_TRUE(ParseNumber(s.form.tbDeviation.text)) << s.form.tbDeviation.text;
}

// The standard deviation of the noise that each demo's data were made with.
const double kDemoNoise[] = {4, 0.8, 1, 10, 0.1, 0.2, 10};

TEST(MathModelFile, EveryDemoConvergesToItsNoiseAndReadsBackAtEveryDataX) {
    TempDir dir;
    std::filesystem::copy(QUILLET_DEMOS_DIR, dir.path(), std::filesystem::copy_options::recursive);
    for (int i = 1; i <= 7; ++i) {
        const std::string name = "Ex" + std::to_string(i);
        CheckModelFileAgainstFit(dir.path(), name + ".Fit", 25);
        const std::string equ = testing::ReadBytes(dir / ("output/" + name + ".equ"));
        const auto stddev = ParseNumber(equ.substr(equ.find('=') + 1, equ.find("\r\n") - equ.find('=') - 1));
        ASSERT_TRUE(stddev) << equ;
        EXPECT_NEAR(*stddev, kDemoNoise[i - 1], 0.25 * kDemoNoise[i - 1]) << name;
    }
}

// Data whose fitted numbers print with exponents and signs: tiny units, negative values.
TEST(MathModelFile, NumbersWithExponentsAndSignsSurviveTheCalculatorsRewriting) {
    TempDir dir;
    std::vector<double> x, lor, pow, wave;
    for (int i = 0; i < 60; ++i) {
        const double u = -1 + i / 29.5;  // -1 .. 1
        x.push_back(u * 1e-5);
        const double s = 2 * (u + 0.3) / 0.2;
        lor.push_back(1e-6 * (-0.02 - 3 / (1 + s * s) + 0.001 * std::sin(7.0 * i)));
        pow.push_back(-2e7 + 3e7 * u - 5e7 * u * u * u + 1e5 * std::cos(5.0 * i));
        wave.push_back(4e-9 * std::sin(2 * 3.14159265358979 * 2.3 * u - 0.4) * std::exp(-1.1 * u) + 1e-11 * std::sin(3.0 * i));
    }
    testing::WriteData(dir / "lor.dat", x, lor);
    testing::WriteData(dir / "pow.dat", x, pow);
    testing::WriteData(dir / "wave.dat", x, wave);
    ResponseAnswers r;
    r.answers = {"", "lor.dat", "Lorentzian", "3", "60", "1", "1e-5", "1e-6", "0", "-2.5", "0.25", "-0.25", ""};
    testing::WriteResponse(dir.path(), "Tiny.Fit", r);
    r.answers = {"", "pow.dat", "Power", "3", "60", "3", "1e-5", "1e7", "-1", "1  1  1", "", "", ""};
    testing::WriteResponse(dir.path(), "Pow.Fit", r);
    r.answers = {"", "wave.dat", "Sine * Exponential", "3", "60", "1", "1E-5", "1E-9", "0", "3.5", "2.2", "0", "-1"};
    testing::WriteResponse(dir.path(), "Wave.Fit", r);
    for (const char* name : {"Tiny.Fit", "Pow.Fit", "Wave.Fit"}) CheckModelFileAgainstFit(dir.path(), name, 20);
    EXPECT_TRUE(testing::ReadBytes(dir / "output/Tiny.equ").find("e-") != std::string::npos);
}

}  // namespace
}  // namespace quillet::fitting
