#include "env/paths.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "env/errors.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace quillet {

std::string JoinPath(const std::string& folder, const std::string& name) {
    return folder + kSep + name;
}

std::string SplitPath(const Env& env, const std::string& fullName, std::string& folder) {
    auto cut = fullName.find_last_of("\\/");
    if (cut == std::string::npos) {
        folder = env.currentFolder;
        return fullName;
    }
    folder = fullName.substr(0, cut);
    return fullName.substr(cut + 1);
}

bool RealPathProbe(const std::string& path, bool folder) {
    if (path.empty()) return false;
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
        switch (errno) {
            case ENOENT:
            case ENOTDIR:
            case EACCES:
            case ENAMETOOLONG:
            case ELOOP: return false;
            default: throw ErrorFromErrno(errno, folder);
        }
    }
    return folder ? S_ISDIR(st.st_mode) : S_ISREG(st.st_mode);
}

static bool ProbeWithRetry(Env& env, const std::string& path, bool folder, const char* routine) {
    const std::string title = std::string("In '") + routine + "' routine ...";
    for (;;) {
        try {
            return env.probe(path, folder);
        } catch (const RuntimeError& e) {
            switch (e.number()) {
                case err::DiskNotReady:
                    if (env.dialogs->MsgBox("Put a floppy disk in the drive and cloce the drive door.", 481,
                                            std::string("In '") + routine + "' routine ...") == mb::OK)
                        continue;
                    return false;
                case err::DeviceUnavailable:
                    env.dialogs->MsgBox("This drive or path does not exist: " + path, mb::Exclamation, title);
                    continue;
                case err::DialogCancelled: return false;
                default:
                    env.dialogs->MsgBox(UnexpectedErrorText(e), mb::Critical, title);
                    env.quitRequested = true;
                    return false;
            }
        }
    }
}

bool dirExists(Env& env, const std::string& path) { return ProbeWithRetry(env, path, true, "dirExists"); }

bool FileExists(Env& env, const std::string& path) { return ProbeWithRetry(env, path, false, "FileExists"); }

std::string DefaultProgramDir() {
    if (const char* dir = std::getenv("QUILLET_PROGRAM_DIR"); dir && *dir) return dir;
    std::error_code ec;
#ifdef _WIN32
    char buf[4096];
    DWORD n = GetModuleFileNameA(nullptr, buf, sizeof buf);
    auto exe = std::filesystem::path(std::string(buf, n));
#else
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
#endif
    if (ec || exe.empty()) return std::filesystem::current_path(ec).string();
    return exe.parent_path().string();
}

}  // namespace quillet
