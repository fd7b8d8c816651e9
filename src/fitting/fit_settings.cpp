#include "fitting/fit_settings.h"

#include <cmath>
#include <filesystem>

#include "env/paths.h"
#include "fitting/fit_error.h"
#include "fitting/models.h"
#include "fitting/number_text.h"
#include "model/response_file.h"

namespace quillet::fitting {

namespace {

bool Blank(const std::string& text) {
    return text.empty() || text == "-EOF-";
}

std::string Question(int q, const std::string& what) {
    return "Question " + std::to_string(q) + " (" + what + ")";
}

void CheckPresent(const std::string& text, int q, const std::string& what) {
    if (text == "-EOF-") throw FitInputError("The response file ends before question " + std::to_string(q) + ".");
    if (text.empty()) throw FitInputError(Question(q, what) + " has no answer.");
}

double AnswerNumber(const std::string& text, int q, const std::string& what) {
    CheckPresent(text, q, what);
    auto v = ParseNumber(text);
    if (!v) throw FitInputError(Question(q, what) + " is not a number: \"" + text + "\".");
    return *v;
}

int AnswerCount(const std::string& text, int q, const std::string& what) {
    double v = AnswerNumber(text, q, what);
    if (v != std::floor(v) || v < 1 || v > 1e8)
        throw FitInputError(Question(q, what) + " must be a whole number from 1 up: \"" + text + "\".");
    return static_cast<int>(v);
}

double AnswerNonZero(const std::string& text, int q, const std::string& what) {
    double v = AnswerNumber(text, q, what);
    if (v == 0) throw FitInputError(Question(q, what) + " must not be 0.");
    return v;
}

std::vector<double> SeriesValues(const std::string& text, int q, const std::string& what, int terms) {
    CheckPresent(text, q, what);
    std::vector<double> values;
    for (auto field : SplitFields(text)) {
        auto v = ParseNumber(field);
        if (!v)
            throw FitInputError(Question(q, what) + " holds \"" + std::string(field) + "\", which is not a number.");
        values.push_back(*v);
    }
    if (static_cast<int>(values.size()) < terms)
        throw FitInputError(Question(q, what) + " gives " + std::to_string(values.size()) + " starting values for " +
                            std::to_string(terms) + " terms.");
    values.resize(static_cast<std::size_t>(terms));
    return values;
}

// The record as the program reads it; what its reader would show becomes the error.
ResponseRecord ReadRecord(const std::string& folder, const std::string& name) {
    const std::string path = JoinPath(folder, name);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec))
        throw FitInputError("The response file \"" + path + "\" was not found.");
    std::vector<std::string> messages;
    ResponseRecord r = ReadResponseRecord(folder, name, messages);
    if (!messages.empty()) throw FitInputError(messages.front());
    return r;
}

// The settings `of` the record in `folder`/`name`, placed there.
FitSettings ReadSettings(const std::string& folder, const std::string& name, FitSettings (*of)(const ResponseRecord&)) {
    FitSettings f = of(ReadRecord(folder, name));
    f.responseFolder = folder;
    f.responseName = name;
    return f;
}

}  // namespace

FitSettings ReadDataSettings(const std::string& folder, const std::string& name) {
    return ReadSettings(folder, name, DataSettingsOf);
}

FitSettings DataSettingsOf(const ResponseRecord& r) {
    const auto& a = r.Answers;
    FitSettings f;
    f.title = r.ResponseTitle;
    CheckPresent(a[1], 1, "data file");
    f.dataFile = a[1];

    const ModelKind* kind = FindModelKind(r.ModelID);
    if (!kind) {
        CheckPresent(a[2], 2, "model");
        throw FitInputError(Question(2, "model") + " names no model of the list: \"" + a[2] + "\".");
    }
    f.modelId = kind->id;
    f.firstLine = AnswerCount(a[3], 3, "first line of the data");
    f.points = AnswerCount(a[4], 4, "number of points");
    f.terms = AnswerCount(a[5], 5, "number of terms");
    auto optional = [&](int q, const char* what) { return Blank(a[q]) ? 0.0 : AnswerNonZero(a[q], q, what); };
    f.xnorm = optional(6, "X-axis normalization factor");
    f.ynorm = optional(7, "Y-axis normalization factor");
    f.weighted = r.WeightFlag != 0;
    for (std::size_t i = 0; i < 6; ++i) f.solverValues[i] = r.SolverValues[i + 1];
    f.note1 = r.Note1;
    f.note2 = r.Note2;
    f.record = r;
    return f;
}

FitSettings ReadFitSettings(const std::string& folder, const std::string& name) {
    return ReadSettings(folder, name, FitSettingsOf);
}

FitSettings FitSettingsOf(const ResponseRecord& record) {
    FitSettings f = DataSettingsOf(record);
    const auto& a = f.record.Answers;
    const ModelKind* kind = FindModelKind(f.modelId);
    f.xnorm = AnswerNonZero(a[6], 6, "X-axis normalization factor");
    f.ynorm = AnswerNonZero(a[7], 7, "Y-axis normalization factor");
    if (kind->hasOffset) f.y0 = AnswerNumber(a[8], 8, "Y-axis offset");
    for (const auto& g : kind->groups) {
        const std::string what = std::string(g.name) + " starting values";
        f.series.push_back(SeriesValues(a[static_cast<std::size_t>(g.question)], g.question, what, f.terms));
        // A frequency is kept between 0 and 130% of where it starts.
        if (g.frequency)
            for (double v : f.series.back())
                if (!(v > 0)) throw FitInputError(Question(g.question, what) + ": every frequency must be above 0.");
    }
    return f;
}

}  // namespace quillet::fitting
