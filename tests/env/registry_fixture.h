#pragma once
// An empty registry of the test's own (a file hive in a temporary folder on Linux), with
// scripted dialogs.
#include <gtest/gtest.h>

#include "env/env.h"
#include "support/fake_dialogs.h"
#include "support/test_env.h"
#include "support/test_registry.h"

namespace quillet::testing {

// Linux keeps each registry root in a hive file a person can read; Windows has no such file.
#ifdef _WIN32
inline constexpr bool kHiveFiles = false;
#else
inline constexpr bool kHiveFiles = true;
#endif

class RegistryFixture : public ::testing::Test {
  protected:
    RegistryFixture() {
        env.dialogs = &dialogs;
        env.registry = &registry;
        env.programDir = dir / "Quillet";
        env.currentFolder = env.programDir;
        std::filesystem::create_directory(env.programDir);
    }
    std::string CurrentUserFile() const { return ReadBytes(hives + "/HKEY_CURRENT_USER.reg"); }
    std::string ClassesRootFile() const { return ReadBytes(hives + "/HKEY_CLASSES_ROOT.reg"); }

    TempDir dir;
    std::string hives = dir / "Vantorel";
    TestRegistry registry{hives};
    FakeDialogs dialogs;
    Env env;
};

}  // namespace quillet::testing
