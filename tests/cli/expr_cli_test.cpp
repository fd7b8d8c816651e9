#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/run_command.h"

namespace quillet {
namespace {

using testing::RunProgram;

const std::string kModel = std::string(QUILLET_TEST_DATA) + "/expr/three_lines.equ";

struct Call {
    std::vector<std::string> args;
    int status;
    const char* out;
    const char* err;
};

void PrintTo(const Call& c, std::ostream* os) {
    for (const auto& a : c.args) *os << a << " ";
}

class ExprCli : public ::testing::TestWithParam<Call> {};

TEST_P(ExprCli, PrintsAndExitsAsTheContractSays) {
    auto r = RunProgram(QUILLET_CLI, GetParam().args);
    EXPECT_EQ(r.status, GetParam().status) << r.err;
    EXPECT_EQ(r.out, GetParam().out);
    EXPECT_EQ(r.err, GetParam().err);
}

INSTANTIATE_TEST_SUITE_P(Eval, ExprCli, ::testing::Values(
    Call{{"eval", "0.1+0.2"}, 0, "0.30000000000000004\n", ""},
    Call{{"eval", "--degrees", "rad(180)*0+atn(1)"}, 0, "45.000000000000043\n", ""},
    Call{{"eval", "--var", "x=3", "--", "-x^2"}, 0, "-9\n", ""},
    Call{{"eval", "-x^2", "--var", "x=3"}, 0, "-9\n", ""},
    Call{{"eval", "q+1"}, 1, "", "error 1102 (clsEquation): Undefined Variable: q\n"}));

INSTANTIATE_TEST_SUITE_P(Calc, ExprCli, ::testing::Values(
    Call{{"calc", kModel, "-1"}, 0, "-1.846844983083701\t1.234E-02\n", ""},
    Call{{"calc", kModel + ".missing", "2"}, 1, "",
         "An error has occurred.  Please select an existing .EQU file.\n"}));

}  // namespace
}  // namespace quillet
