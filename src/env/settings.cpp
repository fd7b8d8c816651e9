#include "env/settings.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include "env/errors.h"
#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
#include "env/registry_backend.h"
#include "env/text.h"

namespace quillet {

namespace {

const std::string kProduct(kProductKey);
const std::string kCompany(kCompanyKey);

using Report = std::function<void(const RuntimeError&)>;

// Runs one step of a routine; a run-time error is reported and the routine goes on.
template <class Step>
void Try(Step step, const Report& report) {
    try {
        step();
    } catch (const RuntimeError& e) {
        report(e);
    }
}

Report UnexpectedError(Env& env, const std::string& routine) {
    return [&env, routine](const RuntimeError& e) {
        env.dialogs->MsgBox(UnexpectedErrorText(e), mb::Critical,
                            "In '" + routine + "' routine ...");
    };
}

void EnsureKey(Env& env, const std::string& key) {
    if (!KeyExists(env, reg::CurrentUser, key)) CreateKey(env, reg::CurrentUser, key);
}

std::string ReadText(Env& env, const std::string& key, const std::string& name) {
    return RegText(GetRegValue(env, reg::CurrentUser, key, name, reg::Sz));
}

void WriteText(Env& env, const std::string& key, const std::string& name, const std::string& text) {
    SetRegValue(env, reg::CurrentUser, key, name, reg::Sz, text);
}

void MakeFolder(const std::string& path) {
    std::error_code ec;
    if (std::filesystem::create_directory(path, ec) || !ec) return;
    auto cond = ec.default_error_condition();
    int e = cond.category() == std::generic_category() ? cond.value() : EIO;
    if (e == EEXIST) Raise(err::PathFileAccess);
    throw ErrorFromErrno(e, true);
}

bool IsAbsolute(const std::string& path) {
    return (path.size() > 1 && path[1] == ':') || StartsWith(path, "/");
}

// The stored user path that start-up keeps. On Windows only folders relative to the program
// folder are kept. On Linux a person's files live outside the program folder, so an absolute
// folder that still exists is kept too.
bool KeepsUserPath([[maybe_unused]] Env& env, const std::string& path) {
    if (path.empty()) return false;
    if (!IsAbsolute(path)) return true;
#ifdef _WIN32
    return false;
#else
    return StartsWith(path, "/") && dirExists(env, path);
#endif
}

}  // namespace

namespace {

std::vector<std::string> StoredRecentFiles(Env& env) {
    std::vector<std::string> files;
    // A program state without a settings store (the command-line companion) keeps none.
    if (!env.registry) return files;
    for (int i = 1; i <= kRecentFileCount; ++i) {
        std::string path;
        Try([&] { path = ReadText(env, kProduct, "Recent" + std::to_string(i)); }, UnexpectedError(env, "GetRecentFiles"));
        if (!path.empty()) files.push_back(path);
    }
    return files;
}

}  // namespace

std::vector<std::string> GetRecentFiles(Env& env) {
    std::vector<std::string> files;
    for (const std::string& path : StoredRecentFiles(env)) {
        std::error_code ec;
        if (std::filesystem::is_regular_file(path, ec)) files.push_back(path);
    }
    ShowRegistryNotices(env);
    return files;
}

void PutRecentFile(Env& env, const std::string& path) {
    if (!env.registry) return;
    const std::vector<std::string> stored = StoredRecentFiles(env);
    std::vector<std::string> files = stored;
    std::erase(files, path);
    files.insert(files.begin(), path);
    files.resize(std::min<std::size_t>(files.size(), kRecentFileCount));
    Report report = UnexpectedError(env, "PutRecentFile");
    Try([&] { EnsureKey(env, kProduct); }, report);
    // Only the slots that change are written: each write replaces the whole store.
    for (std::size_t at = 0; at < files.size(); ++at) {
        if (at < stored.size() && stored[at] == files[at]) continue;
        Try([&] { WriteText(env, kProduct, "Recent" + std::to_string(at + 1), files[at]); }, report);
    }
    ShowRegistryNotices(env);
}

void ShowRegistryNotices(Env& env) {
    for (const std::string& notice : env.registry->TakeNotices())
        env.dialogs->MsgBox(notice, mb::Exclamation, "Quillet");
}

void EnsureSettingsKeys(Env& env) {
    Try(
        [&] {
            // A first start makes both keys: one write.
            RegistryBatch batch(*env.registry);
            if (!KeyExists(env, reg::CurrentUser, kCompany)) {
                CreateKey(env, reg::CurrentUser, kCompany);
                CreateKey(env, reg::CurrentUser, kProduct);
            } else {
                EnsureKey(env, kProduct);
            }
        },
        UnexpectedError(env, "EnsureSettingsKeys"));
    ShowRegistryNotices(env);
}

std::string GetPauseTime(Env& env) {
    std::string pause = ReadText(env, kCompany, "tPause");
    ShowRegistryNotices(env);
    return pause.empty() ? "20" : pause;
}

std::int16_t GetRunCount(Env& env) {
    std::string text = Trim(ReadText(env, kProduct, "RunCount"));
    ShowRegistryNotices(env);
    long n = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<std::int16_t>(std::clamp<long>(n, INT16_MIN, INT16_MAX));
}

void Start_INI(Env& env, std::string& runMode) {
    Report report = [&env](const RuntimeError& e) {
        env.dialogs->MsgBox(UnexpectedErrorText(e) + kCrLf + "Path =" + env.programDir + kCrLf +
                                ".  Suggest re-installing " + "Quillet" + ".",
                            mb::Critical, "In 'Start_INI' routine ...");
    };
    runMode.assign(1, ' ');  // not = " ": GCC 12 warns falsely (-Wrestrict) on that
    std::string user = JoinPath(env.programDir, "User");
    Try(
        [&] {
            if (!dirExists(env, user)) MakeFolder(user);
        },
        report);
    Try(
        [&] {
            if (!env.probe(env.programDir, true)) Raise(err::PathNotFound);
            env.currentFolder = env.programDir;
        },
        report);
}

std::string GetFileInRegistry(Env& env, std::string& userPath) {
    Report report = [&env](const RuntimeError& e) {
        env.dialogs->MsgBox(UnexpectedErrorText(e) + kCrLf +
                                "It seems some Registry entry is corrupt!  Re-installing this " +
                                kCrLf + "Quillet" + " " + "program is the easiest fix.",
                            mb::Critical, "In 'GetFileInRegistry' routine ...");
        env.parentDir = JoinPath(env.programDir, "..");
    };
    std::string name;
    bool known = false;
    Try([&] { known = KeyExists(env, reg::CurrentUser, kProduct); }, report);
    if (known) {
        Try(
            [&] {
                name = ReadText(env, kProduct, "fileIn");
                name = name.substr(name.find_last_of("\\/") + 1);
            },
            report);
        Try(
            [&] {
                std::string path = ReadText(env, kProduct, "userPath");
                userPath = KeepsUserPath(env, path) ? path : "demos";
            },
            report);
        env.parentDir = JoinPath(env.programDir, "..");
    }
    ShowRegistryNotices(env);
    return name;
}

void PutFileInRegistry(Env& env, const std::string& currentFile, const std::string& userPath) {
    Report report = [&env](const RuntimeError& e) {
        env.dialogs->MsgBox(UnexpectedErrorText(e) + kCrLf +
                                "It seems some Registry entry is corrupt!  Re-installing this " +
                                kCrLf + "Quillet" + "\xE2\x84\xA2 " /* ™ */ +
                                "program is the easiest fix.",
                            mb::Critical, "In 'PutFileInRegistry'");
    };
    Try([&] { EnsureKey(env, kProduct); }, report);
    Try([&] { WriteText(env, kProduct, "FileIn", currentFile); }, report);
    Try([&] { WriteText(env, kProduct, "userPath", userPath); }, report);
    ShowRegistryNotices(env);
}

void PutRunCountInRegistry(Env& env, std::int16_t runCount) {
    Report report = UnexpectedError(env, "PutRunCountInRegistry");
    Try([&] { EnsureKey(env, kProduct); }, report);
    Try([&] { WriteText(env, kProduct, "RunCount", std::to_string(runCount)); }, report);
    ShowRegistryNotices(env);
}

std::string PlotFileNameFor(const std::string& fileName) {
    // A picture keeps its name whatever its case; a plot file only when it ends in ".plt" exactly.
    const std::string tail = Right(fileName, 4);
    if (fileName.empty() || LCase(tail) == ".gif" || tail == ".plt") return fileName;
    return LCase(fileName.substr(0, fileName.rfind('.')) + ".plt");
}

void MakePlotFileName(Env& env, const std::string& fileName) { PutPlotFileInRegistry(env, PlotFileNameFor(fileName)); }

void PutPlotFileInRegistry(Env& env, const std::string& plotFile) {
    Report report = UnexpectedError(env, "PutPlotFileInRegistry");
    Try([&] { EnsureKey(env, kCompany); }, report);
    Try([&] { WriteText(env, kCompany, "ProgramPath", "\\Quillet"); }, report);
    if (!plotFile.empty()) Try([&] { WriteText(env, kCompany, "plotFile", plotFile); }, report);
    ShowRegistryNotices(env);
}

std::string UserFolder(const Env& env, const std::string& userPath) {
    return IsAbsolute(userPath) ? userPath : JoinPath(env.programDir, userPath);
}

std::string StripProgramFolder(const Env& env, const std::string& folder) {
    return ReplaceNoCase(folder, JoinPath(env.programDir, ""), "", 1);
}

void SaveSettingsAtExit(Env& env, const std::string& runMode, const std::string& dataFolder,
                        std::string& userPath, std::int16_t& runCount) {
    userPath = runMode == "Demo" ? "demos" : StripProgramFolder(env, dataFolder);
    // A 16-bit count: past 32767 it wraps, and a wrapped count is no longer stored.
    runCount = static_cast<std::int16_t>(runCount + 1);
    if (runCount > -9) PutRunCountInRegistry(env, runCount);
}

}  // namespace quillet
