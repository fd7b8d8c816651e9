#pragma once
// A program state with scripted dialogs, a fixed clock and the form as designed, its current
// folder a fresh temporary folder.
#include <gtest/gtest.h>

#include "env/registry_backend.h"
#include "model/app_state.h"
#include "support/fake_dialogs.h"
#include "support/test_registry.h"
#include "support/test_env.h"

namespace quillet::testing {

class FormFixture : public ::testing::Test {
  protected:
    FormFixture();
    // Writes `bytes` to `name` in the temporary folder and returns its full path.
    std::string PutFile(const std::string& name, const std::string& bytes);
    // Reads `name` from `folder` into the record, as Open does.
    void ReadInto(const std::string& folder, const std::string& name);
    // A new program state, as at a start of the program in `program` with settings in `store`.
    void StartAnew(RegistryBackend& store, const std::string& program);

    TempDir dir;
    FakeDialogs dialogs;
    FixedClock clock;
    AppState s;
};

// The same with settings kept in a file hive of its own, the response files in the temporary
// folder and the record matching the form, as after a start.
class SavedFormFixture : public FormFixture {
  protected:
    SavedFormFixture();

    TestRegistry hive;
};

}  // namespace quillet::testing
