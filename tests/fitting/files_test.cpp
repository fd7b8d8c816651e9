// What a run writes: file names, the formula's lines, the plot file.
#include <gtest/gtest.h>

#include "fitting/equ_writer.h"
#include "fitting/plot_writer.h"

namespace quillet::fitting {
namespace {

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
