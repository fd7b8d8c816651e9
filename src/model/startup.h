#pragma once
// The main form's start-up and exit.
#include "model/app_state.h"

namespace quillet {

// Brings every part of the program into its starting state, once, before the form shows:
// catalogue and captions, registry keys and settings, the last response file reopened unless
// it is an example, folders, file types on a first start, the calculator's instructions.
void Form_Load(AppState& s);
// The exit routine: stores the user path and the raised run counter, then asks the program
// to end (env.quitRequested).
void exitWin(AppState& s);
// The person closes the program (the window or File > Exit): changed answers are offered for
// saving first, then the exit routine runs. False when the program stays open: Cancel, or a
// save that did not happen.
bool CloseProgram(AppState& s);

}  // namespace quillet
