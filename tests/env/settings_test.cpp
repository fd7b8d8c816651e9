#include "env/settings.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "env/errors.h"
#include "env/mdlRegistryAPI.h"
#include "env/text.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

const std::string kProduct = "Software\\Vantorel\\Quillet";
const std::string kCompany = "Software\\Vantorel";

class Settings : public RegistryFixture {
  protected:
    void Store(const std::string& key, const std::string& name, const std::string& text) {
        CreateKey(env, reg::CurrentUser, key);
        SetRegValue(env, reg::CurrentUser, key, name, reg::Sz, text);
    }
    std::string Stored(const std::string& key, const std::string& name) {
        return RegText(
            GetRegValue(env, reg::CurrentUser, key, name, reg::Sz, std::string("<missing>")));
    }
};

TEST_F(Settings, GetFileInRegistryKeepsTheNameAndNoDriveMissingOrEmptyUserPath) {
    CreateKey(env, reg::CurrentUser, kCompany);  // without the product key nothing is restored
    std::string userPath = "kept";
    EXPECT_EQ(GetFileInRegistry(env, userPath), "");
    EXPECT_EQ(userPath, "kept");

    struct Case {
        const char *fileIn, *userPath, *name;
    };
    for (const Case& c :
         {Case{"a.Fit", "D:\\data", "a.Fit"}, Case{"/home/x/b.Fit", "/no/such/folder", "b.Fit"},
          Case{"", "", ""}}) {
        Store(kProduct, "FileIn", c.fileIn);
        Store(kProduct, "userPath", c.userPath);
        userPath = "before";
        env.parentDir.clear();
        EXPECT_EQ(GetFileInRegistry(env, userPath), c.name);
        EXPECT_EQ(userPath, "demos");
        EXPECT_EQ(env.parentDir, NativePath(env.programDir + "/.."));
    }
}

TEST_F(Settings, AnAbsoluteUserPathThatExistsIsKeptOnLinuxOnly) {
    const std::string outside = dir / "my fits";
    std::filesystem::create_directory(outside);
    Store(kProduct, "FileIn", "a.Fit");
    Store(kProduct, "userPath", outside);
    std::string userPath;
    GetFileInRegistry(env, userPath);
#ifdef _WIN32
    EXPECT_EQ(userPath, "demos");
#else
    EXPECT_EQ(userPath, outside);
    EXPECT_EQ(UserFolder(env, userPath), outside);
#endif
    EXPECT_EQ(UserFolder(env, "User"), NativePath(env.programDir + "/User"));
}

TEST_F(Settings, StartUpValuesCutTheCounterToFitAndReadThePause) {
    for (auto [text, count] :
         std::vector<std::pair<const char*, int>>{{" 12 ", 12}, {"abc", 0}, {"99999", 32767}, {"-5", -5}}) {
        Store(kProduct, "RunCount", text);
        EXPECT_EQ(GetRunCount(env), count) << text;
    }
    Store(kCompany, "tPause", "6");
    EXPECT_EQ(GetPauseTime(env), "6");
}

TEST_F(Settings, MakePlotFileNameRegistersThePlotFile) {
    struct Case {
        const char *name, *plot;
    };
    for (auto [name, plot] : {Case{"Run.Out.TXT", "run.out.plt"}, Case{"Plots.GIF", "Plots.GIF"},
                              Case{"Plots.PLT", "plots.plt"}, Case{"a.plt", "a.plt"}, Case{"NoDot", "nodot.plt"}}) {
        MakePlotFileName(env, name);
        EXPECT_EQ(Stored(kCompany, "plotFile"), plot);
    }
    MakePlotFileName(env, "");
    EXPECT_EQ(Stored(kCompany, "plotFile"), "nodot.plt");
    EXPECT_EQ(Stored(kCompany, "ProgramPath"), "\\Quillet");
}

