#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "env/errors.h"
#include "env/files.h"

namespace quillet {

std::string ReadWholeFile(const std::string& path) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) throw ErrorFromErrno(errno, false);
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        Raise(err::PathFileAccess);
    }
    std::string out;
    char buf[65536];
    for (;;) {
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n < 0) {
            if (errno == EINTR) continue;
            int e = errno;
            ::close(fd);
            throw ErrorFromErrno(e, false);
        }
        if (n == 0) break;
        out.append(buf, static_cast<std::size_t>(n));
    }
    ::close(fd);
    return out;
}

static std::string FolderOf(const std::string& path) {
    auto cut = path.find_last_of('/');
    if (cut == std::string::npos) return ".";
    return cut == 0 ? "/" : path.substr(0, cut);
}

// The temporary file of a save: hidden beside its target, named after the writing process so
// that two programs saving the same file never share one.
static std::string TemporaryName(const std::string& path, long pid) {
    const auto cut = path.find_last_of('/');
    const std::string folder = cut == std::string::npos ? "" : path.substr(0, cut + 1);
    const std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
    return folder + "." + name + ".~tmp" + std::to_string(pid);
}

// The process id that ends `entry` after `prefix`, or -1 when it does not end so.
static long PidAfter(const std::string& entry, const std::string& prefix) {
    if (entry.size() <= prefix.size() || entry.compare(0, prefix.size(), prefix) != 0) return -1;
    const std::string digits = entry.substr(prefix.size());
    if (digits.size() > 9 || digits.find_first_not_of("0123456789") != std::string::npos) return -1;
    return std::stol(digits);
}

// A save killed between writing and renaming leaves its temporary file behind; the next save of
// the same target removes those whose process has ended. One of a process still alive is its
// save in progress and stays. Earlier versions put the same name without the leading ".".
static void RemoveStaleTemporaries(const std::string& path) {
    const std::string folder = FolderOf(path);
    const auto cut = path.find_last_of('/');
    const std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
    DIR* dir = ::opendir(folder.c_str());
    if (!dir) return;
    std::vector<std::string> stale;
    while (const dirent* e = ::readdir(dir)) {
        const std::string entry = e->d_name;
        long pid = PidAfter(entry, "." + name + ".~tmp");
        if (pid < 0) pid = PidAfter(entry, name + ".~tmp");
        if (pid <= 0 || pid == ::getpid()) continue;
        if (::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) stale.push_back(entry);
    }
    ::closedir(dir);
    for (const std::string& entry : stale) ::unlink((folder + "/" + entry).c_str());
}

// Swaps the new file in and removes the old one. A rename over an existing file makes ext4 write
// the new file's data out first, which on a disk takes longer than a whole small fit; results a
// run can make again need not wait for that. False where the file system cannot swap.
static bool ExchangeAndDropOld(const std::string& tmp, const std::string& path) {
    if (::renameat2(AT_FDCWD, tmp.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0) return false;
    ::unlink(tmp.c_str());
    return true;
}

void WriteFileAtomically(const std::string& path, const std::string& bytes) {
    WriteFileAtomically(path, [&](const ByteSink& sink) { sink(bytes); });
}

void WriteFileAtomically(const std::string& path, const std::function<void(const ByteSink&)>& produce,
                         bool durable) {
    struct stat st {};
    bool exists = ::stat(path.c_str(), &st) == 0;
    // A file without any write permission is read-only even for an administrator.
    if (exists && (S_ISDIR(st.st_mode) || (st.st_mode & 0222) == 0 || ::access(path.c_str(), W_OK) != 0))
        Raise(err::PathFileAccess);

    RemoveStaleTemporaries(path);
    std::string tmp = TemporaryName(path, ::getpid());
    int fd = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, exists ? (st.st_mode & 07777) : 0666);
    if (fd < 0) {
        int e = errno;
        struct stat dst {};
        bool folderMissing = ::stat(FolderOf(path).c_str(), &dst) != 0;
        throw ErrorFromErrno(e, folderMissing);
    }
    auto fail = [&](int e) {
        ::close(fd);
        ::unlink(tmp.c_str());
        throw ErrorFromErrno(e, false);
    };
    auto write = [&](std::string_view bytes) {
        std::size_t done = 0;
        while (done < bytes.size()) {
            ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
            if (n < 0) {
                if (errno == EINTR) continue;
                fail(errno);
            }
            done += static_cast<std::size_t>(n);
        }
    };
    try {
        produce(write);
    } catch (...) {
        ::close(fd);
        ::unlink(tmp.c_str());
        throw;
    }
    if (durable && ::fsync(fd) != 0) fail(errno);
    if (::close(fd) != 0) {
        int e = errno;
        ::unlink(tmp.c_str());
        throw ErrorFromErrno(e, false);
    }
    if (!(exists && !durable && ExchangeAndDropOld(tmp, path)) && ::rename(tmp.c_str(), path.c_str()) != 0) {
        int e = errno;
        ::unlink(tmp.c_str());
        throw ErrorFromErrno(e, false);
    }
}

}  // namespace quillet
