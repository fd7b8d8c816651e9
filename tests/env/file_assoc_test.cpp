#include "env/file_assoc.h"

#include <gtest/gtest.h>

#include "env/mdlRegistryAPI.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

class FileTypes : public RegistryFixture {
  protected:
    std::string Class(const std::string& key) {
        return RegText(
            GetRegValue(env, reg::ClassesRoot, key, "", reg::Sz, std::string("<missing>")));
    }
    std::string parent = NativePath(dir / "Quillet/..");
};

TEST_F(FileTypes, ThePresentationTypeNeedsItsProgramInTheParentFolder) {
    RegisterFileTypesOnFirstStart(env, 0, parent);
    EXPECT_EQ(Class(".Fit"), "MyEditor.bat");
    EXPECT_EQ(Class(".prz"), "<missing>");
    EXPECT_EQ(Class("f32main.exe"), "<missing>");

    WriteBytes(dir / "f32main.exe", "");
    RegisterFileTypesOnFirstStart(env, 0, parent);
    EXPECT_EQ(Class(".prz"), "f32main.exe");
    EXPECT_EQ(Class("f32main.exe"), "MV Presentation");
    EXPECT_EQ(Class("f32main.exe\\shell\\open\\command"),
              "\"" + NativePath(parent + "/f32main.exe") + "\" %1");
}

TEST_F(FileTypes, AFolderGetsOneSeparatorAndAnIconItsIndex) {
    AssociateFileType(env, "abc", "C:\\Tools\\", "Tool.exe", "Tool file", "C:\\Tools\\tool.ico");
    EXPECT_EQ(Class("Tool.exe\\shell\\open\\command"), "\"C:\\Tools\\Tool.exe\" %1");
    EXPECT_EQ(Class("Tool.exe\\DefaultIcon"), "C:\\Tools\\tool.ico,0");
    AssociateFileType(env, "abc", "/opt/tools/", "Tool.exe", "Tool file", "");
    EXPECT_EQ(Class("Tool.exe\\shell\\open\\command"), "\"/opt/tools/Tool.exe\" %1");
    AssociateFileType(env, "abc", "/opt/tools", "Tool.exe", "Tool file", "");
    EXPECT_EQ(Class("Tool.exe\\shell\\open\\command"),
              "\"/opt/tools" + NativePath("/") + "Tool.exe\" %1");
}

TEST_F(FileTypes, SetClassKeyValueGivesTheLastRegistryResult) {
    EXPECT_EQ(SetClassKeyValue(env, "-2147483648", "K", "", "own"), 0);
    EXPECT_EQ(SetClassKeyValue(env, "-2147483648", "K", "Sub", "below"), 0);
    EXPECT_EQ(Class("K"), "own");
    EXPECT_EQ(Class("K\\Sub"), "below");

    TestRegistry blocked(dir / "blocker", TestRegistry::Store::Refusing);
    env.registry = &blocked;
    EXPECT_EQ(SetClassKeyValue(env, "-2147483648", "K", "", "x"), 6)
        << "closing the key that was never made";
}

}  // namespace
}  // namespace quillet::testing
