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
    needsSolving_ = true;
}

void clsEquation::VarRemove(const std::string& name) {
    variables_.Remove(name);
    needsSolving_ = true;
}

expr::VarSlot clsEquation::Slot(const std::string& name) { return variables_.SlotOf(Trim(name)); }

void clsEquation::Parse() {
    formula_ = expr::RewriteMod(formula_);
    program_ = expr::Compile(expr::ParseFormula(formula_), variables_);
    parsed_ = true;
}

void clsEquation::Solutions(expr::VarSlot x, std::span<const double> xs, std::span<double> ys) {
    if (ys.size() < xs.size()) expr::RaiseEq(err::InvalidCall);
    for (std::size_t i = 0; i < xs.size(); ++i) {
        Var(x, xs[i]);
        ys[i] = Solution();
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
