// A first and a second start of the program on an empty hive, as start-up and exit call the
// settings and file-type routines, and the hive files a person then finds.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "env/file_assoc.h"
#include "env/paths.h"
#include "env/settings.h"
#include "env/text.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

struct Session {
    std::string pause, fileIn, userPath = "demos", runMode = "unset";  // Start_INI sets it
    std::int16_t runCount = -1;
};

class Starts : public RegistryFixture {
  protected:
    Session Start() {
        TestRegistry fresh(hives);  // each start is a new program
        env.registry = &fresh;
        Session s;
        EnsureSettingsKeys(env);
        s.pause = GetPauseTime(env);
        s.runCount = GetRunCount(env);
        s.fileIn = GetFileInRegistry(env, s.userPath);
        Start_INI(env, s.runMode);
        RegisterFileTypesOnFirstStart(env, s.runCount, JoinPath(env.programDir, ".."));
        env.registry = &registry;
        return s;
    }
    void Exit(Session& s, const std::string& dataFolder) {
        SaveSettingsAtExit(env, s.runMode, dataFolder, s.userPath, s.runCount);
    }
    ino_t ClassesRootInode() {
        struct stat st {};
        return ::stat((hives + "/HKEY_CLASSES_ROOT.reg").c_str(), &st) == 0 ? st.st_ino : 0;
    }
};

TEST_F(Starts, FirstAndSecondStartOnAnEmptyHive) {
    if (!kHiveFiles) GTEST_SKIP() << kNoHiveFiles;
    Session first = Start();
    EXPECT_EQ(first.pause, "20");
    EXPECT_EQ(first.runCount, 0);
    EXPECT_EQ(first.fileIn, "");
    EXPECT_EQ(first.userPath, "demos");
    EXPECT_EQ(first.runMode, " ");
    EXPECT_TRUE(std::filesystem::is_directory(env.programDir + "/User"));
    EXPECT_EQ(env.currentFolder, env.programDir);
    Exit(first, env.programDir + "/demos");
    EXPECT_EQ(first.runCount, 1);
    EXPECT_EQ(CurrentUserFile(),
              "REGEDIT4\n"
              "\n"
              "[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet]\n"
              "\"RunCount\"=\"1\"\n"
              "\n");
    EXPECT_EQ(ReplaceAll(ClassesRootFile(), dir.path(), "<tmp>"),
              "REGEDIT4\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\.Fit]\n"
              "@=\"MyEditor.bat\"\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\.MV]\n"
              "@=\"MyEditor.bat\"\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\.Out]\n"
              "@=\"MyEditor.bat\"\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\.plt]\n"
              "@=\"Dravik-XYplots\"\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\Dravik-XYplots]\n"
              "@=\"XYplot file\"\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\Dravik-XYplots\\shell\\open\\command]\n"
              "@=\"\\\"<tmp>/Quillet/../Dravik-XYplots\\\" %1\"\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\MyEditor.bat]\n"
              "@=\"Fit Input file\"\n"
              "\n"
              "[HKEY_CLASSES_ROOT\\MyEditor.bat\\shell\\open\\command]\n"
              "@=\"\\\"<tmp>/Quillet/../MyEditor.bat\\\" %1\"\n"
              "\n");

    const ino_t classes = ClassesRootInode();
    Session second = Start();
    EXPECT_EQ(second.pause, "20");
    EXPECT_EQ(second.runCount, 1);
    EXPECT_EQ(ClassesRootInode(), classes) << "file types are written on the first start only";
    // A run in between stores the last file, the user path and the plot file.
    PutFileInRegistry(env, "a.Fit", "user\\fits");
    MakePlotFileName(env, "a.Fit");
    Exit(second, env.programDir + "/user/fits");
    EXPECT_EQ(second.userPath, "user/fits");
    EXPECT_EQ(CurrentUserFile(),
              "REGEDIT4\n"
              "\n"
              "[HKEY_CURRENT_USER\\Software\\Vantorel]\n"
              "\"ProgramPath\"=\"\\\\Quillet\"\n"
              "\"plotFile\"=\"a.plt\"\n"
              "\n"
              "[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet]\n"
              "\"RunCount\"=\"2\"\n"
              "\"FileIn\"=\"a.Fit\"\n"
              "\"userPath\"=\"user\\\\fits\"\n"
              "\n");

    Session third = Start();
    EXPECT_EQ(third.runCount, 2);
    EXPECT_EQ(third.fileIn, "a.Fit");
    EXPECT_EQ(third.userPath, "user\\fits");
    EXPECT_EQ(ClassesRootInode(), classes);
}

}  // namespace
}  // namespace quillet::testing
