#include "model/startup.h"

#include <filesystem>

#include "env/file_assoc.h"
#include "env/paths.h"
#include "env/settings.h"
#include "env/text.h"
#include "model/catalogue.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "solver/solver_tab.h"

namespace quillet {

namespace {

const char* const kInstructions[] = {
    "1. On the left side, Find your Folder by double clicking Folders. Next, find your Math Model file name and "
    "select/click it.",
    "2. Enter desired X value below.", "3. Press the 'Calculate' button below.", "",
    "The resulting Y value and its standard deviation will be shown in the bottom textboxes."};

std::string Instructions() {
    std::string text;
    for (const char* line : kInstructions) text += std::string(text.empty() ? "" : kCrLf) + line;
    return text;
}

// Reopens the last response file unless it is missing, unreadable or an example; returns the
// name that stays current ("" for an example).
std::string ReopenLastFile(AppState& s, std::string name, const std::string& folder) {
    const std::string full = JoinPath(folder, name);
    if (FileExists(s.env, full) && !name.empty() && !StartsWithNoCase(name, "ex")) {
        // A file that cannot be read is not reported at start: like a vanished one, it leaves
        // the form at its defaults.
        LineReader in = LineReader::Open(full);
        if (in.isOpen()) {
            FileReadMe(s, in, name, folder);
            in.Close();
            PutAnswers(s);
            s.DataFile = s.rec.Answers[1];
            s.DataDir = folder;
            return name;
        }
    }
    if (StartsWithNoCase(name, "ex")) name.clear();
    GetAnswers(s);
    return name;
}

}  // namespace

void Form_Load(AppState& s) {
    s.FileExt = ".Fit";
    InitFormDesign(s);
    Questions_Visible(s);
    selectSolverQuest(s);

    EnsureSettingsKeys(s.env);
    s.form.tPause.text = GetPauseTime(s.env);
    s.RunCount = GetRunCount(s.env);

    s.CurrentFile.clear();
    std::string name = GetFileInRegistry(s.env, s.UserPath);
    const std::string folder = UserFolder(s.env, s.UserPath);
    std::error_code ec;
    if (std::filesystem::is_directory(folder, ec)) s.env.currentFolder = folder;
    name = ReopenLastFile(s, name, folder);

    Start_INI(s.env, s.RunMode);
    SetCurrentFile(s, JoinPath(folder, name));
    s.DataChanged = false;

    s.form.cboPatterns.items = {"Math Models (*.equ)", "All Files (*.*)"};
    s.form.cboPatterns.listIndex = 0;
    s.form.cboPatterns.text = s.form.cboPatterns.items[0];
    s.form.calcFolder = folder;
    ShowOutputInCalculator(s);

    RegisterFileTypesOnFirstStart(s.env, s.RunCount, s.env.parentDir);
    s.form.lblInstructions = Instructions();
    RefreshTabs(s);
    ShowFilename(s);
    ShowRegistryNotices(s.env);
}

void exitWin(AppState& s) {
    SaveSettingsAtExit(s.env, s.RunMode, s.UserDir, s.UserPath, s.RunCount);
    s.env.quitRequested = true;
}

bool CloseProgram(AppState& s) {
    if (s.DataChanged) {
        GetAnswers(s);
        const std::string file = s.CurrentFile.empty() ? std::string(kNewData) : s.CurrentFile;
        switch (s.env.dialogs->MsgBox("Save changes to '" + file + "' before closing?",
                                      mb::YesNoCancel + mb::Question, kProductName)) {
            case mb::Yes:
                FileSave(s);
                // A cancelled or failed save keeps the answers, and so the program, open.
                if (s.DataChanged) return false;
                break;
            case mb::No: break;
            default: return false;
        }
    }
    exitWin(s);
    return true;
}

}  // namespace quillet
