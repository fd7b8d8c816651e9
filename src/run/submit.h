#pragma once
// "Submit Batch Run": the checks before a run.
#include <string>

#include "model/app_state.h"

namespace quillet {

void cmdSubmit_Click(AppState& s);
// The lower-cased short (8.3) form of a path.
std::string ShortPathOf(const std::string& path);
bool CheckAnswers(AppState& s);
// Completes series lines that hold fewer values than terms; positive when it added values.
int PadSeriesParameters(AppState& s);
void SolverListWarning(AppState& s, const std::string& variable, int required, const std::string& parameter);
void EnableControls(AppState& s, bool enabled);

}  // namespace quillet
