#include <gtest/gtest.h>

#include <filesystem>

#include "env/files.h"
#include "support/test_env.h"

namespace quillet::testing {
namespace {

// Flushed or not, new or replacing an older version: the target holds the new bytes, keeps its
// permissions, and nothing else is left in the folder.
TEST(AtomicWrite, ReplacesTheTargetWholeAndLeavesNothingElse) {
    for (bool durable : {true, false})
        for (bool existing : {true, false}) {
            TempDir dir;
            const std::string target = dir / "result.txt";
            if (existing) {
                WriteBytes(target, "an earlier, longer version of the file");
                std::filesystem::permissions(target, std::filesystem::perms(0640));
            }
            const auto produce = [](const ByteSink& sink) {
                sink("new ");
                sink("bytes");
            };
            WriteFileAtomically(target, produce, durable);
            EXPECT_EQ(ReadBytes(target), "new bytes") << durable << existing;
            const auto entries = std::distance(std::filesystem::directory_iterator(dir.path()), {});
            EXPECT_EQ(entries, 1) << durable << existing;
#ifndef _WIN32  // Windows keeps only a read-only flag
            if (existing)
                EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms(0640))
                    << durable;
#endif
        }
}

}  // namespace
}  // namespace quillet::testing
