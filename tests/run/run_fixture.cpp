#include "run/run_fixture.h"

#include <filesystem>

#include "env/file_registry_posix.h"
#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
#include "env/settings.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "model/response_file.h"

namespace quillet::testing {

RunFixture::RunFixture() {
    const std::string program = dir / "Quillet";
    std::filesystem::create_directories(program + "/demos");
    s.env.programDir = program;
    s.env.parentDir = program + "/..";
    WriteBytes(program + "/run-FitW.sh",
               "log=\"$(dirname \"$0\")/run.log\"\n"
               "{ pwd; for a in \"$@\"; do printf '[%s]\\n' \"$a\"; done; } > \"$log\"\n");
    registry = std::make_unique<FileRegistry>(dir / "hive");
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

std::string RunFixture::RunLog() const { return ReadBytes(s.env.programDir + "/run.log"); }

std::string RunFixture::RegText(const std::string& key, const std::string& name) {
    return quillet::RegText(GetRegValue(s.env, reg::CurrentUser, key, name, reg::Sz));
}

}  // namespace quillet::testing
