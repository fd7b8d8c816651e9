#include "run/launcher.h"

#include <filesystem>

#include "env/errors.h"
#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
#include "env/settings.h"
#include "env/text.h"
#include "model/catalogue.h"
#include "model/file_commands.h"
#include "run/command_line.h"
#include "run/run_outcome.h"

namespace quillet {

namespace {

void ReportMissing(AppState& s, const std::string& routine) {
    s.env.dialogs->MsgBox("File is missing ... in '" + routine + "' routine!" + kCrLf +
                              "Try running a different file that normally works, then try this" + kCrLf +
                              "one again.  Did error come back?  Not sure what going on here.",
                          mb::Exclamation, std::string("A ") + kProductName + " File is missing!");
}

std::string DemosFolder(const AppState& s) { return JoinPath(s.env.programDir, "demos"); }

// A run folder outside the program folder is a full path: its output lies beside it.
std::string OutputFolderOf(const Env& env, const std::string& runDir) {
    if (std::filesystem::path(runDir).is_absolute()) return JoinPath(runDir, "output");
    return JoinPath(JoinPath(env.programDir, runDir), "output");
}

std::string OutputFolder(const AppState& s) { return OutputFolderOf(s.env, s.RunDir); }

std::string StoredText(Env& env, std::string_view key, const char* name) {
    return RegText(GetRegValue(env, reg::CurrentUser, std::string(key), name, reg::Sz));
}

// Makes `folder` current for the run; a missing folder is an error, as changing into it would be.
void MakeCurrent(AppState& s, const std::string& folder) {
    std::error_code ec;
    if (!std::filesystem::is_directory(folder, ec)) Raise(err::PathNotFound);
    s.env.currentFolder = folder;
}

// The run's command line splits at blanks, so a response file named with one would reach the
// solver in pieces; the person is told how to rename it instead.
bool RefusedForItsBlanks(AppState& s, const std::string& file) {
    if (file.find(' ') == std::string::npos) return false;
    const std::string proposal = ReplaceAll(Trim(file), " ", "_");
    s.env.dialogs->MsgBox("The response file '" + file + "' has a blank in its name, and the run cannot pass " +
                              "such a name to the solver.  Please save it under a name without blanks " +
                              "(File | Save As ...), e.g. '" + proposal + "'.",
                          mb::Exclamation, "Response file name has a blank");
    return true;
}

}  // namespace

void EnsureOutputDir(AppState& s) {
    const std::string out = OutputFolder(s);
    if (dirExists(s.env, out)) return;
    std::error_code ec;
    if (!std::filesystem::create_directory(out, ec) && ec) throw ErrorFromErrno(ec.value(), true);
}

void RunDemo(AppState& s, const std::string& demoFile) {
    s.RunMode = "Demo";
    s.DemoFile = demoFile;
    FileRun2(s);
}

LastRun FindLastRun(Env& env) {
    std::string runDir = StoredText(env, kProductKey, "userPath");
    if (runDir.empty()) runDir = "demos";
    return {OutputFolderOf(env, runDir), StoredText(env, kCompanyKey, "plotFile")};
}

void FileRun2(AppState& s) {
    try {
        SetRegValue(s.env, reg::CurrentUser, std::string(kCompanyKey), "tPause", reg::Sz, s.form.tPause.text);
        if (s.RunMode == "Demo" && !s.DemoFile.empty()) {
            MakeCurrent(s, DemosFolder(s));
            s.WorkDir = DemosFolder(s);
            s.RunFile = s.DemoFile;
            s.RunDir = "demos";
            if (StartsWith(s.DemoFile, "Ex")) RunSubmitted(s);
            return;
        }
        if (s.CurrentFile == kNewData || s.DataChanged) {
            if (s.env.dialogs->MsgBox("Okay to save '" + s.CurrentFile + "' now?", mb::OKCancel + mb::Question,
                                      "File -not- saved OR has been modified!") != mb::OK)
                return;
            if (!FileSaveAs(s)) return;
            s.RunFile = s.CurrentFile;
            s.WorkDir = s.UserDir;
            MakeCurrent(s, s.WorkDir);
            if (!FileExists(s.env, JoinPath(s.UserDir, s.CurrentFile))) return;
        }
        if (RefusedForItsBlanks(s, s.CurrentFile)) return;
        s.RunFile = s.CurrentFile;
        RunSubmitted(s);
    } catch (const RuntimeError&) {
        ReportMissing(s, "FileRun2");
    }
}

void RunSubmitted(AppState& s) {
    MakePlotFileName(s.env, s.RunFile);
    FileRun(s);
}

void FileRun(AppState& s) {
    try {
        if (s.RunMode == "Demo") {
            PutFileInRegistry(s.env, s.DemoFile, "demos");
            s.RunFile = s.DemoFile;
            s.RunDir = "demos";
            MakeCurrent(s, DemosFolder(s));
        } else if (s.RunDir == s.env.programDir) {
            s.RunDir.clear();
            MakeCurrent(s, s.UserDir);
        } else {
            s.RunFile = s.CurrentFile;
            // The run's folder relative to the program folder; one outside it stays a full path.
            s.RunDir = StripProgramFolder(s.env, s.UserDir);
            s.UserPath = s.RunDir;
            PutFileInRegistry(s.env, s.CurrentFile, s.UserPath);
            MakeCurrent(s, s.UserDir);
        }
        if (s.RunFile.empty()) return;
        const std::string args = s.RunFile + " " + s.RunDir + (s.form.AutoExit.value ? " exit" : " wait");
        EnsureOutputDir(s);
        s.form.cmdPlots.enabled = true;
        s.CommandLine = JoinPath(s.env.programDir, RunScriptName()) + " " + args;
        const auto started = std::filesystem::file_time_type::clock::now();
        const int status = s.env.runner->Run(s.CommandLine, s.env.currentFolder, !s.form.AutoExit.value);
        ++s.RunsEnded;
        // The run's model file is what the calculator evaluates next.
        s.form.calcFolder = OutputFolder(s);
        ReportRunOutcome(s, ReadRunOutcome(JoinPath(OutputFolder(s), "~Quillet.out"), status, started));
    } catch (const RuntimeError&) {
        ReportMissing(s, "exitWin");
    }
}

}  // namespace quillet
