#pragma once
// All weighted residuals w_i (f(u_i) - v_i) of a fit as one Ceres cost function, with the
// models' analytic derivatives.
#include <ceres/cost_function.h>

#include "fitting/fit_engine.h"

namespace quillet::fitting {

class SeriesCost : public ceres::CostFunction {
public:
    explicit SeriesCost(const FitProblem& problem);
    bool Evaluate(double const* const* parameters, double* residuals, double** jacobians) const override;
    long evaluations() const { return evaluations_; }

private:
    const FitProblem& problem_;
    mutable long evaluations_ = 0;
};

}  // namespace quillet::fitting
