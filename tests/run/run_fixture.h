#pragma once
// A program folder in a temporary folder with a run script that records how it was called,
// a registry of the test's own, and a form holding complete Lorentzian answers.
#include <memory>
#include <string>

#include "run/process_runner.h"
#include "support/form_fixture.h"
#include "support/test_registry.h"

namespace quillet::testing {

class RunFixture : public FormFixture {
protected:
    RunFixture();
    std::string ProgramDir() const { return s.env.programDir; }
    std::string UserDir() const { return s.UserDir; }
    // A folder under the program folder.
    std::string MakeFolder(const std::string& name);
    // Makes `folder` the user directory, with the data file pts.100 in it.
    void UseUserDir(const std::string& folder);
    // Saves the form as `name` in the user directory and makes it current.
    void SaveResponse(const std::string& name);
    bool ScriptRan() const;
    // The script's working folder, then each argument in brackets, one a line ending in "\n".
    std::string RunLog() const;
    std::string RegText(const std::string& key, const std::string& name);

    std::unique_ptr<TestRegistry> registry;
    ProcessRunner runner;
};

}  // namespace quillet::testing
