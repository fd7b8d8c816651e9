#pragma once
// The least-squares fit in normalised units: Levenberg-Marquardt over the shape parameters,
// with the offset and amplitudes solved for at every step (variable projection).
#include <functional>
#include <string>
#include <vector>

#include "fitting/models.h"
#include "fitting/solver_options.h"

namespace quillet::fitting {

struct FitProblem {
    const Model* model = nullptr;
    std::vector<double> u;        // normalised X
    std::vector<double> v;        // normalised Y
    std::vector<double> weights;  // residual multipliers; empty: all 1
    std::vector<double> start;    // only the shape parameters' values steer the fit
    std::vector<double> lower;    // per parameter; -inf/+inf: unbounded
    std::vector<double> upper;
    EngineOptions options;
    std::function<void(const std::string&)> progress;  // receives progress lines
};

enum class FitOutcome { Converged, NotConverged, Diverged };

struct FitResult {
    FitOutcome outcome = FitOutcome::Diverged;
    std::string reason;  // why it stopped, for a person
    std::vector<double> params;
    std::vector<double> stdErrors;     // empty when the covariance could not be computed
    std::string stdErrorsNote;         // why they are missing
    std::vector<int> atBound;          // parameters that ended on one of their bounds
    bool linearRankDeficient = false;  // some amplitudes were not determined by the data
    double weightedRss = 0;            // sum of squared weighted residuals, normalised units
    int iterations = 0;                // step attempts, refused ones included
    long evaluations = 0;              // evaluations of the model over all points
    double seconds = 0;
};

// The bounds the model asks for: sine frequencies between 0 and 130% of their start.
void SetModelBounds(FitProblem& problem);

FitResult RunEngine(const FitProblem& problem);

// The parameters with the shapes of `problem.start` and the best offset and amplitudes for
// them (one weighted linear least-squares solve); empty when the model cannot be evaluated there.
std::vector<double> BestLinearFor(const FitProblem& problem);

}  // namespace quillet::fitting
