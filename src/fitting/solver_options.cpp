#include "fitting/solver_options.h"

#include <cmath>

#include "fitting/fit_error.h"
#include "fitting/number_text.h"
#include "model/catalogue.h"
#include "solver/solver_tab.h"

namespace quillet::fitting {

namespace {

struct Variable {
    int slot;  // 1..6
    const char* name;
    const std::string& text;

    [[noreturn]] void Refuse(const std::string& why) const {
        throw FitInputError("Solver variable " + std::to_string(slot) + " (" + name + ") " + why + ": \"" + text +
                            "\".");
    }

    double Positive() const {
        auto v = ParseNumber(text);
        if (!v) Refuse("is not a number");
        if (*v <= 0) Refuse("must be above 0");
        return *v;
    }

    double Fraction() const {
        const double v = Positive();
        if (v > 1) Refuse("must lie in 0 < value <= 1");
        return v;
    }

    long Whole(long least) const {
        auto v = ParseNumber(text);
        if (!v) Refuse("is not a number");
        if (*v != std::floor(*v) || *v < static_cast<double>(least) || *v > 1e9)
            Refuse("must be a whole number from " + std::to_string(least) + " up");
        return static_cast<long>(*v);
    }
};

}  // namespace

EngineOptions MapSolverValues(int modelId, const std::array<std::string, 6>& given) {
    // A blank box means the default its family shows on the tab.
    const bool familyB = UsesFamilyB(modelId);
    const auto& defaults = familyB ? kSolverFamilyB : kSolverFamilyA;
    std::array<std::string, 6> values;
    for (std::size_t i = 0; i < 6; ++i) {
        const bool blank = given[i].empty() || given[i] == "-EOF-";
        values[i] = blank ? defaults[i].defaultValue : given[i];
    }
    EngineOptions o;
    o.maxIterations = static_cast<int>(Variable{1, "REMAX", values[0]}.Whole(1));
    o.progressEvery = static_cast<int>(Variable{2, "DETAIL", values[1]}.Whole(0));
    if (!familyB) {
        o.stepTolerance = Variable{3, "DELTA", values[2]}.Positive();
        // A first step of about PREDAMP of the undamped one.
        o.firstDamping = 1 / Variable{4, "PREDAMP", values[3]}.Fraction() - 1;
        o.dampingThreshold = Variable{5, "DAMP", values[4]}.Fraction();
        return o;
    }
    o.maxEvaluations = Variable{3, "EvalMax", values[2]}.Whole(1);
    o.functionTolerance = Variable{4, "ZERO", values[3]}.Positive();
    o.gradientTolerance = Variable{5, "ACCURACY", values[4]}.Positive();
    // The bell curve is not asked for RHO, so its sixth box means nothing.
    const std::string& rho = modelId == model::BellCurve ? defaults[5].defaultValue : values[5];
    o.firstDamping = Variable{6, "RHO", rho}.Positive();
    return o;
}

}  // namespace quillet::fitting
