#include <windows.h>

#include <string>

#include "env/errors.h"
#include "run/process_runner.h"

namespace quillet {

int ProcessRunner::Run(const std::string& commandLine, const std::string& workingDir, bool keepOpen) {
    (void)keepOpen;  // the batch file itself pauses on "wait"
    std::string command = "cmd /C " + commandLine;
    STARTUPINFOA si{};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESHOWWINDOW;
    si.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION pi{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE, nullptr,
                        workingDir.empty() ? nullptr : workingDir.c_str(), &si, &pi))
        Raise(err::FileNotFound);
    WaitForSingleObject(pi.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return static_cast<int>(code);
}

}  // namespace quillet
