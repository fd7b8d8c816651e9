// What a run writes: file names, the formula's lines, the plot file; what each kind of failure
// leaves; the run script and quillet-cli.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <sstream>

#include "env/text.h"
#include "fit_test_files.h"
#include "fitting/equ_writer.h"
#include "fitting/run_fit.h"
#include "support/run_command.h"
#include "support/test_env.h"

namespace quillet::fitting {
namespace {

using testing::ResponseAnswers;
using testing::RunProgram;
using testing::TempDir;

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class FitRun : public ::testing::Test {
protected:
    int Fit(const std::string& file, const std::string& runDir = "demos") {
        out.str("");
        err.str("");
        return RunFit(file, runDir, dir.path(), out, err);
    }
    std::string Output(const std::string& name) { return testing::ReadBytes(dir / ("output/" + name)); }
    bool Exists(const std::string& name) { return std::filesystem::exists(dir / ("output/" + name)); }

    // y = 1 + 2x + 0.5x^2 at x = 0..7, fitted with the Power model in normalised units.
    void WritePowerRun(const std::string& solverRemax = "") {
        std::vector<double> x, y;
        for (int i = 0; i < 8; ++i) {
            x.push_back(i);
            y.push_back(1 + 2.0 * i + 0.5 * i * i);
        }
        testing::WriteData(dir / "p.dat", x, y);
        ResponseAnswers r;
        r.answers = {"", "p.dat", "Power", "3", "8", "2", "2", "3", "0", "1  1", "", "", ""};
        r.solver = {solverRemax, "", "", "", "", ""};
        testing::WriteResponse(dir.path(), "P.Fit", r);
    }

    // The plot and model files an earlier converged run of Stem.Fit left, which a failed run
    // must not leave behind.
    void WriteEarlierResults(const std::string& stem) {
        std::filesystem::create_directories(dir / "output");
        for (const auto& name : {LCase(stem) + ".plt", stem + ".equ"})
            testing::WriteBytes(dir / ("output/" + name), "earlier");
    }

    TempDir dir;
    std::ostringstream out, err;
};

TEST_F(FitRun, PlotFileHoldsDataFitAndResidualsUnderItsHeader) {
    WritePowerRun();
    ASSERT_EQ(Fit("P.Fit"), 0) << err.str();
    const std::string plot = Output("p.plt");
    EXPECT_EQ(plot.rfind("# Quillet plot\r\n# title: P\r\n# model: Power, 2 terms\r\n# x: X   y: Y\r\n# rss: ", 0), 0u);
    const std::string names = "   stddev: ", columns = "\r\n# columns: x\ty\tfit\tresidual\r\n";
    const std::size_t at = plot.find(columns, plot.find(names));
    ASSERT_NE(at, std::string::npos) << plot;
    std::istringstream rows(plot.substr(at + columns.size()));
    int n = 0;
    for (double x, y, fit, residual; rows >> x >> y >> fit >> residual; ++n) {
        EXPECT_EQ(x, n);
        EXPECT_EQ(y, 1 + 2.0 * n + 0.5 * n * n);
        EXPECT_NEAR(fit, y, 1e-9);
        EXPECT_EQ(residual, y - fit);
    }
    EXPECT_EQ(n, 8);
    // A power series is linear in its parameters: no iterations to make.
    const std::string report = Output("~Quillet.out");
    EXPECT_TRUE(Contains(report, "one weighted least-squares solve, no iterations")) << report;
    EXPECT_TRUE(Contains(report, "  iterations                          0\r\n")) << report;
}

TEST_F(FitRun, BadInputLeavesOnlyAReportSayingWhatIsWrong) {
    struct Row { std::string answer4, dataFile, responseFile, message; };  // questions 4 and 1
    const std::vector<Row> rows = {
        {"8", "p.dat", "none.Fit", "The response file \"" + dir / "none.Fit" + "\" was not found."},
        {"8", "nodata.dat", "Q.Fit", "The data file \"" + dir / "nodata.dat" + "\" cannot be read: File not found."},
        {"3", "p.dat", "Q.Fit", "Too few points: 3 points cannot fit 3 parameters; question 4 must ask for more."},
        {"9", "p.dat", "Q.Fit", "The data file \"" + dir / "p.dat" + "\" holds 8 points from line 3 on; question 4 asks for 9."},
        {"8", "flat.dat", "Q.Fit",
         "The data file \"" + dir / "flat.dat" + "\" from line 3 on holds the same Y value (2.5) on every line: there is no curve to fit."},
        {"8", "twox.dat", "Q.Fit",
         "The data file \"" + dir / "twox.dat" + "\" from line 3 on holds only 2 different X values; the model's 3 parameters need at least 3."},
    };
    WritePowerRun();
    testing::WriteData(dir / "flat.dat", {0, 1, 2, 3, 4, 5, 6, 7}, std::vector<double>(8, 2.5));
    testing::WriteData(dir / "twox.dat", {0, 0, 0, 0, 1, 1, 1, 1}, {1, 2, 3, 4, 5, 6, 7, 8});
    for (const auto& row : rows) {
        std::filesystem::remove_all(dir / "output");
        WriteEarlierResults(row.responseFile.substr(0, row.responseFile.find('.')));
        ResponseAnswers r;
        r.answers = {"", row.dataFile, "Power", "3", row.answer4, "2", "2", "3", "0", "1  1", "", "", ""};
        testing::WriteResponse(dir.path(), "Q.Fit", r);
        EXPECT_EQ(Fit(row.responseFile, ""), 2) << row.message;
        EXPECT_EQ(err.str(), "quillet-cli fit: " + row.message + "\n");
        const std::string report = Output("~Quillet.out");
        EXPECT_TRUE(Contains(report, "Run folder:    (none)\r\n")) << report;
        EXPECT_TRUE(Contains(report, "The fit was not started: " + row.message + "\r\n")) << report;
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir / "output"), {}), 1);
    }
}

