#pragma once
// Shared helpers for library tests: a fixed clock, a temporary folder, file bytes.
#include <filesystem>
#include <string>

#include "env/ports.h"

namespace quillet::testing {

// November 16, 2026 @ 1:33 AM.
class FixedClock : public Clock {
  public:
    std::tm Now() override {
        std::tm t{};
        t.tm_year = 2026 - 1900;
        t.tm_mon = 10;
        t.tm_mday = 16;
        t.tm_hour = 1;
        t.tm_min = 33;
        return t;
    }
};

// A fresh folder under the system's temporary folder, removed again at the end.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& path() const { return path_; }
    // Joined with the platform's separator, as the program builds its paths.
    std::string operator/(const std::string& name) const {
        return path_ + static_cast<char>(std::filesystem::path::preferred_separator) + name;
    }

  private:
    std::string path_;
};

// `path` with the platform's separator: "/" becomes "\" on Windows.
std::string NativePath(std::string path);

std::string ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const std::string& bytes);

// Takes every read permission from the file `path`. False when this user still reads it:
// root reads anything, and Windows does not stop reading for the permission bits.
bool TakeAwayReadPermission(const std::string& path);

}  // namespace quillet::testing
