#include "fitting/fit_engine.h"

#include <ceres/iteration_callback.h>
#include <ceres/problem.h>
#include <ceres/solver.h>
#include <glog/logging.h>

#include <chrono>
#include <cmath>
#include <limits>

#include "fitting/covariance.h"
#include "fitting/number_text.h"
#include "fitting/series_cost.h"

namespace quillet::fitting {

namespace {

// Progress lines every Nth iteration, and the cap on model evaluations.
class Monitor : public ceres::IterationCallback {
public:
    Monitor(const FitProblem& problem, const SeriesCost& cost) : problem_(problem), cost_(cost) {}

    ceres::CallbackReturnType operator()(const ceres::IterationSummary& s) override {
        const int every = problem_.options.progressEvery.value_or(0);
        if (every > 0 && s.iteration > 0 && s.iteration % every == 0 && problem_.progress)
            problem_.progress("iteration " + std::to_string(s.iteration) + ": normalised RSS " +
                              FormatShort(2 * s.cost, 10) + ", step " + FormatShort(s.step_norm, 3) +
                              ", evaluations " + std::to_string(cost_.evaluations()));
        const long cap = problem_.options.maxEvaluations.value_or(0);
        if (cap > 0 && cost_.evaluations() >= cap) {
            capped = true;
            return ceres::SOLVER_TERMINATE_SUCCESSFULLY;
        }
        return ceres::SOLVER_CONTINUE;
    }

