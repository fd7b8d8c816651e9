#include "expr/functions.h"

#include <cmath>

#include "expr/checked_math.h"

namespace quillet::expr {

namespace {

double AngleIn(const FunctionCall& c) { return expr::AngleIn(c.x, c.degrees); }
double AngleOut(const FunctionCall& c, double radians) { return c.degrees ? Mul(radians, kD) : radians; }
double HalfPi() { return 2 * Atn(1); }
double ExpSum(double x) { return Add(Exp(x), Exp(-x)); }
double ExpDiff(double x) { return Sub(Exp(x), Exp(-x)); }
double Rnd(const FunctionCall& c) { return c.random.Next(); }
double RootOneMinusSquare(double x) { return Sqr(Add(Mul(-x, x), 1)); }  // Sqr(-x * x + 1)

double ArcSec(const FunctionCall& c) {
    double x = c.x;
    return AngleOut(c, Add(Atn(Div(x, Sqr(Sub(Mul(x, x), 1)))), Mul(Mul(Sgn(x) - 1, 2), Atn(1))));
}

double Tanh(const FunctionCall& c) { return Div(ExpDiff(c.x), ExpSum(c.x)); }

struct Entry {
    std::string_view opener;
    FunctionFn fn;
};

// In the order in which openers are tried.
constexpr Entry kFunctions[] = {
    {"abs(", [](const FunctionCall& c) { return std::fabs(c.x); }},
    {"atn(", [](const FunctionCall& c) { return ArcTangent(c.x, c.degrees); }},
    {"arctan(", [](const FunctionCall& c) { return ArcTangent(c.x, c.degrees); }},
    {"cos(", [](const FunctionCall& c) { return Cosine(c.x, c.degrees); }},
    {"exp(", [](const FunctionCall& c) { return Exp(c.x); }},
    {"fix(", [](const FunctionCall& c) { return std::trunc(c.x); }},
    {"int(", [](const FunctionCall& c) { return std::floor(c.x); }},
    {"log(", [](const FunctionCall& c) { return Log(c.x); }},
    {"rnd(", [](const FunctionCall& c) { return static_cast<double>(c.random.Rnd(c.x)); }},
    {"sgn(", [](const FunctionCall& c) { return Sgn(c.x); }},
    {"sin(", [](const FunctionCall& c) { return Sine(c.x, c.degrees); }},
    {"sqr(", [](const FunctionCall& c) { return Sqr(c.x); }},
    {"tan(", [](const FunctionCall& c) { return Tangent(c.x, c.degrees); }},
    {"min(", [](const FunctionCall& c) { return Smaller(c.x, c.y); }},
    {"max(", [](const FunctionCall& c) { return Larger(c.x, c.y); }},
    {"random(", [](const FunctionCall& c) { return Add(Mul(Rnd(c), Sub(c.y, c.x)), c.x); }},
    {"mod(", [](const FunctionCall& c) { return IntMod(c.x, c.y); }},
    {"logn(", [](const FunctionCall& c) { return Div(Log(c.x), Log(c.y)); }},
    {"rand(", [](const FunctionCall& c) { return std::floor(Mul(Rnd(c), c.x)); }},
    {"sec(", [](const FunctionCall& c) { return Div(1, std::cos(AngleIn(c))); }},
    {"cosec(", [](const FunctionCall& c) { return Div(1, std::sin(AngleIn(c))); }},
    {"cotan(", [](const FunctionCall& c) { return Div(1, Finite(std::tan(AngleIn(c)))); }},
    {"arcsin(", [](const FunctionCall& c) { return AngleOut(c, Atn(Div(c.x, RootOneMinusSquare(c.x)))); }},
    {"arccos(",
     [](const FunctionCall& c) { return AngleOut(c, Add(Atn(Div(-c.x, RootOneMinusSquare(c.x))), HalfPi())); }},
    {"arcsec(", ArcSec},
    {"arccosec(", ArcSec},  // the same formula as arcsec on purpose
    {"arccotan(",
     [](const FunctionCall& c) {
         return c.degrees ? Mul(kD, Add(Atn(Mul(c.x, kR)), HalfPi())) : Add(Atn(c.x), HalfPi());
     }},
    {"sinh(", [](const FunctionCall& c) { return Div(ExpDiff(c.x), 2); }},
    {"cosh(", Tanh},  // the same value as tanh on purpose
    {"tanh(", Tanh},
    {"sech(", [](const FunctionCall& c) { return Div(2, ExpSum(c.x)); }},
    {"cosech(", [](const FunctionCall& c) { return Div(2, ExpDiff(c.x)); }},
    {"cotanh(", [](const FunctionCall& c) { return Div(ExpSum(c.x), ExpDiff(c.x)); }},
    {"arcsinh(", [](const FunctionCall& c) { return Log(Add(c.x, Sqr(Add(Mul(c.x, c.x), 1)))); }},
    {"arccosh(", [](const FunctionCall& c) { return Log(Add(c.x, Sqr(Sub(Mul(c.x, c.x), 1)))); }},
    {"arctanh(", [](const FunctionCall& c) { return Div(Log(Div(Add(1, c.x), Sub(1, c.x))), 2); }},
    {"arcsech(", [](const FunctionCall& c) { return Log(Div(Add(RootOneMinusSquare(c.x), 1), c.x)); }},
    {"arccosech(",
     [](const FunctionCall& c) { return Log(Div(Add(Mul(Sgn(c.x), Sqr(Add(Mul(c.x, c.x), 1))), 1), c.x)); }},
    {"arccotanh(", [](const FunctionCall& c) { return Div(Log(Div(Add(c.x, 1), Sub(c.x, 1))), 2); }},
    {"log10(", [](const FunctionCall& c) { return Div(Log(c.x), Log(10)); }},
    {"log2(", [](const FunctionCall& c) { return Div(Log(c.x), Log(2)); }},
    {"ln(", [](const FunctionCall& c) { return Log(c.x); }},
    {"deg(", [](const FunctionCall& c) { return Mul(c.x, kD); }},
    {"rad(", [](const FunctionCall& c) { return Mul(c.x, kR); }},
};

}  // namespace

FunctionFn FindFunction(std::string_view opener) {
    for (const auto& f : kFunctions)
        if (f.opener == opener) return f.fn;
    return nullptr;
}

bool DrawsRandomNumbers(std::string_view opener) {
    return opener == "rnd(" || opener == "random(" || opener == "rand(";
}

bool FindConstant(std::string_view name, double& value) {
    if (name == "pi") value = 3.14159265358979;
    else if (name == "w") value = 6.28318530717958;
    else if (name == "e") value = 2.718281828;
    else return false;
    return true;
}

}  // namespace quillet::expr
