#include "fitting/report_writer.h"

#include <cmath>
#include <cstdio>

#include "env/text.h"
#include "fitting/number_text.h"

namespace quillet::fitting {

namespace {

constexpr const char* kHeading = "Quillet default solver (separable least squares: Levenberg-Marquardt over the shape parameters)";

std::string Row(const std::string& label, const std::string& value) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "  %-36s", label.c_str());
    return buf + value + kCrLf;
}

std::string Columns(const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        char buf[64];
        std::snprintf(buf, sizeof buf, i == 0 ? "  %-10s" : " %20s", cells[i].c_str());
        line += buf;
    }
    return RTrim(line) + kCrLf;
}

std::string Header(const std::string& responsePath, const std::string& runDir) {
    return std::string(kHeading) + kCrLf + "Response file: " + responsePath + kCrLf +
           "Run folder:    " + (runDir.empty() ? "(none)" : runDir) + kCrLf;
}

std::string Outcome(FitOutcome o) {
    switch (o) {
        case FitOutcome::Converged: return "converged";
        case FitOutcome::NotConverged: return "did NOT converge";
        case FitOutcome::Diverged: return "FAILED: the fit diverged";
    }
    return {};
}

std::string Describe(const CompletedFit& fit) {
    const FitSettings& s = fit.settings;
    const int n = static_cast<int>(fit.data.x.size());
    std::string t = "Title:         " + s.title + kCrLf;
    t += "Notes:         " + s.note1 + " / " + s.note2 + kCrLf;
    t += "Data file:     " + s.dataFile + ", lines " + std::to_string(s.firstLine) + " to " +
         std::to_string(s.firstLine + n - 1) + " (" + std::to_string(n) + " points)" + kCrLf;
    t += "Model:         " + fit.model.description() + ", " + std::to_string(fit.model.parameterCount()) +
         " parameters" + kCrLf;
    t += "Normalisation: Xnorm = " + FormatNumber(s.xnorm) + ", Ynorm = " + FormatNumber(s.ynorm) + kCrLf;
    t += std::string("Weighting:     ") +
         (s.weighted ? "points near y = 0 count more: weight 1 / (|y| / max|y| + 0.01)" : "none, every point weighs 1") +
         kCrLf;
    return t;
}

std::string Options(const EngineOptions& o) {
    std::string t = std::string("Solver options (blank ones take the defaults the Solver Variables tab shows)") + kCrLf;
    t += Row("maximum iterations (REMAX)", std::to_string(o.maxIterations));
    t += Row("progress line every (DETAIL)",
             o.progressEvery > 0 ? std::to_string(o.progressEvery) + " iterations" : "none");
    if (o.stepTolerance) t += Row("step tolerance (DELTA)", FormatShort(*o.stepTolerance));
    if (o.maxEvaluations) t += Row("model evaluations (EvalMax)", std::to_string(*o.maxEvaluations));
    if (o.functionTolerance) t += Row("function tolerance (ZERO)", FormatShort(*o.functionTolerance));
    if (o.gradientTolerance) t += Row("gradient tolerance (ACCURACY)", FormatShort(*o.gradientTolerance));
    t += Row("first damping (PREDAMP, RHO)", FormatShort(o.firstDamping));
    t += Row("damping threshold (DAMP)", FormatShort(o.dampingThreshold));
    return t;
}

std::string Parameters(const CompletedFit& fit) {
    const FitResult& r = fit.result;
    std::string t = std::string("Parameters") + kCrLf;
    t += Columns({"name", "start", "fitted", "std. error", "physical", "physical error"});
    auto err = [](double e) { return std::isnan(e) ? std::string("-") : FormatShort(e, 4); };
    for (int k = 0; k < fit.model.parameterCount(); ++k) {
        const auto i = static_cast<std::size_t>(k);
        const double se = r.stdErrors.empty() ? std::nan("") : r.stdErrors[i];
        t += Columns({fit.model.parameterName(k), FormatShort(fit.start[i], 8), FormatShort(r.params[i], 12), err(se),
                      FormatShort(fit.physicalValue(k), 12), err(fit.physicalError(k))});
    }
    if (r.stdErrors.empty()) t += "  No standard errors: " + r.stdErrorsNote + "." + kCrLf;
    if (r.linearRankDeficient)
        t += std::string("  Warning: two or more terms describe the same curve; the data do not tell their "
                         "amplitudes apart.") + kCrLf;
    return t;
}

}  // namespace

std::string ReportText(const CompletedFit& fit, const std::string& responsePath,
                       const std::vector<std::string>& written) {
    const FitResult& r = fit.result;
    std::string t = Header(responsePath, fit.runDir) + Describe(fit) + kCrLf + Options(MapSolverValues(fit.settings.modelId, fit.settings.solverValues)) + kCrLf;
    t += "Result: " + Outcome(r.outcome) + kCrLf;
    for (const auto& flag : fit.flags) t += "Flagged: " + flag + kCrLf;
    t += Row("why it stopped", r.reason);
    t += Row("iterations", std::to_string(r.iterations));
    t += Row("model evaluations", std::to_string(r.evaluations));
    t += Row("time", FormatShort(r.seconds, 3) + " s");
    t += kCrLf;
    if (r.outcome == FitOutcome::Diverged) return t + "No plot file and no math-model file were written." + kCrLf;
    t += Parameters(fit) + kCrLf;
    const int n = static_cast<int>(fit.data.x.size());
    t += Row("residual sum of squares", FormatShort(fit.rss, 10));
    t += Row("standard deviation", FormatShort(fit.stddev, 10) + "   (sqrt(RSS / (n - p)), n = " + std::to_string(n) +
                                       ", p = " + std::to_string(fit.model.parameterCount()) + ")");
    t += Row("R squared", FormatShort(fit.rSquared, 10));
    if (fit.settings.weighted) t += Row("weighted RSS (normalised)", FormatShort(r.weightedRss, 10));
    t += std::string(kCrLf) + "Files written beside this report:" + kCrLf;
    for (const auto& f : written) t += "  " + f + kCrLf;
    return t;
}

std::string BadInputReport(const std::string& responsePath, const std::string& runDir, const std::string& message) {
    return Header(responsePath, runDir) + kCrLf + "The fit was not started: " + message + kCrLf;
}

}  // namespace quillet::fitting
