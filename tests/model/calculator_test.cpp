#include "model/calculator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/fake_dialogs.h"
#include "support/test_env.h"

namespace quillet::testing {
namespace {

class Calculator : public ::testing::Test {
protected:
    Calculator() {
        s.env.dialogs = &dialogs;
        s.form.tbYanswer.text = "Y Result will be shown here.";
        s.form.tbDeviation.text = "Std Deviation here.";
    }

    // A model file with the given formula lines under a standard-deviation line.
    void UseModel(const std::vector<std::string>& formulaLines, const std::string& first = "Std Dev = 0.5") {
        std::string bytes = first + "\r\n";
        for (const auto& l : formulaLines) bytes += l + "\r\n";
        WriteBytes(dir / "model.equ", bytes);
        s.form.calcFolder = dir.path();
        s.form.calcSelectedFile = "model.equ";
    }

    std::optional<double> CalculateAt(const std::string& x) {
        s.form.tbXvalue.text = x;
        return cmdCalculate_Click(s);
    }

    void ExpectOneBox(const std::string& text, const std::string& title) {
        ASSERT_EQ(dialogs.boxes.size(), 1u);
        EXPECT_EQ(dialogs.boxes[0].text, text);
        EXPECT_EQ(dialogs.boxes[0].title, title);
        EXPECT_EQ(dialogs.boxes[0].style, 48);
    }

    void ExpectResultBoxesUntouched() {
        EXPECT_EQ(s.form.tbYanswer.text, "Y Result will be shown here.");
        EXPECT_EQ(s.form.tbDeviation.text, "Std Deviation here.");
    }

