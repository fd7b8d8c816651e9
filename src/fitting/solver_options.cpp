#include "fitting/solver_options.h"

#include <algorithm>
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

    bool blank() const { return text.empty() || text == "-EOF-"; }

    [[noreturn]] void Refuse(const std::string& why) const {
        throw FitInputError("Solver variable " + std::to_string(slot) + " (" + name + ") " + why + ": \"" + text +
                            "\".");
    }

    std::optional<double> Positive() const {
        if (blank()) return std::nullopt;
        auto v = ParseNumber(text);
        if (!v) Refuse("is not a number");
        if (*v <= 0) Refuse("must be above 0");
        return v;
    }

    std::optional<double> Fraction() const {
        auto v = Positive();
        if (v && *v > 1) Refuse("must lie in 0 < value <= 1");
        return v;
    }

    std::optional<long> Whole(long least) const {
        if (blank()) return std::nullopt;
        auto v = ParseNumber(text);
        if (!v) Refuse("is not a number");
        if (*v != std::floor(*v) || *v < static_cast<double>(least) || *v > 1e9)
            Refuse("must be a whole number from " + std::to_string(least) + " up");
        return static_cast<long>(*v);
    }
};

// A first step about `fraction` of the undamped one: damping lambda = 1/fraction - 1, and the
// engine's trust region is 1/lambda, at most its default of 1e4.
double RegionForFirstStep(double fraction) { return fraction >= 1 ? 1e4 : std::min(1e4, fraction / (1 - fraction)); }

}  // namespace

EngineOptions MapSolverValues(int modelId, const std::array<std::string, 6>& values) {
    EngineOptions o;
    Variable remax{1, "REMAX", values[0]};
    Variable detail{2, "DETAIL", values[1]};
    if (auto v = remax.Whole(1)) o.maxIterations = static_cast<int>(*v);
    if (auto v = detail.Whole(0)) o.progressEvery = static_cast<int>(*v);
    if (!UsesFamilyB(modelId)) {
        Variable delta{3, "DELTA", values[2]};
        Variable predamp{4, "PREDAMP", values[3]};
        Variable damp{5, "DAMP", values[4]};
        o.parameterTolerance = delta.Positive();
        if (auto v = predamp.Fraction()) o.initialTrustRegion = RegionForFirstStep(*v);
        // A step that achieves less than DAMP of its predicted decrease is refused and the next
        // one damped; no step can be asked to do as well as predicted, hence the cap.
        if (auto v = damp.Fraction()) o.minRelativeDecrease = std::min(*v, 0.9);
        return o;
    }
    Variable evalMax{3, "EvalMax", values[2]};
    Variable zero{4, "ZERO", values[3]};
    Variable accuracy{5, "ACCURACY", values[4]};
    o.maxEvaluations = evalMax.Whole(1);
    o.functionTolerance = zero.Positive();
    o.gradientTolerance = accuracy.Positive();
    // RHO weighs a penalty on the step, which is the damping lambda of the first iteration.
    if (modelId != model::BellCurve) {
        Variable rho{6, "RHO", values[5]};
        if (auto v = rho.Positive()) o.initialTrustRegion = 1 / *v;
    }
    return o;
}

}  // namespace quillet::fitting
