// quillet-cli batch: one response file fitted to a series of data files.
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <thread>

#include "cli/commands.h"
#include "fitting/fit_error.h"
#include "fitting/number_text.h"
#include "fitting/series.h"

namespace quillet::cli {
namespace {

// Ctrl+C (or a polite kill) lets the fits under way finish and the table be written; only a signal handler may
// set it, hence the one flag outside any object.
std::atomic<bool> interrupted{false};

extern "C" void Interrupt(int) {
    interrupted = true;
}

std::optional<int> Whole(const std::string& text) {
    const auto v = fitting::ParseNumber(text);
    if (!v || *v != static_cast<int>(*v) || *v < 1) return std::nullopt;
    return static_cast<int>(*v);
}

int RunBatch(const std::vector<std::string>& args) {
    const Command& cmd = FindCommand("batch");
    fitting::SeriesRequest request;
    request.jobs = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    bool merge = false, options = true;
    std::vector<std::string> positional;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        if (!options || a.empty() || a[0] != '-') {
            positional.push_back(a);
        } else if (a == "--") {
            options = false;
        } else if (a == "--chain") {
            request.start = fitting::SeriesRequest::Start::Chain;
        } else if (a == "--suggest") {
            request.start = fitting::SeriesRequest::Start::Suggest;
        } else if (a == "--merge") {
            merge = true;
        } else if (a == "--jobs" && hasValue) {
            const auto n = Whole(args[++i]);
            if (!n) return UsageError(cmd, "--jobs takes a whole number from 1 up");
            request.jobs = *n;
        } else if (a == "--shard" && hasValue) {
            const std::string& k = args[++i];
            const auto slash = k.find('/');
            const auto part = Whole(k.substr(0, slash)),
                       parts = Whole(slash == std::string::npos ? "" : k.substr(slash + 1));
            if (!part || !parts || *part > *parts) return UsageError(cmd, "--shard takes K/N with 1 <= K <= N");
            request.shard = *part;
            request.shards = *parts;
        } else if (a == "--list" && hasValue) {
            std::ifstream list(args[++i]);
            if (!list) {
                std::cerr << "quillet-cli batch: the list \"" << args[i] << "\" cannot be read.\n";
                return 2;
            }
            for (std::string line; std::getline(list, line);) {
                if (!line.empty() && line.back() == '\r') line.pop_back();
                if (!line.empty()) request.dataFiles.push_back(line);
            }
        } else {
            return UsageError(cmd, "unknown option " + a);
        }
    }
    std::error_code ec;
    const std::string cwd = std::filesystem::current_path(ec).string();
    if (positional.empty()) return UsageError(cmd, "expects FILE");
    request.responseFile = positional.front();
    try {
        if (merge) {
            if (positional.size() != 1) return UsageError(cmd, "--merge takes FILE only");
            std::cout << "Merged into " << fitting::MergeSeriesShards(request.responseFile, cwd) << std::endl;
            return 0;
        }
        request.dataFiles.insert(request.dataFiles.begin(), positional.begin() + 1, positional.end());
        if (request.dataFiles.empty()) return UsageError(cmd, "expects at least one DATAFILE");
        std::signal(SIGINT, Interrupt);
        std::signal(SIGTERM, Interrupt);
        bool allConverged = true;
        const auto table = fitting::RunSeries(
            request, cwd,
            [&](const fitting::SeriesRow& row, std::size_t done, std::size_t total) {
                allConverged = allConverged && row.verdict == "converged";
                std::cout << done << "/" << total << " " << row.dataFile << " " << row.verdict;
                if (row.verdict == "failed")
                    std::cout << ": " << row.reason;
                else
                    std::cout << ", RSS " << fitting::FormatShort(row.rss, 7);
                std::cout << std::endl;
            },
            interrupted);
        if (interrupted) std::cout << "Stopped: " << table.rows.size() << " files fitted." << std::endl;
        std::cout << "Table: " << table.path << std::endl;
        return allConverged && !interrupted ? 0 : 1;
    } catch (const fitting::FitInputError& e) {
        std::cerr << "quillet-cli batch: " << e.what() << "\n";
        return 2;
    }
}

}  // namespace

static Registrar batchCommand(
    {"batch",
     "quillet-cli batch FILE DATAFILE... [--list LISTFILE] [--chain | --suggest] [--jobs N] [--shard K/N]\n"
     "       quillet-cli batch --merge FILE",
     "Fits every data file with the answers of response file FILE, each into output/<data file>/, and writes "
     "one table output/<FILE's stem>.series.csv; exit 0 when every fit converged, 1 when some did not.",
     RunBatch});

}  // namespace quillet::cli
