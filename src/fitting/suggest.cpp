#include "fitting/suggest.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "fitting/fit_engine.h"
#include "fitting/models.h"
#include "fitting/number_text.h"
#include "fitting/suggest_shapes.h"
#include "fitting/weights.h"
#include "model/catalogue.h"

namespace quillet::fitting {

namespace {

// Full width at half height of a Gaussian in standard deviations: 2 sqrt(2 ln 2).
constexpr double kFwhmPerSigma = 2.3548200450309493;

suggest::Samples Normalised(const DataPoints& d, double xnorm, double ynorm) {
    std::vector<std::size_t> order(d.x.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return d.x[a] < d.x[b]; });
    suggest::Samples s;
    s.u.reserve(order.size());
    s.v.reserve(order.size());
    for (std::size_t i : order) {
        s.u.push_back(d.x[i] / xnorm);
        s.v.push_back(d.y[i] / ynorm);
    }
    return s;
}

// Answers as a person types them: short numbers, two blanks apart.
std::string Joined(const std::vector<double>& values) {
    std::string text;
    for (double v : values) text += (text.empty() ? "" : "  ") + FormatShort(v, 5);
    return text;
}

// The sum of squares left by the best offset and amplitudes for exponential `rates`.
double RssForRates(const suggest::Samples& s, const std::vector<double>& rates) {
    const Model m(*FindModelKind(model::Exponential), static_cast<int>(rates.size()));
    FitProblem fp;
    fp.model = &m;
    fp.u = s.u;
    fp.v = s.v;
    fp.start.assign(static_cast<std::size_t>(m.parameterCount()), 0.0);
    for (std::size_t i = 0; i < rates.size(); ++i)
        fp.start[static_cast<std::size_t>(m.index(1, static_cast<int>(i) + 1))] = rates[i];
    const std::vector<double> p = BestLinearFor(fp);
    if (p.empty()) return HUGE_VAL;
    double rss = 0;
    for (std::size_t j = 0; j < s.u.size(); ++j) {
        const double d = m.Value(p.data(), s.u[j], nullptr) - s.v[j];
        rss += d * d;
    }
    return std::isfinite(rss) ? rss : HUGE_VAL;
}

// Rates picked one by one from a ladder of decays (0.3 to 300 e-folds over the record) and
// growths, each the one that leaves the least sum of squares with those before it, then each
// picked again with the others held: noise cannot invent a rate the data do not carry.
std::vector<double> LadderRates(const suggest::Samples& s, int count) {
    const double span = s.u.back() - s.u.front();
    std::vector<double> ladder;
    for (int k = 0; k < 48; ++k) ladder.push_back(-0.3 * std::pow(1000.0, k / 47.0) / span);
    for (int k = 0; k < 8; ++k) ladder.push_back(0.3 * std::pow(20.0, k / 7.0) / span);
    std::vector<double> rates;
    auto pick = [&](std::size_t slot) {
        double least = HUGE_VAL;
        std::vector<double> trial = rates;
        for (double r : ladder) {
            if (std::find(rates.begin(), rates.end(), r) != rates.end()) continue;
            trial[slot] = r;
            if (const double rss = RssForRates(s, trial); rss < least) least = rss, rates[slot] = r;
        }
    };
    for (int k = 0; k < count; ++k) {
        rates.push_back(0);
        pick(rates.size() - 1);
    }
    for (std::size_t k = 0; k + 1 < rates.size(); ++k) pick(k);
    std::sort(rates.begin(), rates.end());
    return rates;
}

// The rates of the matrix pencil or of the ladder, whichever leaves less of the data unexplained.
std::vector<double> ExponentialShapes(const suggest::Samples& s, int count, std::vector<std::string>& remarks) {
    if (!(s.u.back() > s.u.front())) return suggest::ExponentialRates(s, count, remarks);
    const suggest::Samples few = suggest::Thinned(s, 400);
    std::vector<std::string> pencilRemarks;
    const std::vector<double> pencil = suggest::ExponentialRates(s, count, pencilRemarks);
    const std::vector<double> ladder = LadderRates(few, count);
    if (RssForRates(few, ladder) < RssForRates(few, pencil)) return ladder;
    remarks.insert(remarks.end(), pencilRemarks.begin(), pencilRemarks.end());
    return pencil;
}

// The shape parameters of every term guessed from the data, in a full parameter vector.
std::vector<double> GuessedShapes(const Model& model, const suggest::Samples& s, std::vector<std::string>& remarks) {
    std::vector<double> p(static_cast<std::size_t>(model.parameterCount()), 0.0);
    const int n = model.terms();
    auto set = [&](int group, const std::vector<double>& values) {
        for (int i = 1; i <= n; ++i)
            p[static_cast<std::size_t>(model.index(group, i))] = values[static_cast<std::size_t>(i - 1)];
    };
    auto peaks = [&](bool gaussian) {
        std::vector<suggest::Peak> found = suggest::FindPeaks(s, n, gaussian, remarks);
        std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.centre < b.centre; });
        std::vector<double> centres, heights, widths;
        for (const auto& k : found) {
            centres.push_back(k.centre);
            heights.push_back(k.height);
            widths.push_back(gaussian ? k.fwhm / kFwhmPerSigma : k.fwhm);
        }
        return std::array<std::vector<double>, 3>{centres, heights, widths};
    };
    switch (model.kind().id) {
        case model::Lorentzian:
        case model::ModifiedLorentzian: {
            const auto [centres, heights, widths] = peaks(false);
            set(0, heights);
            set(1, widths);
            set(2, centres);
            break;
        }
        case model::BellCurve: {
            const auto [centres, heights, widths] = peaks(true);
            set(0, centres);
            set(1, heights);
            set(2, widths);
            break;
        }
        case model::Exponential:
            set(1, ExponentialShapes(s, n, remarks));
            break;
        case model::Sine:
            set(1, suggest::SineFrequencies(s, n));
            break;
        case model::SineExponential: {
            const std::vector<double> frequencies = suggest::SineFrequencies(s, n);
            set(1, frequencies);
            set(3, suggest::DecayRates(s, frequencies));
            break;
        }
        default:
            break;  // the power series has no shapes
    }
    return p;
}

}  // namespace

