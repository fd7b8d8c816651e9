#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "env/errors.h"
#include "expr/compiler.h"
#include "expr/equation.h"
#include "expr/native.h"
#include "expr/parser.h"
#include "golden/golden_format.h"

namespace quillet::testing {
namespace {

// X values from faults (zero, negatives for roots and logarithms, overflows) to ordinary ones.
std::vector<double> Xs() {
    std::vector<double> xs = {0.0, -0.0, -1.0, 1.0, 1e-300, -800.0, 800.0, 2.5, -3.75, 0.7};
    for (int i = 0; i < 40; ++i) xs.push_back(-6.1 + 0.31 * i);
    return xs;
}

// Each op with a machine form, and the same op reached through the function table.
const char* const kFormulas[] = {
    "3*x^2-sin(x)/2",
    "x^3+x^0.5-x>2+x<1",
    "-x+abs(x-1)*sgn(x)",
    "exp(x)/exp(2*x)+log(x)-sqr(x)",
    "sin(x)*cos(x)+cos(x)/sin(x)",
    "tan(x/3)+atn(x)",
    "min(x,1)+max(x,-1)+min(0,x)",
    "sinh(x/2)+log10(x+3)+fix(x)",
    "x\\0.75+x mod 1.25",
    "1/(x-2.5)+y",
    "exp(1000*x)",
};

std::string At(clsEquation& eq, expr::VarSlot x, double value) {
    return golden::Outcome([&] {
        eq.Var(x, value);
        return eq.Solution();
    });
}

// Solved once on a fresh object: the interpreter's outcome.
std::string Interpreted(const char* formula, bool degrees, double value) {
    clsEquation eq;
    eq.Degrees(degrees);
    eq.Var("y", 0.25);
    eq.Equation(formula);
    return At(eq, eq.Slot("x"), value);
}

TEST(MachineCode, GivesTheInterpretersBitsAndErrorsInBothAngleUnits) {
    const std::vector<double> xs = Xs();
    for (const char* formula : kFormulas)
        for (bool degrees : {false, true}) {
            clsEquation eq;
            eq.Degrees(degrees);
            eq.Var("y", 0.25);
            eq.Equation(formula);
            const expr::VarSlot x = eq.Slot("x");
            // Twice over: the first round is interpreted and makes the machine code.
            for (int round = 0; round < 2; ++round)
                for (double v : xs)
                    ASSERT_EQ(At(eq, x, v), Interpreted(formula, degrees, v))
                        << formula << (degrees ? " in degrees" : "") << " at " << v << ", round " << round;
        }
}

TEST(MachineCode, SweepsStopAtTheValueThatRaisesAndGoOnAfterIt) {
    const std::vector<double> xs = Xs();
    for (const char* formula : kFormulas) {
        clsEquation eq;
        eq.Var("y", 0.25);
        eq.Equation(formula);
        const expr::VarSlot x = eq.Slot("x");
        std::vector<double> ys(xs.size());
        for (std::size_t from = 0; from < xs.size();) {
            std::size_t failed = xs.size();
            std::string error;
            try {
                eq.Solutions(x, std::span(xs).subspan(from), std::span(ys).subspan(from));
            } catch (const RuntimeError& e) {
                failed = from;
                while (xs[failed] != eq.Var("x") || std::signbit(xs[failed]) != std::signbit(eq.Var("x"))) ++failed;
                error = golden::ErrorText(e);
            }
            for (; from < failed; ++from)
                ASSERT_EQ(golden::Bits(ys[from]), Interpreted(formula, false, xs[from]))
                    << formula << " at " << xs[from];
            if (failed < xs.size()) {
                ASSERT_EQ(error, Interpreted(formula, false, xs[failed])) << formula << " at " << xs[failed];
            }
            from = failed + 1;
        }
    }
}

TEST(MachineCode, IsMadeForFormulasSolvedOftenUnlessTheyDrawRandomNumbers) {
    if (!expr::NativeCodeAvailable()) GTEST_SKIP() << "this build makes no machine code";
    for (const auto& [formula, made] : {std::pair{"3*x^2-sin(x)/2", true}, {"x*rnd", false}, {"x*rnd(1)", false}}) {
        expr::Variables variables;
        const expr::VarSlot x = variables.SlotOf("x");
        expr::Program program = expr::Compile(expr::ParseFormula(formula), variables);
        expr::SingleRandom random;
        for (int i = 0; i < 64; ++i) {
            variables.Set(x, 0.5 + i);
            program.Run(variables, false, random);
        }
        EXPECT_EQ(program.native != nullptr, made) << formula;
    }
}

}  // namespace
}  // namespace quillet::testing
