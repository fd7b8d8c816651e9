#pragma once
// What the file system says about a file without reading it: enough to tell that a file read
// earlier has not changed since.
#include <chrono>
#include <optional>
#include <string>

namespace quillet {

struct FileStamp {
    unsigned long long device = 0, inode = 0;
    long long size = 0;
    long long modifiedNs = 0, changedNs = 0;  // mtime and ctime since the epoch

    // The stamp of `path` as it is now; nothing when it cannot be looked at.
    static std::optional<FileStamp> Of(const std::string& path);
    bool operator==(const FileStamp&) const = default;
    // Whether a later change is sure to give another stamp. File times come from a coarse clock,
    // so a change within one tick of the last one may keep the same times (and, after a rename
    // over the file, even the same inode and size); a file whose last change lies at least
    // `settled` before `readAt` is past that.
    bool SettledBy(std::chrono::system_clock::time_point readAt,
                   std::chrono::nanoseconds settled) const;
};

}  // namespace quillet
