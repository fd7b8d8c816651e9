// Peaks for the Lorentzian, modified Lorentzian and bell-curve series: a robust baseline,
// smoothing that keeps peaks, and peaks ranked by their prominence.
#include <algorithm>
#include <cmath>

#include "fitting/number_text.h"
#include "fitting/suggest_shapes.h"

namespace quillet::fitting::suggest {

namespace {

// Enough points to see any peak a fit could resolve; more only cost time.
constexpr std::size_t kMostPoints = 20000;

// Neighbouring points averaged so that at most kMostPoints remain.
Samples Decimated(const Samples& s) {
    const std::size_t n = s.u.size(), bin = (n + kMostPoints - 1) / kMostPoints;
    if (bin <= 1) return s;
    Samples d;
    for (std::size_t first = 0; first < n; first += bin) {
        const std::size_t last = std::min(n, first + bin);
        double u = 0, v = 0;
        for (std::size_t i = first; i < last; ++i) {
            u += s.u[i];
            v += s.v[i];
        }
        d.u.push_back(u / static_cast<double>(last - first));
        d.v.push_back(v / static_cast<double>(last - first));
    }
    return d;
}

double Quantile(std::vector<double> v, double q) {
    const auto k = static_cast<std::ptrdiff_t>(q * static_cast<double>(v.size() - 1));
    std::nth_element(v.begin(), v.begin() + k, v.end());
    return v[static_cast<std::size_t>(k)];
}

// Savitzky-Golay smoothing (quadratic): noise goes, peak heights and widths stay.
std::vector<double> Smoothed(const std::vector<double>& v) {
    const auto n = static_cast<long>(v.size());
    const long m = std::clamp(n / 100, 2L, 12L);
    if (n < 2 * m + 1) return v;
    const double norm = static_cast<double>((4 * m * m - 1) * (2 * m + 3));
    std::vector<double> c(static_cast<std::size_t>(2 * m + 1));
    for (long i = -m; i <= m; ++i)
        c[static_cast<std::size_t>(i + m)] = (3.0 * (3 * m * m + 3 * m - 1) - 15.0 * i * i) / norm;
    std::vector<double> s = v;
    for (long j = m; j < n - m; ++j) {
        double sum = 0;
        for (long i = -m; i <= m; ++i) sum += c[static_cast<std::size_t>(i + m)] * v[static_cast<std::size_t>(j + i)];
        s[static_cast<std::size_t>(j)] = sum;
    }
    return s;
}

struct Candidate {
    std::size_t index;
    double prominence;  // height above the higher of the lowest points between it and higher ground
};

std::vector<Candidate> RankedMaxima(const std::vector<double>& s) {
    std::vector<Candidate> found;
    for (std::size_t i = 1; i + 1 < s.size(); ++i) {
        if (!(s[i] > s[i - 1] && s[i] >= s[i + 1])) continue;
        double left = s[i], right = s[i];
        for (std::size_t j = i; j-- > 0 && s[j] <= s[i];) left = std::min(left, s[j]);
        for (std::size_t j = i + 1; j < s.size() && s[j] <= s[i]; ++j) right = std::min(right, s[j]);
        found.push_back({i, s[i] - std::max(left, right)});
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.prominence > b.prominence; });
    return found;
}

// Where the curve s falls through `level` walking from i by `step` (+1 or -1); NaN at the end.
double Crossing(const std::vector<double>& u, const std::vector<double>& s, std::size_t i, int step, double level) {
    for (std::size_t j = i;;) {
        const std::size_t next = j + static_cast<std::size_t>(step);
        if (next >= s.size()) return std::nan("");
        if (s[next] <= level) return u[j] + (u[next] - u[j]) * (s[j] - level) / (s[j] - s[next]);
        j = next;
    }
}

Peak Measure(const Samples& s, const std::vector<double>& sm, std::size_t i, double baseline) {
    Peak p{s.u[i], sm[i] - baseline, 0};
    const double curvature = sm[i - 1] - 2 * sm[i] + sm[i + 1];
    if (curvature < 0) {
        const double shift = std::clamp(0.5 * (sm[i - 1] - sm[i + 1]) / curvature, -1.0, 1.0);
        p.centre += shift * (shift > 0 ? s.u[i + 1] - s.u[i] : s.u[i] - s.u[i - 1]);
    }
    const double half = baseline + p.height / 2;
    const double left = Crossing(s.u, sm, i, -1, half), right = Crossing(s.u, sm, i, +1, half);
    // The nearer crossing: a neighbour or a dispersive lobe widens only one side.
    if (!std::isnan(left) && !std::isnan(right))
        p.fwhm = 2 * std::min(p.centre - left, right - p.centre);
    else if (!std::isnan(left))
        p.fwhm = 2 * (p.centre - left);
    else if (!std::isnan(right))
        p.fwhm = 2 * (right - p.centre);
    else
        p.fwhm = (s.u.back() - s.u.front()) / 4;
    return p;
}

double Shape(const Peak& p, double u, bool gaussian) {
    const double z = 2 * (u - p.centre) / p.fwhm;
    return p.height * (gaussian ? std::exp(-std::log(2.0) * z * z) : 1 / (1 + z * z));
}

}  // namespace

std::vector<Peak> FindPeaks(const Samples& all, int count, bool gaussian, std::vector<std::string>& remarks) {
    Samples s = Decimated(all);
    const std::size_t n = s.v.size();
    std::vector<Peak> peaks;
    if (n < 5) {
        for (int k = 0; k < count; ++k)
            peaks.push_back({s.u.front() + (s.u.back() - s.u.front()) * (k + 1) / (count + 1), 1,
                             (s.u.back() - s.u.front()) / (2 * count + 2)});
        return peaks;
    }
    // Dips hanging from a baseline are peaks upside down.
    const double median = Quantile(s.v, 0.5);
    const auto [low, high] = std::minmax_element(s.v.begin(), s.v.end());
    const double sign = *high - median >= median - *low ? 1 : -1;
    for (double& v : s.v) v *= sign;
    const double baseline = Quantile(s.v, 0.1);
    const std::vector<double> sm = Smoothed(s.v);
    // A peak must stand out of the noise left after smoothing.
    std::vector<double> noise(n);
    for (std::size_t i = 0; i < n; ++i) noise[i] = std::fabs(s.v[i] - sm[i]);
    const double threshold = 3 * 1.4826 * Quantile(noise, 0.5);

    for (const auto& c : RankedMaxima(sm)) {
        if (static_cast<int>(peaks.size()) == count || c.prominence <= threshold) break;
        peaks.push_back(Measure(s, sm, c.index, baseline));
    }
    const int found = static_cast<int>(peaks.size());
    if (found < count) {
        std::vector<double> widths;
        for (const auto& p : peaks) widths.push_back(p.fwhm);
        const double width = widths.empty() ? (s.u.back() - s.u.front()) / 10 : Quantile(widths, 0.5);
        while (static_cast<int>(peaks.size()) < count) {
            std::size_t best = 0;
            double most = -HUGE_VAL;
            for (std::size_t i = 0; i < n; ++i) {
                double left = sm[i] - baseline;
                for (const auto& p : peaks) left -= Shape(p, s.u[i], gaussian);
                if (left > most) most = left, best = i;
            }
            peaks.push_back({s.u[best], std::max(most, 0.0), width});
        }
        remarks.push_back("found " + std::to_string(found) + " peak" + (found == 1 ? "" : "s") + " for " +
                          std::to_string(count) + " terms: the other terms start at the largest bumps left over");
    }
    for (auto& p : peaks) p.height *= sign;
    return peaks;
}

}  // namespace quillet::fitting::suggest
