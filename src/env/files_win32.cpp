#include <windows.h>

#include <string>

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

void WriteFileAtomically(const std::string& path, const std::function<void(const ByteSink&)>& produce) {
    DWORD attrs = GetFileAttributesA(path.c_str());
    bool exists = attrs != INVALID_FILE_ATTRIBUTES;
    if (exists && (attrs & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY))) Raise(err::PathFileAccess);
    std::string tmp = path + ".~tmp" + std::to_string(GetCurrentProcessId());
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
    if (ok && !FlushFileBuffers(h)) {
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
