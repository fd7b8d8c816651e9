#include "env/file_stamp_posix.h"

#include <sys/stat.h>

namespace quillet {

namespace {

long long Nanoseconds(const timespec& t) {
    return static_cast<long long>(t.tv_sec) * 1000000000LL + t.tv_nsec;
}

}  // namespace

std::optional<FileStamp> FileStamp::Of(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return std::nullopt;
    return FileStamp{st.st_dev, st.st_ino, st.st_size, Nanoseconds(st.st_mtim), Nanoseconds(st.st_ctim)};
}

bool FileStamp::SettledBy(std::chrono::system_clock::time_point readAt,
                          std::chrono::nanoseconds settled) const {
    const long long read =
        std::chrono::duration_cast<std::chrono::nanoseconds>(readAt.time_since_epoch()).count();
    // A time in the future (a clock set back, a server's clock ahead) settles nothing.
    return changedNs <= read - settled.count() && modifiedNs <= read - settled.count();
}

}  // namespace quillet
