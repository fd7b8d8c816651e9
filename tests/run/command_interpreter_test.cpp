// How a run reaches the command interpreter: Windows hands the whole line to "cmd /C" and
// waits; on both platforms a blank splits an argument; and Windows decides with its own short
// names whether a data file's path is already a short one.
#include <gtest/gtest.h>

#include <filesystem>

#include "env/text.h"
#include "run/launcher.h"
#include "run/run_fixture.h"
#include "run/submit.h"

namespace quillet {
namespace {

using testing::RunFixture;
using testing::TempDir;
using testing::WriteBytes;

class CommandInterpreter : public RunFixture {};

TEST_F(CommandInterpreter, ABlankInTheRunFileSplitsItsArgument) {
    SaveResponse("my run.Fit");
    s.RunMode = "*";
    FileRun2(s);
    EXPECT_EQ(RunLog(), UserDir() + "\n[my]\n[run.Fit]\n[User]\n[wait]\n");
}

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
        {"data\\pts.100", true},
        {"run_1\\a-b.txt", true},
        {"My Runs\\pts.100", false},
        {"averylongfolder\\pts.100", false},
        {"data\\points.text", false},
        {"data\\missing.100", false},
    };
    for (const Case& c : cases) {
        const std::string path = dir / c.file;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        if (!std::string(c.file).ends_with("missing.100")) WriteBytes(path, "1 2\r\n");
        const std::string shortPath = ShortPathOf(path);
        EXPECT_EQ(shortPath == LCase(path), c.alreadyShort) << path << " -> " << shortPath;
        EXPECT_EQ(shortPath, LCase(shortPath)) << "lower-cased";
    }
}
#else
TEST(WindowsCommandLine, IsWindowsOnly) {
    GTEST_SKIP()
        << "Linux runs the script through /bin/sh, without a command interpreter reading the line";
}

TEST(WindowsShortPath, IsWindowsOnly) {
    GTEST_SKIP() << "Linux has no short names; its aliases are tested with the submit checks";
}
#endif

}  // namespace
}  // namespace quillet
