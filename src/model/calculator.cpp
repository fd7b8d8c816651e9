#include "model/calculator.h"

#include <cstdio>

#include "env/errors.h"
#include "env/paths.h"
#include "env/text.h"
#include "expr/equation.h"
#include "model/catalogue.h"
#include "model/form_events.h"
#include "model/response_file.h"

namespace quillet {

namespace {

struct ModelFile {
    std::string deviation;
    std::string formula;  // the lines after the first, each trimmed, joined without separators
};

// The standard deviation follows the first "=" of the first line (up to a second "=").
std::string DeviationText(const std::string& firstLine) {
    auto eq = firstLine.find('=');
    if (eq == std::string::npos) return {};
    return Trim(firstLine.substr(eq + 1, firstLine.find('=', eq + 1) - eq - 1));
}

ModelFile ReadModelFile(LineReader& in) {
    ModelFile m;
    m.deviation = DeviationText(ReadValueLine(in));
    for (std::string line = ReadValueLine(in); line != "-EOF-"; line = ReadValueLine(in))
        m.formula += Trim(line);
    return m;
}

// The X as the parser reads it: "1E-3" becomes "1>-3", a decimal exponent.
std::string XText(const std::string& typed) { return LCase(ReplaceNoCase(typed, "e", ">")); }

// The formula without its left side, rewritten for the expression class. "exp" takes a
// detour through "zzz" so that neither its "e" nor its "x" is replaced.
std::string PrepareFormula(const std::string& joined, const std::string& x) {
    std::string f = Trim(MidChars(joined, 3));
    const std::string rewrites[][2] = {
        {"_", ""},   {" ", ""},   {"[", "("},   {"]", ")"},   {"exp", "zzz"}, {"e+", ">"},
        {"e-", "<"}, {"x", x},    {"zzz", "exp"}, {"(+", "("}, {"(-", "(0-"},
    };
    for (const auto& [from, to] : rewrites) f = ReplaceNoCase(f, from, to);
    return f;
}

// The number as the result box shows it: 15 significant digits, "." and "E" notation.
std::string ResultText(double y) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.15G", y == 0 ? 0.0 : y);  // never "-0"
    return buf;
}

}  // namespace

bool ModelCurve(const std::string& path, std::span<const double> xs, std::vector<double>& ys) {
    LineReader in = LineReader::Open(path);
    if (!in.isOpen()) return false;
    const ModelFile model = ReadModelFile(in);
    try {
        clsEquation eq;
        eq.Equation(PrepareFormula(model.formula, "x"));
        ys.assign(xs.size(), 0.0);
        eq.Solutions(eq.Slot("x"), xs, ys);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

bool ValidmodelX(const std::string& text) {
    // An empty text passes the character test but leaves nothing to evaluate.
    return !text.empty() && text.find_first_not_of("0123456789+-.><") == std::string::npos;
}

std::optional<double> cmdCalculate_Click(AppState& s) {
    auto& f = s.form;
    const std::string path = JoinPath(f.calcFolder, f.calcSelectedFile);
    LineReader in;
    if (!f.calcSelectedFile.empty() && FileExists(s.env, path)) in = LineReader::Open(path);
    if (!in.isOpen()) {
        s.env.dialogs->MsgBox("An error has occurred.  Please select an existing .EQU file.", mb::Exclamation,
                              "Equation File not selected -or- missing.");
        return std::nullopt;
    }
    const ModelFile model = ReadModelFile(in);

    const std::string x = XText(f.tbXvalue.text);
    if (!ValidmodelX(x)) {
        s.env.dialogs->MsgBox("Unable to evaluate your requested 'X' value:" + f.tbXvalue.text,
                              mb::Exclamation, kProductName);
        f.focus = Ctl::tbXvalue;
        return std::nullopt;
    }
    SetText(s, f.tbDeviation, model.deviation);

    try {
        clsEquation eq;
        eq.Equation(PrepareFormula(model.formula, x));
        const double y = eq.Solution();
        SetText(s, f.tbYanswer, ResultText(y));
        return y;
    } catch (const RuntimeError& e) {
        // The person sees the class's own text, under the program's name.
        s.env.dialogs->MsgBox(e.description(), mb::Exclamation, kProductName);
        return std::nullopt;
    }
}

}  // namespace quillet
