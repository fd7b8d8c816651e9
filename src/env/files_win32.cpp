#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "env/errors.h"
#include "env/files.h"

namespace quillet {

namespace {
[[noreturn]] void RaiseWin32(DWORD code, bool aboutFolder) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND: Raise(aboutFolder ? err::PathNotFound : err::FileNotFound);
        case ERROR_PATH_NOT_FOUND: Raise(err::PathNotFound);
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_WRITE_PROTECT: Raise(err::PathFileAccess);
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL: Raise(err::DiskFull);
        case ERROR_NOT_READY: Raise(err::DiskNotReady);
        case ERROR_BAD_UNIT:
        case ERROR_INVALID_DRIVE: Raise(err::DeviceUnavailable);
        default: Raise(err::DeviceIO);
    }
}

std::string FolderPart(const std::string& path) {
    const auto cut = path.find_last_of("\\/");
    return cut == std::string::npos ? "" : path.substr(0, cut + 1);
}

std::string NamePart(const std::string& path) {
    const auto cut = path.find_last_of("\\/");
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

// The temporary file of a save: beside its target, named after the writing process so that two
// programs saving the same file never share one.
std::string TemporaryName(const std::string& path, DWORD pid) {
    return FolderPart(path) + "." + NamePart(path) + ".~tmp" + std::to_string(pid);
}

// The process id that ends `entry` after `prefix`, or 0 when it does not end so.
DWORD PidAfter(const std::string& entry, const std::string& prefix) {
    if (entry.size() <= prefix.size() || _strnicmp(entry.c_str(), prefix.c_str(), prefix.size()) != 0) return 0;
    const std::string digits = entry.substr(prefix.size());
    if (digits.size() > 9 || digits.find_first_not_of("0123456789") != std::string::npos) return 0;
    return static_cast<DWORD>(std::stoul(digits));
}

bool ProcessEnded(DWORD pid) {
    HANDLE h = OpenProcess(SYNCHRONIZE, FALSE, pid);
    if (!h) return GetLastError() == ERROR_INVALID_PARAMETER;
    const bool ended = WaitForSingleObject(h, 0) == WAIT_OBJECT_0;
    CloseHandle(h);
    return ended;
}

// A save killed between writing and renaming leaves its temporary file behind; the next save of
// the same target removes those whose process has ended. Earlier versions put the same name
// without the leading ".".
void RemoveStaleTemporaries(const std::string& path) {
    const std::string folder = FolderPart(path);
    const std::string name = NamePart(path);
    WIN32_FIND_DATAA found;
    HANDLE find = FindFirstFileA((folder + "*" + name + ".~tmp*").c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) return;
    std::vector<std::string> stale;
    do {
        const std::string entry = found.cFileName;
        DWORD pid = PidAfter(entry, "." + name + ".~tmp");
        if (!pid) pid = PidAfter(entry, name + ".~tmp");
        if (pid && pid != GetCurrentProcessId() && ProcessEnded(pid)) stale.push_back(entry);
    } while (FindNextFileA(find, &found));
    FindClose(find);
    for (const std::string& entry : stale) DeleteFileA((folder + entry).c_str());
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
    HANDLE h = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) RaiseWin32(GetLastError(), false);
    std::string out;
    char buf[65536];
    DWORD n = 0;
    while (ReadFile(h, buf, sizeof buf, &n, nullptr) && n > 0) out.append(buf, n);
    CloseHandle(h);
    return out;
}

void WriteFileAtomically(const std::string& path, const std::string& bytes) {
    WriteFileAtomically(path, [&](const ByteSink& sink) { sink(bytes); });
}

void WriteFileAtomically(const std::string& path, const std::function<void(const ByteSink&)>& produce,
                         bool durable) {
    DWORD attrs = GetFileAttributesA(path.c_str());
    bool exists = attrs != INVALID_FILE_ATTRIBUTES;
    if (exists && (attrs & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY))) Raise(err::PathFileAccess);
    RemoveStaleTemporaries(path);
    std::string tmp = TemporaryName(path, GetCurrentProcessId());
    HANDLE h = CreateFileA(tmp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE) RaiseWin32(GetLastError(), true);
    BOOL ok = TRUE;
    DWORD code = 0;
    auto write = [&](std::string_view bytes) {
        DWORD written = 0;
        if (ok && !(WriteFile(h, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                    written == bytes.size())) {
            ok = FALSE;
            code = GetLastError();
        }
    };
    try {
        produce(write);
    } catch (...) {
        CloseHandle(h);
        DeleteFileA(tmp.c_str());
        throw;
    }
    if (ok && durable && !FlushFileBuffers(h)) {
        ok = FALSE;
        code = GetLastError();
    }
    CloseHandle(h);
    if (!ok) {
        DeleteFileA(tmp.c_str());
        RaiseWin32(code, false);
    }
    if (!MoveFileExA(tmp.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        code = GetLastError();
        DeleteFileA(tmp.c_str());
        RaiseWin32(code, false);
    }
}

}  // namespace quillet
