#pragma once
// The run launcher: hands the response file to the solver's script and waits for it.
#include "model/app_state.h"

namespace quillet {

void FileRun2(AppState& s);
void RunSubmitted(AppState& s);
void FileRun(AppState& s);
// Creates the output folder of the current RunDir when it is missing.
void EnsureOutputDir(AppState& s);

}  // namespace quillet
