#include "model/startup.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
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
    void Reset() { StartAnew(hive, program); }

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

TEST_F(Startup, OnLinuxTheLastFileReopensFromAFolderOutsideTheProgramFolderWhileItExists) {
    const std::string outside = dir / "fits";
    std::filesystem::create_directories(outside + "/output");
    testing::WriteBytes(outside + "/mine.Fit",
                        "mine\r\nd.dat\r\nPower\r\n1\r\n10\r\n7\r\n1\r\n1\r\n0\r\n1\r\nN\r\n-999\r\n-999\r\nN\r\n");
    // What a run from that folder stores.
    PutFileInRegistry(s.env, "mine.Fit", outside);
    Form_Load(s);
#ifdef _WIN32
    EXPECT_EQ(s.UserDir, testing::NativePath(program + "/demos"));
    EXPECT_EQ(s.form.nTerms.text, "");
#else
    EXPECT_EQ(s.UserDir, outside);
    EXPECT_EQ(s.form.nTerms.text, "7");
    EXPECT_FALSE(s.DataChanged);
    // The calculator shows where the runs of that file leave their model files.
    EXPECT_EQ(s.form.calcFolder, outside + "/output");
#endif

    std::filesystem::remove_all(outside);
    Reset();
    Form_Load(s);
    EXPECT_EQ(s.UserDir, testing::NativePath(program + "/demos"));
    EXPECT_EQ(s.form.nTerms.text, "");
    EXPECT_EQ(s.form.calcFolder, testing::NativePath(program + "/demos"));
}

// A last response file that is there and still cannot be read: its read permission is gone,
// or a folder stands under its name where the file test sees a file.
enum class Unreadable { NoReadPermission, FolderTakenForAFile };
std::string Name(Unreadable u) {
    return u == Unreadable::NoReadPermission ? "NoReadPermission" : "FolderTakenForAFile";
}
void PrintTo(Unreadable u, std::ostream* os) {
    *os << Name(u);
}

class StartupWithAnUnreadableLastFile : public Startup, public ::testing::WithParamInterface<Unreadable> {};

TEST_P(StartupWithAnUnreadableLastFile, ShowsTheDefaultsWithoutAnyMessage) {
    PutFileInRegistry(s.env, "gone.Fit", "User");
    Reset();
    Form_Load(s);
    const ResponseRecord defaults = s.rec;

    const std::string last = program + "/User/mine.Fit";
    if (GetParam() == Unreadable::NoReadPermission) {
        SaveLastFile("User", "mine.Fit");
        if (!testing::TakeAwayReadPermission(last))
            GTEST_SKIP() << "this user reads files without read permission (root or Windows)";
    } else {
        std::filesystem::create_directories(last);
        PutFileInRegistry(s.env, "mine.Fit", "User");
    }
    Reset();
    if (GetParam() == Unreadable::FolderTakenForAFile)
        s.env.probe = [](const std::string& path, bool folder) {
            return RealPathProbe(path, folder) || (!folder && RealPathProbe(path, true));
        };
    Form_Load(s);
    EXPECT_EQ(s.rec.Answers, defaults.Answers);
    EXPECT_EQ(s.rec.Note1, defaults.Note1);
    EXPECT_EQ(s.rec.Note2, defaults.Note2);
    EXPECT_FALSE(s.DataChanged);
}

INSTANTIATE_TEST_SUITE_P(Causes, StartupWithAnUnreadableLastFile,
                         ::testing::Values(Unreadable::NoReadPermission, Unreadable::FolderTakenForAFile),
                         [](const auto& info) { return Name(info.param); });

}  // namespace
}  // namespace quillet
