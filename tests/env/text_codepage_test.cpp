#include <gtest/gtest.h>

#include <cerrno>

#include "env/codepage.h"
#include "env/errors.h"
#include "env/text.h"

namespace quillet {
namespace {

TEST(Codepage, KnownCharactersMapBothWaysAndEveryByteSurvivesARoundTrip) {
    EXPECT_EQ(Utf8ToCp1252("»€™"), "\xBB\x80\x99");
    EXPECT_EQ(Cp1252ToUtf8("\xBB\x80\x99"), "»€™");
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_TRUE(IsValidUtf8(Cp1252ToUtf8(all)));
    EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
    EXPECT_EQ(Utf8ToCp1252("Ω"), "?");  // not in Windows-1252
}

TEST(Codepage, LinesAreTakenAsUtf8OnlyWhenValid) {
    EXPECT_EQ(DecodeLine("caf\xC3\xA9"), "café");
    EXPECT_EQ(DecodeLine("caf\xE9"), "café");
    EXPECT_EQ(DecodeLine("\xC3"), "Ã");  // a cut sequence is Windows-1252
    EXPECT_EQ(DecodeLine("\xED\xA0\x80"), "í\xC2\xA0\xE2\x82\xAC");  // an encoded surrogate is not UTF-8
}

TEST(Text, TrimKeepsTabsReplacingNeverRescansAndCutsCountCharacters) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\t a \t"), "\t a \t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(ReplaceNoCase("My.Fit.FIT.fit", ".Fit", ""), "My");
    EXPECT_EQ(ReplaceNoCase("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(ReplaceNoCase("abab", "AB", "x", 1), "xab");
    EXPECT_EQ(ReplaceAll("Exp", "e", ">"), "Exp");  // exact case
    EXPECT_EQ(ReplaceAll("x", "", "y"), "x");
    EXPECT_EQ(LeftChars("1. »  X", 4), "1. »");
    EXPECT_EQ(MidChars("»»abc", 2), "abc");
    EXPECT_EQ(Left("abc", -1), "");
}

TEST(Errors, PlatformFailuresMapToClassicNumbers) {
    struct Case {
        int errnum;
        bool folder;
        int number;
        const char* description;
    } cases[] = {{ENOENT, false, 53, "File not found"},
                 {ENOENT, true, 76, "Path not found"},
                 {EROFS, false, 75, "Path/File access error"},
                 {ENOSPC, false, 61, "Disk full"},
                 {EIO, false, 57, "Device I/O error"}};
    for (const auto& c : cases) {
        RuntimeError e = ErrorFromErrno(c.errnum, c.folder);
        EXPECT_EQ(e.number(), c.number) << c.errnum;
        EXPECT_EQ(e.description(), c.description);
    }
    RuntimeError other = ErrorFromErrno(EMFILE, false);
    EXPECT_EQ(other.number(), 57);
    EXPECT_NE(other.description(), "Device I/O error");
}

}  // namespace
}  // namespace quillet
