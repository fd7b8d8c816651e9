#pragma once
// clsEquation: one line of formula text in, one double out, with named variables and a
// degrees switch. Errors are raised as RuntimeError with the source "clsEquation"
// ("clsEquation.Parse" for a parse failure other than unbalanced parentheses):
//   1100 "Unbalanced parenthesis", 1101 "Sorry Undefined Function: name()",
//   1102 "Undefined Variable: name", 1103 "Invalid Equation",
//   1104 "Invalid arguments to function: name()", and 5, 6, 11 from the arithmetic.
#include <span>
#include <string>

#include "expr/compiler.h"
#include "expr/program.h"
#include "expr/random.h"
#include "expr/variables.h"

namespace quillet {

class clsEquation {
public:
    clsEquation() = default;

    // The angle unit of the trigonometric functions.
    bool Degrees() const { return degrees_; }
    void Degrees(bool value);

    // The formula, stored lower-cased; after a parse every " mod " reads "%".
    const std::string& Equation() const { return formula_; }
    void Equation(const std::string& text);

    // The value of the variable of exactly that name; raises 1102 when there is none.
    double Var(const std::string& name) const;
    // Sets a variable under the name trimmed of blanks.
    void Var(const std::string& name, double value);
    void VarClear();
    // Removes the variable of exactly that name; a missing one is no error.
    void VarRemove(const std::string& name);

    // A handle to the variable under the name trimmed of blanks, for setting it without a
    // look-up; the variable stays undefined until it is set. Valid for the object's life.
    expr::VarSlot Slot(const std::string& name);
    void Var(expr::VarSlot slot, double value) {
        variables_.Set(slot, value);
        needsSolving_ = true;
    }

    // Evaluates only when the formula, a variable or Degrees changed since the last success.
    double Solution() {
        if (needsSolving_) Solve();
        return solution_;
    }
    // Evaluates now. On failure the error is raised and the previous solution is kept.
    void Solve() {
        try {
            if (!parsed_) Parse();
            solution_ = program_.Run(variables_, degrees_, random_);
            needsSolving_ = false;
        } catch (...) {
            RaiseTranslated();
        }
    }
    // For each X in turn, as Var(x, X) and then Solution(): ys[i] is the solution at xs[i].
    // An error stops at the X that raised it. ys must hold at least as many values as xs.
    void Solutions(expr::VarSlot x, std::span<const double> xs, std::span<double> ys);

private:
    void Parse();
    [[noreturn]] static void RaiseTranslated();

    expr::Variables variables_;
    // Compiled by Parse; until the first formula, the program of an empty one.
    expr::Program program_ = expr::Compile(expr::ParsedFormula{}, variables_);
    bool needsSolving_ = false;
    bool parsed_ = true;
    bool degrees_ = false;
    std::string formula_;
    double solution_ = 0;
    expr::SingleRandom random_;
};

}  // namespace quillet
