#pragma once
// The solver variables of question 22, mapped to the engine's options.
#include <array>
#include <optional>
#include <string>

namespace quillet::fitting {

// An option left empty takes the engine's own default.
struct EngineOptions {
    std::optional<int> maxIterations;            // REMAX
    std::optional<int> progressEvery;            // DETAIL: a progress line every Nth iteration, 0 none
    std::optional<double> parameterTolerance;    // DELTA
    std::optional<double> functionTolerance;     // ZERO
    std::optional<double> gradientTolerance;     // ACCURACY
    std::optional<double> initialTrustRegion;    // PREDAMP, RHO
    std::optional<double> minRelativeDecrease;   // DAMP
    std::optional<long> maxEvaluations;          // EvalMax
};

// The options for model `modelId` from the six solver values as typed (blank, or "-EOF-"
// from a file that ends early: the default). Raises FitInputError for a value that is not
// a number or is out of its range.
EngineOptions MapSolverValues(int modelId, const std::array<std::string, 6>& values);

}  // namespace quillet::fitting
