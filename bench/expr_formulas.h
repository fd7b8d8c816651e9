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

// An offset and `terms` modified Lorentzian peaks, whose scaled distance from the centre the
// solver writes twice per term.
inline std::string ModifiedLorentzianSeries(int terms) {
    std::string f = Written(2.0625);
    for (int i = 1; i <= terms; ++i) {
        const std::string s = "(2*((x)-" + Written(3.75 * i + 0.5) + ")/" + Written(0.8 + 0.15 * i) + ")";
        f += "+(" + Written(60.5 - 4.25 * i) + "+" + Written(3.5 + 1.25 * i) + "*" + s + ")/(1+" + s + "^2)";
    }
    return f;
}

// A phase as the solver adds it: "+v" or "-|v|".
inline std::string Added(double v) { return v < 0 ? "-" + Written(-v) : "+" + Written(v); }

// An offset and `terms` damped sine waves, as the solver writes them and the calculator reads
// them: the amplitude, 2 pi times the frequency, the phase and the decay rate per term.
inline std::string SineExponentialSeries(int terms) {
    std::string f = Written(-0.73125);
    for (int i = 1; i <= terms; ++i) {
        const double amplitude = (i % 2 ? 1 : -1) * (4.218 + 0.77 * i);
        const double angular = 6.283185307179586 * (0.1875 + 0.2113 * i);
        const double phase = (i % 3 ? -1 : 1) * (0.4036 * i);
        const double decay = -(0.0317 + 0.0221 * i);
        f += "+" + Written(amplitude) + "*sin(" + Written(angular) + "*(x)" + Added(phase) + ")*exp(" +
             Written(decay) + "*(x))";
    }
    return f;
}

// `terms` bell curves: the solver's "exp(-(...)^2/2)" reaches the expression class as
// "exp(0-(...)^2/2)", since the calculator rewrites "(-" to "(0-".
inline std::string BellCurveSeries(int terms) {
    std::string f;
    for (int i = 1; i <= terms; ++i) {
        const double height = 38.5 + 11.25 * i;
        const double centre = 2.5 * i + 0.31;
        const double width = (i % 2 ? 1 : -1) * (0.42 + 0.135 * i);
        f += (i > 1 ? "+" : "") + Written(height) + "*exp(0-(((x)-" + Written(centre) + ")/" + Written(width) +
             ")^2/2)";
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
    const std::string sineExponential5 = SineExponentialSeries(5);
    const std::string bellCurve4 = BellCurveSeries(4);
    const std::string modifiedLorentzian3 = ModifiedLorentzianSeries(3);
    return {
        {"lorentzian3", lorentzian3, lorentzian3, 9.5},
        {"exponential3", exponential, exponential, 2.5},
        {"poly", "3*x^2-sin(x)/2", "3*x^2-sin(x)/2", 0.7},
        {"lorentzian20", lorentzian20, lorentzian20, 40},
        {"functions12",
         "sin(x)+cos(x)*tan(x/3)-atn(x)+exp(-x)*log(x+2)+sqr(abs(x)+1)-sgn(x)*sinh(x/2)+log10(x+3)*max(x,1)",
         "sin(x)+cos(x)*tan(x/3)-atan(x)+exp(-x)*ln(x+2)+sqrt(abs(x)+1)-sign(x)*sinh(x/2)+log10(x+3)*max(x,1)",
         0.7},
        {"sinexp5", sineExponential5, sineExponential5, 3.2},
        {"bell4", bellCurve4, bellCurve4, 6.1},
        {"modlorentz3", modifiedLorentzian3, modifiedLorentzian3, 7.4},
        {"nested4", "sqr(abs(log(x)))+atn(sqr(x)*log(x+1))-abs(atn(x-1))*log(sqr(abs(x)+2))",
         "sqrt(abs(ln(x)))+atan(sqrt(x)*ln(x+1))-abs(atan(x-1))*ln(sqrt(abs(x)+2))", 1.9},
        // Several thousand characters: the size for which parsing plus solving must stay quick.
        {"lorentzian60", lorentzian60, lorentzian60, 40},
    };
}

}  // namespace quillet::bench
