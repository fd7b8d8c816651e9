// quillet-cli eval: one formula through the expression class.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <utility>

#include "cli/commands.h"
#include "env/errors.h"
#include "expr/equation.h"

namespace quillet::cli {
namespace {

struct EvalCall {
    bool degrees = false;
    std::vector<std::pair<std::string, double>> vars;
    std::vector<std::string> formulas;
};

// NAME=VALUE with a finite number in "." notation.
bool ParseVar(const std::string& text, EvalCall& call) {
    auto eq = text.find('=');
    if (eq == std::string::npos || eq == 0) return false;
    const char* begin = text.data() + eq + 1;
    const char* end = text.data() + text.size();
    double value = 0;
    auto [stop, ec] = std::from_chars(begin, end, value);
    if (ec != std::errc() || stop != end || !std::isfinite(value)) return false;
    call.vars.emplace_back(text.substr(0, eq), value);
    return true;
}

// Returns an exit status of 2 with the usage when the call is wrong, else -1.
int ParseArgs(const std::vector<std::string>& args, EvalCall& call) {
    const Command& cmd = FindCommand("eval");
    bool options = true;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (options && a == "--") {
            options = false;
        } else if (options && a == "--degrees") {
            call.degrees = true;
        } else if (options && a == "--var") {
            if (i + 1 == args.size() || !ParseVar(args[i + 1], call))
                return UsageError(cmd, "--var expects NAME=VALUE with a number");
            ++i;
        } else if (options && a.rfind("--", 0) == 0) {
            return UsageError(cmd, "unknown option " + a);
        } else {
            call.formulas.push_back(a);  // "-x^2" is a formula, not an option
        }
    }
    if (call.formulas.size() != 1) return UsageError(cmd, "expects one FORMULA");
    return -1;
}

int RunEval(const std::vector<std::string>& args) {
    EvalCall call;
    if (int status = ParseArgs(args, call); status >= 0) return status;
    try {
        clsEquation eq;
        eq.Degrees(call.degrees);
        for (const auto& [name, value] : call.vars) eq.Var(name, value);
        eq.Equation(call.formulas[0]);
        char buf[40];
        std::snprintf(buf, sizeof buf, "%.17g", eq.Solution());
        std::cout << buf << "\n";
        return 0;
    } catch (const RuntimeError& e) {
        std::cerr << "error " << e.number() << " (" << e.source() << "): " << e.description() << "\n";
        return 1;
    }
}

}  // namespace

static Registrar evalCommand({"eval", "quillet-cli eval [--degrees] [--var NAME=VALUE]... [--] FORMULA",
                              "Evaluates a formula as the calculator's expression class does.", RunEval});

}  // namespace quillet::cli
