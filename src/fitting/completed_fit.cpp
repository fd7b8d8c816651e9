#include "fitting/completed_fit.h"

#include <cmath>
#include <limits>

namespace quillet::fitting {

double CompletedFit::physicalValue(int k) const {
    return result.params[static_cast<std::size_t>(k)] * model.physicalFactor(k, settings.xnorm, settings.ynorm);
}

double CompletedFit::physicalError(int k) const {
    if (result.stdErrors.empty()) return std::numeric_limits<double>::quiet_NaN();
    return result.stdErrors[static_cast<std::size_t>(k)] *
           std::fabs(model.physicalFactor(k, settings.xnorm, settings.ynorm));
}

double CompletedFit::FittedAt(double x) const {
    return settings.ynorm * model.Value(result.params.data(), x / settings.xnorm, nullptr);
}

std::vector<double> StartValues(const Model& model, const FitSettings& settings) {
    std::vector<double> start(static_cast<std::size_t>(model.parameterCount()));
    if (model.kind().hasOffset) start[0] = settings.y0;
    for (std::size_t g = 0; g < settings.series.size(); ++g)
        for (int i = 1; i <= model.terms(); ++i)
            start[static_cast<std::size_t>(model.index(static_cast<int>(g), i))] =
                settings.series[g][static_cast<std::size_t>(i - 1)];
    return start;
}

void ComputeStatistics(CompletedFit& fit) {
    const auto& y = fit.data.y;
    const std::size_t n = y.size();
    fit.fitted.resize(n);
    double mean = 0;
    for (double v : y) mean += v / static_cast<double>(n);
    double rss = 0, tss = 0;
    for (std::size_t i = 0; i < n; ++i) {
        fit.fitted[i] = fit.FittedAt(fit.data.x[i]);
        rss += (y[i] - fit.fitted[i]) * (y[i] - fit.fitted[i]);
        tss += (y[i] - mean) * (y[i] - mean);
    }
    fit.rss = rss;
    fit.stddev = std::sqrt(rss / static_cast<double>(static_cast<long>(n) - fit.model.parameterCount()));
    fit.rSquared = tss > 0 ? 1 - rss / tss : std::numeric_limits<double>::quiet_NaN();
    fit.flags.clear();
    if (fit.rSquared < 0) fit.flags.push_back("the curve fits worse than a constant (R squared below 0)");
    for (int k : fit.result.atBound)
        fit.flags.push_back(fit.model.parameterName(k) + " ended on a bound (0 to 130% of its starting value)");
    if (fit.result.stdErrors.empty())
        fit.flags.push_back("no standard errors: " + fit.result.stdErrorsNote);
}

}  // namespace quillet::fitting
