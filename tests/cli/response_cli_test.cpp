#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "support/run_command.h"
#include "support/test_env.h"

namespace quillet {
namespace {

using nlohmann::json;
using testing::ReadBytes;
using testing::RunProgram;
using testing::TempDir;

const char* kRecord = R"({
  "Answers": ["data.100", "Lorentzian", "1", "100", "3", "1", "2.5", "0",
              "1  1  1", "5  5  5", "-1  0  1", ""],
  "WeightFlag": 1, "Note1": "first note", "Note2": "",
  "SolverValues": ["20", "0", "1.E-7", "1", ".2", ".02"]
})";

// Everything but the header line, which carries the time of writing.
std::string WithoutHeader(const std::string& bytes) { return bytes.substr(bytes.find("\r\n") + 2); }

TEST(ResponseCli, WriteProducesTheSameBytesAsSave) {
    TempDir dir;
    auto r = RunProgram(QUILLET_CLI, {"write", dir / "Run1.Fit"}, kRecord);
    ASSERT_EQ(r.status, 0) << r.err;
    const std::string bytes = ReadBytes(dir / "Run1.Fit");
    EXPECT_TRUE(bytes.starts_with("Run1  \t\t!* 12, and 5          ")) << bytes;
    EXPECT_EQ(WithoutHeader(bytes), WithoutHeader(ReadBytes(QUILLET_TEST_DATA "/model/Run1.Fit")));
}

TEST(ResponseCli, ReadPrintsTheRecordAsTheProgramReadsIt) {
    auto r = RunProgram(QUILLET_CLI, {"read", QUILLET_TEST_DATA "/model/Run1.Fit"});
    ASSERT_EQ(r.status, 0) << r.err;
    json j = json::parse(r.out);
    EXPECT_EQ(j["ResponseTitle"], "Run1");
    EXPECT_EQ(j["Answers"], json::parse(R"(["data.100", "Lorentzian", "1", "100", "3", "1", "2.5", "0",
                                            "1  1  1", "5  5  5", "-1  0  1", ""])"));
    EXPECT_EQ(j["ModelID"], 1);
    EXPECT_EQ(j["WeightFlag"], 1);
    EXPECT_EQ(j["Note1"], "first note");
    EXPECT_EQ(j["SolverCount"], 6);
    EXPECT_EQ(j["SolverValues"], json::parse(R"(["20", "0", "1.E-7", "1", ".2", "-EOF-"])"));
}

TEST(ResponseCli, MissingFieldsAreEmptyAndMissingFilesFail) {
    TempDir dir;
    ASSERT_EQ(RunProgram(QUILLET_CLI, {"write", dir / "e.Fit"}, "{}").status, 0);
    auto r = RunProgram(QUILLET_CLI, {"read", dir / "e.Fit"});
    ASSERT_EQ(r.status, 0) << r.err;
    json j = json::parse(r.out);
    EXPECT_EQ(j["Answers"][0], "");
    EXPECT_EQ(j["ModelID"], -1);  // an empty model text is no list entry

    auto missing = RunProgram(QUILLET_CLI, {"read", dir / "gone.Fit"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "Missing 'gone.Fit' file?\n");
    EXPECT_EQ(missing.out, "");
}

TEST(ResponseCli, WrongCallsPrintUsageAndExitTwo) {
    struct Case {
        std::vector<std::string> args;
        int status;
    } cases[] = {{{}, 2}, {{"read"}, 2}, {{"write", "a", "b"}, 2}, {{"nonsense"}, 2},
                 {{"read", "--help"}, 0}, {{"--help"}, 0}};
    for (const auto& c : cases) {
        auto r = RunProgram(QUILLET_CLI, c.args);
        EXPECT_EQ(r.status, c.status) << (c.args.empty() ? "(none)" : c.args[0]);
        EXPECT_NE((r.out + r.err).find("usage"), std::string::npos);
    }
    TempDir dir;
    auto bad = RunProgram(QUILLET_CLI, {"write", dir / "x.Fit"}, "not json");
    EXPECT_EQ(bad.status, 1);
    EXPECT_FALSE(std::ifstream(dir / "x.Fit").good());
}

}  // namespace
}  // namespace quillet
