// quillet-cli read / write: a response file to JSON and back, exactly as the program does.
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/cli_state.h"
#include "cli/commands.h"
#include "env/errors.h"
#include "env/paths.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "solver/solver_tab.h"

namespace quillet::cli {
namespace {

using nlohmann::json;

json RecordToJson(const ResponseRecord& r) {
    json answers = json::array();
    for (int i = 1; i <= 12; ++i) answers.push_back(r.Answers[static_cast<std::size_t>(i)]);
    json solver = json::array();
    for (int i = 1; i <= 6; ++i) solver.push_back(r.SolverValues[static_cast<std::size_t>(i)]);
    return json{{"ResponseTitle", r.ResponseTitle}, {"ResponseFolder", r.ResponseFolder},
                {"Answers", answers},               {"ModelID", r.ModelID},
                {"WeightFlag", r.WeightFlag},       {"Note1", r.Note1},
                {"Note2", r.Note2},                 {"SolverCount", r.SolverCount},
                {"SolverValues", solver}};
}

std::string TextAt(const json& j, const char* key, std::size_t index) {
    if (!j.contains(key) || !j[key].is_array() || index >= j[key].size()) return {};
    const auto& v = j[key][index];
    return v.is_string() ? v.get<std::string>() : v.is_null() ? std::string() : v.dump();
}

std::string Text(const json& j, const char* key) {
    if (!j.contains(key) || j[key].is_null()) return {};
    return j[key].is_string() ? j[key].get<std::string>() : j[key].dump();
}

// Puts the JSON answers on the form, as a person would type them.
void JsonToForm(AppState& s, const json& j) {
    for (int q = 1; q <= 12; ++q) {
        std::string v = TextAt(j, "Answers", static_cast<std::size_t>(q - 1));
        if (q == 2)
            SetMethodsText(s, v);
        else
            SetText(s, *AnswerBox(s.form, q), v);
    }
    s.form.chkWeight.value = j.value("WeightFlag", 0) != 0;
    SetText(s, s.form.Note1, Text(j, "Note1"));
    SetText(s, s.form.Note2, Text(j, "Note2"));
    for (int i = 1; i <= 6; ++i) SetText(s, SolverBox(s.form, i), TextAt(j, "SolverValues", static_cast<std::size_t>(i - 1)));
    selectSolverQuest(s);
}

int RunRead(const std::vector<std::string>& args) {
    if (args.size() != 1) return UsageError(FindCommand("read"), "expects one FILE");
    CliSession session;
    AppState& s = session.state;
    std::string folder;
    std::string name = SplitPath(s.env, args[0], folder);
    LineReader in = LineReader::Open(JoinPath(folder, name));
    FileReadMe(s, in, name, folder);
    if (session.dialogs.shown() > 0) return 1;
    std::cout << RecordToJson(s.rec).dump(2) << "\n";
    return 0;
}

int RunWrite(const std::vector<std::string>& args) {
    if (args.size() != 1) return UsageError(FindCommand("write"), "expects one FILE");
    json j;
    try {
        j = json::parse(std::cin);
    } catch (const json::exception& e) {
        std::cerr << "quillet-cli write: the input is not JSON: " << e.what() << "\n";
        return 1;
    }
    if (!j.is_object()) {
        std::cerr << "quillet-cli write: the input must be one JSON object\n";
        return 1;
    }
    CliSession session;
    AppState& s = session.state;
    JsonToForm(s, j);
    std::string folder;
    std::string name = SplitPath(s.env, args[0], folder);
    return session.SaveForm(name, folder);
}

}  // namespace

static Registrar readCommand({"read", "quillet-cli read FILE",
                              "Reads a response file as the program does and prints its record as JSON.", RunRead});
static Registrar writeCommand({"write", "quillet-cli write FILE",
                               "Writes a response file from a JSON record on stdin, exactly as Save does.",
                               RunWrite});

}  // namespace quillet::cli
