#pragma once
// A fit that ran, with what the report, the plot file and the math-model file show.
#include <string>
#include <vector>

#include "fitting/data_file.h"
#include "fitting/fit_engine.h"
#include "fitting/fit_settings.h"
#include "fitting/models.h"

namespace quillet::fitting {

struct CompletedFit {
    FitSettings settings;
    DataPoints data;
    Model model;
    std::vector<double> start;  // normalised starting values, laid out as the model's parameters
    FitResult result;
    std::string runDir;
    // In physical units.
    std::vector<double> fitted;  // the fitted curve at each data X
    double rss = 0;              // residual sum of squares
    double stddev = 0;           // sqrt(rss / (n - p))
    double rSquared = 0;
    // What makes a fit that ran doubtful, for a person: each one a sentence without its period.
    std::vector<std::string> flags;

    double physicalValue(int k) const;
    double physicalError(int k) const;  // NaN when the errors are missing
    // The fitted curve at a physical X.
    double FittedAt(double x) const;
};

// The starting values of the questions, laid out as the model's parameters.
std::vector<double> StartValues(const Model& model, const FitSettings& settings);

// Fills the fitted curve, the statistics and the flags from `fit.result`.
void ComputeStatistics(CompletedFit& fit);

}  // namespace quillet::fitting
