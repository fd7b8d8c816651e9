#pragma once
// How the question tab reacts while the person works on it: focus, the browse button and
// the completeness check before a run.
#include "model/app_state.h"

namespace quillet {

// A control gained the focus: series and note boxes select their whole text; timeData
// shows the browse button and hands the focus to it while the question tab is showing.
void OnGotFocus(AppState& s, Ctl id);
// The browse button of question 1: choose the data file (it must lie beside the response file).
void cmdFileData_Click(AppState& s);
// True when every answer a run needs is filled (questions 1..7, 8 unless "Bell Curve",
// the series questions the model uses, and a model from the list).
bool AllNeededFieldsFilled(const AppState& s);
// The completeness check before a run: reports blank fields and answers false.
bool isCompleteTest(AppState& s);

}  // namespace quillet
