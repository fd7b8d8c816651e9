#include "support/test_env.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>

namespace quillet::testing {

TempDir::TempDir() {
    std::random_device rd;
    auto base = std::filesystem::temp_directory_path();
    for (;;) {
        // A DOS 8.3 name, so that the folder passes the short-name check of a run on Windows.
        char name[9];
        std::snprintf(name, sizeof name, "qt%06x", rd() & 0xFFFFFFu);
        auto candidate = base / name;
        if (std::filesystem::create_directory(candidate)) {
            path_ = candidate.string();
            return;
        }
    }
}

TempDir::~TempDir() {
    std::error_code ec;
    // Read-only files (examples) must not stop the clean-up.
    for (auto& e : std::filesystem::recursive_directory_iterator(path_, ec))
        std::filesystem::permissions(e.path(), std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ec);
    std::filesystem::remove_all(path_, ec);
}

std::string NativePath(std::string path) {
    return std::filesystem::path(path).make_preferred().string();
}

std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

bool TakeAwayReadPermission(const std::string& path) {
    using std::filesystem::perms;
    std::filesystem::permissions(path, perms::owner_read | perms::group_read | perms::others_read,
                                 std::filesystem::perm_options::remove);
    return !std::ifstream(path, std::ios::binary).is_open();
}

}  // namespace quillet::testing
