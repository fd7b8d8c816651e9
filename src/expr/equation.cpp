#include "expr/equation.h"

#include <exception>

#include "env/text.h"
#include "expr/errors.h"
#include "expr/parser.h"

namespace quillet {

namespace {

// The class's own errors and the arithmetic ones reach the caller as they are; anything
// else becomes "Invalid Equation".
bool PassesThrough(int number) {
    return (number >= 1100 && number <= 1105) || number == err::InvalidCall || number == err::Overflow ||
           number == err::DivisionByZero;
}

}  // namespace

void clsEquation::Degrees(bool value) {
    if (value == degrees_) return;
    degrees_ = value;
    needsSolving_ = true;
}

void clsEquation::Equation(const std::string& text) {
    formula_ = LCase(text);
    parsed_ = false;
    needsSolving_ = true;
}

double clsEquation::Var(const std::string& name) const {
    const double* v = variables_.Find(name);
    if (!v) expr::RaiseEq(expr::eqerr::UndefinedVariable, "Undefined Variable: " + name);
    return *v;
}

void clsEquation::Var(const std::string& name, double value) {
    variables_.Set(Trim(name), value);
    needsSolving_ = true;
}

void clsEquation::VarClear() {
    variables_.Clear();
    program_.inputsDefined = false;
    needsSolving_ = true;
}

void clsEquation::VarRemove(const std::string& name) {
    variables_.Remove(name);
    program_.inputsDefined = false;
    needsSolving_ = true;
}

expr::VarSlot clsEquation::Slot(const std::string& name) { return variables_.SlotOf(Trim(name)); }

void clsEquation::Parse() {
    expr::RewriteMod(formula_);
    program_ = expr::Compile(expr::ParseFormula(formula_), variables_);
    parsed_ = true;
}

// The first X goes the ordinary way, which parses when needed; the others in one run, which
// leaves the variable and the solution as the ordinary way would.
void clsEquation::Solutions(expr::VarSlot x, std::span<const double> xs, std::span<double> ys) {
    if (ys.size() < xs.size()) expr::RaiseEq(err::InvalidCall);
    if (xs.empty()) return;
    Var(x, xs[0]);
    ys[0] = Solution();
    expr::Sweep sweep{x, xs.subspan(1), ys.subspan(1, xs.size() - 1)};
    if (sweep.xs.empty()) return;
    try {
        solution_ = program_.Run(variables_, degrees_, random_, &sweep);
        variables_.Set(x, xs.back());
    } catch (...) {
        variables_.Set(x, sweep.xs[sweep.done]);
        if (sweep.done > 0) solution_ = sweep.ys[sweep.done - 1];
        needsSolving_ = true;
        RaiseTranslated();
    }
}

// The class's own errors and the arithmetic ones pass; anything else is "Invalid Equation".
void clsEquation::RaiseTranslated() {
    try {
        throw;
    } catch (const RuntimeError& e) {
        if (PassesThrough(e.number())) throw;
        expr::RaiseInvalidEquation();
    } catch (const std::exception&) {
        expr::RaiseInvalidEquation();
    }
}

}  // namespace quillet
