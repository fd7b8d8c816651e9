#include "support/form_fixture.h"

#include "env/paths.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "solver/solver_tab.h"

namespace quillet::testing {

FormFixture::FormFixture() {
    s.env.dialogs = &dialogs;
    s.env.clock = &clock;
    s.env.currentFolder = dir.path();
    s.env.programDir = dir.path();
    s.env.parentDir = dir.path() + "/..";
    InitFormDesign(s);
    Questions_Visible(s);
    selectSolverQuest(s);
}

std::string FormFixture::PutFile(const std::string& name, const std::string& bytes) {
    WriteBytes(dir / name, bytes);
    return dir / name;
}

void FormFixture::StartAnew(RegistryBackend& store, const std::string& program) {
    s = AppState{};
    s.env.dialogs = &dialogs;
    s.env.clock = &clock;
    s.env.registry = &store;
    s.env.programDir = program;
    s.env.parentDir = program + "/..";
    s.env.currentFolder = dir.path();
}

void FormFixture::ReadInto(const std::string& folder, const std::string& name) {
    LineReader in = LineReader::Open(JoinPath(folder, name));
    FileReadMe(s, in, name, folder);
}

SavedFormFixture::SavedFormFixture() : hive(dir / "hive") {
    s.env.registry = &hive;
    s.UserDir = dir.path();
    GetAnswers(s);
}

}  // namespace quillet::testing
