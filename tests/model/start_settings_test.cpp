// What a start does with the settings store of a person who has used the program before: each
// hive file is read at most once, nothing is written, and the exit writes the one value that
// changed.
#ifndef _WIN32
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>

#include "env/file_registry_posix.h"
#include "env/mdlRegistryAPI.h"
#include "env/settings.h"
#include "env/text.h"
#include "model/startup.h"
#include "support/form_fixture.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;

ino_t Inode(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 ? st.st_ino : 0;
}

struct Before {
    const char* what;
    bool exited;  // the session before ended through the exit routine
};

void PrintTo(const Before& b, std::ostream* os) { *os << b.what; }

class StartSettings : public testing::FormFixture {
protected:
    StartSettings() { std::filesystem::create_directories(program + "/demos"); }

    void NewState(FileRegistry& store) { StartAnew(store, program); }

    std::string program = dir / "Quillet";
    std::string hives = dir / "hive";
    std::string user = hives + "/HKEY_CURRENT_USER.reg";
    std::string classes = hives + "/HKEY_CLASSES_ROOT.reg";
};

// A session that ended without the exit routine (killed, a crash) leaves the run counter at 0,
// so the next start registers the file types again; that must change nothing either.
class StartAfterASession : public StartSettings, public ::testing::WithParamInterface<Before> {};

// The first start makes the keys and registers the file types: one write of each hive, and the
// same hives as the calls one by one leave.
TEST_F(StartSettings, TheFirstStartWritesEachHiveOnce) {
    FileRegistry store(hives);
    NewState(store);
    Form_Load(s);
    EXPECT_EQ(store.traffic().writes, 2);
    EXPECT_EQ(testing::ReadBytes(user),
              "REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet]\n\n");
    EXPECT_NE(testing::ReadBytes(classes).find("[HKEY_CLASSES_ROOT\\MyEditor.bat]\n@=\"Fit Input file\""),
              std::string::npos);
}

TEST_P(StartAfterASession, ReadsEachHiveOnceWritesNothingAndTheExitWritesTheCounterOnce) {
    {
        FileRegistry first(hives);
        NewState(first);
        Form_Load(s);
        EXPECT_EQ(RegText(GetRegValue(s.env, reg::ClassesRoot, "MyEditor.bat", "", reg::Sz)), "Fit Input file");
        if (GetParam().exited) exitWin(s);
    }
    const ino_t userBefore = Inode(user), classesBefore = Inode(classes);
    // Settled at once: at a real start the files were written long before.
    FileRegistry store(hives, 0s);
    NewState(store);
    Form_Load(s);
    EXPECT_EQ(store.traffic().writes, 0);
    EXPECT_EQ(store.traffic().reads, GetParam().exited ? 1 : 2) << "the classes hive only for the file types";
    EXPECT_EQ(Inode(user), userBefore);
    EXPECT_EQ(Inode(classes), classesBefore);
    EXPECT_EQ(s.form.tPause.text, "20");
    EXPECT_EQ(s.RunCount, GetParam().exited ? 1 : 0);

    exitWin(s);
    EXPECT_EQ(store.traffic().writes, 1);
    EXPECT_EQ(Trim(RegText(GetRegValue(s.env, reg::CurrentUser, std::string(kProductKey), "RunCount", reg::Sz))),
              GetParam().exited ? "2" : "1");
    EXPECT_EQ(RegText(GetRegValue(s.env, reg::ClassesRoot, "MyEditor.bat", "", reg::Sz)), "Fit Input file");
}

INSTANTIATE_TEST_SUITE_P(Sessions, StartAfterASession,
                         ::testing::Values(Before{"EndedByExit", true}, Before{"EndedWithoutExit", false}),
                         [](const auto& info) { return std::string(info.param.what); });

}  // namespace
}  // namespace quillet
#endif  // _WIN32
