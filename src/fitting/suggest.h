#pragma once
// Starting values from the data: answers 6 to 12 proposed for any model and number of terms,
// so that a person need not guess peaks, rates or frequencies blind.
#include <map>
#include <string>
#include <vector>

#include "fitting/data_file.h"
#include "fitting/models.h"

namespace quillet::fitting {

struct Suggestion {
    std::map<int, std::string> answers;  // question number (6..12) -> answer as the form writes it
    std::vector<std::string> remarks;    // what a person should know about the proposal
};

// Proposes starting values for `terms` terms of model `modelId` (1..7) from the points of
// `data`. `xnorm` and `ynorm` are questions 6 and 7, 0 when blank: then a power of ten near
// the largest |x| and |y| is proposed too. The shapes (widths, centres, rates, frequencies,
// decays) come from the data; offset and amplitudes are then the best for those shapes.
Suggestion SuggestStart(const DataPoints& data, int modelId, int terms, double xnorm, double ynorm, bool weighted);

// A power of ten near the largest |value|: the normalisation proposed for a blank answer.
double NormalisationFor(const std::vector<double>& values);

// The same proposal as normalised parameters laid out as `model` lays them out.
std::vector<double> SuggestedParameters(const DataPoints& data, const Model& model, double xnorm, double ynorm,
                                        bool weighted, std::vector<std::string>& remarks);

// Question 6 or 7 proposed for the X or Y values of the data: a power of ten near the largest
// magnitude, so that the normalised values are of order 1.
std::string ProposedScale(const std::vector<double>& values);

}  // namespace quillet::fitting