TEST_F(Settings, AtExitTheUserPathIsRelativeAndTheCounterGoesUp) {
    std::string userPath;
    std::int16_t count = 4;
    SaveSettingsAtExit(env, " ", NativePath(env.programDir + "/user/fits"), userPath, count);
    EXPECT_EQ(userPath, NativePath("user/fits"));
    const std::string upper = UCase(env.programDir);
    SaveSettingsAtExit(env, "*", NativePath(upper + "/Fits/" + upper + "/x"), userPath, count);
    EXPECT_EQ(userPath, NativePath("Fits/" + upper + "/x"));
    SaveSettingsAtExit(env, "Demo", NativePath(env.programDir + "/user"), userPath, count);
    EXPECT_EQ(userPath, "demos");
    EXPECT_EQ(Stored(kProduct, "RunCount"), "7");

    for (auto [before, stored] : std::vector<std::pair<int, const char*>>{{32767, "7"}, {-10, "7"}, {-9, "-8"}}) {
        count = static_cast<std::int16_t>(before);
        SaveSettingsAtExit(env, " ", "", userPath, count);
        EXPECT_EQ(Stored(kProduct, "RunCount"), stored) << before;
    }
}

TEST_F(Settings, StartIniMakesTheUserFolderOrReportsEachFailureAndGoesOn) {
    std::string runMode = "unset";
    env.currentFolder = "/";
    Start_INI(env, runMode);
    EXPECT_EQ(runMode, " ");
    EXPECT_TRUE(std::filesystem::is_directory(env.programDir + "/User"));
    EXPECT_EQ(env.currentFolder, env.programDir);

    env.programDir = dir / "gone";
    env.currentFolder = "/";
    dialogs.Answer(mb::OK).Answer(mb::OK);
    Start_INI(env, runMode);
    const ShownBox box{"Unexpected error #76 occured: Path not found\r\nPath =" + env.programDir +
                           "\r\n.  Suggest re-installing Quillet.",
                       "In 'Start_INI' routine ...", 16};
    EXPECT_EQ(dialogs.boxes, (std::vector<ShownBox>{box, box}));
    EXPECT_EQ(env.currentFolder, "/");
}

// A store whose every call fails in the platform, as a broken registry would.
class FailingRegistry : public TestRegistry {
  public:
    using TestRegistry::TestRegistry;
    long OpenKey(RootKey, const std::string&, std::uint32_t, KeyHandle&) override { Raise(57); }
};

TEST_F(Settings, AFailingRegistryIsReportedAndTheProgramGoesOn) {
    FailingRegistry failing(hives);
    env.registry = &failing;
    dialogs.Answer(mb::OK);
    std::string userPath = "kept";
    EXPECT_EQ(GetFileInRegistry(env, userPath), "");

    TestRegistry blocked(dir / "blocker", TestRegistry::Store::Refusing);
    env.registry = &blocked;
    dialogs.Answer(mb::OK);
    PutFileInRegistry(env, "a.Fit", "demos");
    EXPECT_EQ(dialogs.boxes,
              (std::vector<ShownBox>{
                  {"Unexpected error #57 occured: Device I/O error\r\nIt seems some Registry entry "
                   "is corrupt!  Re-installing this \r\nQuillet program is the easiest fix.",
                   "In 'GetFileInRegistry' routine ...", 16},
                  {"Unexpected error #1001 occured: Unable to create the registry key\r\nIt seems "
                   "some Registry entry is corrupt!  Re-installing this \r\nQuillet\xE2\x84\xA2 "
                   "program is the easiest fix.",
                   "In 'PutFileInRegistry'", 16}}));
}

TEST_F(Settings, ADamagedHiveIsShownOnceWhenSettingsAreRead) {
    if (!kHiveFiles) GTEST_SKIP() << "Windows keeps the registry in the system, not in hive files";
    std::filesystem::create_directories(hives);
    WriteBytes(hives + "/HKEY_CURRENT_USER.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\n");
    dialogs.Answer(mb::OK);
    EnsureSettingsKeys(env);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].style, 48);
    EXPECT_NE(dialogs.boxes[0].text.find("HKEY_CURRENT_USER.reg.damaged-"), std::string::npos);
    EXPECT_TRUE(KeyExists(env, reg::CurrentUser, kProduct));
}

}  // namespace
}  // namespace quillet::testing
