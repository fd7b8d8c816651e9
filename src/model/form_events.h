#pragma once
// Setting a control through these routines fires its Change handler when the value
// differs, as the desktop toolkit does; the handlers keep DataChanged and the layout.
#include <string>

#include "model/app_state.h"

namespace quillet {

void SetText(AppState& s, TextBox& box, const std::string& text);
void SetCheck(AppState& s, CheckBox& box, bool value);
// Puts a text into Methods: selects the matching list entry (or none) and fires Methods_Change.
void SetMethodsText(AppState& s, const std::string& text);
// The person picked list entry `index` of Methods.
void Methods_Click(AppState& s, int index);

// The Change handler of a text control (answer fields, solver boxes, ...).
void OnTextChange(AppState& s, Ctl id);
void Methods_Change(AppState& s);

// Lays out questions 8 to 12 for the model selected in Methods.
void Questions_Visible(AppState& s);
// Brings the tabs up to date with the selected model (the solver questions follow it).
void RefreshTabs(AppState& s);

// Form -> record and record -> form.
void GetAnswers(AppState& s);
// The record GetAnswers would make of the form, leaving s.rec as it is.
ResponseRecord RecordOnForm(const AppState& s);
void PutAnswers(AppState& s);

// Fills the form's captions, lists and default answers as the form is designed.
void InitFormDesign(AppState& s);

}  // namespace quillet
