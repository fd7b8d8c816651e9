// The Linux registry's hive files: what a person wrote, what a program writes, damaged and cut
// files, and two processes writing one hive at once.
#ifndef _WIN32
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <set>
#include <sstream>

#include "env/file_registry_posix.h"
#include "env/mdlRegistryAPI.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

class HiveFile : public RegistryFixture {
  protected:
    HiveFile() { fs::create_directory(hives); }
    std::string Text(const std::string& key, const std::string& name) {
        return RegText(GetRegValue(env, reg::CurrentUser, key, name, reg::Sz, std::string("<missing>")));
    }
    // A fresh hive folder holding only the current user's file with `bytes`.
    void Hive(const std::string& bytes) {
        fs::remove_all(hives);
        fs::create_directory(hives);
        WriteBytes(file, bytes);
    }
    std::vector<fs::path> SetAside() {
        std::vector<fs::path> found;
        for (auto& e : fs::directory_iterator(hives))
            if (e.path().filename().string().starts_with("HKEY_CURRENT_USER.reg.damaged-"))
                found.push_back(e.path());
        return found;
    }
    std::string file = hives + "/HKEY_CURRENT_USER.reg";
};

// A file a person wrote is read by the export format's rules; the first write puts it back the way
// the program writes, so every value read shows in the result.
TEST_F(HiveFile, AFileAPersonWroteIsReadAndRewrittenInTheExportFormat) {
    WriteBytes(file,
               "\xEF\xBB\xBFREGEDIT4\r\n; settings kept by hand\r\n"
               "[hkey_current_user\\software\\vantorel]\r\n\"tPause\" = \"30\"   \r\n"
               "\"Path\"=\"C:\\\\work\\\\\\\"q\\\"\"\r\n\"Plain\"=\"C:\\work\"\r\n@=\"default\"\r\n"
               "\"Count\"=dword:0000002a\r\n\"Blob\"=hex:01,02,\\\r\n  03\r\n"
               "\"NoBytes\"=hex:\r\n\"Old\"=\"gone\"\r\n\"Old\"=-\r\n"
               "\"Text\"=hex(1):61,0a,62,00\r\n"
               "[HKEY_CURRENT_USER\\Software\\Removed]\r\n\"x\"=\"1\"\r\n"
               "[-HKEY_CURRENT_USER\\Software\\Removed]\r\n");
    EXPECT_EQ(Text("SOFTWARE\\Vantorel", "TPAUSE"), "30");
    EXPECT_EQ(Text("Software\\Vantorel", "NoBytes"), "<missing>") << "an empty value keeps the default";
    EXPECT_TRUE(registry.TakeNotices().empty());

    EXPECT_TRUE(CreateKey(env, reg::CurrentUser, "SOFTWARE\\VANTOREL")) << "the key was there";
    for (const char* key : {"Software\\Vantorel\\Quillet", "Software\\Vantorel-Tools", "Software\\Empty"})
        CreateKey(env, reg::CurrentUser, key);
    const std::string key = "Software\\Vantorel";
    SetRegValue(env, reg::CurrentUser, key, "COUNT", reg::Dword, -2);
    SetRegValue(env, reg::CurrentUser, key, "Quote \"q\"", reg::Sz, std::string("C:\\a \"b\""));
    Bytes blob(30);
    for (std::size_t i = 0; i < blob.size(); ++i) blob[i] = static_cast<unsigned char>(i);
    SetRegValue(env, reg::CurrentUser, key, "Long", reg::Binary, blob);
    EXPECT_EQ(ReadBytes(file),
              "REGEDIT4\n\n"
              "[HKEY_CURRENT_USER\\Software\\Empty]\n\n"
              "[HKEY_CURRENT_USER\\software\\vantorel]\n"
              "@=\"default\"\n"
              "\"tPause\"=\"30\"\n"
              "\"Path\"=\"C:\\\\work\\\\\\\"q\\\"\"\n"
              "\"Plain\"=\"C:\\\\work\"\n"
              "\"Count\"=dword:fffffffe\n"
              "\"Blob\"=hex:01,02,03\n"
              "\"NoBytes\"=hex:\n"
              "\"Text\"=hex(1):61,0a,62,00\n"
              "\"Quote \\\"q\\\"\"=\"C:\\\\a \\\"b\\\"\"\n"
              "\"Long\"=hex:00,01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11,12,13,14,15,\\\n"
              "  16,17,18,19,1a,1b,1c,1d\n\n"
              "[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet]\n\n"
              "[HKEY_CURRENT_USER\\Software\\Vantorel-Tools]\n\n");
}

