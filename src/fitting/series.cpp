#include "fitting/series.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <mutex>
#include <sstream>
#include <thread>

#include "env/errors.h"
#include "env/files.h"
#include "env/paths.h"
#include "fitting/data_file.h"
#include "fitting/fit_error.h"
#include "fitting/fit_settings.h"
#include "fitting/number_text.h"
#include "fitting/run_fit.h"
#include "fitting/suggest.h"

namespace quillet::fitting {

namespace fs = std::filesystem;

namespace {

fs::path Absolute(const std::string& name, const std::string& currentFolder) {
    fs::path p(name);
    if (p.is_relative()) p = fs::path(currentFolder) / p;
    return p.lexically_normal();
}

std::string Stem(const fs::path& response) {
    return response.stem().string();
}

// The answers of the response file; with Suggest the starting values may be blank.
FitSettings SettingsOf(const fs::path& response, bool suggest) {
    const std::string folder = response.parent_path().string(), name = response.filename().string();
    return suggest ? ReadDataSettings(folder, name) : ReadFitSettings(folder, name);
}

std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string CsvNumber(double v) {
    return std::isfinite(v) ? FormatNumber(v) : std::string();
}

std::string Header(const std::vector<std::string>& names) {
    std::string h = "index,data file,verdict,reason,iterations,RSS,standard deviation,R squared";
    for (const auto& n : names) h += "," + CsvField(n) + "," + CsvField(n + " error");
    return h + "\r\n";
}

std::string Line(const SeriesRow& r) {
    std::string line =
        std::to_string(r.index) + "," + CsvField(r.dataFile) + "," + r.verdict + "," + CsvField(r.reason);
    if (r.verdict == "failed") return line + "\r\n";
    line += "," + std::to_string(r.iterations) + "," + CsvNumber(r.rss) + "," + CsvNumber(r.stddev) + "," +
            CsvNumber(r.rSquared);
    for (std::size_t k = 0; k < r.values.size(); ++k)
        line += "," + CsvNumber(r.values[k]) + "," + CsvNumber(r.errors[k]);
    return line + "\r\n";
}

SeriesRow RowOf(const CompletedFit& fit, int status, const std::string& failure) {
    SeriesRow row;
    const FitResult& r = fit.result;
    if (r.outcome == FitOutcome::Diverged || status == 2) {
        row.verdict = "failed";
        row.reason = failure;
        return row;
    }
    row.verdict = r.outcome != FitOutcome::Converged ? "not converged" : fit.flags.empty() ? "converged" : "flagged";
    row.reason = row.verdict == "flagged" ? fit.flags.front() : r.reason;
    row.iterations = r.iterations;
    row.rss = fit.rss;
    row.stddev = fit.stddev;
    row.rSquared = fit.rSquared;
    for (int k = 0; k < fit.model.parameterCount(); ++k) {
        row.values.push_back(fit.physicalValue(k));
        row.errors.push_back(fit.physicalError(k));
    }
    return row;
}

// The first line of an error stream, without the program's prefix.
std::string Reason(const std::string& err) {
    std::string line = err.substr(0, err.find('\n'));
    const std::string prefix = "quillet-cli fit: ";
    return line.rfind(prefix, 0) == 0 ? line.substr(prefix.size()) : line;
}

class SeriesRun {
  public:
    SeriesRun(const SeriesRequest& request, const std::string& currentFolder)
        : request_(request),
          current_(currentFolder),
          response_(Absolute(request.responseFile, currentFolder)),
          settings_(SettingsOf(response_, request.start == SeriesRequest::Start::Suggest)) {}

