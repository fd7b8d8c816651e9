#include "fitting/equ_writer.h"

#include "env/text.h"
#include "fitting/model_formula.h"
#include "fitting/number_text.h"

namespace quillet::fitting {

namespace {

// Cuts a line that is too long where the next line does not begin with "-" or a blank.
void CutLong(std::string line, std::size_t width, std::vector<std::string>& out) {
    while (line.size() > width) {
        std::size_t cut = width;
        while (cut > 1 && (line[cut] == '-' || line[cut] == ' ')) --cut;
        out.push_back(line.substr(0, cut));
        line.erase(0, cut);
    }
    out.push_back(line);
}

}  // namespace

std::string EquFileName(const std::string& responseName) {
    if (EndsWith(LCase(responseName), ".fit")) return responseName.substr(0, responseName.size() - 4) + ".equ";
    return responseName + ".equ";
}

std::vector<std::string> FormulaLines(const std::vector<std::string>& terms, std::size_t width) {
    std::vector<std::string> lines;
    std::string current = "y = ";
    for (std::size_t i = 0; i < terms.size(); ++i) {
        std::string piece = (i == 0 ? "" : " + ") + terms[i];
        if (i > 0 && current.size() + piece.size() > width) {
            CutLong(current, width, lines);
            current = "+ " + terms[i];
        } else {
            current += piece;
        }
    }
    CutLong(current, width, lines);
    return lines;
}

std::string EquText(const CompletedFit& fit) {
    // The calculator takes the text after the first "=" as the deviation.
    std::string title = ReplaceAll(ReplaceAll(fit.settings.title, "=", "-"), "!", ".");
    std::string text = title + ": " + fit.model.description() + "; standard deviation = " +
                       FormatNumber(fit.stddev) + kCrLf;
    for (const auto& line : FormulaLines(FormulaTerms(fit))) text += line + kCrLf;
    return text;
}

}  // namespace quillet::fitting
