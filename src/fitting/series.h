#pragma once
// One response file fitted to a series of data files: the same model, terms, normalisation,
// weights, solver variables and starting values for each, one results table for them all.
#include <atomic>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quillet::fitting {

struct SeriesRequest {
    std::string responseFile;            // relative names are taken from the current folder
    std::vector<std::string> dataFiles;  // in series order, relative to the current folder
    enum class Start { Answers, Chain, Suggest } start = Start::Answers;
    int jobs = 1;               // fits at once (a chain runs one after the other)
    int shard = 1, shards = 1;  // fit every shards-th file from the shard-th on (1-based)
};

struct SeriesRow {
    std::size_t index = 0;  // 1-based position in the whole series
    std::string dataFile;   // as given
    std::string verdict;    // "converged", "flagged", "not converged" or "failed"
    std::string reason;     // why it stopped, what flagged it, or what is wrong with the file
    int iterations = 0;
    double rss = 0, stddev = 0, rSquared = 0;
    std::vector<double> values, errors;  // physical units; errors NaN when missing
};

struct SeriesTable {
    std::vector<std::string> parameterNames;
    std::vector<SeriesRow> rows;  // the rows fitted, in series order
    std::string path;             // where the table was written
};

// Fits the request's share of the series, each fit writing its report, plot and model files
// into output/<data file name>/ beside the response file, and writes the table there:
// "<stem>.series.csv", or "<stem>.series.K-of-N.csv" for a shard. `finished` is called once per
// fit as it ends (one at a time); no new fit starts once `stop` is set. Raises FitInputError
// when the response file cannot be used.
SeriesTable RunSeries(const SeriesRequest& request, const std::string& currentFolder,
                      const std::function<void(const SeriesRow&, std::size_t done, std::size_t total)>& finished,
                      const std::atomic<bool>& stop);

// Merges the shard tables of `responseFile` into one table in series order; returns its path.
// Raises FitInputError when there are none or they do not match.
std::string MergeSeriesShards(const std::string& responseFile, const std::string& currentFolder);

// Where the series table of `responseFile` is written (no shard).
std::string SeriesTablePath(const std::string& responseFile, const std::string& currentFolder);

// A table written by RunSeries or MergeSeriesShards, read back. Raises FitInputError when it
// cannot be read.
SeriesTable ReadSeriesCsv(const std::string& path);

// The table as CSV: index, data file, verdict, reason, iterations, RSS, standard deviation,
// R squared, then each parameter and its standard error.
std::string SeriesCsv(const SeriesTable& table);

}  // namespace quillet::fitting
