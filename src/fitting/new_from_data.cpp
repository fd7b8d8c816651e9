#include "fitting/new_from_data.h"

#include <cctype>

#include "env/errors.h"
#include "env/files.h"
#include "env/paths.h"
#include "fitting/data_file.h"
#include "fitting/fit_error.h"
#include "fitting/number_text.h"
#include "fitting/suggest.h"
#include "model/catalogue.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "model/response_file.h"

namespace quillet::fitting {

namespace {

const char* const kTitle = "New from Data File";

bool IsPoint(std::string_view line, std::vector<std::string_view>& fields) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    SplitFields(line, fields);
    return fields.size() == 2 && ParseNumber(fields[0]) && ParseNumber(fields[1]);
}

// Characters that pass the run's command line and the short-name check unchanged.
bool KeptInName(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '_' || c == '-' || c == '~' || c == '+';
}

}  // namespace

DataLines FindDataLines(const std::string& path) {
    const std::string bytes = ReadForFit(path, "data file");
    DataLines found;
    std::vector<std::string_view> fields;
    std::size_t pos = 0;
    for (int line = 1; pos < bytes.size(); ++line) {
        std::size_t end = bytes.find('\n', pos);
        if (end == std::string::npos) end = bytes.size();
        const bool point = IsPoint(std::string_view(bytes).substr(pos, end - pos), fields);
        pos = end + 1;
        if (point) {
            if (found.first == 0) found.first = line;
            ++found.count;
        } else if (found.first != 0) {
            break;  // the reader stops at such a line too
        }
    }
    if (found.first == 0) throw FitInputError("No line of the data file \"" + path + "\" holds one X and one Y value.");
    return found;
}

std::string ResponseNameFor(const std::string& dataName, const std::function<bool(const std::string&)>& taken) {
    const auto dot = dataName.find_last_of('.');
    const std::string base = dot == std::string::npos || dot == 0 ? dataName : dataName.substr(0, dot);
    std::string safe;
    for (std::size_t i = 0; i < base.size(); ++i) {
        const auto c = static_cast<unsigned char>(base[i]);
        if (c >= 0x80) {
            // One "_" for a whole UTF-8 character.
            while (i + 1 < base.size() && (static_cast<unsigned char>(base[i + 1]) & 0xC0) == 0x80) ++i;
            safe += '_';
        } else {
            safe += KeptInName(base[i]) ? base[i] : '_';
        }
    }
    if (safe.empty()) safe = "data";
    std::string name = safe + kFileExt;
    for (int n = 2; taken(name); ++n) name = safe + "-" + std::to_string(n) + kFileExt;
    return name;
}

void NewFromDataFile(AppState& s) {
    if (s.CurrentFile != kNewData && SaveIfChanged(s, s.DataChanged)) return;
    std::string chosen;
    try {
        chosen = s.env.dialogs->FileDialog(
            {FileDialogRequest::Kind::Open, "Select the data file to fit: a response file is made beside it",
             "All Files (*.*)|*.*|Input Data files (*.??0.data)|*.??0.data|Plot data files (*.plt)|*.plt", s.UserDir,
             "", ""});
    } catch (const RuntimeError& e) {
        if (e.number() != err::DialogCancelled) s.env.dialogs->MsgBox(UnexpectedErrorText(e), mb::Critical, kTitle);
        return;
    }
    std::string folder;
    const std::string dataName = SplitPath(s.env, chosen, folder);
    DataLines lines;
    DataPoints points;
    try {
        lines = FindDataLines(chosen);
        points = ReadDataPoints(chosen, lines.first, lines.count);
    } catch (const FitInputError& e) {
        s.env.dialogs->MsgBox(std::string("No response file was made: ") + e.what(), mb::Exclamation, kTitle);
        return;
    }
    const std::string name =
        ResponseNameFor(dataName, [&](const std::string& n) { return FileExists(s.env, JoinPath(folder, n)); });

    // As New clears the answers, but the model stays what it was.
    const std::string model = s.form.Methods.text;
    for (auto& a : s.rec.Answers) a.clear();
    for (auto& v : s.rec.SolverValues) v.clear();
    s.rec.SolverCount = 0;
    s.rec.Note1.clear();
    s.rec.Note2.clear();
    s.rec.Answers[1] = dataName;
    s.rec.Answers[2] = model;
    s.rec.Answers[3] = std::to_string(lines.first);
    s.rec.Answers[4] = std::to_string(lines.count);
    s.rec.Answers[6] = ProposedScale(points.x);
    s.rec.Answers[7] = ProposedScale(points.y);
    PutAnswers(s);
    s.DataDir = folder;
    s.DataFile = dataName;
    SetCurrentFile(s, JoinPath(folder, name));
    try {
        WriteAnsFile(s, name, folder);
    } catch (const RuntimeError& e) {
        s.env.dialogs->MsgBox(UnexpectedErrorText(e), mb::Critical, kTitle);
    }
    if (s.PathStatus == "Ok") {
        s.DataChanged = false;
    } else {
        // Not saved: Save and Submit go through Save As.
        s.CurrentFile = kNewData;
        s.DataChanged = true;
    }
    ShowFilename(s);
}

}  // namespace quillet::fitting
