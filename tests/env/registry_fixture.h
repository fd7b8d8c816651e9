#pragma once
// An empty file hive in a temporary folder, with scripted dialogs.
#include <gtest/gtest.h>

#include "env/env.h"
#include "env/file_registry_posix.h"
#include "support/fake_dialogs.h"
#include "support/test_env.h"

namespace quillet::testing {

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
    FileRegistry registry{hives};
    FakeDialogs dialogs;
    Env env;
};

}  // namespace quillet::testing
