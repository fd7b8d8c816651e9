#include <gtest/gtest.h>

#include "env/errors.h"
#include "env/mdlRegistryAPI.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

using Bytes = std::vector<unsigned char>;
const std::string kKey = "Software\\Vantorel\\Quillet";

class RegistryApi : public RegistryFixture {
  protected:
    RegistryApi() { CreateKey(env, reg::CurrentUser, kKey); }
    RegValue RoundTrip(std::uint32_t type, const RegValue& value,
                       const RegValue& fallback = std::string("default")) {
        SetRegValue(env, reg::CurrentUser, kKey, "Value", type, value);
        return GetRegValue(env, reg::CurrentUser, kKey, "Value", type, fallback);
    }
};

TEST_F(RegistryApi, CreateKeyMakesParentsAndTellsWhetherTheKeyWasThere) {
    EXPECT_FALSE(CreateKey(env, reg::CurrentUser, "A\\B\\C"));
    EXPECT_TRUE(CreateKey(env, reg::CurrentUser, "a\\b\\c"));
    EXPECT_TRUE(KeyExists(env, reg::CurrentUser, "A\\b"));
    EXPECT_FALSE(KeyExists(env, reg::CurrentUser, "A\\X"));
    EXPECT_FALSE(KeyExists(env, reg::ClassesRoot, "A"));
}

TEST_F(RegistryApi, TextsOfUpTo1023CharactersRoundTrip) {
    for (const std::string& text :
         {std::string(), std::string("a.Fit"), std::string("C:\\work\\a.Fit"),
          std::string("say \"hi\"\t"),
          std::string("Gr\xC3\xBC\xC3\x9F"
                      "e"),
          std::string("two\r\nlines"), std::string(1023, 'x'), std::string("\\Dravik")})
        EXPECT_EQ(RoundTrip(reg::Sz, text), RegValue(text)) << text;
    EXPECT_EQ(RoundTrip(reg::Sz, std::string(1024, 'x')), RegValue(std::string("default")));
}

TEST_F(RegistryApi, TheSiblingFolderStubReadsAsItsFullName) {
    EXPECT_EQ(RoundTrip(reg::Sz, std::string("\\Dr")), RegValue(std::string("\\Dravik")));
    for (const char* kept : {"\\Drx", "\\dr", "Dr"})
        EXPECT_EQ(RoundTrip(reg::Sz, std::string(kept)), RegValue(std::string(kept)));
}

TEST_F(RegistryApi, BytesUpTo4096AndIntegersRoundTrip) {
    Bytes full(4096);
    for (std::size_t i = 0; i < full.size(); ++i) full[i] = static_cast<unsigned char>(i * 7);
    EXPECT_EQ(RoundTrip(reg::Binary, full), RegValue(full));
    EXPECT_EQ(RoundTrip(reg::Binary, Bytes{}), RegValue(Bytes{}));
    EXPECT_EQ(RoundTrip(reg::Binary, Bytes(4097)), RegValue(std::string("default")));
    for (std::int32_t n : {0, -1, INT32_MIN, 0x12345678})
        EXPECT_EQ(RoundTrip(reg::Dword, n), RegValue(n));
    EXPECT_EQ(RoundTrip(reg::Dword, std::string(" 42 ")), RegValue(42));
    EXPECT_EQ(RoundTrip(reg::Dword, std::string("no number")), RegValue(42))
        << "a failed conversion writes nothing";
}

TEST_F(RegistryApi, ValueNamesIgnoreCaseAndKeepTheirFirstSpelling) {
    SetRegValue(env, reg::CurrentUser, kKey, "FileIn", reg::Sz, std::string("a.Fit"));
    SetRegValue(env, reg::CurrentUser, kKey, "FILEIN", reg::Sz, std::string("b.Fit"));
    EXPECT_EQ(GetRegValue(env, reg::CurrentUser, "software\\VANTOREL\\quillet", "fileIn", reg::Sz),
              RegValue(std::string("b.Fit")));
    if (kHiveFiles) {
        EXPECT_EQ(CurrentUserFile(),
                  "REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet]\n"
                  "\"FileIn\"=\"b.Fit\"\n\n");
    }
}

TEST_F(RegistryApi, WritesNeverCreateKeysNorReportFailures) {
    const std::string before = CurrentUserFile();
    SetRegValue(env, reg::CurrentUser, "Software\\Missing", "x", reg::Sz, std::string("1"));
    SetRegValue(env, reg::CurrentUser, kKey, "x", 2, std::string("1"));
    EXPECT_FALSE(KeyExists(env, reg::CurrentUser, "Software\\Missing"));
    for (std::uint32_t type : {reg::Sz, reg::Binary, reg::Dword})
        EXPECT_EQ(GetRegValue(env, reg::CurrentUser, kKey, "x", type, 7), RegValue(7)) << type;
    if (kHiveFiles) {
        EXPECT_EQ(CurrentUserFile(), before);
    }
}

TEST_F(RegistryApi, UnsupportedTypeRaisesOnlyWhenTheKeyOpens) {
    EXPECT_EQ(GetRegValue(env, reg::CurrentUser, "Software\\Missing", "x", 2, 5), RegValue(5));
    try {
        GetRegValue(env, reg::CurrentUser, kKey, "x", 2);
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 1001);
        EXPECT_EQ(e.description(), "Unsupported value type");
    }
}

TEST_F(RegistryApi, RefusedCreationRaises1001) {
    TestRegistry blocked(dir / "blocker", TestRegistry::Store::Refusing);
    env.registry = &blocked;
    try {
        CreateKey(env, reg::CurrentUser, kKey);
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 1001);
        EXPECT_EQ(e.description(), "Unable to create the registry key");
    }
}

TEST_F(RegistryApi, AnEmptyCountKeepsTheDefaultAndAnEmptyTextReadsEmpty) {
    if (!kHiveFiles) GTEST_SKIP() << kNoHiveFiles;
    WriteBytes(hives + "/HKEY_CURRENT_USER.reg",
               "REGEDIT4\n\n[HKEY_CURRENT_USER\\K]\n\"NoBytes\"=hex:\n\"Blank\"=\"\"\n");
    EXPECT_EQ(GetRegValue(env, reg::CurrentUser, "K", "NoBytes", reg::Sz, std::string("d")),
              RegValue(std::string("d")));
    EXPECT_EQ(GetRegValue(env, reg::CurrentUser, "K", "Blank", reg::Sz, std::string("d")),
              RegValue(std::string()));
    EXPECT_EQ(GetRegValue(env, reg::CurrentUser, "K", "Missing", reg::Sz), RegValue());
}

}  // namespace
}  // namespace quillet::testing
