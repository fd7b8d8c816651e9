// The registry layer on the system's own registry: what it writes, other programs (the plot
// program reads ProgramPath and plotFile) read with the system's calls; what they wrote, it
// reads by its own rules; and the file types land under the real HKEY_CLASSES_ROOT.
#ifdef _WIN32
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>

#include "env/file_assoc.h"
#include "env/mdlRegistryAPI.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

using Bytes = std::vector<unsigned char>;
const std::string kKey = "Software\\Vantorel\\Quillet";

class SystemRegistry : public RegistryFixture {
  protected:
    SystemRegistry() { CreateKey(env, reg::CurrentUser, kKey); }

    // The value's type and bytes as the system gives them to any program.
    std::pair<DWORD, std::string> Stored(const std::string& name) {
        registry.Enter();
        char data[8192];
        DWORD type = 0, size = sizeof data;
        if (RegGetValueA(HKEY_CURRENT_USER, kKey.c_str(), name.c_str(), RRF_RT_ANY | RRF_NOEXPAND,
                         &type, data, &size) != ERROR_SUCCESS)
            return {REG_NONE, "<unreadable>"};
        return {type, std::string(data, size)};
    }
    void WriteAsAnotherProgram(const std::string& name, DWORD type, const std::string& bytes) {
        registry.Enter();
        EXPECT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, kKey.c_str(), name.c_str(), type, bytes.data(),
                                  static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
};

TEST_F(SystemRegistry, TextsAreStoredWithTheirTerminatingZero) {
    for (const std::string& text : {std::string("a.Fit"), std::string(), std::string("\\Quillet"),
                                    std::string(1023, 'x'), std::string("two\r\nlines")}) {
        SetRegValue(env, reg::CurrentUser, kKey, "v", reg::Sz, text);
        EXPECT_EQ(Stored("v"), std::make_pair(DWORD{REG_SZ}, text + '\0')) << text;
    }
    SetRegValue(env, reg::CurrentUser, kKey, "n", reg::Dword, -2);
    EXPECT_EQ(Stored("n"), std::make_pair(DWORD{REG_DWORD}, std::string("\xFE\xFF\xFF\xFF", 4)));
    SetRegValue(env, reg::CurrentUser, kKey, "b", reg::Binary, Bytes{0, 1, 255});
    EXPECT_EQ(Stored("b"), std::make_pair(DWORD{REG_BINARY}, std::string("\x00\x01\xFF", 3)));
}

TEST_F(SystemRegistry, ValuesOtherProgramsWroteAreReadByTheSameRules) {
    struct Case {
        DWORD type;
        std::string bytes;
        std::uint32_t asked;
        RegValue expected;
    } cases[] = {
        {REG_SZ, std::string("abc\0", 4), reg::Sz, std::string("abc")},
        {REG_SZ, std::string("\0", 1), reg::Sz, std::string()},
        {REG_SZ, "", reg::Sz, std::string("default")},
        {REG_BINARY, std::string("\x07\x00\x09", 3), reg::Binary, Bytes{7, 0, 9}},
        {REG_DWORD, std::string("\x78\x56\x34\x12", 4), reg::Dword, 0x12345678},
    };
    for (const Case& c : cases) {
        WriteAsAnotherProgram("v", c.type, c.bytes);
        EXPECT_EQ(GetRegValue(env, reg::CurrentUser, kKey, "v", c.asked, std::string("default")),
                  c.expected)
            << c.bytes.size() << " bytes of type " << c.type;
    }
}

TEST_F(SystemRegistry, AValueNameKeepsItsFirstSpelling) {
    SetRegValue(env, reg::CurrentUser, kKey, "FileIn", reg::Sz, std::string("a.Fit"));
    SetRegValue(env, reg::CurrentUser, kKey, "FILEIN", reg::Sz, std::string("b.Fit"));
    registry.Enter();
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, kKey.c_str(), 0, KEY_READ, &key), ERROR_SUCCESS);
    std::vector<std::string> names;
    char name[256];
    for (DWORD i = 0, size = sizeof name;
         RegEnumValueA(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i, size = sizeof name)
        names.push_back(name);
    RegCloseKey(key);
    EXPECT_EQ(names, std::vector<std::string>{"FileIn"});
    EXPECT_EQ(Stored("fileIN").second, std::string("b.Fit\0", 6));
}

// The file types of a first start, written to the system's real classes root and read back
// through the system's own calls.
TEST(SystemClassesRoot, FirstStartFileTypesLandUnderTheClassesRoot) {
    if (!std::getenv("QUILLET_SCRATCH_SYSTEM"))
        GTEST_SKIP() << "changes the system's file types: runs only on a system made for the tests "
                        "(QUILLET_SCRATCH_SYSTEM=1)";
    const char* keys[] = {".MV", ".Out", ".plt", ".Fit", "MyEditor.bat", "Dravik-XYplots"};
    for (const char* key : keys) RegDeleteTreeA(HKEY_CLASSES_ROOT, key);
    TempDir dir;
    Env env;
    auto system = MakePlatformRegistry();
    env.registry = system.get();
    RegisterFileTypesOnFirstStart(env, 0, dir.path());

    auto classText = [](const std::string& key) {
        char text[1024] = {};
        LONG size = sizeof text;
        if (RegQueryValueA(HKEY_CLASSES_ROOT, key.c_str(), text, &size) != ERROR_SUCCESS)
            return std::string("<missing>");
        return std::string(text);
    };
    EXPECT_EQ(classText(".Fit"), "MyEditor.bat");
    EXPECT_EQ(classText(".MV"), "MyEditor.bat");
    EXPECT_EQ(classText(".plt"), "Dravik-XYplots");
    EXPECT_EQ(classText("MyEditor.bat"), "Fit Input file");
    EXPECT_EQ(classText("MyEditor.bat\\shell\\open\\command"),
              "\"" + dir.path() + "\\MyEditor.bat\" %1");
    EXPECT_EQ(classText(".prz"), "<missing>");
    for (const char* k : keys) RegDeleteTreeA(HKEY_CLASSES_ROOT, k);
}

}  // namespace
}  // namespace quillet::testing
#endif  // _WIN32
