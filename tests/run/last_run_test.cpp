#include <gtest/gtest.h>

#include "run/launcher.h"
#include "run/run_fixture.h"

namespace quillet {
namespace {

using LastRunTest = testing::RunFixture;
using testing::NativePath;

TEST_F(LastRunTest, ViewersFindTheOutputOfTheLastRunWhereverItRan) {
    EXPECT_EQ(FindLastRun(s.env).outputFolder, NativePath(ProgramDir() + "/demos/output"));
    EXPECT_EQ(FindLastRun(s.env).plotFile, "");

    SaveResponse("Fit1.Fit");
    FileRun2(s);
    LastRun last = FindLastRun(s.env);
    EXPECT_EQ(last.outputFolder, NativePath(ProgramDir() + "/User/output"));
    EXPECT_EQ(last.plotFile, "fit1.plt");

    const std::string outside = dir / "away";
    std::filesystem::create_directories(outside);
    UseUserDir(outside);
    SaveResponse("Fit2.Fit");
    FileRun2(s);
    EXPECT_EQ(FindLastRun(s.env).outputFolder, NativePath(outside + "/output"));
}

TEST_F(LastRunTest, DemoButtonRunsTheChosenExample) {
    testing::WriteBytes(ProgramDir() + "/demos/Ex2.Fit", "x");
    RunDemo(s, "Ex2.Fit");
    EXPECT_EQ(s.RunMode, "Demo");
    EXPECT_NE(RunLog().find("[Ex2.Fit]\n[demos]"), std::string::npos);
    EXPECT_EQ(FindLastRun(s.env).outputFolder, NativePath(ProgramDir() + "/demos/output"));
}

}  // namespace
}  // namespace quillet
