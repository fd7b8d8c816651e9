#include "env/paths.h"

#include <gtest/gtest.h>

#include <deque>

#include "env/errors.h"
#include "support/fake_dialogs.h"
#include "support/test_env.h"

namespace quillet::testing {
namespace {

// A probe that fails with the scripted error numbers first, then finds the path.
PathProbe Failing(std::deque<int> errors, int& calls) {
    return [errors, &calls](const std::string&, bool) mutable {
        ++calls;
        if (errors.empty()) return true;
        int n = errors.front();
        errors.pop_front();
        Raise(n);
    };
}

TEST(PathTests, PlatformFailuresAreAnsweredByNumber) {
    struct Case {
        std::deque<int> errors;
        std::vector<int> answers;
        bool result;
        int calls;
        bool quits;
        std::string text;  // of every box shown, one for each answer
        int style;
    };
    const std::string floppy = "Put a floppy disk in the drive and cloce the drive door.";
    const std::string noDrive = "This drive or path does not exist: Q:\\x";
    const std::string other = "Unexpected error #57 occured: Device I/O error";
    const std::vector<Case> cases = {
        {{71}, {mb::OK}, true, 2, false, floppy, 481},  // OK: look again
        {{71}, {mb::Cancel}, false, 1, false, floppy, 481},
        {{68, 68}, {mb::OK, mb::OK}, true, 3, false, noDrive, 48},
        {{32755}, {}, false, 1, false, "", 0},
        {{57}, {mb::OK}, false, 1, true, other, 16},
    };
    for (bool folder : {true, false}) {
        const std::string routine = folder ? "dirExists" : "FileExists";
        for (const Case& c : cases) {
            SCOPED_TRACE(routine + " " + std::to_string(c.errors.front()));
            FakeDialogs dialogs;
            for (int a : c.answers) dialogs.Answer(a);
            Env env;
            env.dialogs = &dialogs;
            int calls = 0;
            env.probe = Failing(c.errors, calls);
            EXPECT_EQ(folder ? dirExists(env, "Q:\\x") : FileExists(env, "Q:\\x"), c.result);
            EXPECT_EQ(calls, c.calls);
            EXPECT_EQ(env.quitRequested, c.quits);
            const ShownBox box{c.text, "In '" + routine + "' routine ...", c.style};
            EXPECT_EQ(dialogs.boxes, std::vector<ShownBox>(c.answers.size(), box));
        }
    }
}

TEST(PathTests, SplitPathCutsAtTheLastSeparator) {
    Env env;
    env.currentFolder = "/work/now";
    std::string folder;
    EXPECT_EQ(SplitPath(env, "abc.Fit", folder), "abc.Fit");
    EXPECT_EQ(folder, "/work/now");
    EXPECT_EQ(SplitPath(env, "C:\\a\\b\\c.Fit", folder), "c.Fit");
    EXPECT_EQ(folder, "C:\\a\\b");
}

}  // namespace
}  // namespace quillet::testing
