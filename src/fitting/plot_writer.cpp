#include "fitting/plot_writer.h"

#include "env/text.h"
#include "fitting/number_text.h"
#include "model/catalogue.h"

namespace quillet::fitting {

std::string PlotText(const CompletedFit& fit) {
    std::string t = "# Quillet plot" + std::string(kCrLf);
    t += "# title: " + fit.settings.title + kCrLf;
    t += "# model: " + std::string(kModelNames[static_cast<std::size_t>(fit.model.kind().id)]) + ", " +
         std::to_string(fit.model.terms()) + " terms" + kCrLf;
    t += "# x: X   y: Y" + std::string(kCrLf);
    t += "# rss: " + FormatNumber(fit.rss) + "   stddev: " + FormatNumber(fit.stddev) + kCrLf;
    t += "# columns: x\ty\tfit\tresidual" + std::string(kCrLf);
    for (std::size_t i = 0; i < fit.data.x.size(); ++i) {
        const double y = fit.data.y[i];
        t += FormatNumber(fit.data.x[i]) + "\t" + FormatNumber(y) + "\t" + FormatNumber(fit.fitted[i]) + "\t" +
             FormatNumber(y - fit.fitted[i]) + kCrLf;
    }
    return t;
}

}  // namespace quillet::fitting
