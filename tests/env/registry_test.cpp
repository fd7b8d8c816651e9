// The registry's four operations and the file types, in a store of the test's own.
#include <gtest/gtest.h>

#include "env/errors.h"
#include "env/file_assoc.h"
#include "env/mdlRegistryAPI.h"
#include "env/text.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

using Bytes = std::vector<unsigned char>;
const std::string kKey = "Software\\Vantorel\\Quillet";

// The number and description of the error `call` raised.
template <class F>
std::string Raised(F call) {
    try {
        call();
    } catch (const RuntimeError& e) {
        return std::to_string(e.number()) + " " + e.description();
    }
    return "no error raised";
}

class Registry : public RegistryFixture {
  protected:
    Registry() { CreateKey(env, reg::CurrentUser, kKey); }
    RegValue RoundTrip(std::uint32_t type, const RegValue& value) {
        SetRegValue(env, reg::CurrentUser, kKey, "Value", type, value);
        return GetRegValue(env, reg::CurrentUser, kKey, "Value", type, std::string("default"));
    }
    std::string Class(const std::string& key) {
        return RegText(
            GetRegValue(env, reg::ClassesRoot, key, "", reg::Sz, std::string("<missing>")));
    }
};

// Each check reads back a value that differs from the one before, so a refused write shows.
TEST_F(Registry, ValuesRoundTripWithinTheirLimits) {
    for (const std::string& text :
         {std::string(), std::string("Grüße"), std::string(1023, 'x'), std::string("\\Dravik"), std::string("\\dr")})
        EXPECT_EQ(RoundTrip(reg::Sz, text), RegValue(text)) << text;
    EXPECT_EQ(RoundTrip(reg::Sz, std::string(1024, 'x')), RegValue(std::string("default")));
    EXPECT_EQ(RoundTrip(reg::Sz, std::string("\\Dr")), RegValue(std::string("\\Dravik")))
        << "the sibling folder stub reads as its full name";

    Bytes full(4096);
    for (std::size_t i = 0; i < full.size(); ++i) full[i] = static_cast<unsigned char>(i * 7);
    EXPECT_EQ(RoundTrip(reg::Binary, full), RegValue(full));
    EXPECT_EQ(RoundTrip(reg::Binary, Bytes(4097)), RegValue(std::string("default")));
    for (std::int32_t n : {INT32_MIN, 0x12345678}) EXPECT_EQ(RoundTrip(reg::Dword, n), RegValue(n));
    EXPECT_EQ(RoundTrip(reg::Dword, std::string(" 42 ")), RegValue(42));
    EXPECT_EQ(RoundTrip(reg::Dword, std::string("no number")), RegValue(42))
        << "a failed conversion writes nothing";
}

TEST_F(Registry, WritesNeverCreateKeysNorReportFailures) {
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

TEST_F(Registry, AnUnsupportedTypeOnAnOpenKeyAndARefusedKeyRaise1001) {
    EXPECT_EQ(GetRegValue(env, reg::CurrentUser, "Software\\Missing", "x", 2, 5), RegValue(5));
    EXPECT_EQ(Raised([&] { GetRegValue(env, reg::CurrentUser, kKey, "x", 2); }),
              "1001 Unsupported value type");
    TestRegistry blocked(dir / "blocker", TestRegistry::Store::Refusing);
    env.registry = &blocked;
    EXPECT_EQ(Raised([&] { CreateKey(env, reg::CurrentUser, kKey); }),
              "1001 Unable to create the registry key");
}

TEST_F(Registry, FirstStartFileTypesIncludeTheSiblingProgramOnlyWhenItIsThere) {
    const std::string parent = NativePath(dir / "Quillet/..");
    RegisterFileTypesOnFirstStart(env, 0, parent);
    EXPECT_EQ(Class(".prz"), "<missing>");
    if (kHiveFiles) {
        EXPECT_EQ(ReplaceAll(ClassesRootFile(), dir.path(), "<tmp>"),
                  "REGEDIT4\n\n"
                  "[HKEY_CLASSES_ROOT\\.Fit]\n@=\"MyEditor.bat\"\n\n"
                  "[HKEY_CLASSES_ROOT\\.MV]\n@=\"MyEditor.bat\"\n\n"
                  "[HKEY_CLASSES_ROOT\\.Out]\n@=\"MyEditor.bat\"\n\n"
                  "[HKEY_CLASSES_ROOT\\.plt]\n@=\"Dravik-XYplots\"\n\n"
                  "[HKEY_CLASSES_ROOT\\Dravik-XYplots]\n@=\"XYplot file\"\n\n"
                  "[HKEY_CLASSES_ROOT\\Dravik-XYplots\\shell\\open\\command]\n"
                  "@=\"\\\"<tmp>/Quillet/../Dravik-XYplots\\\" %1\"\n\n"
                  "[HKEY_CLASSES_ROOT\\MyEditor.bat]\n@=\"Fit Input file\"\n\n"
                  "[HKEY_CLASSES_ROOT\\MyEditor.bat\\shell\\open\\command]\n"
                  "@=\"\\\"<tmp>/Quillet/../MyEditor.bat\\\" %1\"\n\n");
    }

    WriteBytes(dir / "f32main.exe", "");
    RegisterFileTypesOnFirstStart(env, 0, parent);
    EXPECT_EQ(Class(".prz"), "f32main.exe");
    EXPECT_EQ(Class("f32main.exe"), "MV Presentation");
    EXPECT_EQ(Class("f32main.exe\\shell\\open\\command"),
              "\"" + NativePath(parent + "/f32main.exe") + "\" %1");
}

}  // namespace
}  // namespace quillet::testing
