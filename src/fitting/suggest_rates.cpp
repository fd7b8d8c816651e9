// Rates and frequencies for the exponential and sine series: the matrix pencil method and
// Lomb-Scargle periodograms, which need no even spacing of x.
#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "fitting/suggest_shapes.h"

namespace quillet::fitting::suggest {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr std::size_t kPencilPoints = 300;     // plenty for a handful of rates
constexpr std::size_t kSpectrumPoints = 3000;  // keeps a periodogram to a fraction of a second
constexpr std::size_t kMostFrequencies = 20000;

// v at `count` evenly spaced u over the record, by linear interpolation.
std::vector<double> Resampled(const Samples& s, std::size_t count, double& step) {
    const double u0 = s.u.front();
    step = (s.u.back() - u0) / static_cast<double>(count - 1);
    std::vector<double> y(count);
    std::size_t j = 0;
    for (std::size_t k = 0; k < count; ++k) {
        const double u = u0 + step * static_cast<double>(k);
        while (j + 2 < s.u.size() && s.u[j + 1] < u) ++j;
        const double du = s.u[j + 1] - s.u[j];
        const double t = du > 0 ? std::clamp((u - s.u[j]) / du, 0.0, 1.0) : 0;
        y[k] = s.v[j] + t * (s.v[j + 1] - s.v[j]);
    }
    return y;
}

// Rates spread over the record, for when the data say nothing clearer.
std::vector<double> SpreadRates(const Samples& s, int count) {
    const double span = std::max(s.u.back() - s.u.front(), 1e-300);
    std::vector<double> rates;
    for (int k = 0; k < count; ++k) rates.push_back(-std::pow(3.0, k) / span);
    return rates;
}

// Offset, then a (sin) and b (cos) of each frequency, by least squares over points [first, last).
Eigen::VectorXd SineCoefficients(const Samples& s, const std::vector<double>& f, std::size_t first, std::size_t last) {
    const auto rows = static_cast<Eigen::Index>(last - first), k = static_cast<Eigen::Index>(f.size());
    Eigen::MatrixXd a(rows, 1 + 2 * k);
    Eigen::VectorXd b(rows);
    for (Eigen::Index r = 0; r < rows; ++r) {
        const double u = s.u[first + static_cast<std::size_t>(r)];
        a(r, 0) = 1;
        for (Eigen::Index j = 0; j < k; ++j) {
            a(r, 1 + 2 * j) = std::sin(kTwoPi * f[static_cast<std::size_t>(j)] * u);
            a(r, 2 + 2 * j) = std::cos(kTwoPi * f[static_cast<std::size_t>(j)] * u);
        }
        b(r) = s.v[first + static_cast<std::size_t>(r)];
    }
    return a.completeOrthogonalDecomposition().solve(b);
}

// Lomb-Scargle power of r at frequencies f0 + k df, k < count. The phasors of every point
// turn by one step per frequency, so no sine is computed inside the loop.
std::vector<double> Periodogram(const std::vector<double>& u, const std::vector<double>& r, double f0, double df,
                                std::size_t count) {
    const std::size_t n = u.size();
    std::vector<std::complex<double>> z(n), turn(n);
    for (std::size_t j = 0; j < n; ++j) {
        z[j] = std::polar(1.0, kTwoPi * f0 * u[j]);
        turn[j] = std::polar(1.0, kTwoPi * df * u[j]);
    }
    std::vector<double> power(count);
    const double half = static_cast<double>(n) / 2;
    for (std::size_t k = 0; k < count; ++k) {
        double c = 0, s = 0, c2 = 0, s2 = 0;
        for (std::size_t j = 0; j < n; ++j) {
            const double re = z[j].real(), im = z[j].imag();
            c += r[j] * re;
            s += r[j] * im;
            c2 += re * re - im * im;
            s2 += 2 * re * im;
            z[j] *= turn[j];
        }
        // The time shift tau that makes the sine and cosine sums orthogonal.
        const double twoWt = std::atan2(s2, c2), wt = twoWt / 2;
        const double cw = std::cos(wt), sw = std::sin(wt);
        const double yc = c * cw + s * sw, ys = s * cw - c * sw;
        const double cc = half + 0.5 * (c2 * std::cos(twoWt) + s2 * std::sin(twoWt)), ss = static_cast<double>(n) - cc;
        power[k] = (cc > 0 ? yc * yc / cc : 0) + (ss > 0 ? ys * ys / ss : 0);
    }
    return power;
}

}  // namespace

Samples Thinned(const Samples& s, std::size_t most) {
    const std::size_t every = (s.u.size() + most - 1) / most;
    if (every <= 1) return s;
    Samples t;
    for (std::size_t i = 0; i < s.u.size(); i += every) {
        t.u.push_back(s.u[i]);
        t.v.push_back(s.v[i]);
    }
    return t;
}

