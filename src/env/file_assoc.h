#pragma once
// File types under HKEY_CLASSES_ROOT, so that the desktop opens the files of the program and
// its companion tools in the right tool. Failures are silent.
#include <cstdint>
#include <string>

#include "env/env.h"

namespace quillet {

// Writes ".<extension>" -> program, program -> description, the icon when one is given, and
// program\shell\open\command -> "<folder><program>" %1.
void AssociateFileType(Env& env, const std::string& extension, std::string folder,
                       const std::string& program, const std::string& description,
                       const std::string& iconFile);

// Creates root\subKey (root as the decimal text of its handle's value) and sets the default
// text of its sub-key `valueKey` ("" for the key itself). Returns the last registry result.
long SetClassKeyValue(Env& env, const std::string& root, const std::string& subKey,
                      const std::string& valueKey, const std::string& data);

// Only while `runCount` is below 1: registers the five file types, opened from `parentFolder`.
void RegisterFileTypesOnFirstStart(Env& env, std::int16_t runCount,
                                   const std::string& parentFolder);

}  // namespace quillet
