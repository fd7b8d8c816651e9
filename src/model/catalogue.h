#pragma once
// The model catalogue and the fixed wording of the questionnaire.
#include <array>
#include <string>
#include <vector>

namespace quillet {

inline constexpr const char* kProductName = "Quillet";
inline constexpr const char* kVersion = "6.711";
inline constexpr const char* kFileExt = ".Fit";
inline constexpr const char* kNewData = "New data";

namespace model {
inline constexpr int Select = 0;
inline constexpr int Lorentzian = 1;
inline constexpr int ModifiedLorentzian = 2;
inline constexpr int Exponential = 3;
inline constexpr int Power = 4;
inline constexpr int Sine = 5;
inline constexpr int SineExponential = 6;
inline constexpr int BellCurve = 7;
}  // namespace model

// "-Select-" and the seven models, in list order (list position = ModelID).
extern const std::array<const char*, 8> kModelNames;
// Captions of Question(1..8); element 0 unused.
extern const std::array<const char*, 9> kQuestionCaptions;
// The fourteen per-model wordings of questions 9 to 12 (QuestionLabels slots 0..13).
extern const std::array<const char*, 14> kQuestionLabelSlots;
extern const char* const kBanner;
extern const char* const kWeightCaption;      // question 19
extern const char* const kKeepNotesCaption;   // question 20
extern const char* const kSolverQuestion22;   // question 22
extern const char* const kBareQuestion10;     // "10. »"
extern const std::vector<std::string> kCombo10Entries;

// Default texts of the answer controls before any file is read.
struct FormDefaults {
    static constexpr const char* timeData = "Ex1.100";
    static constexpr const char* Amplitude = "1  1  1";
    static constexpr const char* PW50 = "5  5  5";
    static constexpr const char* PeakLocations = "-1  0  1";
    static constexpr const char* Amplitude2 = "1  1  1";
    static constexpr const char* Note1 = "Keep notes for future runs";
    static constexpr const char* Note2 = "Your notes go here";
};

// Which of the series questions 9..12 a model uses (and the response file carries).
bool ModelUsesQuestion(int modelId, int question);
// Highest series question used by a model (9..12); 0 for "-Select-" or an unknown model.
int LastSeriesQuestion(int modelId);

}  // namespace quillet