    TempDir dir;
    FakeDialogs dialogs;
    AppState s;
};

TEST_F(Calculator, JoinsAMultiLineModelAndShowsYAndDeviation) {
    s.form.calcFolder = std::string(QUILLET_TEST_DATA) + "/expr";
    s.form.calcSelectedFile = "three_lines.equ";
    auto y = CalculateAt("2");
    ASSERT_TRUE(y);
    EXPECT_DOUBLE_EQ(*y, 1.5606530659712634);
    EXPECT_EQ(s.form.tbYanswer.text, "1.56065306597126");
    EXPECT_EQ(s.form.tbDeviation.text, "1.234E-02");
    EXPECT_TRUE(dialogs.boxes.empty());
}

struct Rewrite {
    std::vector<std::string> lines;
    const char* x;
    double y;
};

void PrintTo(const Rewrite& r, std::ostream* os) { *os << r.lines[0] << " at " << r.x; }

class CalculatorRewrites : public Calculator, public ::testing::WithParamInterface<Rewrite> {};

TEST_P(CalculatorRewrites, EvaluatesTheRewrittenFormula) {
    UseModel(GetParam().lines);
    auto y = CalculateAt(GetParam().x);
    ASSERT_TRUE(y) << (dialogs.boxes.empty() ? "" : dialogs.boxes[0].text);
    EXPECT_DOUBLE_EQ(*y, GetParam().y);
}

INSTANTIATE_TEST_SUITE_P(Formulas, CalculatorRewrites, ::testing::Values(
    Rewrite{{"y = [x+1]*2"}, "3", 8},
    Rewrite{{"y = 2 * x _"}, "2", 4},
    Rewrite{{"Y = 2*X"}, "2", 4},
    Rewrite{{"y = exp(x)"}, "0", 1},                       // "exp" keeps its e and x
    Rewrite{{"y = EXP(-x)"}, "1", 0.36787944117144233},    // "(-" becomes "(0-"
    Rewrite{{"y = (+x)"}, "2", 2},                          // "(+" loses its plus
    Rewrite{{"y = 1.5e+1 + x"}, "0", 15},
    Rewrite{{"y = 2.5E-1*x"}, "2", 0.5},
    Rewrite{{"y = 1 +", "   2*x", "", "  + 3"}, "1", 6}));  // lines joined after trimming

INSTANTIATE_TEST_SUITE_P(XTexts, CalculatorRewrites, ::testing::Values(
    Rewrite{{"y = x"}, "2.5E-3", 0.0025},
    Rewrite{{"y = x"}, "1e-3", 0.001},
    Rewrite{{"y = x"}, "1E3", 1000},
    Rewrite{{"y = 2-x"}, "-1", 3},
    Rewrite{{"y = x^2"}, "-1", -1}));  // X goes in as text: -1^2 is -(1^2)

TEST_F(Calculator, NoFileOrAMissingFileIsReported) {
    s.form.calcFolder = dir.path();
    for (const char* file : {"", "gone.equ"}) {
        s.form.calcSelectedFile = file;
        dialogs.boxes.clear();
        dialogs.Answer(1);
        EXPECT_FALSE(CalculateAt("1"));
        ExpectOneBox("An error has occurred.  Please select an existing .EQU file.",
                     "Equation File not selected -or- missing.");
        ExpectResultBoxesUntouched();
    }
}

TEST_F(Calculator, UnusableXIsReportedAndGetsTheFocus) {
    UseModel({"y = x"});
    for (const char* x : {"abc", "", "1,5", "x"}) {
        dialogs.boxes.clear();
        dialogs.Answer(1);
        EXPECT_FALSE(CalculateAt(x));
        ExpectOneBox(std::string("Unable to evaluate your requested 'X' value:") + x,
                     "Quillet");
        EXPECT_EQ(s.form.focus, Ctl::tbXvalue);
        ExpectResultBoxesUntouched();
    }
}

TEST_F(Calculator, ClassErrorShowsItsDescriptionAndKeepsY) {
    struct Case {
        const char* line;
        const char* x;
        const char* text;
    };
    for (const Case& c : {Case{"y = q*x", "1", "Undefined Variable: q"},
                          Case{"y = (x", "1", "Unbalanced parenthesis"},
                          Case{"y = 1/(x-1)", "1", "Division by zero"},
                          Case{"y =", "1", "Invalid Equation"},
                          Case{"y = x", "1e+2", "Invalid Equation"}}) {  // "1>+2": no unary plus
        UseModel({c.line}, "Std Dev = 0.25");
        dialogs.boxes.clear();
        dialogs.Answer(1);
        EXPECT_FALSE(CalculateAt(c.x));
        ExpectOneBox(c.text, "Quillet");
        EXPECT_EQ(s.form.tbYanswer.text, "Y Result will be shown here.");
        EXPECT_EQ(s.form.tbDeviation.text, "0.25");
    }
}

TEST_F(Calculator, DeviationIsTheTextAfterTheFirstEqualsSign) {
    struct Case {
        const char* first;
        const char* shown;
    };
    for (const Case& c :
         {Case{"Std Dev =  1.5E-3 ", "1.5E-3"}, Case{"sd=2=3", "2"}, Case{"no value here", ""}}) {
        UseModel({"y = x"}, c.first);
        ASSERT_TRUE(CalculateAt("1"));
        EXPECT_EQ(s.form.tbDeviation.text, c.shown);
    }
}

TEST_F(Calculator, ModelCurveEvaluatesTheFileOverManyXAsTheTabDoes) {
    UseModel({"y = 2.5e-1*(x)^2 +", "exp(-(x))"});
    const std::vector<double> xs = {-1.5, 0, 2};
    std::vector<double> ys;
    ASSERT_TRUE(ModelCurve(dir / "model.equ", xs, ys));
    for (std::size_t i = 0; i < xs.size(); ++i) EXPECT_EQ(ys[i], *CalculateAt(std::to_string(xs[i]))) << xs[i];
    EXPECT_DOUBLE_EQ(ys[2], 1 + std::exp(-2.0));

    UseModel({"y = 1/(x)"});
    EXPECT_FALSE(ModelCurve(dir / "model.equ", xs, ys));  // division by zero at x = 0
    EXPECT_FALSE(ModelCurve(dir / "none.equ", xs, ys));
}

TEST(ValidmodelX, AcceptsOnlyDigitsSignsPointsAndExponentMarks) {
    for (const char* ok : {"12", "-1.5", "1>-3", "+2<4", "..", "--"}) EXPECT_TRUE(ValidmodelX(ok)) << ok;
    for (const char* bad : {"", " 1", "1e3", "1,5", "x", "1 "}) EXPECT_FALSE(ValidmodelX(bad)) << bad;
}

}  // namespace
}  // namespace quillet::testing