double NormalisationFor(const std::vector<double>& values) {
    double largest = 0;
    for (double v : values) largest = std::max(largest, std::fabs(v));
    return largest > 0 ? std::pow(10.0, std::round(std::log10(largest))) : 1;
}

std::string ProposedScale(const std::vector<double>& values) {
    return FormatShort(NormalisationFor(values), 5);
}

std::vector<double> SuggestedParameters(const DataPoints& data, const Model& model, double xnorm, double ynorm,
                                        bool weighted, std::vector<std::string>& remarks) {
    const suggest::Samples s = Normalised(data, xnorm, ynorm);
    FitProblem fp;
    fp.model = &model;
    fp.u = s.u;
    fp.v = s.v;
    fp.weights = ResidualWeights(fp.v, weighted);
    fp.start = GuessedShapes(model, s, remarks);
    std::vector<double> p = BestLinearFor(fp);
    if (p.empty()) {
        p = fp.start;
        remarks.push_back("the offset and amplitudes could not be solved for at the proposed shapes");
    }
    // The dispersive part of a modified Lorentzian starts from a plain peak.
    if (model.kind().id == model::ModifiedLorentzian)
        for (int i = 1; i <= model.terms(); ++i) p[static_cast<std::size_t>(model.index(3, i))] = 0;
    return p;
}

Suggestion SuggestStart(const DataPoints& data, int modelId, int terms, double xnorm, double ynorm, bool weighted) {
    Suggestion out;
    if (xnorm == 0) {
        xnorm = NormalisationFor(data.x);
        out.answers[6] = FormatShort(xnorm, 5);
    }
    if (ynorm == 0) {
        ynorm = NormalisationFor(data.y);
        out.answers[7] = FormatShort(ynorm, 5);
    }
    const Model model(*FindModelKind(modelId), terms);
    const std::vector<double> p = SuggestedParameters(data, model, xnorm, ynorm, weighted, out.remarks);
    if (model.kind().hasOffset) out.answers[8] = FormatShort(p[0], 5);
    for (std::size_t g = 0; g < model.kind().groups.size(); ++g) {
        std::vector<double> values;
        for (int i = 1; i <= terms; ++i)
            values.push_back(p[static_cast<std::size_t>(model.index(static_cast<int>(g), i))]);
        out.answers[model.kind().groups[g].question] = Joined(values);
    }
    return out;
}

}  // namespace quillet::fitting
