#include "fitting/plot_writer.h"

#include <iterator>

#include "env/codepage.h"
#include "env/text.h"
#include "fitting/number_text.h"

namespace quillet::fitting {

namespace {

constexpr std::size_t kPieceBytes = 1 << 16;

std::string Header(const CompletedFit& fit) {
    std::string t = "# Quillet plot" + std::string(kCrLf);
    t += "# title: " + fit.settings.title + kCrLf;
    t += "# model: " + fit.model.description() + kCrLf;
    t += "# x: X   y: Y" + std::string(kCrLf);
    t += "# rss: " + FormatNumber(fit.rss) + "   stddev: " + FormatNumber(fit.stddev) + kCrLf;
    t += std::string("# verdict: ") + (fit.result.outcome == FitOutcome::Converged ? "converged" : "not converged") +
         kCrLf;
    for (const auto& flag : fit.flags) t += "# flag: " + flag + kCrLf;
    t += "# columns: x\ty\tfit\tresidual" + std::string(kCrLf);
    return t;
}

}  // namespace

void WritePlot(const CompletedFit& fit, const ByteSink& sink) {
    sink(Utf8ToCp1252(Header(fit)));
    // The rows are numbers only: ASCII, the same in both encodings.
    std::string piece;
    piece.reserve(kPieceBytes + 256);
    for (std::size_t i = 0; i < fit.data.x.size(); ++i) {
        const double y = fit.data.y[i];
        const double row[] = {fit.data.x[i], y, fit.fitted[i], y - fit.fitted[i]};
        for (std::size_t k = 0; k < std::size(row); ++k) {
            if (k > 0) piece += '\t';
            AppendNumber(piece, row[k]);
        }
        piece += kCrLf;
        if (piece.size() >= kPieceBytes) {
            sink(piece);
            piece.clear();
        }
    }
    sink(piece);
}

}  // namespace quillet::fitting