// Every way a file can be broken, and a file cut at every byte: a cut at the end of a line still
// reads; anything else reads as empty keys, is kept aside byte for byte, is reported once, and the
// next write starts a fresh file.
TEST_F(HiveFile, ADamagedOrCutFileIsSetAsideWholeAndReportedOnce) {
    std::vector<std::string> files = {std::string("\0\x01\xff garbage\n\n", 13)};
    for (const char* bytes : {"[HKEY_CURRENT_USER\\K]\n\"v\"=\"1\"\n", "REGEDIT4\n\"v\"=\"1\"\n",
                              "REGEDIT4\n[HKEY_LOCAL_MACHINE\\K]\n", "REGEDIT4\n[HKEY_CURRENT_USER\\\\K]\n"})
        files.push_back(bytes);
    for (const char* value : {"\"v\"=hex:1,2\n", "\"v\"=word:1\n", "v=\"1\"\n", "\"v\"\"1\"\n"})
        files.push_back("REGEDIT4\n[HKEY_CURRENT_USER\\K]\n" + std::string(value));
    const std::string full =
        "REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Vantorel]\n\"ProgramPath\"=\"\\\\Quillet\"\n"
        "\"Blob\"=hex:00,01,02,\\\n  03\n\"Count\"=dword:00000003\n\n";
    for (std::size_t cut = 0; cut < full.size(); ++cut) files.push_back(full.substr(0, cut));
    int readable = 0;
    for (const std::string& bytes : files) {
        SCOPED_TRACE(bytes);
        Hive(bytes);
        const std::string path = Text("Software\\Vantorel", "ProgramPath");
        if (fs::exists(file)) {
            EXPECT_TRUE(full.starts_with(bytes)) << "only a cut file may still read";
            EXPECT_EQ(ReadBytes(file), bytes);
            EXPECT_TRUE(path == "\\Quillet" || path == "<missing>") << path;
            ++readable;
            continue;
        }
        EXPECT_FALSE(KeyExists(env, reg::CurrentUser, "K"));
        auto aside = SetAside();
        ASSERT_EQ(aside.size(), 1u);
        EXPECT_EQ(ReadBytes(aside[0]), bytes);
        auto notices = registry.TakeNotices();
        ASSERT_EQ(notices.size(), 1u);
        EXPECT_NE(notices[0].find(aside[0].string()), std::string::npos) << notices[0];
        EXPECT_FALSE(CreateKey(env, reg::CurrentUser, "K"));
        SetRegValue(env, reg::CurrentUser, "K", "v", reg::Sz, std::string("1"));
        EXPECT_EQ(ReadBytes(file), "REGEDIT4\n\n[HKEY_CURRENT_USER\\K]\n\"v\"=\"1\"\n\n");
        EXPECT_TRUE(registry.TakeNotices().empty());
        EXPECT_EQ(SetAside().size(), 1u);
    }
    EXPECT_GT(readable, 3);
    EXPECT_LT(readable, 20);
}

const std::string kHammered = "Software\\Vantorel\\Hammer";
constexpr int kWrites = 400;

// Writes "<who><n>" = n for n = 1 .. kWrites, as one program of the maker would.
void Hammer(Env& env, char who) {
    for (int n = 1; n <= kWrites; ++n)
        SetRegValue(env, reg::CurrentUser, kHammered, who + std::to_string(n), reg::Sz, std::to_string(n));
}

TEST_F(HiveFile, TwoProcessesWritingAtOnceLoseNoValue) {
    CreateKey(env, reg::CurrentUser, kHammered);
    int start[2];
    ASSERT_EQ(::pipe(start), 0);
    pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        ::close(start[1]);
        char go;
        if (::read(start[0], &go, 1) != 0) ::_exit(3);  // released when the write end closes
        FileRegistry own(hives);
        Env other;
        other.registry = &own;
        Hammer(other, 'B');
        ::_exit(0);
    }
    for (int end : start) ::close(end);  // both write now
    Hammer(env, 'A');
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "writer status " << status;

    // One look at the file: each query would read all of it again.
    std::set<std::string> lines;
    std::istringstream hive(ReadBytes(file));
    for (std::string line; std::getline(hive, line);) lines.insert(line);
    int missing = 0;
    for (char who : {'A', 'B'})
        for (int n = 1; n <= kWrites; ++n)
            missing += !lines.count(std::string("\"") + who + std::to_string(n) + "\"=\"" + std::to_string(n) + "\"");
    EXPECT_EQ(missing, 0);
    EXPECT_EQ(lines.size(), 2u * kWrites + 3) << "the header, the key and a blank line";
}

}  // namespace
}  // namespace quillet::testing
#endif  // _WIN32