TEST_F(FitRun, DivergingFitReportsWhyAndWritesNoModel) {
    std::vector<double> x, y;
    for (int i = 0; i < 20; ++i) {
        x.push_back(i);
        y.push_back(std::exp(-0.1 * i));
    }
    testing::WriteData(dir / "e.dat", x, y);
    ResponseAnswers r;
    r.answers = {"", "e.dat", "Exponential", "3", "20", "1", "1", "1", "0", "1", "900", "", ""};
    testing::WriteResponse(dir.path(), "E.Fit", r);
    WriteEarlierResults("E");
    EXPECT_EQ(Fit("E.Fit"), 1);
    EXPECT_EQ(err.str().rfind("quillet-cli fit: the fit diverged: ", 0), 0u) << err.str();
    const std::string report = Output("~Quillet.out");
    EXPECT_TRUE(Contains(report, "Result: FAILED: the fit diverged\r\n")) << report;
    EXPECT_TRUE(Contains(report, "No plot file and no math-model file were written.")) << report;
    EXPECT_FALSE(Exists("e.plt"));
    EXPECT_FALSE(Exists("E.equ"));
}

TEST_F(FitRun, FitStoppedByItsIterationLimitStillWritesItsFiles) {
    std::vector<double> x, y;
    for (int i = 0; i < 20; ++i) {
        x.push_back(i);
        y.push_back(2 + std::exp(-0.3 * i));
    }
    testing::WriteData(dir / "e.dat", x, y);
    ResponseAnswers r;
    r.answers = {"", "e.dat", "Exponential", "3", "20", "1", "10", "1", "0", "1", "-0.01", "", ""};
    r.solver = {"1", "", "", "", "", ""};
    testing::WriteResponse(dir.path(), "E.Fit", r);
    EXPECT_EQ(Fit(dir / "E.Fit"), 1);
    EXPECT_TRUE(Contains(err.str(), "the fit did not converge")) << err.str();
    const std::string report = Output("~Quillet.out");
    EXPECT_TRUE(Contains(report, "Result: did NOT converge\r\n")) << report;
    EXPECT_TRUE(Contains(report, "  iterations                          1\r\n")) << report;
    EXPECT_TRUE(Contains(Output("e.plt"), "\r\n# verdict: not converged\r\n"));
    EXPECT_TRUE(Exists("E.equ"));
}

