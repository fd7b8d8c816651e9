#pragma once
// The solver variables of question 22, mapped to the engine's options. A blank variable takes
// the default the Solver Variables tab shows for the model's family.
#include <array>
#include <optional>
#include <string>

namespace quillet::fitting {

struct EngineOptions {
    int maxIterations = 20;                   // REMAX: step attempts, refused ones included
    int progressEvery = 0;                    // DETAIL: a progress line every Nth iteration, 0 none
    double firstDamping = 0;                  // PREDAMP (as 1/PREDAMP - 1), RHO: damping of the first step
    double dampingThreshold = 0.25;           // DAMP: a step that achieves less than this share of its
                                              // predicted decrease makes the next one more damped
    std::optional<double> stepTolerance;      // DELTA (family A)
    std::optional<long> maxEvaluations;       // EvalMax (family B)
    std::optional<double> functionTolerance;  // ZERO (family B)
    std::optional<double> gradientTolerance;  // ACCURACY (family B)
};

// The options for model `modelId` from the six solver values as typed (blank, or "-EOF-" from
// a file that ends early: the tab's default). Raises FitInputError for a value that is not a
// number or is out of its range.
EngineOptions MapSolverValues(int modelId, const std::array<std::string, 6>& values);

}  // namespace quillet::fitting
