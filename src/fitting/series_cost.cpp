#include "fitting/series_cost.h"

#include <cmath>

namespace quillet::fitting {

SeriesCost::SeriesCost(const FitProblem& problem) : problem_(problem) {
    set_num_residuals(static_cast<int>(problem.u.size()));
    mutable_parameter_block_sizes()->push_back(problem.model->parameterCount());
}

bool SeriesCost::Evaluate(double const* const* parameters, double* residuals, double** jacobians) const {
    ++evaluations_;
    const FitProblem& fp = problem_;
    const std::size_t n = fp.u.size();
    const std::size_t np = static_cast<std::size_t>(fp.model->parameterCount());
    double* jac = jacobians ? jacobians[0] : nullptr;
    fp.model->Values(parameters[0], fp.u.data(), n, residuals, jac);
    for (std::size_t i = 0; i < n; ++i) {
        const double w = fp.weights.empty() ? 1.0 : fp.weights[i];
        const double r = w * (residuals[i] - fp.v[i]);
        // A step into overflow is refused, and the engine damps the next one.
        if (!std::isfinite(r)) return false;
        residuals[i] = r;
        if (!jac) continue;
        for (double* d = jac + i * np; d != jac + (i + 1) * np; ++d) {
            *d *= w;
            if (!std::isfinite(*d)) return false;
        }
    }
    return true;
}

}  // namespace quillet::fitting
