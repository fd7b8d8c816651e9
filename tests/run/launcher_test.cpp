// The run launcher: how the run script is called, from where, with what, and what it leaves
// for the viewers; on Windows, how the command interpreter reads the line.
#include "run/launcher.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "env/text.h"
#include "model/form_events.h"
#include "run/run_fixture.h"
#include "run/submit.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using testing::NativePath;
using testing::RunFixture;
using testing::TempDir;
using testing::WriteBytes;

class Launcher : public RunFixture {};

TEST_F(Launcher, SubmittedRunCallsTheScriptWithFileFolderAndExit) {
    SaveResponse("myrun.Fit");
    s.form.tPause.text = "12";
    s.form.AutoExit.value = true;
    cmdSubmit_Click(s);
    EXPECT_EQ(RunLog(), UserDir() + "\n[myrun.Fit]\n[User]\n[exit]\n");
    EXPECT_EQ(RegText("Software\\Vantorel\\Quillet", "FileIn"), "myrun.Fit");
    EXPECT_EQ(RegText("Software\\Vantorel", "tPause"), "12");
    // The viewers find the output of the last run, from its stored folder and plot file.
    EXPECT_EQ(FindLastRun(s.env).outputFolder, NativePath(ProgramDir() + "/User/output"));
    EXPECT_EQ(FindLastRun(s.env).plotFile, "myrun.plt");
}

TEST_F(Launcher, AResponseFileNamedWithABlankIsRefusedAfterTheSaveQuestionAndNothingRuns) {
    const std::string refusal =
        "The response file 'New data.Fit' has a blank in its name, and the run cannot pass such a name to the "
        "solver.  Please save it under a name without blanks (File | Save As ...), e.g. 'New_data.Fit'.";
    // Edited answers: the save question, Save As proposing the current name, the file written,
    // then the refusal.
    SaveResponse("New data.Fit");
    SetText(s, s.form.Note1, "edited");
    dialogs.Answer(mb::OK).Choose(UserDir() + "/New data.Fit").Answer(mb::Yes).Answer(mb::OK);
    cmdSubmit_Click(s);
    EXPECT_EQ(dialogs.fileDialogs.at(0).proposedName, "New data.Fit");
    EXPECT_FALSE(s.DataChanged);
    EXPECT_EQ(dialogs.boxes.back(), (testing::ShownBox{refusal, "Response file name has a blank", 48}));
    EXPECT_FALSE(ScriptRan());
    EXPECT_EQ(RegText("Software\\Vantorel\\Quillet", "FileIn"), "");

    // Saved answers are refused at once.
    dialogs.Answer(mb::OK);
    cmdSubmit_Click(s);
    EXPECT_EQ(dialogs.boxes.back().text, refusal);
    EXPECT_FALSE(ScriptRan());
}

TEST_F(Launcher, UserFolderOutsideTheProgramFolderStaysAFullPath) {
    const std::string outside = dir / "elsewhere";
    fs::create_directories(outside);
    UseUserDir(outside);
    SaveResponse("b.Fit");
    FileRun2(s);
    EXPECT_EQ(RunLog(), outside + "\n[b.Fit]\n[" + outside + "]\n[wait]\n");
    EXPECT_TRUE(fs::is_directory(outside + "/output"));
    EXPECT_EQ(s.form.calcFolder, NativePath(outside + "/output"));
    EXPECT_EQ(RegText("Software\\Vantorel\\Quillet", "userPath"), outside);
}

TEST_F(Launcher, NewDataAlwaysAsksToSaveAndCancelStartsNothing) {
    s.CurrentFile = "New data";
    s.DataChanged = false;
    dialogs.Answer(mb::Cancel);
    FileRun2(s);
    EXPECT_EQ(dialogs.boxes.at(0),
              (testing::ShownBox{"Okay to save 'New data' now?",
                                 "File -not- saved OR has been modified!", 33}));
    EXPECT_FALSE(ScriptRan());

    dialogs.Answer(mb::OK).Choose(UserDir() + "/fresh.Fit");
    FileRun2(s);
    EXPECT_EQ(RunLog(), UserDir() + "\n[fresh.Fit]\n[User]\n[wait]\n");
}

TEST_F(Launcher, NoShellMetacharacterReachesAShell) {
#ifdef _WIN32
    GTEST_SKIP() << "cmd /C reads the command line as Windows does; the short-name check keeps "
                    "such names out";
#endif
    // Were any of these read by a shell, "pwned" would appear in the run's folder (a shell reads
    // ${IFS} as a blank; a real blank is refused before the run).
    SaveResponse("x;touch${IFS}pwned;$(touch${IFS}pwned)`touch${IFS}pwned`|touch${IFS}pwned&&touch${IFS}pwned.Fit");
    FileRun2(s);
    EXPECT_TRUE(ScriptRan());
    EXPECT_FALSE(fs::exists(UserDir() + "/pwned"));
    EXPECT_FALSE(fs::exists(ProgramDir() + "/pwned"));
    EXPECT_NE(RunLog().find("[x;touch"), std::string::npos);
}

TEST_F(Launcher, AFailureToPrepareTheRunIsReported) {
    SaveResponse("e.Fit");
    fs::remove_all(UserDir());
    dialogs.Answer(mb::OK);
    FileRun2(s);
    EXPECT_EQ(dialogs.boxes,
              (std::vector<testing::ShownBox>{
                  {"File is missing ... in 'exitWin' routine!\r\n"
                   "Try running a different file that normally works, then try this\r\n"
                   "one again.  Did error come back?  Not sure what going on here.",
                   "A Quillet File is missing!", 48}}));
    EXPECT_FALSE(ScriptRan());
}

// Linux runs the script through /bin/sh without a command interpreter reading the line, and has
// no short names: its aliases are tested with the submit checks.
#ifdef _WIN32
TEST(WindowsCommandLine, CmdReadsTheWholeLineAndTheRunWaitsForItsEnd) {
    TempDir dir;
    WriteBytes(dir / "end7.bat", "@echo off\r\necho [%~1]\r\nexit /b 7\r\n");
    ProcessRunner runner;
    // Nothing is quoted: cmd itself reads the ">" and sends the script's output to the file.
    EXPECT_EQ(runner.Run(dir / "end7.bat a.Fit > " + (dir / "out.txt"), dir.path(), false), 7)
        << "the script's own exit code, once it has ended";
    EXPECT_EQ(testing::ReadBytes(dir / "out.txt"), "[a.Fit]\r\n");
}

TEST(WindowsShortPath, OnlyAPathThatIsAlreadyShortComesBackAsItIs) {
    TempDir dir;
    struct Case {
        const char* file;
        bool alreadyShort;
    } cases[] = {
        {"DATA\\PTS.100", true},
        {"My Runs\\pts.100", false},
    };
    for (const Case& c : cases) {
        const std::string path = dir / c.file;
        fs::create_directories(fs::path(path).parent_path());
        WriteBytes(path, "1 2\r\n");
        const std::string shortPath = ShortPathOf(path);
        EXPECT_EQ(shortPath == LCase(path), c.alreadyShort) << path << " -> " << shortPath;
        EXPECT_EQ(shortPath, LCase(shortPath)) << "lower-cased";
    }
}
#endif

}  // namespace
}  // namespace quillet
