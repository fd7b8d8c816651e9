#pragma once
// Suggest for a response file's answers and for the form: where the data are read, and how
// the proposed answers reach the boxes.
#include <string>

#include "fitting/suggest.h"
#include "model/app_state.h"

namespace quillet::fitting {

// Starting values for the answers of `record`, whose data file lies in `folder`. Raises
// FitInputError with the fit's own message when the answers or the data cannot be used.
Suggestion SuggestForRecord(const ResponseRecord& record, const std::string& folder);

// Puts the proposed answers into their boxes as a person would type them, so the change
// handlers and DataChanged follow.
void PutSuggestion(AppState& s, const Suggestion& suggestion);

// The "Suggest" button: proposes starting values from the data file named on the form; a
// message box says why when it cannot, and what to know when it could only partly.
void cmdSuggest_Click(AppState& s);

}  // namespace quillet::fitting
