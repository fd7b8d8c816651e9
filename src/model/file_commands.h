#pragma once
// The File menu's commands and the prompt that protects unsaved answers.
#include <string>

#include "model/app_state.h"

namespace quillet {

// Asks to save changed answers; true means: abandon the command.
bool SaveIfChanged(AppState& s, bool changed);
void FileNew(AppState& s);
void FileOld(AppState& s);
// Opens `path` as Open does once its dialog has chosen it (the save question comes first):
// File > Recent Files and a response file dropped on the window.
void OpenResponseFile(AppState& s, const std::string& path);
// A file dropped on the window: a response file opens; anything else opens nothing, and the
// person is told why.
void DropFile(AppState& s, const std::string& path);
void FileSave(AppState& s);
// True when the answers were written.
bool FileSaveAs(AppState& s);
void FileDelete(AppState& s);
// Puts the current file name into the main form's caption.
void ShowFilename(AppState& s);
// The calculator's folder list shows the output folder beside the current response file, where
// runs leave their model files, when there is one.
void ShowOutputInCalculator(AppState& s);
// Makes `name` current: CurrentFile gets the file name, UserDir its folder.
void SetCurrentFile(AppState& s, const std::string& name);

}  // namespace quillet
