#include "model/file_commands.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "env/errors.h"
#include "env/paths.h"
#include "env/settings.h"
#include "env/text.h"
#include "model/catalogue.h"
#include "model/form_events.h"
#include "model/response_file.h"

namespace quillet {

namespace {

const std::string kQuilletFilter =
    std::string("All Files (*.*)|*.*|") + kProductName + " Files (*" + kFileExt + ")|*" + kFileExt;

std::string OpenFilter() {
    return std::string("All Files (*.*)|*.*|Input Files (*") + kFileExt + ")|*" + kFileExt +
           "|Example Input Files (Ex*" + kFileExt + ")|Ex*" + kFileExt;
}

bool IsPathError(int number) { return number == err::PathNotFound || number == err::DeviceUnavailable; }

// Reports a failure of a file command; a cancelled dialog leaves quietly.
void ReportFailure(AppState& s, const RuntimeError& e, const std::string& routine, const std::string& path) {
    if (e.number() == err::DialogCancelled) return;
    const std::string title = "In '" + routine + "' routine ...";
    if (IsPathError(e.number()))
        s.env.dialogs->MsgBox("This drive or path does not exist: " + path, mb::Exclamation, title);
    else
        s.env.dialogs->MsgBox(UnexpectedErrorText(e), mb::Critical, title);
}

// A name typed without an extension gets the response-file extension, so that the next
// Open's "*.Fit" filter still shows the file. An existing file picked under "All Files" to
// open or delete is taken as it is named.
std::string ChooseResponseFile(AppState& s, const FileDialogRequest& request) {
    std::string chosen = s.env.dialogs->FileDialog(request);
    std::string folder;
    if (SplitPath(s.env, chosen, folder).find('.') == std::string::npos &&
        (request.kind == FileDialogRequest::Kind::Save || !FileExists(s.env, chosen)))
        chosen += request.defaultExt;
    return chosen;
}

// The file name and folder that SetCurrentFile makes current for `name`.
std::string SplitResponseName(const AppState& s, const std::string& name, std::string& folder) {
    std::string file = SplitPath(s.env, name, folder);
    if (folder.empty()) folder = JoinPath(s.env.currentFolder, "user");
    return file;
}

std::string ProposedSaveName(const std::string& current) {
    if (current == "~~none") return "none.txt";
    if (EndsWith(current, ".*")) return std::string("*") + kFileExt;
    return ReplaceNoCase(current, kFileExt, "") + kFileExt;
}

}  // namespace

bool SaveIfChanged(AppState& s, bool changed) {
    GetAnswers(s);
    if (!changed) return false;
    switch (s.env.dialogs->MsgBox("Save current data?", mb::YesNoCancel + mb::Question, "Data in form has changed!")) {
        case mb::Yes: return !FileSaveAs(s);
        case mb::No: s.DataChanged = false; return false;
        default: return true;
    }
}

void FileNew(AppState& s) {
    if (s.CurrentFile != kNewData && SaveIfChanged(s, s.DataChanged)) return;
    if (s.env.dialogs->MsgBox("Okay to Clear responses?", mb::OKCancel + mb::Question, "Confirm 'New' Response.") !=
        mb::OK)
        return;
    for (auto& a : s.rec.Answers) a.clear();
    for (auto& v : s.rec.SolverValues) v.clear();
    s.rec.SolverCount = 0;
    s.rec.Answers[2] = kModelNames[model::Lorentzian];
    SetMethodsText(s, s.rec.Answers[2]);
    s.CurrentFile = kNewData;
    PutAnswers(s);
    ShowFilename(s);
}

namespace {

// Reads `chosen` onto the form and makes it current.
void OpenChosen(AppState& s, const std::string& chosen) {
    // Opened before anything changes: a file that cannot be read leaves the form and the
    // current file as they were.
    std::string folder;
    const std::string name = SplitResponseName(s, chosen, folder);
    LineReader in = LineReader::OpenOrRaise(JoinPath(folder, name));
    SetCurrentFile(s, chosen);
    FileReadMe(s, in, s.CurrentFile, s.UserDir);
    in.Close();
    s.DataFile = s.rec.Answers[1];
    s.DataDir = s.UserDir;
    PutAnswers(s);
    ShowFilename(s);
    s.DataChanged = false;
    PutRecentFile(s.env, JoinPath(s.UserDir, s.CurrentFile));
    ShowOutputInCalculator(s);
}

}  // namespace

void FileOld(AppState& s) {
    if (s.CurrentFile != kNewData && SaveIfChanged(s, s.DataChanged)) return;
    std::string chosen;
    try {
        chosen = ChooseResponseFile(s, {FileDialogRequest::Kind::Open, "Select Response (Input) File to Open",
                                        OpenFilter(), s.UserDir, std::string("*") + kFileExt, kFileExt});
        OpenChosen(s, chosen);
    } catch (const RuntimeError& e) {
        ReportFailure(s, e, "FileOld", chosen);
    }
}

void OpenResponseFile(AppState& s, const std::string& path) {
    if (s.CurrentFile != kNewData && SaveIfChanged(s, s.DataChanged)) return;
    try {
        OpenChosen(s, path);
    } catch (const RuntimeError& e) {
        ReportFailure(s, e, "FileOld", path);
    }
}

void DropFile(AppState& s, const std::string& path) {
    std::string folder;
    const std::string name = SplitPath(s.env, path, folder);
    if (EndsWith(LCase(name), LCase(kFileExt))) {
        OpenResponseFile(s, path);
        return;
    }
    // Starting a new response from a dropped data file is still to come; until then the
    // person learns why nothing opened.
    s.env.dialogs->MsgBox("'" + name + "' is not a response file (*" + kFileExt + ").  " + kProductName +
                              " opens only response files dropped on its window.",
                          mb::Exclamation, kProductName);
}

void FileSave(AppState& s) {
    s.Written = false;
    if (s.CurrentFile == "*.*" || !FileExists(s.env, JoinPath(s.UserDir, s.CurrentFile))) {
        // Save As writes the file itself; a cancelled Save As saves nothing.
        FileSaveAs(s);
        return;
    }
    GetAnswers(s);
    s.RunFile = s.CurrentFile;
    try {
        WriteAnsFile(s, s.RunFile, s.UserDir);
        if (s.PathStatus == "Ok") {
            s.DataChanged = false;
            PutRecentFile(s.env, JoinPath(s.UserDir, s.RunFile));
        }
    } catch (const RuntimeError& e) {
        ReportFailure(s, e, "FileSave", s.UserDir);
    }
}

bool FileSaveAs(AppState& s) {
    std::string chosen;
    try {
        chosen = ChooseResponseFile(s, {FileDialogRequest::Kind::Save, "Save Input File As ...", kQuilletFilter,
                                        s.UserDir, ProposedSaveName(s.CurrentFile), kFileExt});
        if (FileExists(s.env, chosen) &&
            s.env.dialogs->MsgBox("Replace " + LCase(chosen) + " file?", mb::YesNo + mb::Question,
                                  "File exists, want to replace it?") != mb::Yes)
            return false;
        SetCurrentFile(s, chosen);
        GetAnswers(s);
        WriteAnsFile(s, s.CurrentFile, s.UserDir);
        ShowFilename(s);
        // A failed write keeps the answers marked as changed, so nothing is lost silently.
        if (s.PathStatus != "Ok") return false;
        s.DataChanged = false;
        PutRecentFile(s.env, JoinPath(s.UserDir, s.CurrentFile));
        return true;
    } catch (const RuntimeError& e) {
        ReportFailure(s, e, "FileSaveAs", chosen);
        return false;
    }
}

void FileDelete(AppState& s) {
    std::string chosen;
    try {
        const std::string start = s.DeleteFolder.empty() ? s.UserDir : s.DeleteFolder;
        chosen = ChooseResponseFile(
            s, {FileDialogRequest::Kind::Open, "Select File to be Deleted", kQuilletFilter, start, "", kFileExt});
        if (FileExists(s.env, chosen) &&
            s.env.dialogs->MsgBox("Delete '" + chosen + "' File.", mb::YesNo + mb::Question, "Confirm Delete?") ==
                mb::Yes) {
            if (std::remove(chosen.c_str()) != 0) throw ErrorFromErrno(errno, false);
        }
        SplitPath(s.env, chosen, s.DeleteFolder);
    } catch (const RuntimeError& e) {
        ReportFailure(s, e, "FileDelete", chosen);
    }
}

void ShowFilename(AppState& s) {
    const std::string program = std::string(kProductName) + ", a Calculus-level program";
    s.form.caption = s.CurrentFile.empty() ? program : s.CurrentFile + " ... " + program;
}

void ShowOutputInCalculator(AppState& s) {
    const std::string output = JoinPath(s.UserDir, "output");
    std::error_code ec;
    if (std::filesystem::is_directory(output, ec)) s.form.calcFolder = output;
}

void SetCurrentFile(AppState& s, const std::string& name) {
    std::string folder;
    s.CurrentFile = SplitResponseName(s, name, folder);
    s.UserDir = folder;
    s.WorkDir = folder;
}

}  // namespace quillet
