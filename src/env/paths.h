#pragma once
// Path building and the file-system tests used throughout the program.
#include <string>

#include "env/env.h"

namespace quillet {

std::string JoinPath(const std::string& folder, const std::string& name);

// Splits at the last "\" or "/": returns the name, puts the folder (without a trailing
// separator) into `folder`; a bare name gets the current folder.
std::string SplitPath(const Env& env, const std::string& fullName, std::string& folder);

// True when `path` is an existing folder / file. A drive that is not ready or a missing
// device is reported and retried through the Dialogs port; other failures are reported,
// unload the program (env.quitRequested) and answer false.
bool dirExists(Env& env, const std::string& path);
bool FileExists(Env& env, const std::string& path);

// The program folder: QUILLET_PROGRAM_DIR when set, else the executable's own folder.
std::string DefaultProgramDir();

}  // namespace quillet
