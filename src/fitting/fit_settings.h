#pragma once
// What a response file asks of the solver, as numbers.
#include <array>
#include <string>
#include <vector>

#include "model/response_record.h"

namespace quillet::fitting {

struct FitSettings {
    std::string responseFolder;
    std::string responseName;  // "Ex1.Fit"
    std::string title;         // ResponseTitle
    std::string dataFile;      // bare name, looked for beside the response file
    int modelId = 0;
    int firstLine = 1;  // question 3, 1-based
    int points = 0;     // question 4
    int terms = 0;      // question 5
    double xnorm = 1;           // questions 6 and 7
    double ynorm = 1;
    double y0 = 0;      // question 8 (normalised); 0 for models without an offset
    // Starting values of the series questions the model uses, in question order.
    std::vector<std::vector<double>> series;
    bool weighted = false;
    std::array<std::string, 6> solverValues;  // as typed; blank means the engine's default
    std::string note1;
    std::string note2;
    ResponseRecord record;  // the answers as read
};

// The answers that say which points to read and how to fit them: data file, model, first
// line, points, terms, weighting; Xnorm and Ynorm when given (0 when blank). Raises
// FitInputError saying what is wrong.
FitSettings ReadDataSettings(const std::string& folder, const std::string& name);
// The same from answers already read (or on the form).
FitSettings DataSettingsOf(const ResponseRecord& record);

// Reads the response file `folder`/`name` with the program's own reader and checks its
// answers; raises FitInputError saying what is wrong.
FitSettings ReadFitSettings(const std::string& folder, const std::string& name);
// The same checks on answers already read (or on the form).
FitSettings FitSettingsOf(const ResponseRecord& record);

}  // namespace quillet::fitting
