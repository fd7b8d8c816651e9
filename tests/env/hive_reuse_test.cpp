// The Linux hive kept in memory between calls: an unchanged, settled file is read once and a
// call that changes nothing writes nothing, while any change made by another program or a
// person is seen at the next call.
#ifndef _WIN32
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <functional>

#include "env/file_registry_posix.h"
#include "env/mdlRegistryAPI.h"
#include "registry_fixture.h"

namespace quillet::testing {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

const std::string kKey = "Software\\Vantorel\\Quillet";

ino_t Inode(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 ? st.st_ino : 0;
}

class HiveReuse : public RegistryFixture {
  public:
    // A second program of the maker sets `v` through a store of its own.
    void AnotherProgramSets(const std::string& value) {
        FileRegistry other(hives);
        Env e = Using(other);
        SetRegValue(e, reg::CurrentUser, kKey, "v", reg::Sz, value);
    }

  protected:
    HiveReuse() {
        fs::create_directory(hives);
        WriteBytes(file, "REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet]\n\"v\"=\"1\"\n\n");
    }
    // A store whose files count as settled as soon as they are written, as every file is at a
    // real start, long after the program last wrote it.
    Env Using(FileRegistry& store) {
        Env e = env;
        e.registry = &store;
        return e;
    }
    static std::string Read(Env& e, const std::string& name = "v") {
        return RegText(GetRegValue(e, reg::CurrentUser, kKey, name, reg::Sz, std::string("<missing>")));
    }
    std::string file = hives + "/HKEY_CURRENT_USER.reg";
};

TEST_F(HiveReuse, ASettledFileIsReadOnceAndWhatChangesNothingWritesNothing) {
    FileRegistry store(hives, 0s);
    Env e = Using(store);
    const ino_t before = Inode(file);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(Read(e), "1");
    EXPECT_EQ(Read(e, "absent"), "<missing>");
    EXPECT_TRUE(KeyExists(e, reg::CurrentUser, kKey));
    EXPECT_TRUE(CreateKey(e, reg::CurrentUser, kKey)) << "the key was there";
    SetRegValue(e, reg::CurrentUser, kKey, "v", reg::Sz, std::string("1"));
    EXPECT_EQ(store.traffic().reads, 1);
    EXPECT_EQ(store.traffic().writes, 0);
    EXPECT_EQ(Inode(file), before);

    SetRegValue(e, reg::CurrentUser, kKey, "v", reg::Sz, std::string("2"));
    EXPECT_EQ(store.traffic().writes, 1);
    EXPECT_NE(Inode(file), before);
    EXPECT_EQ(Read(e), "2");
    EXPECT_NE(ReadBytes(file).find("\"v\"=\"2\""), std::string::npos);
}

// Inside a batch the calls answer from the hive with the batch's changes; the file changes once,
// when the outermost batch ends.
TEST_F(HiveReuse, ABatchWritesItsChangesOnceAtItsEndAndReadsThemMeanwhile) {
    FileRegistry store(hives);
    Env e = Using(store);
    const std::string before = ReadBytes(file);
    {
        RegistryBatch outer(store);
        SetRegValue(e, reg::CurrentUser, kKey, "v", reg::Sz, std::string("2"));
        {
            RegistryBatch inner(store);
            CreateKey(e, reg::CurrentUser, kKey + "\\Sub");
            SetRegValue(e, reg::CurrentUser, kKey + "\\Sub", "w", reg::Sz, std::string("3"));
        }
        EXPECT_EQ(Read(e), "2");
        EXPECT_TRUE(KeyExists(e, reg::CurrentUser, kKey + "\\Sub"));
        EXPECT_EQ(ReadBytes(file), before);
    }
    EXPECT_EQ(store.traffic().writes, 1);
    EXPECT_EQ(ReadBytes(file),
              "REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet]\n\"v\"=\"2\"\n\n"
              "[HKEY_CURRENT_USER\\Software\\Vantorel\\Quillet\\Sub]\n\"w\"=\"3\"\n\n");
    EXPECT_EQ(Read(e), "2");
}

struct OutsideChange {
    const char* what;
    std::chrono::seconds settled;  // of the store that reads before and after
    std::function<void(HiveReuse&, const std::string& file)> make;
    const char* after;  // the value read after it
};

void PrintTo(const OutsideChange& c, std::ostream* os) { *os << c.what; }

// A change a moment after the first read: by another program of the maker (the file is
// replaced), by a person who edits it in place keeping its size (only a settled file is
// trusted, so the store reads it again), or the file removed.
class OutsideChanges : public HiveReuse, public ::testing::WithParamInterface<OutsideChange> {};

TEST_P(OutsideChanges, AreSeenAtTheNextRead) {
    FileRegistry store(hives, GetParam().settled);
    Env e = Using(store);
    ASSERT_EQ(Read(e), "1");
    GetParam().make(*this, file);
    EXPECT_EQ(Read(e), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, OutsideChanges,
    ::testing::Values(
        OutsideChange{"AnotherProgram", 0s,
                      [](HiveReuse& t, const std::string&) { t.AnotherProgramSets("7"); },
                      "7"},
        OutsideChange{"APersonInPlace", FileRegistry::kSettled,
                      [](HiveReuse&, const std::string& file) {
                          std::string text = ReadBytes(file);
                          text.replace(text.find("\"1\""), 3, "\"9\"");
                          FILE* f = std::fopen(file.c_str(), "r+");
                          ASSERT_NE(f, nullptr);
                          std::fwrite(text.data(), 1, text.size(), f);
                          std::fclose(f);
                      },
                      "9"},
        OutsideChange{"FileRemoved", 0s, [](HiveReuse&, const std::string& file) { fs::remove(file); },
                      "<missing>"}),
    [](const auto& info) { return std::string(info.param.what); });

}  // namespace
}  // namespace quillet::testing
#endif  // _WIN32
