#pragma once
// The bench's formulas, each spelled for the expression class and for muparser. The two
// spellings differ only in function names; the math is the same.
#include <charconv>
#include <string>
#include <vector>

namespace quillet::bench {

struct BenchFormula {
    std::string name;
    std::string quillet;
    std::string muparser;
    double x;  // around where the formula is evaluated
};

// A number as the solver writes it (shortest round trip); a negative one as "(0-...)", as
// the calculator rewrites the solver's "(-...)".
inline std::string Written(double v) {
    char buf[40];
    auto [end, ec] = std::to_chars(buf, buf + sizeof buf, v < 0 ? -v : v);
    const std::string digits(buf, end);
    return v < 0 ? "(0-" + digits + ")" : digits;
}

// An offset and `terms` Lorentzian peaks as the solver's math-model file holds them.
inline std::string LorentzianSeries(int terms) {
    std::string f = Written(14.522927582752976);
    for (int i = 1; i <= terms; ++i) {
        const double area = (i % 3 == 0 ? -1 : 1) * (251.15126062279757 - 7.318913 * i);
        const double centre = 4.992206816501815 * i + 0.1234567891 * i;
        const double width = (i % 4 == 0 ? -1 : 1) * (1.1643436677277488 + 0.0613 * i);
        f += "+" + Written(area) + "/(1+(2*((x)-" + Written(centre) + ")/" + Written(width) + ")^2)";
    }
    return f;
}

inline std::vector<BenchFormula> Formulas() {
    const std::string exponential =
        "0.51234567890123+12.345678901234567*exp((0-0.123456789012345)*(x))"
        "+7.654321098765432*exp((0-1.2345678901234567)*(x))+3.141592653589793*exp((0-0.012345678901234)*(x))";
    const std::string lorentzian3 = LorentzianSeries(3);
    const std::string lorentzian20 = LorentzianSeries(20);
    const std::string lorentzian60 = LorentzianSeries(60);
    return {
        {"lorentzian3", lorentzian3, lorentzian3, 9.5},
        {"exponential3", exponential, exponential, 2.5},
        {"poly", "3*x^2-sin(x)/2", "3*x^2-sin(x)/2", 0.7},
        {"lorentzian20", lorentzian20, lorentzian20, 40},
        {"functions12",
         "sin(x)+cos(x)*tan(x/3)-atn(x)+exp(-x)*log(x+2)+sqr(abs(x)+1)-sgn(x)*sinh(x/2)+log10(x+3)*max(x,1)",
         "sin(x)+cos(x)*tan(x/3)-atan(x)+exp(-x)*ln(x+2)+sqrt(abs(x)+1)-sign(x)*sinh(x/2)+log10(x+3)*max(x,1)",
         0.7},
        // Several thousand characters: the size for which parsing plus solving must stay quick.
        {"lorentzian60", lorentzian60, lorentzian60, 40},
    };
}

}  // namespace quillet::bench
