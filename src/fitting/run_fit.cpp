#include "fitting/run_fit.h"

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

FitProblem ProblemOf(const CompletedFit& fit, bool progress, std::ostream& out) {
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
    if (progress) p.progress = [&out](const std::string& line) { out << "  " << line << std::endl; };
    return p;
}

// Everything in the output folder is a result the next run makes again from the response file
// and the data, so none of it is flushed to disk: a flush costs more than the whole fit of a
// few thousand points. Each file still replaces its predecessor by a rename, so a reader never
// sees half of one.
void Write(const std::string& path, const std::string& text) {
    const std::string bytes = Utf8ToCp1252(text);
    WriteFileAtomically(
        path, [&](const ByteSink& sink) { sink(bytes); }, false);
}

// A run that yields no model must not leave an earlier run's plot and model beside its report:
// the viewers and the calculator would show them as this run's.
void RemoveEarlierResults(const RunPlace& place) {
    std::error_code ec;
    std::filesystem::remove(JoinPath(place.outputDir, PlotFileNameFor(place.name)), ec);
    std::filesystem::remove(JoinPath(place.outputDir, EquFileName(place.name)), ec);
}

RunPlace PlaceOf(const std::filesystem::path& response, const std::string& runDir) {
    RunPlace place;
    place.responsePath = response.string();
    place.name = response.filename().string();
    place.outputDir = JoinPath(response.parent_path().string(), "output");
    place.runDir = runDir;
    return place;
}

}  // namespace

int RunFit(const std::string& responseFile, const std::string& runDir, const std::string& currentFolder,
           std::ostream& out, std::ostream& err) {
    std::filesystem::path response(responseFile);
    if (response.is_relative()) response = std::filesystem::path(currentFolder) / response;
    response = response.lexically_normal();
    const RunPlace place = PlaceOf(response, runDir);
    out << "Quillet default solver: " << place.responsePath << std::endl;
    std::error_code ec;
    std::filesystem::create_directory(place.outputDir, ec);
    std::optional<CompletedFit> fit;
    try {
        const std::string folder = response.parent_path().string();
        FitSettings settings = ReadFitSettings(folder, place.name);
        const std::string dataPath = JoinPath(folder, settings.dataFile);
        fit.emplace(PrepareFit(std::move(settings), dataPath, runDir));
    } catch (const FitInputError& e) {
        return RefuseRun(place, e.what(), err);
    }
    return FitAndWrite(*fit, place, true, out, err);
}

CompletedFit PrepareFit(FitSettings settings, const std::string& dataPath, const std::string& runDir,
                        std::vector<double> start) {
    DataPoints data = ReadDataPoints(dataPath, settings.firstLine, settings.points);
    Model model(*FindModelKind(settings.modelId), settings.terms);
    if (settings.points <= model.parameterCount())
        throw FitInputError("Too few points: " + std::to_string(settings.points) + " points cannot fit " +
                            std::to_string(model.parameterCount()) + " parameters; question 4 must ask for more.");
    CheckFittable(data, model, dataPath, settings.firstLine);
    if (start.empty()) start = StartValues(model, settings);
    return CompletedFit{std::move(settings), std::move(data), model, std::move(start), {}, runDir, {}, 0, 0, 0, {}};
}

int RefuseRun(const RunPlace& place, const std::string& message, std::ostream& err) {
    err << "quillet-cli fit: " << message << std::endl;
    RemoveEarlierResults(place);
    try {
        Write(JoinPath(place.outputDir, kReportFileName), BadInputReport(place.responsePath, place.runDir, message));
    } catch (const RuntimeError& e) {
        // Only stderr is left to say it.
        err << "quillet-cli fit: the report cannot be written in \"" << place.outputDir << "\": " << e.description()
            << std::endl;
    }
    return 2;
}

int FitAndWrite(CompletedFit& fit, const RunPlace& place, bool progress, std::ostream& out, std::ostream& err) {
    out << "Fitting " << fit.data.x.size() << " points of " << fit.settings.dataFile << " with "
        << fit.model.parameterCount() << " parameters" << std::endl;
    fit.result = RunEngine(ProblemOf(fit, progress, out));
    std::vector<std::string> written;
    const FitOutcome outcome = fit.result.outcome;
    try {
        if (outcome == FitOutcome::Diverged) {
            RemoveEarlierResults(place);
        } else {
            ComputeStatistics(fit);
            const std::string plot = PlotFileNameFor(place.name), equ = EquFileName(place.name);
            WriteFileAtomically(
                JoinPath(place.outputDir, plot), [&](const ByteSink& sink) { WritePlot(fit, sink); }, false);
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
