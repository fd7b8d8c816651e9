#include "run/launcher.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "model/form_events.h"
#include "run/run_fixture.h"
#include "run/submit.h"

namespace quillet {
namespace {

using testing::NativePath;
using testing::RunFixture;

// The run script beside the program, as the command line names it.
#ifdef _WIN32
const std::string kScript = "\\run-FitW.bat ";
#else
const std::string kScript = "/run-FitW.sh ";
#endif

class Launcher : public RunFixture {};

TEST_F(Launcher, SubmittedRunCallsTheScriptWithFileFolderAndWait) {
    SaveResponse("run1.Fit");
    s.form.tPause.text = "12";
    cmdSubmit_Click(s);
    ASSERT_TRUE(ScriptRan());
    EXPECT_EQ(RunLog(), UserDir() + "\n[run1.Fit]\n[User]\n[wait]\n");
    EXPECT_EQ(s.CommandLine, ProgramDir() + kScript + "run1.Fit User wait");
    EXPECT_TRUE(std::filesystem::is_directory(ProgramDir() + "/User/output"));
    EXPECT_TRUE(s.form.cmdPlots.enabled);
    EXPECT_EQ(RegText("Software\\Vantorel\\Quillet", "FileIn"), "run1.Fit");
    EXPECT_EQ(RegText("Software\\Vantorel\\Quillet", "userPath"), "User");
    EXPECT_EQ(RegText("Software\\Vantorel", "tPause"), "12");
    EXPECT_EQ(RegText("Software\\Vantorel", "plotFile"), "run1.plt");
    EXPECT_EQ(RegText("Software\\Vantorel", "ProgramPath"), "\\Quillet");
}

TEST_F(Launcher, AutoExitEndsTheArgumentsWithExit) {
    SaveResponse("a.Fit");
    s.form.AutoExit.value = true;
    s.RunMode = "*";
    FileRun2(s);
    EXPECT_EQ(RunLog(), UserDir() + "\n[a.Fit]\n[User]\n[exit]\n");
}

TEST_F(Launcher, UserFolderOutsideTheProgramFolderStaysAFullPath) {
    const std::string outside = dir / "elsewhere";
    std::filesystem::create_directories(outside);
    UseUserDir(outside);
    SaveResponse("b.Fit");
    FileRun2(s);
    EXPECT_EQ(RunLog(), outside + "\n[b.Fit]\n[" + outside + "]\n[wait]\n");
    EXPECT_TRUE(std::filesystem::is_directory(outside + "/output"));
}

TEST_F(Launcher, RunDirEqualToTheProgramFolderGivesAnEmptyArgument) {
    UseUserDir(ProgramDir());
    SaveResponse("d.Fit");
    s.RunDir = ProgramDir();
    s.RunFile = "d.Fit";
    FileRun(s);
    EXPECT_EQ(s.RunDir, "");
    EXPECT_EQ(RunLog(), ProgramDir() + "\n[d.Fit]\n[wait]\n");
    EXPECT_EQ(s.CommandLine, ProgramDir() + kScript + "d.Fit  wait");
    EXPECT_TRUE(std::filesystem::is_directory(ProgramDir() + "//output"));
}

TEST_F(Launcher, DemoRunsOnlyNamesBeginningWithEx) {
    testing::WriteBytes(ProgramDir() + "/demos/Ex3.Fit", "x");
    s.RunMode = "Demo";
    s.DemoFile = "ex3.fit";
    FileRun2(s);
    EXPECT_FALSE(ScriptRan());

    s.DemoFile = "Ex3.Fit";
    s.CurrentFile = "mine.Fit";
    FileRun2(s);
    EXPECT_EQ(RunLog(), NativePath(ProgramDir() + "/demos") + "\n[Ex3.Fit]\n[demos]\n[wait]\n");
    EXPECT_EQ(s.CurrentFile, "mine.Fit");
    EXPECT_EQ(RegText("Software\\Vantorel\\Quillet", "FileIn"), "Ex3.Fit");
    EXPECT_EQ(RegText("Software\\Vantorel", "plotFile"), "ex3.plt");
}

TEST_F(Launcher, NewDataAlwaysAsksToSaveAndCancelStartsNothing) {
    s.CurrentFile = "New data";
    s.DataChanged = false;
    dialogs.Answer(mb::Cancel);
    FileRun2(s);
    EXPECT_EQ(dialogs.boxes[0].text, "Okay to save 'New data' now?");
    EXPECT_EQ(dialogs.boxes[0].title, "File -not- saved OR has been modified!");
    EXPECT_EQ(dialogs.boxes[0].style, 33);
    EXPECT_FALSE(ScriptRan());

    dialogs.Answer(mb::OK).Choose(UserDir() + "/fresh.Fit");
    FileRun2(s);
    EXPECT_EQ(RunLog(), UserDir() + "\n[fresh.Fit]\n[User]\n[wait]\n");
}

TEST_F(Launcher, NoShellMetacharacterReachesAShell) {
#ifdef _WIN32
    GTEST_SKIP() << "cmd /C reads the command line as Windows does; the short-name check keeps such names out";
#endif
    // Were any of these read by a shell, "pwned" would appear in the run's folder.
    SaveResponse("x;touch pwned;$(touch pwned)`touch pwned`|touch pwned&&touch pwned.Fit");
    FileRun2(s);
    EXPECT_TRUE(ScriptRan());
    EXPECT_FALSE(std::filesystem::exists(UserDir() + "/pwned"));
    EXPECT_FALSE(std::filesystem::exists(ProgramDir() + "/pwned"));
    EXPECT_NE(RunLog().find("[x;touch"), std::string::npos);
}

TEST_F(Launcher, AFailureToPrepareTheRunIsReported) {
    SaveResponse("e.Fit");
    std::filesystem::remove_all(UserDir());
    dialogs.Answer(mb::OK);
    FileRun2(s);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].title, "A Quillet File is missing!");
    EXPECT_EQ(dialogs.boxes[0].text,
              "File is missing ... in 'exitWin' routine!\r\n"
              "Try running a different file that normally works, then try this\r\n"
              "one again.  Did error come back?  Not sure what going on here.");
    EXPECT_FALSE(ScriptRan());
}

}  // namespace
}  // namespace quillet
