#pragma once
// A program folder in a temporary folder with a run script that records how it was called,
// a registry of the test's own, and a form holding complete Lorentzian answers.
#include <filesystem>
#include <string>

#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
#include "env/settings.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "run/process_runner.h"
#include "support/form_fixture.h"
#include "support/test_registry.h"

namespace quillet::testing {

class RunFixture : public FormFixture {
  protected:
    RunFixture() {
        s.env.programDir = dir / "Quillet";
        std::filesystem::create_directories(ProgramDir() + "/demos");
        s.env.parentDir = ProgramDir() + "/..";
        // The script writes its working folder, then each argument in brackets, to run.log.
#ifdef _WIN32
        WriteBytes(ProgramDir() + "\\run-FitW.bat",
                   "@echo off\r\ncd > \"%~dp0run.log\"\r\n:next\r\nif \"%~1\"==\"\" goto :eof\r\n"
                   "echo [%~1]>> \"%~dp0run.log\"\r\nshift\r\ngoto next\r\n");
#else
        WriteBytes(ProgramDir() + "/run-FitW.sh",
                   "log=\"$(dirname \"$0\")/run.log\"\n"
                   "{ pwd; for a in \"$@\"; do printf '[%s]\\n' \"$a\"; done; } > \"$log\"\n");
#endif
        s.env.registry = &registry;
        s.env.runner = &runner;
        EnsureSettingsKeys(s.env);
        UseUserDir(MakeFolder("User"));
        const char* answers[] = {"", "pts.100", "", "1", "10", "3", "1", "1", "0"};
        for (int q = 1; q <= 8; ++q)
            if (q != 2) SetText(s, *AnswerBox(s.form, q), answers[q]);
        SetMethodsText(s, "Lorentzian");
        s.form.tPause.text = "20";
    }
    std::string ProgramDir() const { return s.env.programDir; }
    std::string UserDir() const { return s.UserDir; }
    // A folder under the program folder.
    std::string MakeFolder(const std::string& name) {
        const std::string folder = JoinPath(ProgramDir(), name);
        std::filesystem::create_directories(folder);
        return folder;
    }
    // Makes `folder` the user directory, with the data file pts.100 in it.
    void UseUserDir(const std::string& folder) {
        s.UserDir = folder;
        WriteBytes(folder + "/pts.100", "1 2\n2 3\n");
    }
    // Saves the form as `name` in the user directory and makes it current.
    void SaveResponse(const std::string& name) {
        SetCurrentFile(s, JoinPath(s.UserDir, name));
        WriteAnsFile(s, s.CurrentFile, s.UserDir);
        s.DataChanged = false;
    }
    bool ScriptRan() const { return std::filesystem::exists(ProgramDir() + "/run.log"); }
    // The script's working folder, then each argument in brackets, one a line ending in "\n".
    std::string RunLog() const {
        std::string log = ReadBytes(ProgramDir() + "/run.log");
        std::erase(log, '\r');  // the batch file writes CR LF
        return log;
    }
    std::string RegText(const std::string& key, const std::string& name) {
        return quillet::RegText(GetRegValue(s.env, reg::CurrentUser, key, name, reg::Sz));
    }

    TestRegistry registry{dir / "hive"};
    ProcessRunner runner;
};

}  // namespace quillet::testing