std::vector<double> ExponentialRates(const Samples& s, int count, std::vector<std::string>& remarks) {
    const std::size_t n = std::min(s.u.size(), kPencilPoints);
    const auto order = static_cast<Eigen::Index>(count + 1);  // the offset is a rate of 0
    if (n < static_cast<std::size_t>(4 * order) || !(s.u.back() > s.u.front())) return SpreadRates(s, count);
    double du = 0;
    const std::vector<double> y = Resampled(s, n, du);
    const auto pencil = static_cast<Eigen::Index>(n / 3), rows = static_cast<Eigen::Index>(n) - pencil;
    Eigen::MatrixXd hankel(rows, pencil + 1);
    for (Eigen::Index i = 0; i < rows; ++i)
        for (Eigen::Index j = 0; j <= pencil; ++j) hankel(i, j) = y[static_cast<std::size_t>(i + j)];
    Eigen::BDCSVD<Eigen::MatrixXd> svd(hankel, Eigen::ComputeThinV);
    const Eigen::MatrixXd v = svd.matrixV().leftCols(order);
    const Eigen::MatrixXd shift = v.topRows(pencil).completeOrthogonalDecomposition().solve(v.bottomRows(pencil));
    const Eigen::VectorXcd z = Eigen::EigenSolver<Eigen::MatrixXd>(shift).eigenvalues();
    std::vector<double> rates;
    for (Eigen::Index k = 0; k < z.size(); ++k) rates.push_back(std::log(std::abs(z(k))) / du);
    // The rate nearest 0 is the offset's.
    rates.erase(
        std::min_element(rates.begin(), rates.end(), [](double a, double b) { return std::fabs(a) < std::fabs(b); }));
    std::sort(rates.begin(), rates.end());
    bool usable = std::all_of(rates.begin(), rates.end(), [](double r) { return std::isfinite(r); });
    for (std::size_t k = 1; usable && k < rates.size(); ++k)
        if (rates[k] - rates[k - 1] <= 1e-9 * std::fabs(rates[k])) usable = false;  // an oscillation, not two rates
    if (usable) return rates;
    remarks.push_back("the data show no clear exponential rates: the rates start spread over the record");
    return SpreadRates(s, count);
}

std::vector<double> SineFrequencies(const Samples& all, int count) {
    const Samples s = Thinned(all, kSpectrumPoints);
    const double span = s.u.back() - s.u.front();
    if (!(span > 0) || s.u.size() < 4) return std::vector<double>(static_cast<std::size_t>(count), 1.0);
    // From half a cycle over the record to the mean spacing's Nyquist frequency, ten steps
    // per resolvable frequency 1 / span.
    const double f0 = 0.5 / span, top = static_cast<double>(s.u.size()) / (2 * span);
    double df = 0.1 / span;
    std::size_t steps = static_cast<std::size_t>((top - f0) / df) + 1;
    if (steps > kMostFrequencies) {
        df *= static_cast<double>(steps) / static_cast<double>(kMostFrequencies);
        steps = kMostFrequencies;
    }
    std::vector<double> found;
    std::vector<double> residual = s.v;
    double mean = 0;
    for (double v : s.v) mean += v / static_cast<double>(s.v.size());
    for (double& r : residual) r -= mean;
    for (int k = 0; k < count; ++k) {
        const std::vector<double> power = Periodogram(s.u, residual, f0, df, steps);
        std::size_t best = 0;
        for (std::size_t i = 1; i < steps; ++i) {
            const double f = f0 + df * static_cast<double>(i);
            const bool taken =
                std::any_of(found.begin(), found.end(), [&](double g) { return std::fabs(f - g) < 0.5 / span; });
            if (!taken && power[i] > power[best]) best = i;
        }
        double f = f0 + df * static_cast<double>(best);
        if (best > 0 && best + 1 < steps) {
            const double a = power[best - 1], b = power[best], c = power[best + 1], bend = a - 2 * b + c;
            if (bend < 0) f += df * std::clamp(0.5 * (a - c) / bend, -0.5, 0.5);
        }
        found.push_back(f);
        const Eigen::VectorXd coef = SineCoefficients(s, found, 0, s.u.size());
        for (std::size_t j = 0; j < s.u.size(); ++j) {
            double fit = coef(0);
            for (std::size_t i = 0; i < found.size(); ++i)
                fit += coef(static_cast<Eigen::Index>(1 + 2 * i)) * std::sin(kTwoPi * found[i] * s.u[j]) +
                       coef(static_cast<Eigen::Index>(2 + 2 * i)) * std::cos(kTwoPi * found[i] * s.u[j]);
            residual[j] = s.v[j] - fit;
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<double> DecayRates(const Samples& s, const std::vector<double>& frequencies) {
    const std::size_t n = s.u.size(), k = frequencies.size();
    std::vector<double> decays(k, 0.0);
    for (std::size_t windows : {4, 3, 2}) {
        if (n < windows * (4 * k + 4)) continue;
        // log amplitude of each frequency against the middle of each window
        std::vector<std::vector<std::pair<double, double>>> points(k);
        for (std::size_t w = 0; w < windows; ++w) {
            const std::size_t first = n * w / windows, last = n * (w + 1) / windows;
            const Eigen::VectorXd c = SineCoefficients(s, frequencies, first, last);
            const double middle = 0.5 * (s.u[first] + s.u[last - 1]);
            for (std::size_t i = 0; i < k; ++i) {
                const double amp =
                    std::hypot(c(static_cast<Eigen::Index>(1 + 2 * i)), c(static_cast<Eigen::Index>(2 + 2 * i)));
                if (amp > 0) points[i].push_back({middle, std::log(amp)});
            }
        }
        for (std::size_t i = 0; i < k; ++i) {
            const auto& p = points[i];
            if (p.size() < 2) continue;
            double mu = 0, ml = 0;
            for (const auto& [u, l] : p)
                mu += u / static_cast<double>(p.size()), ml += l / static_cast<double>(p.size());
            double num = 0, den = 0;
            for (const auto& [u, l] : p) num += (u - mu) * (l - ml), den += (u - mu) * (u - mu);
            if (den > 0) decays[i] = num / den;
        }
        return decays;
    }
    return decays;
}

}  // namespace quillet::fitting::suggest