    // One data file fitted and written; `start` (normalised, the model's layout) when not empty.
    SeriesRow Fit(std::size_t index, const std::vector<double>& start, std::vector<double>& fitted) const {
        const std::string& given = request_.dataFiles[index - 1];
        const fs::path data = Absolute(given, current_);
        const RunPlace place{response_.string(), response_.filename().string(),
                             JoinPath(JoinPath(response_.parent_path().string(), "output"), data.filename().string()),
                             ""};
        std::error_code ec;
        fs::create_directories(place.outputDir, ec);
        std::ostringstream out, err;
        SeriesRow row;
        try {
            FitSettings settings = settings_;
            settings.dataFile = given;
            CompletedFit fit = PrepareFit(std::move(settings), data.string(), "", start);
            if (request_.start == SeriesRequest::Start::Suggest) Suggested(fit);
            const int status = FitAndWrite(fit, place, false, out, err);
            row = RowOf(fit, status, Reason(err.str()));
            if (fit.result.outcome != FitOutcome::Diverged) fitted = fit.result.params;
        } catch (const FitInputError& e) {
            RefuseRun(place, e.what(), err);
            row.verdict = "failed";
            row.reason = e.what();
        }
        row.index = index;
        row.dataFile = given;
        return row;
    }

    std::vector<std::string> ParameterNames() const {
        const Model model(*FindModelKind(settings_.modelId), settings_.terms);
        std::vector<std::string> names;
        for (int k = 0; k < model.parameterCount(); ++k) names.push_back(model.parameterName(k));
        return names;
    }

    std::string TablePath() const {
        std::string name = Stem(response_) + ".series";
        if (request_.shards > 1)
            name += "." + std::to_string(request_.shard) + "-of-" + std::to_string(request_.shards);
        return JoinPath(JoinPath(response_.parent_path().string(), "output"), name + ".csv");
    }

  private:
    // Starting values from each file's own data, normalised as the response file says (or by
    // powers of ten near the data when it leaves that blank).
    void Suggested(CompletedFit& fit) const {
        if (fit.settings.xnorm == 0) fit.settings.xnorm = NormalisationFor(fit.data.x);
        if (fit.settings.ynorm == 0) fit.settings.ynorm = NormalisationFor(fit.data.y);
        std::vector<std::string> remarks;
        fit.start = SuggestedParameters(fit.data, fit.model, fit.settings.xnorm, fit.settings.ynorm,
                                        fit.settings.weighted, remarks);
    }

    const SeriesRequest& request_;
    std::string current_;
    fs::path response_;
    FitSettings settings_;
};

}  // namespace

std::string SeriesCsv(const SeriesTable& table) {
    std::string text = Header(table.parameterNames);
    for (const auto& row : table.rows) text += Line(row);
    return text;
}

SeriesTable RunSeries(const SeriesRequest& request, const std::string& currentFolder,
                      const std::function<void(const SeriesRow&, std::size_t, std::size_t)>& finished,
                      const std::atomic<bool>& stop) {
    const SeriesRun run(request, currentFolder);
    std::vector<std::size_t> chosen;  // 1-based positions of this shard
    for (std::size_t i = static_cast<std::size_t>(request.shard); i <= request.dataFiles.size();
         i += static_cast<std::size_t>(request.shards))
        chosen.push_back(i);
    std::vector<SeriesRow> rows(chosen.size());
    std::vector<bool> done(chosen.size(), false);
    std::mutex lock;
    std::size_t count = 0;
    auto report = [&](std::size_t slot, SeriesRow row) {
        std::lock_guard<std::mutex> guard(lock);
        rows[slot] = std::move(row);
        done[slot] = true;
        if (finished) finished(rows[slot], ++count, chosen.size());
    };

    if (request.start == SeriesRequest::Start::Chain) {
        // Each fit starts where the one before ended: a slowly changing series is followed.
        std::vector<double> start;
        for (std::size_t slot = 0; slot < chosen.size() && !stop; ++slot) {
            std::vector<double> fitted;
            SeriesRow row = run.Fit(chosen[slot], start, fitted);
            if (!fitted.empty()) start = fitted;
            report(slot, std::move(row));
        }
    } else {
        std::atomic<std::size_t> next{0};
        auto worker = [&] {
            for (std::size_t slot; !stop && (slot = next++) < chosen.size();) {
                std::vector<double> fitted;
                report(slot, run.Fit(chosen[slot], {}, fitted));
            }
        };
        const auto jobs = static_cast<std::size_t>(std::max(1, request.jobs));
        std::vector<std::thread> pool;
        for (std::size_t j = 1; j < std::min(jobs, chosen.size()); ++j) pool.emplace_back(worker);
        worker();
        for (auto& t : pool) t.join();
    }

    SeriesTable table{run.ParameterNames(), {}, run.TablePath()};
    for (std::size_t slot = 0; slot < rows.size(); ++slot)
        if (done[slot]) table.rows.push_back(std::move(rows[slot]));
    try {
        WriteFileAtomically(table.path, SeriesCsv(table));
    } catch (const RuntimeError& e) {
        throw FitInputError("The table \"" + table.path + "\" cannot be written: " + e.description() + ".");
    }
    return table;
}

std::string SeriesTablePath(const std::string& responseFile, const std::string& currentFolder) {
    const fs::path response = Absolute(responseFile, currentFolder);
    return (response.parent_path() / "output" / (Stem(response) + ".series.csv")).string();
}

namespace {

// The fields of one CSV line, quotes undone.
std::vector<std::string> CsvFields(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quoted && c == '"' && i + 1 < line.size() && line[i + 1] == '"')
            fields.back() += '"', ++i;
        else if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            fields.emplace_back();
        else if (c != '\r' || quoted)
            fields.back() += c;
    }
    return fields;
}

