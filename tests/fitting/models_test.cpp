// The series models: values, analytic derivatives and how parameters become physical.
#include <gtest/gtest.h>

#include <cmath>

#include "fitting/models.h"
#include "model_cases.h"

namespace quillet::fitting {
namespace {

using testing::ModelCases;

Model Make(int id, int terms) { return Model(*FindModelKind(id), terms); }

TEST(SeriesModels, AnalyticDerivativesMatchCentralDifferences) {
    for (const auto& c : ModelCases()) {
        Model m = Make(c.model, c.terms);
        ASSERT_EQ(m.parameterCount(), static_cast<int>(c.truth.size())) << c.model;
        std::vector<double> grad(c.truth.size());
        for (double u : {c.u0, 0.37 * c.u0 + 0.63 * c.u1, c.u1 - 0.21}) {
            m.Value(c.truth.data(), u, grad.data());
            for (std::size_t k = 0; k < c.truth.size(); ++k) {
                std::vector<double> p = c.truth;
                const double h = 1e-6 * std::max(1.0, std::fabs(p[k]));
                p[k] += h;
                const double up = m.Value(p.data(), u, nullptr);
                p[k] -= 2 * h;
                const double down = m.Value(p.data(), u, nullptr);
                EXPECT_NEAR(grad[k], (up - down) / (2 * h), 1e-6 * std::max(1.0, std::fabs(grad[k])))
                    << "model " << c.model << " " << m.parameterName(static_cast<int>(k)) << " at u = " << u;
            }
        }
    }
}

TEST(SeriesModels, ValuesFollowTheirFormulas) {
    const double pi = 3.14159265358979323846;
    struct Row {
        int model;
        std::vector<double> p;  // one term
        double u;
        double expected;
    };
    const std::vector<Row> rows = {
        {model::Lorentzian, {0.5, 2.0, 4.0, 1.0}, 3.0, 0.5 + 2.0 / (1 + 1)},
        {model::ModifiedLorentzian, {0, 2.0, 4.0, 1.0, 3.0}, 3.0, (2.0 + 3.0) / (1 + 1)},
        {model::Exponential, {1.0, 2.0, -0.5}, 2.0, 1.0 + 2.0 * std::exp(-1.0)},
        {model::Sine, {0.1, 2.0, 0.25, 0.5}, 1.0, 0.1 + 2.0 * std::sin(pi / 2 + 0.5)},
        {model::SineExponential, {0, 2.0, 0.25, 0.5, -1.0}, 1.0, 2.0 * std::sin(pi / 2 + 0.5) * std::exp(-1.0)},
        {model::BellCurve, {1.0, 3.0, 0.5}, 2.0, 3.0 * std::exp(-2.0)},
    };
    for (const auto& r : rows)
        EXPECT_DOUBLE_EQ(Make(r.model, 1).Value(r.p.data(), r.u, nullptr), r.expected) << r.model;
    // The i-th power term is u^i.
    const std::vector<double> power = {1.0, 2.0, -3.0, 0.5};
    EXPECT_DOUBLE_EQ(Make(model::Power, 3).Value(power.data(), -2.0, nullptr), 1 - 4 - 12 - 4);
}

}  // namespace
}  // namespace quillet::fitting
