// quillet-cli calc: the calculator tab on a math-model file.
#include <cstdio>
#include <iostream>

#include "cli/cli_state.h"
#include "cli/commands.h"
#include "env/paths.h"
#include "model/calculator.h"

namespace quillet::cli {
namespace {

int RunCalc(const std::vector<std::string>& args) {
    const Command& cmd = FindCommand("calc");
    const auto positional = PositionalArgs(cmd, args);
    if (!positional) return 2;
    if (positional->size() != 2) return UsageError(cmd, "expects MODELFILE and X");

    CliSession session;
    AppState& s = session.state;
    s.form.calcSelectedFile = SplitPath(s.env, (*positional)[0], s.form.calcFolder);
    s.form.tbXvalue.text = (*positional)[1];
    // Messages and errors of the calculation reach stderr through the console's message box.
    std::optional<double> y = cmdCalculate_Click(s);
    if (!y) return 1;
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.17g", *y);
    std::cout << buf << "\t" << s.form.tbDeviation.text << "\n";
    return 0;
}

}  // namespace

static Registrar calcCommand({"calc", "quillet-cli calc [--] MODELFILE X",
                              "Evaluates a math-model file at X as the Calculator tab does: "
                              "prints Y, a tab and the standard deviation.",
                              RunCalc});

}  // namespace quillet::cli
