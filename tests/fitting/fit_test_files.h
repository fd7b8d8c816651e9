#pragma once
// Response and data files for the solver's tests, written with the program's own writer, and
// one known curve per model.
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/catalogue.h"

namespace quillet::testing {

struct ResponseAnswers {
    std::array<std::string, 13> answers;  // questions 1..12 as typed; element 0 unused
    bool weighted = false;
    std::array<std::string, 6> solver;    // blank: question 22 is "N"
};

// Writes `folder`/`name` exactly as Save does.
void WriteResponse(const std::string& folder, const std::string& name, const ResponseAnswers& r);

// Two header lines, then "x<TAB>y" rows with 17 significant digits; CR LF line ends.
void WriteData(const std::string& path, const std::vector<double>& x, const std::vector<double>& y);

// A curve in normalised units with starting values a person might give. Parameters are laid
// out as the model lays them out: Y0 (if any), then the series questions.
struct ModelCase {
    int model;
    int terms;
    std::vector<double> truth;
    std::vector<double> start;
    double u0, u1;  // the points spread evenly over [u0, u1]
};

inline const std::vector<ModelCase>& ModelCases() {
    static const std::vector<ModelCase> cases = {
        {model::Lorentzian, 2, {0.1, 2.0, 1.5, 0.4, 0.6, -1.0, 1.2}, {0, 1.8, 1.7, 0.5, 0.5, -0.95, 1.25}, -3, 3},
        {model::ModifiedLorentzian, 2, {0.2, 2.0, 1.0, 0.5, 0.8, -1.0, 1.0, 0.5, -0.3},
         {0.1, 1.8, 1.2, 0.6, 0.7, -0.9, 1.1, 0.3, -0.1}, -3, 3},
        {model::Exponential, 2, {0.3, 2.0, 1.0, -3.0, -0.5}, {0.2, 1.5, 1.5, -4, -0.6}, 0, 5},
        {model::Power, 3, {0.5, 1.0, -2.0, 0.7}, {0, 1, 1, 1}, -1.5, 1.5},
        {model::Sine, 2, {0.2, 1.0, 0.5, 0.7, 2.1, 0.3, 1.0}, {0, 0.8, 0.7, 0.72, 2.05, 0.2, 1.2}, 0, 5},
        {model::SineExponential, 2, {0.1, 1.5, 0.8, 0.6, 1.7, 0.2, 0.9, -0.3, -0.1},
         {0, 1.2, 1.0, 0.62, 1.65, 0.3, 0.8, -0.2, -0.2}, 0, 6},
        {model::BellCurve, 2, {-1.0, 1.0, 1.5, 0.8, 0.5, 0.7}, {-0.9, 1.1, 1.2, 1.0, 0.6, 0.6}, -3, 3},
    };
    return cases;
}

inline const ModelCase& CaseOf(int model) {
    for (const auto& c : ModelCases())
        if (c.model == model) return c;
    throw std::logic_error("no case");
}

}  // namespace quillet::testing
