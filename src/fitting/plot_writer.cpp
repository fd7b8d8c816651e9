#include "fitting/plot_writer.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <iterator>
#include <mutex>
#include <thread>

#include "env/codepage.h"
#include "env/text.h"
#include "fitting/data_passes.h"
#include "fitting/number_text.h"
#include "fitting/shortest_text.h"

namespace quillet::fitting {

namespace {

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

constexpr std::size_t kRowsPerPiece = 1024;
// The longest row: four shortest doubles of at most 24 characters, three tabs, CR LF.
constexpr std::size_t kLongestRow = 4 * 24 + 3 + 2;

// Rows [first, last) as text, written straight into `piece`.
void FormatRows(const CompletedFit& fit, std::size_t first, std::size_t last, std::string& piece) {
    piece.resize((last - first) * kLongestRow + kShortestRoom);
    char* out = piece.data();
    for (std::size_t i = first; i < last; ++i) {
        const double y = fit.data.y[i];
        const double row[] = {fit.data.x[i], y, fit.fitted[i], y - fit.fitted[i]};
        for (std::size_t k = 0; k < std::size(row); ++k) {
            if (k > 0) *out++ = '\t';
            out = WriteShortest(out, row[k]);
        }
        *out++ = '\r';
        *out++ = '\n';
    }
    piece.resize(static_cast<std::size_t>(out - piece.data()));
}

std::size_t PieceEnd(const CompletedFit& fit, std::size_t piece) {
    return std::min(fit.data.x.size(), (piece + 1) * kRowsPerPiece);
}

// A second thread formats every other piece, as formatting takes longer than the fit of many
// points; this thread formats the rest and hands all of them to the sink in order.
void WriteRowsInTwo(const CompletedFit& fit, std::size_t pieces, const ByteSink& sink) {
    std::mutex lock;
    std::condition_variable changed;
    std::string handed;
    std::exception_ptr failure;  // the other thread's, such as running out of memory
    bool full = false, stop = false;
    std::thread other([&] {
        try {
            std::string piece;
            for (std::size_t p = 1; p < pieces; p += 2) {
                FormatRows(fit, p * kRowsPerPiece, PieceEnd(fit, p), piece);
                std::unique_lock<std::mutex> hold(lock);
                changed.wait(hold, [&] { return !full || stop; });
                if (stop) return;
                handed.swap(piece);
                full = true;
                changed.notify_all();
            }
        } catch (...) {
            const std::lock_guard<std::mutex> hold(lock);
            failure = std::current_exception();
            changed.notify_all();
        }
    });
    try {
        std::string mine, theirs;
        for (std::size_t p = 0; p < pieces; p += 2) {
            FormatRows(fit, p * kRowsPerPiece, PieceEnd(fit, p), mine);
            sink(mine);
            if (p + 1 == pieces) break;
            {
                std::unique_lock<std::mutex> hold(lock);
                changed.wait(hold, [&] { return full || failure; });
                if (failure) std::rethrow_exception(failure);
                theirs.swap(handed);
                full = false;
                changed.notify_all();
            }
            sink(theirs);
        }
    } catch (...) {
        {
            const std::lock_guard<std::mutex> hold(lock);
            stop = true;
        }
        changed.notify_all();
        other.join();
        throw;
    }
    other.join();
}

}  // namespace

void WritePlot(const CompletedFit& fit, const ByteSink& sink) {
    sink(Utf8ToCp1252(Header(fit)));
    // The rows are numbers only: ASCII, the same in both encodings.
    const std::size_t n = fit.data.x.size(), pieces = (n + kRowsPerPiece - 1) / kRowsPerPiece;
    if (PartsFor(n) > 1) return WriteRowsInTwo(fit, pieces, sink);
    std::string piece;
    for (std::size_t p = 0; p < pieces; ++p) {
        FormatRows(fit, p * kRowsPerPiece, PieceEnd(fit, p), piece);
        sink(piece);
    }
}

}  // namespace quillet::fitting
