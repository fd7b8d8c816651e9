#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "env/errors.h"
#include "run/command_line.h"
#include "run/process_runner.h"

namespace quillet {

int ProcessRunner::Run(const std::string& commandLine, const std::string& workingDir, bool keepOpen) {
    (void)keepOpen;  // there is no console window to keep open here
    std::vector<std::string> parts = SplitCommandLine(commandLine);
    if (parts.empty()) Raise(err::InvalidCall);
    std::vector<char*> argv;
    static char sh[] = "/bin/sh";
    argv.push_back(sh);
    for (auto& p : parts) argv.push_back(p.data());
    argv.push_back(nullptr);

    pid_t pid = ::fork();
    if (pid < 0) throw ErrorFromErrno(errno, false);
    if (pid == 0) {
        if (!workingDir.empty() && ::chdir(workingDir.c_str()) != 0) ::_exit(126);
        ::execv(sh, argv.data());
        ::_exit(127);
    }
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0)
        if (errno != EINTR) throw ErrorFromErrno(errno, false);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace quillet
