#include "support/run_command.h"

#include "support/test_env.h"

#ifdef _WIN32
#include "env/errors.h"
#include "run/process_runner.h"
#else
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace quillet::testing {

namespace {
#ifdef _WIN32
// Quotes one argument so that the C runtime of the program started gives it back unchanged.
std::string Quoted(const std::string& arg) {
    std::string out = "\"";
    std::size_t slashes = 0;
    for (char c : arg) {
        if (c == '\\') {
            ++slashes;
            continue;
        }
        out.append(c == '"' ? 2 * slashes + 1 : slashes, '\\');
        slashes = 0;
        out += c;
    }
    out.append(2 * slashes, '\\');
    return out + "\"";
}

// The solver's own runner: cmd reads the redirections; the outer quotes are the pair it strips.
int Run(const std::string& program, const std::vector<std::string>& args, const std::string& workingDir,
        const std::string& inPath, const std::string& outPath, const std::string& errPath) {
    std::string line = "\"" + Quoted(program);
    for (const auto& a : args) line += " " + Quoted(a);
    line += " <" + Quoted(inPath) + " >" + Quoted(outPath) + " 2>" + Quoted(errPath) + "\"";
    try {
        return ProcessRunner().Run(line, workingDir, false);
    } catch (const RuntimeError&) {
        return -1;
    }
}
#else
int Run(const std::string& program, const std::vector<std::string>& args,
        const std::string& workingDir, const std::string& inPath, const std::string& outPath,
        const std::string& errPath) {
    pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(::open(inPath.c_str(), O_RDONLY), 0);
        ::dup2(::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        if (!workingDir.empty() && ::chdir(workingDir.c_str()) != 0) ::_exit(126);
        std::vector<char*> argv{const_cast<char*>(program.c_str())};
        for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
#endif

// The programs print text: on Windows their line ends are CR LF, compared here as "\n".
std::string AsText(std::string bytes) {
#ifdef _WIN32
    for (std::size_t at = 0; (at = bytes.find("\r\n", at)) != std::string::npos;)
        bytes.erase(at, 1);
#endif
    return bytes;
}
}  // namespace

CommandResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& input, const std::string& workingDir) {
    TempDir files;
    WriteBytes(files / "in", input);
    CommandResult r;
    r.status = Run(program, args, workingDir, files / "in", files / "out", files / "err");
    r.out = AsText(ReadBytes(files / "out"));
    r.err = AsText(ReadBytes(files / "err"));
    return r;
}

}  // namespace quillet::testing
