#include "fitting/series_cost.h"

#include <cmath>

namespace quillet::fitting {

SeriesCost::SeriesCost(const FitProblem& problem) : problem_(problem) {
    set_num_residuals(static_cast<int>(problem.u.size()));
    mutable_parameter_block_sizes()->push_back(problem.model->parameterCount());
}

bool SeriesCost::Evaluate(double const* const* parameters, double* residuals, double** jacobians) const {
    ++evaluations_;
    const Model& model = *problem_.model;
    const double* p = parameters[0];
    const std::size_t np = static_cast<std::size_t>(model.parameterCount());
    double* jac = jacobians ? jacobians[0] : nullptr;
    for (std::size_t i = 0; i < problem_.u.size(); ++i) {
        double* row = jac ? jac + i * np : nullptr;
        const double w = problem_.weights.empty() ? 1.0 : problem_.weights[i];
        const double r = w * (model.Value(p, problem_.u[i], row) - problem_.v[i]);
        // A step into overflow is refused, and the engine damps the next one.
        if (!std::isfinite(r)) return false;
        residuals[i] = r;
        if (!row) continue;
        for (std::size_t k = 0; k < np; ++k) {
            row[k] *= w;
            if (!std::isfinite(row[k])) return false;
        }
    }
    return true;
}

}  // namespace quillet::fitting
