#include "model/startup.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "env/mdlRegistryAPI.h"
#include "env/settings.h"
#include "support/form_fixture.h"
#include "support/test_registry.h"

namespace quillet {
namespace {

using testing::FormFixture;

class Startup : public FormFixture {
protected:
    Startup() : hive(dir / "hive") {
        program = dir / "Quillet";
        std::filesystem::create_directories(program + "/demos");
        Reset();
    }

    // A new program state, as at the next start of the program.
    void Reset() {
        s = AppState{};
        s.env.dialogs = &dialogs;
        s.env.clock = &clock;
        s.env.registry = &hive;
        s.env.programDir = program;
        s.env.parentDir = program + "/..";
        s.env.currentFolder = dir.path();
    }

    // A Power response with 7 terms as program/folder/name, the last file of the run before.
    void SaveLastFile(const std::string& folder, const std::string& name) {
        std::filesystem::create_directories(program + "/" + folder);
        testing::WriteBytes(program + "/" + folder + "/" + name,
                            "mine\r\nd.dat\r\nPower\r\n1\r\n10\r\n7\r\n1\r\n1\r\n0\r\n1\r\nN\r\n-999\r\n-999\r\nN\r\n");
        PutFileInRegistry(s.env, name, folder);
    }

    std::string program;
    testing::TestRegistry hive;
};

TEST_F(Startup, FirstStartOnAnEmptyHiveTakesTheDefaultPauseAndRegistersTheFileTypes) {
    Form_Load(s);
    EXPECT_EQ(s.form.tPause.text, "20");
    EXPECT_EQ(RegText(GetRegValue(s.env, reg::ClassesRoot, ".Fit", "", reg::Sz, std::string("<missing>"))),
              "MyEditor.bat");
}

TEST_F(Startup, ReopensTheLastResponseFileExceptAnExampleAndSaysNothingOfAVanishedOne) {
    SaveLastFile("demos", "eX2.Fit");
    Form_Load(s);
    EXPECT_EQ(s.form.nTerms.text, "");
    EXPECT_EQ(s.CurrentFile, "");

    PutFileInRegistry(s.env, "gone.Fit", "demos");
    Reset();
    Form_Load(s);
    EXPECT_EQ(s.CurrentFile, "gone.Fit");

    SaveLastFile("User", "mine.Fit");
    Reset();
    Form_Load(s);
    EXPECT_EQ(s.UserDir, testing::NativePath(program + "/User"));
    EXPECT_EQ(s.form.nTerms.text, "7");
    EXPECT_FALSE(s.form.PW50.visible);
    EXPECT_EQ(s.form.caption, "mine.Fit ... Quillet, a Calculus-level program");
}

}  // namespace
}  // namespace quillet
