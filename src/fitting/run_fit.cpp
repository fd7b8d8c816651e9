#include "fitting/run_fit.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <ostream>

#include "env/codepage.h"
#include "env/errors.h"
#include "env/files.h"
#include "env/paths.h"
#include "env/settings.h"
#include "fitting/equ_writer.h"
#include "fitting/fit_error.h"
#include "fitting/number_text.h"
#include "fitting/plot_writer.h"
#include "fitting/report_writer.h"
#include "fitting/weights.h"

namespace quillet::fitting {

namespace {

struct RunPlace {
    std::string responsePath;
    std::string folder;
    std::string name;
    std::string outputDir;
    std::string runDir;
};

CompletedFit Prepare(const RunPlace& place) {
    FitSettings settings = ReadFitSettings(place.folder, place.name);
    const std::string dataPath = JoinPath(place.folder, settings.dataFile);
    DataPoints data = ReadDataPoints(dataPath, settings.firstLine, settings.points);
    Model model(*FindModelKind(settings.modelId), settings.terms);
    if (settings.points <= model.parameterCount())
        throw FitInputError("Too few points: " + std::to_string(settings.points) + " points cannot fit " +
                            std::to_string(model.parameterCount()) + " parameters; question 4 must ask for more.");
    CheckFittable(data, model, dataPath, settings.firstLine);
    std::vector<double> start = StartValues(model, settings);
    return CompletedFit{std::move(settings), std::move(data), model, std::move(start), {}, place.runDir, {}, 0, 0, 0, {}};
}

FitProblem ProblemOf(const CompletedFit& fit, std::ostream& out) {
    FitProblem p;
    p.model = &fit.model;
    for (std::size_t i = 0; i < fit.data.x.size(); ++i) {
        p.u.push_back(fit.data.x[i] / fit.settings.xnorm);
        p.v.push_back(fit.data.y[i] / fit.settings.ynorm);
    }
    p.weights = ResidualWeights(p.v, fit.settings.weighted);
    p.start = fit.start;
    SetModelBounds(p);
    p.options = MapSolverValues(fit.settings.modelId, fit.settings.solverValues);
    p.progress = [&out](const std::string& line) { out << "  " << line << std::endl; };
    return p;
}

void Write(const std::string& path, const std::string& text) { WriteFileAtomically(path, Utf8ToCp1252(text)); }

// A run that yields no model must not leave an earlier run's plot and model beside its report:
// the viewers and the calculator would show them as this run's.
void RemoveEarlierResults(const RunPlace& place) {
    std::error_code ec;
    std::filesystem::remove(JoinPath(place.outputDir, PlotFileNameFor(place.name)), ec);
    std::filesystem::remove(JoinPath(place.outputDir, EquFileName(place.name)), ec);
}

// The report of a run that did not start; only stderr when even that cannot be written.
int Refuse(const RunPlace& place, const std::string& message, std::ostream& err) {
    err << "quillet-cli fit: " << message << std::endl;
    RemoveEarlierResults(place);
    try {
        Write(JoinPath(place.outputDir, kReportFileName), BadInputReport(place.responsePath, place.runDir, message));
    } catch (const RuntimeError& e) {
        err << "quillet-cli fit: the report cannot be written in \"" << place.outputDir << "\": " << e.description()
            << std::endl;
    }
    return 2;
}

RunPlace PlaceOf(const std::string& responseFile, const std::string& runDir, const std::string& currentFolder) {
    std::filesystem::path path(responseFile);
    if (path.is_relative()) path = std::filesystem::path(currentFolder) / path;
    path = path.lexically_normal();
    RunPlace place;
    place.responsePath = path.string();
    place.folder = path.parent_path().string();
    place.name = path.filename().string();
    place.outputDir = JoinPath(place.folder, "output");
    place.runDir = runDir;
    return place;
}

}  // namespace

int RunFit(const std::string& responseFile, const std::string& runDir, const std::string& currentFolder,
           std::ostream& out, std::ostream& err) {
    const RunPlace place = PlaceOf(responseFile, runDir, currentFolder);
    out << "Quillet default solver: " << place.responsePath << std::endl;
    std::error_code ec;
    std::filesystem::create_directory(place.outputDir, ec);
    std::optional<CompletedFit> prepared;
    FitProblem problem;
    try {
        prepared.emplace(Prepare(place));
        problem = ProblemOf(*prepared, out);
    } catch (const FitInputError& e) {
        return Refuse(place, e.what(), err);
    }
    CompletedFit& fit = *prepared;
    out << "Fitting " << fit.data.x.size() << " points of " << fit.settings.dataFile << " with "
        << fit.model.parameterCount() << " parameters" << std::endl;

    fit.result = RunEngine(problem);
    std::vector<std::string> written;
    const FitOutcome outcome = fit.result.outcome;
    try {
        if (outcome == FitOutcome::Diverged) {
            RemoveEarlierResults(place);
        } else {
            ComputeStatistics(fit);
            const std::string plot = PlotFileNameFor(place.name), equ = EquFileName(place.name);
            WriteFileAtomically(JoinPath(place.outputDir, plot), [&](const ByteSink& sink) { WritePlot(fit, sink); });
            written.push_back(plot + "   data, fitted values and residuals");
            Write(JoinPath(place.outputDir, equ), EquText(fit));
            written.push_back(equ + "   math model for the calculator");
        }
        Write(JoinPath(place.outputDir, kReportFileName), ReportText(fit, place.responsePath, written));
    } catch (const RuntimeError& e) {
        err << "quillet-cli fit: cannot write in \"" << place.outputDir << "\": " << e.description() << std::endl;
        return 1;
    }
    if (outcome == FitOutcome::Diverged) {
        err << "quillet-cli fit: the fit diverged: " << fit.result.reason << std::endl;
        return 1;
    }
    out << (outcome == FitOutcome::Converged ? "Converged" : "Stopped") << " after " << fit.result.iterations
        << " iterations: RSS " << FormatShort(fit.rss, 10) << ", standard deviation " << FormatShort(fit.stddev, 10)
        << std::endl;
    for (const auto& flag : fit.flags) out << "Flagged: " << flag << std::endl;
    if (outcome != FitOutcome::Converged) {
        err << "quillet-cli fit: the fit did not converge: " << fit.result.reason << std::endl;
        return 1;
    }
    if (!fit.flags.empty()) {
        err << "quillet-cli fit: the fit converged but is flagged: " << fit.flags.front() << std::endl;
        return 1;
    }
    return 0;
}

}  // namespace quillet::fitting
