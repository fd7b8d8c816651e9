#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/run_command.h"
#include "support/test_env.h"

namespace quillet {
namespace {

using nlohmann::json;
using testing::ReadBytes;
using testing::RunProgram;
using testing::TempDir;

TEST(EvalAndCalc, PrintTheResultOrTheErrorAndExitAsTheContractSays) {
    const std::string model = QUILLET_TEST_DATA "/expr/three_lines.equ";
    const struct {
        std::vector<std::string> args;
        int status;
        const char* out;
        const char* err;
    } calls[] = {
        {{"eval", "0.1+0.2"}, 0, "0.30000000000000004\n", ""},
        {{"eval", "--degrees", "rad(180)*0+atn(1)"}, 0, "45.000000000000043\n", ""},
        {{"eval", "--var", "x=3", "--", "-x^2"}, 0, "-9\n", ""},
        {{"eval", "-x^2", "--var", "x=3"}, 0, "-9\n", ""},
        {{"eval", "q+1"}, 1, "", "error 1102 (clsEquation): Undefined Variable: q\n"},
        {{"calc", model, "-1"}, 0, "-1.846844983083701\t1.234E-02\n", ""},
        {{"calc", model + ".missing", "2"}, 1, "", "An error has occurred.  Please select an existing .EQU file.\n"},
    };
    for (const auto& c : calls) {
        auto r = RunProgram(QUILLET_CLI, c.args);
        EXPECT_EQ(r.status, c.status) << c.args.back() << ": " << r.err;
        EXPECT_EQ(r.out, c.out) << c.args.back();
        EXPECT_EQ(r.err, c.err) << c.args.back();
    }
}

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

TEST(ResponseCli, ReadPrintsTheRecordAsTheProgramReadsItAndNamesAMissingFile) {
    auto r = RunProgram(QUILLET_CLI, {"read", QUILLET_TEST_DATA "/model/Run1.Fit"});
    ASSERT_EQ(r.status, 0) << r.err;
    json j = json::parse(r.out);
    EXPECT_EQ(j["ResponseTitle"], "Run1");
    EXPECT_EQ(j["Answers"], json::parse(R"(["data.100", "Lorentzian", "1", "100", "3", "1", "2.5", "0",
                                            "1  1  1", "5  5  5", "-1  0  1", ""])"));
    EXPECT_EQ(j["ModelID"], 1);
    EXPECT_EQ(j["SolverValues"], json::parse(R"(["20", "0", "1.E-7", "1", ".2", "-EOF-"])"));

    TempDir dir;
    auto missing = RunProgram(QUILLET_CLI, {"read", dir / "gone.Fit"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "Missing 'gone.Fit' file?\n");
}

// Every command's wrong calls go through the same usage routine: one row per way of being wrong.
TEST(CliExitCodes, WrongCallsExitTwoHelpExitsZeroAndABadRecordOne) {
    const struct {
        std::vector<std::string> args;
        int status;
        const char* usage;
    } cases[] = {{{}, 2, "COMMAND"},
                 {{"nonsense"}, 2, "COMMAND"},
                 {{"--help"}, 0, "COMMAND"},
                 {{"read", "--help"}, 0, "read"},
                 {{"read"}, 2, "read"},
                 {{"eval", "--var"}, 2, "eval"},
                 {{"eval", "--var", "x=abc", "1"}, 2, "eval"},
                 {{"eval", "--radians", "1"}, 2, "eval"},
                 {{"calc", "m.equ"}, 2, "calc"},
                 {{"calc", "--x", "m.equ", "1"}, 2, "calc"}};
    for (const auto& c : cases) {
        auto r = RunProgram(QUILLET_CLI, c.args);
        EXPECT_EQ(r.status, c.status) << (c.args.empty() ? "(none)" : c.args.back());
        EXPECT_NE((r.out + r.err).find(std::string("usage: quillet-cli ") + c.usage), std::string::npos) << r.err;
    }
    TempDir dir;
    EXPECT_EQ(RunProgram(QUILLET_CLI, {"write", dir / "x.Fit"}, "not json").status, 1);
    EXPECT_FALSE(std::ifstream(dir / "x.Fit").good());
}

}  // namespace
}  // namespace quillet