    bool capped = false;

private:
    const FitProblem& problem_;
    const SeriesCost& cost_;
};

ceres::Solver::Options SolverOptions(const EngineOptions& o) {
    ceres::Solver::Options c;
    c.minimizer_type = ceres::TRUST_REGION;
    c.trust_region_strategy_type = ceres::LEVENBERG_MARQUARDT;
    // Normal equations: with a few parameters and thousands of points J'J is a small matrix,
    // and the step's accuracy only sets how fast the fit converges, not where.
    c.linear_solver_type = ceres::DENSE_NORMAL_CHOLESKY;
    c.num_threads = 1;
    c.logging_type = ceres::SILENT;
    c.minimizer_progress_to_stdout = false;
    // Tighter than Ceres's own defaults (1e-6, 1e-8): the fit goes on until the sum of squares
    // stops changing within rounding, which costs an iteration or two at these sizes.
    c.function_tolerance = 1e-15;
    c.parameter_tolerance = 1e-10;
    if (o.maxIterations) c.max_num_iterations = *o.maxIterations;
    if (o.parameterTolerance) c.parameter_tolerance = *o.parameterTolerance;
    if (o.functionTolerance) c.function_tolerance = *o.functionTolerance;
    if (o.gradientTolerance) c.gradient_tolerance = *o.gradientTolerance;
    if (o.initialTrustRegion) c.initial_trust_region_radius = *o.initialTrustRegion;
    if (o.minRelativeDecrease) c.min_relative_decrease = *o.minRelativeDecrease;
    return c;
}

EngineOptions Applied(const ceres::Solver::Options& c, const EngineOptions& o) {
    EngineOptions a;
    a.maxIterations = c.max_num_iterations;
    a.progressEvery = o.progressEvery.value_or(0);
    a.parameterTolerance = c.parameter_tolerance;
    a.functionTolerance = c.function_tolerance;
    a.gradientTolerance = c.gradient_tolerance;
    a.initialTrustRegion = c.initial_trust_region_radius;
    a.minRelativeDecrease = c.min_relative_decrease;
    a.maxEvaluations = o.maxEvaluations.value_or(0);
    return a;
}

// The Jacobian of the weighted residuals at `params`, row-major; empty when it cannot be evaluated.
std::vector<double> JacobianAt(const SeriesCost& cost, const std::vector<double>& params) {
    const std::size_t n = static_cast<std::size_t>(cost.num_residuals());
    std::vector<double> residuals(n), jacobian(n * params.size());
    const double* p = params.data();
    double* j = jacobian.data();
    if (!cost.Evaluate(&p, residuals.data(), &j)) return {};
    return jacobian;
}

bool AllFinite(const std::vector<double>& values) {
    for (double v : values)
        if (!std::isfinite(v)) return false;
    return true;
}

}  // namespace

void SetModelBounds(FitProblem& problem) {
    const Model& m = *problem.model;
    const std::size_t np = static_cast<std::size_t>(m.parameterCount());
    problem.lower.assign(np, -std::numeric_limits<double>::infinity());
    problem.upper.assign(np, std::numeric_limits<double>::infinity());
    for (std::size_t k = 0; k < np; ++k)
        if (m.isFrequency(static_cast<int>(k))) {
            problem.lower[k] = 0;
            problem.upper[k] = 1.3 * problem.start[k];
        }
}

FitResult RunEngine(const FitProblem& fp) {
    // The engine's own log lines would only repeat on stderr what the report says.
    FLAGS_minloglevel = google::GLOG_FATAL;
    FitResult result;
    const int np = fp.model->parameterCount();
    result.params = fp.start;
    double* block = result.params.data();

    ceres::Problem::Options po;
    po.cost_function_ownership = ceres::DO_NOT_TAKE_OWNERSHIP;
    ceres::Problem problem(po);
    SeriesCost cost(fp);
    problem.AddResidualBlock(&cost, nullptr, block);
    for (int k = 0; k < np; ++k) {
        const auto i = static_cast<std::size_t>(k);
        if (i < fp.lower.size() && std::isfinite(fp.lower[i])) problem.SetParameterLowerBound(block, k, fp.lower[i]);
        if (i < fp.upper.size() && std::isfinite(fp.upper[i])) problem.SetParameterUpperBound(block, k, fp.upper[i]);
    }

    ceres::Solver::Options options = SolverOptions(fp.options);
    Monitor monitor(fp, cost);
    options.callbacks.push_back(&monitor);
    result.applied = Applied(options, fp.options);

    ceres::Solver::Summary summary;
    const auto t0 = std::chrono::steady_clock::now();
    ceres::Solve(options, &problem, &summary);
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    result.iterations = summary.iterations.empty() ? 0 : static_cast<int>(summary.iterations.size()) - 1;
    result.evaluations = cost.evaluations();
    result.weightedRss = 2 * summary.final_cost;

    if (monitor.capped) {
        result.outcome = FitOutcome::NotConverged;
        result.reason = "the limit of " + std::to_string(*result.applied.maxEvaluations) +
                        " model evaluations (EvalMax) was reached";
    } else if (summary.termination_type == ceres::CONVERGENCE) {
        result.outcome = FitOutcome::Converged;
        result.reason = summary.message;
    } else if (summary.termination_type == ceres::NO_CONVERGENCE) {
        result.outcome = FitOutcome::NotConverged;
        result.reason = summary.message;
    } else {
        result.outcome = FitOutcome::Diverged;
        result.reason = "the model could not be evaluated (" + summary.message + ")";
    }
    if (result.outcome != FitOutcome::Diverged && (!AllFinite(result.params) || !std::isfinite(result.weightedRss))) {
        result.outcome = FitOutcome::Diverged;
        result.reason = "the parameters ran off to values that are not finite";
    }
    if (result.outcome == FitOutcome::Diverged) return result;

    const long dof = static_cast<long>(fp.u.size()) - np;
    const std::vector<double> jacobian = JacobianAt(cost, result.params);
    if (jacobian.empty())
        result.stdErrorsNote = "the model's derivatives cannot be evaluated at the fitted values";
    else
        result.stdErrors = StandardErrors(jacobian, np, result.weightedRss / static_cast<double>(dof),
                                          result.stdErrorsNote);
    return result;
}

}  // namespace quillet::fitting
