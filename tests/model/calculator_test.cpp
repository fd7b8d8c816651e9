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
    Calculator() { s.env.dialogs = &dialogs; }

    // A model file with the given formula lines under a standard-deviation line.
    void UseModel(const std::vector<std::string>& formulaLines, const std::string& first = "Std Dev = 0.5 = rounded") {
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

    TempDir dir;
    FakeDialogs dialogs;
    AppState s;
};

TEST_F(Calculator, EvaluatesTheRewrittenFormulaAtTheTypedX) {
    struct Case {
        std::vector<std::string> lines;
        const char* x;
        double y;
    } cases[] = {
        {{"y = [x+1] * 2 _"}, "3", 8},
        {{"y = (+x)"}, "2", 2},                       // "(+" loses its plus
        {{"y = x"}, "2.5E-3", 0.0025},
        {{"y = x^2"}, "-1", -1},  // X goes in as text: -1^2 is -(1^2)
    };
    for (const Case& c : cases) {
        UseModel(c.lines);
        auto y = CalculateAt(c.x);
        ASSERT_TRUE(y) << c.lines[0] << " at " << c.x << ": " << (dialogs.boxes.empty() ? "" : dialogs.boxes[0].text);
        EXPECT_DOUBLE_EQ(*y, c.y) << c.lines[0] << " at " << c.x;
    }
    EXPECT_EQ(s.form.tbDeviation.text, "0.5");  // the text between the first and a second "="
}

TEST_F(Calculator, FailuresShowOneBoxAndLeaveTheResultAlone) {
    struct Case {
        const char* file;  // model.equ holds `line`
        const char* line;
        const char* x;
        std::string text;
        const char* title;
        const char* deviation;  // as the box shows it afterwards
    } cases[] = {
        {"gone.equ", "y = x", "1", "An error has occurred.  Please select an existing .EQU file.",
         "Equation File not selected -or- missing.", "Std Deviation here."},
        {"model.equ", "y = x", "1,5", "Unable to evaluate your requested 'X' value:1,5", "Quillet",
         "Std Deviation here."},
        {"model.equ", "y = x", "", "Unable to evaluate your requested 'X' value:", "Quillet", "Std Deviation here."},
        {"model.equ", "y = q*x", "1", "Undefined Variable: q", "Quillet", "0.25"},
        {"model.equ", "y = x", "1e+2", "Invalid Equation", "Quillet", "0.25"},  // "1>+2": no unary plus
    };
    for (const Case& c : cases) {
        UseModel({c.line}, "Std Dev = 0.25");
        s.form.calcSelectedFile = c.file;
        s.form.tbYanswer.text = "Y Result will be shown here.";
        s.form.tbDeviation.text = "Std Deviation here.";
        s.form.focus = Ctl::None;
        dialogs.boxes.clear();
        dialogs.Answer(mb::OK);
        EXPECT_FALSE(CalculateAt(c.x)) << c.text;
        EXPECT_EQ(dialogs.boxes, (std::vector<ShownBox>{{c.text, c.title, 48}}));
        EXPECT_EQ(s.form.tbYanswer.text, "Y Result will be shown here.") << c.text;
        EXPECT_EQ(s.form.tbDeviation.text, c.deviation) << c.text;
        // An unusable X is typed again.
        EXPECT_EQ(s.form.focus == Ctl::tbXvalue, c.text.starts_with("Unable")) << c.text;
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

}  // namespace
}  // namespace quillet::testing
