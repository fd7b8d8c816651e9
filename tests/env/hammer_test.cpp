// Two processes write different values of one hive at the same time for a few seconds;
// afterwards the hive holds every value either of them wrote.
#ifdef _WIN32
#include <gtest/gtest.h>

TEST(FileRegistryHammer, IsTheLinuxRegistry) {
    GTEST_SKIP() << "Windows keeps the registry in the system, not in hive files";
}
#else
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <set>
#include <sstream>

#include "env/file_registry_posix.h"
#include "env/mdlRegistryAPI.h"
#include "support/test_env.h"

namespace quillet::testing {
namespace {

const std::string kKey = "Software\\Vantorel\\Hammer";
constexpr auto kDuration = std::chrono::seconds(10);
constexpr int kMaxWrites = 3000;

std::string ValueName(int who, int n) {
    return std::string(1, static_cast<char>('A' + who)) + "-" + std::to_string(n);
}

// Waits for the start signal, then writes "<who>-<n>" = n for n = 1, 2, ... until the time
// is up; reports its number and how many it wrote through `report`. Never returns.
[[noreturn]] void Hammer(const std::string& hives, int who, int startSignal, int report) {
    char go;
    if (::read(startSignal, &go, 1) != 0) ::_exit(3);  // released when the write end closes
    FileRegistry registry(hives);
    Env env;
    env.registry = &registry;
    auto end = std::chrono::steady_clock::now() + kDuration;
    int written = 0;
    while (written < kMaxWrites && std::chrono::steady_clock::now() < end) {
        ++written;
        SetRegValue(env, reg::CurrentUser, kKey, ValueName(who, written), reg::Sz,
                    std::to_string(written));
    }
    int message[2] = {who, written};
    bool ok = ::write(report, message, sizeof message) == sizeof message;
    ::_exit(ok ? 0 : 4);
}

TEST(FileRegistryHammer, TwoProcessesWritingAtOnceLoseNoValue) {
    TempDir dir;
    const std::string hives = dir / "Vantorel";
    FileRegistry registry(hives);
    Env env;
    env.registry = &registry;
    CreateKey(env, reg::CurrentUser, kKey);

    int start[2], report[2];
    ASSERT_EQ(::pipe(start), 0);
    ASSERT_EQ(::pipe(report), 0);
    std::vector<pid_t> pids;
    for (int who = 0; who < 2; ++who) {
        pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            ::close(start[1]);
            ::close(report[0]);
            Hammer(hives, who, start[0], report[1]);
        }
        pids.push_back(pid);
    }
    ::close(start[0]);
    ::close(report[1]);
    ::close(start[1]);  // both start now

    int counts[2] = {};
    for (pid_t pid : pids) {
        int status = 0;
        ASSERT_EQ(::waitpid(pid, &status, 0), pid);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "writer status " << status;
        int message[2] = {};
        ASSERT_EQ(::read(report[0], message, sizeof message), static_cast<ssize_t>(sizeof message));
        counts[message[0]] = message[1];
    }
    ::close(report[0]);

    // One look at the file: each query would read all of it again.
    std::set<std::string> lines;
    std::istringstream hive(ReadBytes(hives + "/HKEY_CURRENT_USER.reg"));
    for (std::string line; std::getline(hive, line);) lines.insert(line);
    for (int who = 0; who < 2; ++who) {
        EXPECT_GT(counts[who], 10) << "writer " << who << " hardly ran";
        int missing = 0;
        for (int n = 1; n <= counts[who]; ++n)
            missing += !lines.count("\"" + ValueName(who, n) + "\"=\"" + std::to_string(n) + "\"");
        EXPECT_EQ(missing, 0) << "of " << counts[who] << " values of writer " << who;
    }
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(counts[0] + counts[1]) + 3)
        << "the header, the key and a blank line";
}

}  // namespace
}  // namespace quillet::testing
#endif  // _WIN32
