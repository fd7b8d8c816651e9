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

const std::string kKey = "Software\\Vantorel\\Quillet";

class SystemRegistry : public RegistryFixture {
  protected:
    SystemRegistry() { CreateKey(env, reg::CurrentUser, kKey); }
};

// Each value goes both ways: written by the layer, the system gives its type and bytes to any
// program; written by another program, the layer reads it by its own rules.
TEST_F(SystemRegistry, ValuesMeanTheSameToOtherPrograms) {
    struct Case {
        std::uint32_t type;
        RegValue value;
        std::string bytes;
    } cases[] = {
        {reg::Sz, std::string("abc"), std::string("abc\0", 4)},
        {reg::Sz, std::string(), std::string("\0", 1)},
        {reg::Dword, -2, "\xFE\xFF\xFF\xFF"},
        {reg::Binary, std::vector<unsigned char>{0, 1, 255}, std::string("\x00\x01\xFF", 3)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.type);
        SetRegValue(env, reg::CurrentUser, kKey, "ours", c.type, c.value);
        registry.Enter();
        char data[16];
        DWORD type = 0, size = sizeof data;
        ASSERT_EQ(RegGetValueA(HKEY_CURRENT_USER, kKey.c_str(), "ours", RRF_RT_ANY, &type, data, &size), ERROR_SUCCESS);
        EXPECT_EQ(type, c.type);
        EXPECT_EQ(std::string(data, size), c.bytes);
        ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, kKey.c_str(), "theirs", c.type, c.bytes.data(),
                                  static_cast<DWORD>(c.bytes.size())),
                  ERROR_SUCCESS);
        EXPECT_EQ(GetRegValue(env, reg::CurrentUser, kKey, "theirs", c.type), c.value);
    }
    registry.Enter();
    RegSetKeyValueA(HKEY_CURRENT_USER, kKey.c_str(), "bare", REG_SZ, "", 0);
    EXPECT_EQ(GetRegValue(env, reg::CurrentUser, kKey, "bare", reg::Sz, 7), RegValue(7)) << "no bytes, no text";
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
    EXPECT_EQ(classText("MyEditor.bat\\shell\\open\\command"),
              "\"" + dir.path() + "\\MyEditor.bat\" %1");
    EXPECT_EQ(classText(".prz"), "<missing>");
    for (const char* k : keys) RegDeleteTreeA(HKEY_CLASSES_ROOT, k);
}

}  // namespace
}  // namespace quillet::testing
#endif  // _WIN32
