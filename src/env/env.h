#pragma once
// The program's environment: the ports and the path state shared by every routine.
#include <functional>
#include <string>

#include "env/ports.h"

namespace quillet {

class RegistryBackend;

#ifdef _WIN32
inline constexpr char kSep = '\\';
#else
inline constexpr char kSep = '/';
#endif

// Answers whether `path` names an existing folder (folder == true) or file; raises a
// RuntimeError with a classic number when the platform fails to tell.
using PathProbe = std::function<bool(const std::string& path, bool folder)>;
bool RealPathProbe(const std::string& path, bool folder);

struct Env {
    Dialogs* dialogs = nullptr;
    Clock* clock = nullptr;
    CommandRunner* runner = nullptr;
    ShellOpener* shell = nullptr;
    RegistryBackend* registry = nullptr;
    PathProbe probe = RealPathProbe;

    std::string programDir;     // the executable's own folder
    std::string parentDir;      // programDir + sep + ".."
    std::string currentFolder;  // never the process's working directory
    bool quitRequested = false; // set when a routine unloads the main form
};

}  // namespace quillet