double CsvValue(const std::vector<std::string>& fields, std::size_t i) {
    const auto v = i < fields.size() ? ParseNumber(fields[i]) : std::nullopt;
    return v ? *v : std::nan("");
}

}  // namespace

SeriesTable ReadSeriesCsv(const std::string& path) {
    const std::string text = ReadForFit(path, "series table");
    std::istringstream in(text);
    std::string line;
    SeriesTable table;
    table.path = path;
    std::getline(in, line);
    const std::vector<std::string> header = CsvFields(line);
    constexpr std::size_t kFirstParameter = 8;
    for (std::size_t i = kFirstParameter; i + 1 < header.size(); i += 2) table.parameterNames.push_back(header[i]);
    while (std::getline(in, line)) {
        const std::vector<std::string> f = CsvFields(line);
        if (f.size() < 4) continue;
        SeriesRow row;
        row.index = static_cast<std::size_t>(CsvValue(f, 0));
        row.dataFile = f[1];
        row.verdict = f[2];
        row.reason = f[3];
        row.iterations = static_cast<int>(f.size() > 4 ? CsvValue(f, 4) : 0);
        row.rss = CsvValue(f, 5);
        row.stddev = CsvValue(f, 6);
        row.rSquared = CsvValue(f, 7);
        for (std::size_t k = 0; k < table.parameterNames.size() && f.size() > kFirstParameter; ++k) {
            row.values.push_back(CsvValue(f, kFirstParameter + 2 * k));
            row.errors.push_back(CsvValue(f, kFirstParameter + 2 * k + 1));
        }
        table.rows.push_back(std::move(row));
    }
    return table;
}

std::string MergeSeriesShards(const std::string& responseFile, const std::string& currentFolder) {
    const fs::path response = Absolute(responseFile, currentFolder);
    const fs::path output = response.parent_path() / "output";
    const std::string prefix = Stem(response) + ".series.";
    std::string header;
    std::vector<std::pair<long, std::string>> lines;
    int tables = 0;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(output, ec)) {
        const std::string name = entry.path().filename().string();
        if (name.rfind(prefix, 0) != 0 || name.find("-of-") == std::string::npos || !name.ends_with(".csv")) continue;
        std::istringstream text(ReadWholeFile(entry.path().string()));
        std::string line;
        std::getline(text, line);
        if (tables++ == 0)
            header = line;
        else if (line != header)
            throw FitInputError("The shard table \"" + entry.path().string() + "\" has other columns.");
        while (std::getline(text, line))
            if (!line.empty()) lines.emplace_back(std::stol(line.substr(0, line.find(','))), line);
    }
    if (tables == 0)
        throw FitInputError("No shard tables \"" + prefix + "K-of-N.csv\" in \"" + output.string() + "\".");
    std::stable_sort(lines.begin(), lines.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::string text = header + "\n";
    for (const auto& [index, line] : lines) text += line + "\n";
    const std::string path = (output / (Stem(response) + ".series.csv")).string();
    WriteFileAtomically(path, text);
    return path;
}

}  // namespace quillet::fitting
