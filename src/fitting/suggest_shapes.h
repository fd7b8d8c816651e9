#pragma once
// The model-specific halves of Suggest: shape parameters guessed from the data in normalised
// units, points sorted by u.
#include <string>
#include <vector>

namespace quillet::fitting::suggest {

struct Samples {
    std::vector<double> u, v;  // sorted by u
};

struct Peak {
    double centre, height, fwhm;  // height above the baseline
};

// The `count` most prominent peaks (or dips, when the data hang down from a baseline), widest
// first in rank of prominence; fewer found than asked are added at the largest bumps left
// over, and `remarks` says so. `gaussian` shapes the bumps subtracted for those.
std::vector<Peak> FindPeaks(const Samples& s, int count, bool gaussian, std::vector<std::string>& remarks);

// Every k-th point, so that at most `most` remain.
Samples Thinned(const Samples& s, std::size_t most);

// `count` exponential rates (per unit of u) by the matrix pencil method on evenly resampled data.
std::vector<double> ExponentialRates(const Samples& s, int count, std::vector<std::string>& remarks);

// `count` frequencies (cycles per unit of u) from Lomb-Scargle periodograms, strongest first,
// each found after the sines before it are taken out.
std::vector<double> SineFrequencies(const Samples& s, int count);

// The exponential decay rate of each frequency's amplitude over windows of the record.
std::vector<double> DecayRates(const Samples& s, const std::vector<double>& frequencies);

}  // namespace quillet::fitting::suggest
