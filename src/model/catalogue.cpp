#include "model/catalogue.h"

namespace quillet {

const std::array<const char*, 8> kModelNames = {
    "-Select-", "Lorentzian", "Modified Lorentzian", "Exponential",
    "Power",    "Sine",       "Sine * Exponential",  "Bell Curve"};

const std::array<const char*, 9> kQuestionCaptions = {
    "",
    "1. »  Filename that contains your XY data to be fitted? ",
    "2. »  Model name: Lorentzian, Mod. Lorentzian, Exponential, Power, etc.?",
    "3. »  Line number of XY data file where to start reading data.",
    "4. »  Number of points to use in curve fit?",
    "5. »  Number of terms to use in chosen series?",
    "6. »  X-axis normalization factor?",
    "7. »  Y-axis normalization factor?",
    "8. »  Y-axis offset ... Y0 / Ynorm ... 1 value?"};

const std::array<const char*, 14> kQuestionLabelSlots = {
    "9. »  Lorentz amplitude(s) ... A(i) / Ynorm ...starting value?",
    "10. »  Pulse Width @ 50% Peak amplitude(s) ... PW50(i) / Xnorm ...starting value(s)?",
    "11. »  Peak locations or offset ... t0(i) / Xnorm ...starting value(s)?",
    "12. »  Amplitude(s) ... B(i) / Ynorm ...starting value(s)?",
    "9. »  Exponential amplitude(s) ... A(i) / Ynorm ...starting value(s)?",
    "10. »  Exponential power(s) ... B(i) * Xnorm ...starting value(s)?",
    "9. »  Power amplitude(s)...A(i) / Ynorm * Xnorm^i ...starting value(s)?",
    "9. »  Sine amplitude(s) ... A(i) / Ynorm ...starting value(s)?",
    "10. »  Sine frequencies ... B(i) * Xnorm ...starting value(s)?",
    "11. »  Sine offset (Theta) ... C(i) ...starting value(s)?",
    "12. »  Exponential weight ... D(i) ...starting value(s)?",
    "9. »  Bell Curve T0(s) ... T0(i) / Xnorm ...starting value(s)?",
    "10. »  Bell Curve amplitude(s) ... A(i) ...starting value(s)?",
    "11. »  Bell Curve Standard Deviation(s) ... B(i) * Xnorm ...starting value(s)?"};

const char* const kBanner = " === Below here, values must be normalized by X or Y-axis Norm value! === ";
const char* const kWeightCaption = "19. » Add weight for points near x-axis (ie. y ~ 0)";
const char* const kKeepNotesCaption = "20. » Keep notes below ...";
const char* const kSolverQuestion22 = "22. » Want to change solver variables?";
const char* const kBareQuestion10 = "10. »";

const std::vector<std::string> kCombo10Entries = {
    "Sine frequencies ... B(i) * Xnorm ...starting value(s)?",
    "",
    "Sine curves require good initial frequency estimates in order to converge.",
    "Try finding good frequencies by using a Spectral Estimation program such as ",
    "Orlinda (see the Web Links menu)",
    "Orlinda finds and lists each peak spectrum and its frequency at the",
    "end of the 'Output' page.  Enter these frequencies with some amplitudes;",
    " e.g. multiples of ten ... 100 or 1000.",
    "",
    "Frequency searches are bounded between 0 and 130% of initial frequency ",
    "values. So if just quessing on initial frequency values shoot high!",
    "",
    "Sinusiodal curve fitting may require several runs to converge on a good ",
    "fit."};

int LastSeriesQuestion(int modelId) {
    switch (modelId) {
        case model::Lorentzian:
        case model::Sine:
        case model::BellCurve: return 11;
        case model::ModifiedLorentzian:
        case model::SineExponential: return 12;
        case model::Exponential: return 10;
        case model::Power: return 9;
        default: return 0;
    }
}

bool ModelUsesQuestion(int modelId, int question) {
    if (question <= 7) return true;
    if (question == 8) return modelId != model::BellCurve;
    return question <= LastSeriesQuestion(modelId);
}

}  // namespace quillet
