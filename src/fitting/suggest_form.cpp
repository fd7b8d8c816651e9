#include "fitting/suggest_form.h"

#include "env/paths.h"
#include "fitting/data_file.h"
#include "fitting/fit_error.h"
#include "fitting/fit_settings.h"
#include "model/form_events.h"

namespace quillet::fitting {

Suggestion SuggestForRecord(const ResponseRecord& record, const std::string& folder) {
    const FitSettings f = DataSettingsOf(record);
    const std::string path = JoinPath(folder, f.dataFile);
    const DataPoints data = ReadDataPoints(path, f.firstLine, f.points);
    const Model model(*FindModelKind(f.modelId), f.terms);
    CheckFittable(data, model, path, f.firstLine);
    return SuggestStart(data, f.modelId, f.terms, f.xnorm, f.ynorm, f.weighted);
}

void PutSuggestion(AppState& s, const Suggestion& suggestion) {
    for (const auto& [question, text] : suggestion.answers) SetText(s, *AnswerBox(s.form, question), text);
}

void cmdSuggest_Click(AppState& s) {
    const std::string title = "Suggest starting values";
    try {
        const Suggestion suggestion = SuggestForRecord(RecordOnForm(s), s.DataDir.empty() ? s.UserDir : s.DataDir);
        PutSuggestion(s, suggestion);
        if (suggestion.remarks.empty()) return;
        std::string text = "Starting values proposed; note that";
        for (const auto& remark : suggestion.remarks) text += "\n- " + remark;
        s.env.dialogs->MsgBox(text + ".", mb::Information, title);
    } catch (const FitInputError& e) {
        s.env.dialogs->MsgBox(std::string("No starting values proposed: ") + e.what(), mb::Exclamation, title);
    }
}

}  // namespace quillet::fitting
