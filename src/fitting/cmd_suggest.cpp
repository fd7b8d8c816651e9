// quillet-cli suggest: starting values proposed from the data of a response file.
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/cli_state.h"
#include "cli/commands.h"
#include "env/paths.h"
#include "fitting/fit_error.h"
#include "fitting/suggest_form.h"
#include "model/form_events.h"
#include "model/response_file.h"

namespace quillet::cli {
namespace {

// The proposal in the record's layout: null for every answer not proposed.
nlohmann::json ProposalJson(const fitting::Suggestion& s) {
    nlohmann::json answers = nlohmann::json::array();
    for (int q = 1; q <= 12; ++q) {
        const auto it = s.answers.find(q);
        answers.push_back(it == s.answers.end() ? nlohmann::json() : nlohmann::json(it->second));
    }
    return {{"Answers", answers}, {"Remarks", s.remarks}};
}

int RunSuggest(const std::vector<std::string>& args) {
    const Command& cmd = FindCommand("suggest");
    std::vector<std::string> rest;
    bool write = false;
    for (const auto& a : args) {
        if (a == "--write")
            write = true;
        else
            rest.push_back(a);
    }
    const auto files = PositionalArgs(cmd, rest);
    if (!files) return 2;
    if (files->size() != 1) return UsageError(cmd, "expects one FILE");

    CliSession session;
    AppState& s = session.state;
    std::string folder;
    const std::string name = SplitPath(s.env, files->front(), folder);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(JoinPath(folder, name), ec)) {
        std::cerr << "quillet-cli suggest: The response file \"" << JoinPath(folder, name) << "\" was not found.\n";
        return 2;
    }
    LineReader in = LineReader::Open(JoinPath(folder, name));
    FileReadMe(s, in, name, folder);
    fitting::Suggestion suggestion;
    try {
        suggestion = fitting::SuggestForRecord(s.rec, folder);
    } catch (const fitting::FitInputError& e) {
        std::cerr << "quillet-cli suggest: " << e.what() << "\n";
        return 2;
    }
    std::cout << ProposalJson(suggestion).dump(2) << "\n";
    if (!write) return 0;
    PutAnswers(s);
    fitting::PutSuggestion(s, suggestion);
    return session.SaveForm(name, folder);
}

}  // namespace

static Registrar suggestCommand({"suggest", "quillet-cli suggest FILE [--write]",
                                 "Proposes starting values (answers 6 to 12) from the data of a response file and "
                                 "prints them as JSON; --write stores them into the file as Save does.",
                                 RunSuggest});

}  // namespace quillet::cli
