// Published certified problems whose models are our series: the fit reaches the certified
// residual sum of squares (or goes below it: our series add an offset) from both published
// starting points, within the default 20 iterations.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <numbers>
#include <sstream>

#include "fitting/fit_engine.h"
#include "model/catalogue.h"

namespace quillet::fitting {
namespace {

struct Certified {
    std::vector<std::vector<double>> starts;  // b1..bk of each starting point
    double rss = 0;
    std::vector<double> x, y;
};

// The starting points, the certified RSS and the "y x" data of a certified problem file.
Certified Read(const std::string& name) {
    std::ifstream in(std::string(QUILLET_CERTIFIED_DIR) + "/" + name);
    Certified c;
    bool data = false;
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        std::string first, eq;
        fields >> first;
        if (data) {
            double x;
            if (fields >> x) {
                c.y.push_back(std::stod(first));
                c.x.push_back(x);
            }
        } else if (first.size() == 2 && first[0] == 'b' && (fields >> eq) && eq == "=") {
            double s1, s2;
            fields >> s1 >> s2;
            if (c.starts.empty()) c.starts.resize(2);
            c.starts[0].push_back(s1);
            c.starts[1].push_back(s2);
        } else if (line.rfind("Residual Sum of Squares:", 0) == 0) {
            fields >> eq >> eq >> eq >> c.rss;
        } else if (first == "Data:" && line.find(" y ") != std::string::npos) {
            data = true;
        }
    }
    return c;
}

// Each published model written as one of our series, in normalised units.
struct Problem {
    const char* file;
    int model, terms;
    double xnorm, ynorm;
    std::vector<double> (*start)(const std::vector<double>& b, double xnorm, double ynorm);
};

const Problem kProblems[] = {
    {"Lanczos3.dat", model::Exponential, 3, 1, 1,
     [](const std::vector<double>& b, double, double) {
         return std::vector<double>{0, b[0], b[2], b[4], -b[1], -b[3], -b[5]};
     }},
    {"Misra1a.dat", model::Exponential, 1, 100, 100,
     [](const std::vector<double>& b, double xn, double yn) {
         return std::vector<double>{b[0] / yn, -b[0] / yn, -b[1] * xn};
     }},
    {"ENSO.dat", model::Sine, 3, 100, 10,
     [](const std::vector<double>& b, double xn, double yn) {
         // c cos t + s sin t = hypot(c, s) sin(t + atan2(c, s)); frequencies are 1 / period.
         auto amp = [&](double c, double s) { return std::hypot(c, s) / yn; };
         return std::vector<double>{
             b[0] / yn, amp(b[1], b[2]), amp(b[4], b[5]),        amp(b[7], b[8]),        xn / 12,
             xn / b[3], xn / b[6],       std::atan2(b[1], b[2]), std::atan2(b[4], b[5]), std::atan2(b[7], b[8])};
     }},
};

TEST(CertifiedProblems, ReachTheCertifiedSumOfSquaresFromBothStartsWithTheDefaults) {
    for (const auto& p : kProblems) {
        const Certified c = Read(p.file);
        ASSERT_EQ(c.starts.size(), 2u) << p.file;
        ASSERT_GT(c.x.size(), 10u) << p.file;
        const Model model(*FindModelKind(p.model), p.terms);
        for (std::size_t s = 0; s < 2; ++s) {
            FitProblem fp;
            fp.model = &model;
            for (std::size_t i = 0; i < c.x.size(); ++i) {
                fp.u.push_back(c.x[i] / p.xnorm);
                fp.v.push_back(c.y[i] / p.ynorm);
            }
            fp.start = p.start(c.starts[s], p.xnorm, p.ynorm);
            fp.options = MapSolverValues(p.model, {});
            SetModelBounds(fp);
            const FitResult r = RunEngine(fp);
            const double rss = r.weightedRss * p.ynorm * p.ynorm;
            EXPECT_EQ(r.outcome, FitOutcome::Converged) << p.file << " start " << s + 1 << ": " << r.reason;
            EXPECT_LE(rss, c.rss * (1 + 1e-6)) << p.file << " start " << s + 1;
            EXPECT_LE(r.iterations, 20) << p.file << " start " << s + 1;
            EXPECT_FALSE(r.stdErrors.empty()) << p.file << ": " << r.stdErrorsNote;
        }
    }
}

}  // namespace
}  // namespace quillet::fitting
