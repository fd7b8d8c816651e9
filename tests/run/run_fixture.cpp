#include "run/run_fixture.h"

#include <filesystem>

#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
#include "env/settings.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "model/response_file.h"

namespace quillet::testing {

namespace {
// A run script that writes its working folder, then each argument in brackets, to run.log.
void WriteRecordingScript(const std::string& program) {
#ifdef _WIN32
    WriteBytes(program + "\\run-FitW.bat",
               "@echo off\r\n"
               "cd > \"%~dp0run.log\"\r\n"
               ":next\r\n"
               "if \"%~1\"==\"\" goto :eof\r\n"
               "echo [%~1]>> \"%~dp0run.log\"\r\n"
               "shift\r\n"
               "goto next\r\n");
#else
    WriteBytes(program + "/run-FitW.sh",
               "log=\"$(dirname \"$0\")/run.log\"\n"
               "{ pwd; for a in \"$@\"; do printf '[%s]\\n' \"$a\"; done; } > \"$log\"\n");
#endif
}
}  // namespace

RunFixture::RunFixture() {
    const std::string program = dir / "Quillet";
    std::filesystem::create_directories(program + "/demos");
    s.env.programDir = program;
    s.env.parentDir = program + "/..";
    WriteRecordingScript(program);
    registry = std::make_unique<TestRegistry>(dir / "hive");
    s.env.registry = registry.get();
    s.env.runner = &runner;
    EnsureSettingsKeys(s.env);
    UseUserDir(MakeFolder("User"));
    const char* answers[] = {"", "pts.100", "", "1", "10", "3", "1", "1", "0"};
    for (int q = 1; q <= 8; ++q)
        if (q != 2) SetText(s, *AnswerBox(s.form, q), answers[q]);
    SetMethodsText(s, "Lorentzian");
    s.form.tPause.text = "20";
}

std::string RunFixture::MakeFolder(const std::string& name) {
    const std::string folder = JoinPath(s.env.programDir, name);
    std::filesystem::create_directories(folder);
    return folder;
}

void RunFixture::UseUserDir(const std::string& folder) {
    s.UserDir = folder;
    WriteBytes(folder + "/pts.100", "1 2\n2 3\n");
}

void RunFixture::SaveResponse(const std::string& name) {
    SetCurrentFile(s, JoinPath(s.UserDir, name));
    WriteAnsFile(s, s.CurrentFile, s.UserDir);
    s.DataChanged = false;
}

bool RunFixture::ScriptRan() const { return std::filesystem::exists(s.env.programDir + "/run.log"); }

std::string RunFixture::RunLog() const {
    std::string log;
    for (char c : ReadBytes(s.env.programDir + "/run.log"))
        if (c != '\r') log += c;  // the batch file writes CR LF
    return log;
}

std::string RunFixture::RegText(const std::string& key, const std::string& name) {
    return quillet::RegText(GetRegValue(s.env, reg::CurrentUser, key, name, reg::Sz));
}

}  // namespace quillet::testing