TEST_F(FitRun, DoubtfulFitsAreFlaggedInTheReportAndThePlotAndExitWithOne) {
    struct Row { std::string model, start9, start10, start11, flag; };
    const std::vector<Row> rows = {
        // A bell far beyond the data explains nothing: the fit stays there and a constant does better.
        {"Bell Curve", "1000", "1", "0.5", "the curve fits worse than a constant (R squared below 0)"},
        // One period of a sine of frequency 1 started at 0.75: the frequency stops at 130% of its start.
        {"Sine", "1", "0.75", "0", "B(1) ended on a bound (0 to 130% of its starting value)"},
    };
    std::vector<double> x, y;
    for (int i = 0; i < 40; ++i) {
        x.push_back(i / 40.0);
        y.push_back(5 + std::sin(2 * 3.14159265358979323846 * x.back()));
    }
    testing::WriteData(dir / "s.dat", x, y);
    for (const auto& row : rows) {
        ResponseAnswers r;
        r.answers = {"", "s.dat", row.model, "3", "40", "1", "1", "1", "5", row.start9, row.start10, row.start11, ""};
        testing::WriteResponse(dir.path(), "F.Fit", r);
        EXPECT_EQ(Fit("F.Fit"), 1) << row.model;
        EXPECT_TRUE(Contains(Output("~Quillet.out"), "\r\nFlagged: " + row.flag + "\r\n")) << Output("~Quillet.out");
        EXPECT_TRUE(Contains(Output("f.plt"), "\r\n# flag: " + row.flag + "\r\n")) << row.model;
        EXPECT_TRUE(Contains(out.str(), "Flagged: " + row.flag + "\n")) << out.str();
    }
}

TEST_F(FitRun, RunScriptPassesTheRunFolderAndReturnsTheStatus) {
    WritePowerRun();
    const std::string script = std::string(QUILLET_PROGRAM_DIR_BUILT) + "/run-FitW.sh";
    auto run = RunProgram(script, {"P.Fit", "User", "exit"}, "", dir.path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(Contains(Output("~Quillet.out"), "Run folder:    User\r\n"));
    EXPECT_TRUE(Contains(run.out, "Converged after")) << run.out;
    run = RunProgram(script, {"P.Fit", "wait"}, "", dir.path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(Contains(Output("~Quillet.out"), "Run folder:    (none)\r\n"));
    EXPECT_EQ(RunProgram(script, {"Missing.Fit", "demos", "exit"}, "", dir.path()).status, 2);
}

std::string WithoutBlanks(std::string s) {
    std::erase(s, ' ');
    return s;
}

TEST(OutputNames, ModelFilesAreNamedAfterTheResponseFile) {
    EXPECT_EQ(EquFileName("Ex1.Fit"), "Ex1.equ");
    EXPECT_EQ(EquFileName("Run.FIT"), "Run.equ");
    EXPECT_EQ(EquFileName("data"), "data.equ");
}

TEST(FormulaLines, FormulasBreakBetweenTermsWithinTheWidth) {
    EXPECT_EQ(FormulaLines({"1.5", "2*(x)"}), std::vector<std::string>{"y = 1.5 + 2*(x)"});
    const std::vector<std::string> terms = {"0.5", std::string(60, '1'), std::string(45, '2'), std::string(30, '3')};
    const std::vector<std::string> lines = FormulaLines(terms);
    EXPECT_EQ(lines, (std::vector<std::string>{"y = 0.5 + " + terms[1], "+ " + terms[2] + " + " + terms[3]}));
}

TEST(FormulaLines, TermsLongerThanALineAreCutWhereNoLineBeginsWithAMinus) {
    // The cut at 100 would start a line with "-999...", which a value line reader empties.
    std::string longTerm = std::string(94, '7') + "*((x)-999.25)/(1+((x)-999.25)^2)" + std::string(150, '8');
    const std::vector<std::string> terms = {"(-1)", longTerm, "3*(x)"};
    const std::vector<std::string> lines = FormulaLines(terms, 100);
    std::string joined;
    for (const auto& line : lines) {
        EXPECT_LE(line.size(), 100u) << line;
        EXPECT_NE(line.front(), '-') << line;
        EXPECT_NE(line.front(), ' ') << line;
        joined += line;
    }
    EXPECT_EQ(lines.front().rfind("y = ", 0), 0u);
    EXPECT_EQ(WithoutBlanks(joined), WithoutBlanks("y = (-1) + " + longTerm + " + 3*(x)"));
}

}  // namespace
}  // namespace quillet::fitting
