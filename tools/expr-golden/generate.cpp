// Writes the expression class's results over generated formulas, one case a line, for the
// differential test to hold every later version of the evaluator to. Run from the top folder:
//   tools/expr-golden/generate.sh
// Line: degrees, formula, then three solves on one object, each as X and the result's bits
// in hex or "!number:source:description"; the third solve also defines q and flips Degrees;
// last the hash of the outcomes at the sweep's X values.
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

#include "expr/equation.h"
#include "golden_format.h"

namespace {

std::mt19937 rng(20240611);  // the raw output of mt19937 is the same everywhere

std::size_t Pick(std::size_t n) { return rng() % n; }
bool Chance(int percent) { return static_cast<int>(Pick(100)) < percent; }
template <std::size_t N>
const char* OneOf(const char* const (&items)[N]) { return items[Pick(N)]; }

const char* const kNames[] = {"x", "x", "x", "y", "q", "x2", "pi", "w", "e", "rnd", "xy", "X"};
const char* const kNumbers[] = {"2", "3", "0", "1", "0.5", "2.5", "10", ".5", "7.", "1.25", "100", "0.001"};
const char* const kOdd[] = {".", "1.2.3", "3000000000", "2147483647.5", "0.0000000000000000001"};
const char* const kOperators[] = {"+", "-", "*", "/", "^", "+", "-", "*", "/", "\\", "%", ">", "<", " mod "};
const char* const kFunctions[] = {
    "abs",   "atn",    "arctan", "cos",    "exp",      "fix",      "int",    "log",     "rnd",     "sgn",
    "sin",   "sqr",    "tan",    "min",    "max",      "random",   "mod",    "logn",    "rand",    "sec",
    "cosec", "cotan",  "arcsin", "arccos", "arcsec",   "arccosec", "arccotan", "sinh",  "cosh",    "tanh",
    "sech",  "cosech", "cotanh", "arcsinh", "arccosh", "arctanh",  "arcsech", "arccosech", "arccotanh",
    "log10", "log2",   "ln",     "deg",    "rad",      "foo",      "Sin"};
const char* const kSoup[] = {"x", "2", "(", ")", ",", "+", "-", "*", "/", "^", "sin(", "max(", "~", " ", "e", "."};

std::string Expr(int depth);

std::string Atom() {
    if (Chance(3)) return OneOf(kOdd);
    if (Chance(10)) {  // implied product
        const char* name = OneOf(kNames);
        return std::string(OneOf(kNumbers)) + name;
    }
    return Chance(50) ? OneOf(kNumbers) : OneOf(kNames);
}

std::string Call(int depth) {
    std::string s = std::string(OneOf(kFunctions)) + "(";
    const std::size_t args = Chance(8) ? 0 : 1 + Pick(3);
    for (std::size_t i = 0; i < args; ++i) s += (i ? "," : "") + Expr(depth - 1);
    return s + ")";
}

// Each draw is its own statement: the order of the operands of "+" is not fixed.
std::string Expr(int depth) {
    if (depth <= 0 || Chance(25)) return Atom();
    switch (Pick(6)) {
        case 0: return "-" + Expr(depth - 1);
        case 1: {
            std::string open = Chance(15) ? "2(" : "(";
            return open + Expr(depth - 1) + ")";
        }
        case 2: return Call(depth);
        default: {
            std::string left = Expr(depth - 1);
            left += OneOf(kOperators);
            return left + Expr(depth - 1);
        }
    }
}

// A series as the solver writes it: negative factors in "(0-...)", X as "(x)".
std::string Series() {
    auto number = [](bool sign) {
        char buf[40];
        const int exponent = -static_cast<int>(20 + Pick(16));
        const double v = std::ldexp(static_cast<double>(rng()), exponent);
        std::snprintf(buf, sizeof buf, sign && Chance(40) ? "(0-%.17g)" : "%.17g", v);
        return std::string(buf);
    };
    std::string s = number(true);
    const std::size_t terms = 1 + Pick(20);
    for (std::size_t i = 0; i < terms; ++i) {
        const bool peak = Chance(50);
        s += "+" + number(true);
        if (peak) {
            s += "/(1+(2*((x)-" + number(false);
            s += ")/" + number(true) + ")^2)";
        } else {
            s += "*exp(" + number(true) + "*(x))";
        }
    }
    return s;
}

// One operation or function on X, so that its last bit reaches the result.
std::string Simple() {
    static const char* const kOps[] = {"^", "^", "*", "/", "-", "+", ">", "<", "\\", "%"};
    static const char* const kRight[] = {"2", "2", "3", "0.5", "10", "y"};
    if (Chance(30)) return std::string(OneOf(kFunctions)) + "(x)";
    std::string s = "x";
    s += OneOf(kOps);
    return s + OneOf(kRight);
}

std::string Soup() {
    std::string s;
    for (std::size_t n = 1 + Pick(12); n > 0; --n) s += OneOf(kSoup);
    return s;
}

// Deletes, doubles or inserts a character, or adds a blank.
std::string Mutate(std::string s) {
    if (s.empty()) return s;
    const std::size_t at = Pick(s.size());
    switch (Pick(4)) {
        case 0: s.erase(at, 1); break;
        case 1: s.insert(at, 1, s[at]); break;
        case 2: s.insert(at, 1, "()+-*/,^.x2"[Pick(11)]); break;
        default: s.insert(at, 1, ' ');
    }
    return s;
}

std::string Formula() {
    const int kind = static_cast<int>(Pick(100));
    std::string f = kind < 10   ? Series()
                    : kind < 20 ? Soup()
                    : kind < 35 ? Simple()
                                : Expr(1 + static_cast<int>(Pick(5)));
    if (Chance(20)) f = Mutate(f);
    return f;
}

// Mostly full-precision values, so that a square or a product rounds as it does in general.
double XValue() {
    static const double kValues[] = {0, 1, -1, 0.5, -2.5, 3, 90, 1e-3, 123.456, -1e6, 1e300, -0.0};
    if (Chance(30)) return kValues[Pick(std::size(kValues))];
    const std::uint64_t high = rng();
    const double mantissa = static_cast<double>((high << 21) ^ rng());
    const double sign = Chance(50) ? -1 : 1;
    return sign * std::ldexp(mantissa, -static_cast<int>(50 + Pick(8)));
}

std::string Shortest(double v) {
    char buf[40];
    auto [end, ec] = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, end);
}

}  // namespace

int main(int argc, char** argv) {
    const int cases = argc > 1 ? std::atoi(argv[1]) : 3000;
    for (int i = 0; i < cases; ++i) {
        const bool degrees = Chance(30);
        const std::string formula = Formula();
        quillet::clsEquation eq;
        eq.Degrees(degrees);
        eq.Var("y", 2.5);
        eq.Var("x2", 5);
        std::string line = (degrees ? "1\t" : "0\t") + formula;
        for (int solve = 0; solve < 3; ++solve) {
            const double x = XValue();
            if (solve == 2) {
                eq.Var("q", -0.75);
                eq.Degrees(!degrees);
            }
            eq.Var("x", x);
            if (solve == 0) eq.Equation(formula);
            line += "\t" + Shortest(x) + "\t" + quillet::golden::Outcome([&] { return eq.Solution(); });
        }
        std::uint64_t hash = quillet::golden::kHashStart;
        for (double x : quillet::golden::kSweepX) {
            eq.Var("x", x);
            quillet::golden::Hash(hash, quillet::golden::Outcome([&] { return eq.Solution(); }));
        }
        std::printf("%s\t%016llx\n", line.c_str(), static_cast<unsigned long long>(hash));
    }
}
