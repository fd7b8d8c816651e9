#include "fitting/plot_writer.h"

#include <iterator>

#include "env/text.h"
#include "fitting/number_text.h"

namespace quillet::fitting {

std::string PlotText(const CompletedFit& fit) {
    std::string t = "# Quillet plot" + std::string(kCrLf);
    t += "# title: " + fit.settings.title + kCrLf;
    t += "# model: " + fit.model.description() + kCrLf;
    t += "# x: X   y: Y" + std::string(kCrLf);
    t += "# rss: " + FormatNumber(fit.rss) + "   stddev: " + FormatNumber(fit.stddev) + kCrLf;
    t += std::string("# verdict: ") + (fit.result.outcome == FitOutcome::Converged ? "converged" : "not converged") +
         kCrLf;
    for (const auto& flag : fit.flags) t += "# flag: " + flag + kCrLf;
    t += "# columns: x\ty\tfit\tresidual" + std::string(kCrLf);
    t.reserve(t.size() + fit.data.x.size() * 96);
    for (std::size_t i = 0; i < fit.data.x.size(); ++i) {
        const double y = fit.data.y[i];
        const double row[] = {fit.data.x[i], y, fit.fitted[i], y - fit.fitted[i]};
        for (std::size_t k = 0; k < std::size(row); ++k) {
            if (k > 0) t += '\t';
            AppendNumber(t, row[k]);
        }
        t += kCrLf;
    }
    return t;
}

}  // namespace quillet::fitting
