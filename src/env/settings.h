#pragma once
// The program's settings in the per-user registry and its folders beside the executable.
// Program-wide state (run mode, current file, user path, run counter) comes in as
// parameters; every routine reports its own failures through the Dialogs port.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "env/env.h"

namespace quillet {

// This program's key, and the maker's key above it that the maker's programs share.
inline constexpr std::string_view kProductKey = "Software\\Vantorel\\Quillet";
inline constexpr std::string_view kCompanyKey = kProductKey.substr(0, kProductKey.rfind('\\'));

// Start-up: creates the company and product keys that are missing.
void EnsureSettingsKeys(Env& env);
// Start-up: the stored pause time, "20" when it is empty.
std::string GetPauseTime(Env& env);
// Start-up: the stored run counter; empty or no number is 0, a number too big is cut to fit.
std::int16_t GetRunCount(Env& env);

// Sets the run mode to " ", creates the "User" folder when it is missing and makes the
// program folder the current folder.
void Start_INI(Env& env, std::string& runMode);

// The last response file's name without its folder ("" when the product key is missing);
// restores `userPath` and the parent folder. `userPath` is "demos" when the stored one is
// empty or absolute, except on Linux for an absolute folder that exists, which is kept.
std::string GetFileInRegistry(Env& env, std::string& userPath);

// Stores the current response file name and the user path.
void PutFileInRegistry(Env& env, const std::string& currentFile, const std::string& userPath);

// Stores the run counter as decimal text.
void PutRunCountInRegistry(Env& env, std::int16_t runCount);

// The plot file that belongs to `fileName`: its last extension becomes ".plt" and the name is
// lower-cased; names ending in ".gif" (any case) or ".plt" (exactly) are kept as they are.
std::string PlotFileNameFor(const std::string& fileName);
// Registers the plot file that belongs to `fileName`: its last extension becomes ".plt" and
// the name is lower-cased; names ending in ".gif" or ".plt" are kept as they are.
void MakePlotFileName(Env& env, const std::string& fileName);
// Stores the program folder's name and, when `plotFile` is not empty, the plot file.
void PutPlotFileInRegistry(Env& env, const std::string& plotFile);

// The folder a user path names: a relative one lies in the program folder.
std::string UserFolder(const Env& env, const std::string& userPath);

// `folder` with the first "<program folder><sep>" in it removed, ignoring case.
std::string StripProgramFolder(const Env& env, const std::string& folder);

// At exit: the user path becomes `dataFolder` relative to the program folder ("demos" in a
// demo), the counter goes up by one and is stored while it is above -9.
void SaveSettingsAtExit(Env& env, const std::string& runMode, const std::string& dataFolder,
                        std::string& userPath, std::int16_t& runCount);

// File > Recent Files: the response files last opened or saved, newest first, at most 8, kept
// in the product key as "Recent1" to "Recent8". Files that no longer exist are left out.
inline constexpr int kRecentFileCount = 8;
std::vector<std::string> GetRecentFiles(Env& env);
// Puts `path` first; a path already in the list moves up, the oldest beyond 8 goes.
void PutRecentFile(Env& env, const std::string& path);

// Shows what the registry has to say about its own store (a damaged file set aside).
void ShowRegistryNotices(Env& env);

}  // namespace quillet
