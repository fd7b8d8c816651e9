#include "support/run_command.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace quillet::testing {

namespace {
std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::string TempName(const char* tag) {
    char name[] = "/tmp/quillet-cmd-XXXXXX";
    int fd = ::mkstemp(name);
    if (fd >= 0) ::close(fd);
    return std::string(name) + tag;
}
}  // namespace

CommandResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& input, const std::string& workingDir) {
    const std::string inPath = TempName(".in"), outPath = TempName(".out"), errPath = TempName(".err");
    { std::ofstream(inPath, std::ios::binary) << input; }
    pid_t pid = ::fork();
    if (pid == 0) {
        int in = ::open(inPath.c_str(), O_RDONLY);
        int out = ::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        int err = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        ::dup2(in, 0);
        ::dup2(out, 1);
        ::dup2(err, 2);
        if (!workingDir.empty() && ::chdir(workingDir.c_str()) != 0) ::_exit(126);
        std::vector<char*> argv;
        argv.push_back(const_cast<char*>(program.c_str()));
        for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    CommandResult r;
    int status = 0;
    ::waitpid(pid, &status, 0);
    if (WIFEXITED(status)) r.status = WEXITSTATUS(status);
    r.out = Slurp(outPath);
    r.err = Slurp(errPath);
    for (const auto& p : {inPath, outPath, errPath}) std::remove(p.c_str());
    return r;
}

}  // namespace quillet::testing
