#include "fitting/model_formula.h"

#include <cmath>
#include <numbers>

#include "fitting/number_text.h"
#include "model/catalogue.h"

namespace quillet::fitting {

namespace {

// A factor: negative values in parentheses, which the calculator reads as "(0-...)".
std::string Factor(double v) { return std::signbit(v) ? "(" + FormatNumber(v) + ")" : FormatNumber(v); }

// "(x)" shifted by -v, written as a subtraction or an addition.
std::string Shifted(double v) { return "((x)" + (v >= 0 ? "-" + FormatNumber(v) : "+" + FormatNumber(-v)) + ")"; }

// "+v" or "-|v|", added to a phase.
std::string Added(double v) { return v >= 0 ? "+" + FormatNumber(v) : "-" + FormatNumber(-v); }

std::string Term(const CompletedFit& fit, int i) {
    const Model& m = fit.model;
    auto p = [&](int group) { return fit.physicalValue(m.index(group, i)); };
    switch (m.kind().id) {
        case model::Lorentzian:
            return Factor(p(0)) + "/(1+(2*" + Shifted(p(2)) + "/" + Factor(p(1)) + ")^2)";
        case model::ModifiedLorentzian: {
            const std::string s = "(2*" + Shifted(p(2)) + "/" + Factor(p(1)) + ")";
            return "(" + Factor(p(0)) + "+" + Factor(p(3)) + "*" + s + ")/(1+" + s + "^2)";
        }
        case model::Exponential:
            return Factor(p(0)) + "*exp(" + Factor(p(1)) + "*(x))";
        case model::Power:
            return Factor(p(0)) + "*(x)" + (i > 1 ? "^" + std::to_string(i) : "");
        case model::Sine:
            return Factor(p(0)) + "*sin(" + Factor(2 * std::numbers::pi * p(1)) + "*(x)" + Added(p(2)) + ")";
        case model::SineExponential:
            return Factor(p(0)) + "*sin(" + Factor(2 * std::numbers::pi * p(1)) + "*(x)" + Added(p(2)) + ")*exp(" +
                   Factor(p(3)) + "*(x))";
        case model::BellCurve:
            return Factor(p(1)) + "*exp(-(" + Shifted(p(0)) + "/" + Factor(p(2)) + ")^2/2)";
    }
    return {};
}

}  // namespace

std::vector<std::string> FormulaTerms(const CompletedFit& fit) {
    std::vector<std::string> terms;
    if (fit.model.kind().hasOffset) terms.push_back(Factor(fit.physicalValue(0)));
    for (int i = 1; i <= fit.model.terms(); ++i) terms.push_back(Term(fit, i));
    return terms;
}

}  // namespace quillet::fitting
