#include "fitting/separable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "model/catalogue.h"

namespace quillet::fitting {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;

// Each model's terms split into basis functions and shape parameters. Eval gives the basis at
// u and d basis b / d shape k in dphi[b * kShapes + k]; ToModel gives the term's values in the
// order of the model's parameter groups; kShapeGroups names the group of each shape parameter.
// ByModel gives d z / d q[g] in d[z * groups + g] (d starts zeroed) for the term's split values
// z (its coefficients, then its shapes) and its model values q.

struct LorentzianSplit {
    static constexpr int kBasis = 1, kShapes = 2;
    static constexpr std::array<int, 2> kShapeGroups = {1, 2};  // PW50, t0
    static void Eval(int, const double* a, double u, double* phi, double* dphi) {
        const double r = 1 / a[0];
        const double s = 2 * (u - a[1]) * r;
        const double l = 1 / (1 + s * s);
        const double dlds = -2 * s * l * l;
        phi[0] = l;
        dphi[0] = dlds * (-s * r);
        dphi[1] = dlds * (-2 * r);
    }
    static void ToModel(const double* a, const double* c, double* q) {
        q[0] = c[0];
        q[1] = std::fabs(a[0]);
        q[2] = a[1];
    }
    static void ByModel(const double* a, const double*, double* d) {
        d[0 * 3 + 0] = 1;
        d[1 * 3 + 1] = a[0] < 0 ? -1 : 1;
        d[2 * 3 + 2] = 1;
    }
};

struct ModifiedLorentzianSplit {
    static constexpr int kBasis = 2, kShapes = 2;
    static constexpr std::array<int, 2> kShapeGroups = {1, 2};  // PW50, t0
    static void Eval(int, const double* a, double u, double* phi, double* dphi) {
        const double r = 1 / a[0];
        const double s = 2 * (u - a[1]) * r;
        const double l = 1 / (1 + s * s);
        const double dlds = -2 * s * l * l;
        const double dslds = l * l * (1 - s * s);  // d(s l)/ds
        const double dsdw = -s * r, dsdt = -2 * r;
        phi[0] = l;
        phi[1] = s * l;
        dphi[0] = dlds * dsdw;
        dphi[1] = dlds * dsdt;
        dphi[2] = dslds * dsdw;
        dphi[3] = dslds * dsdt;
    }
    static void ToModel(const double* a, const double* c, double* q) {
        q[0] = c[0];
        q[1] = std::fabs(a[0]);
        q[2] = a[1];
        // s changes sign with the width, and so does the dispersive part's coefficient.
        q[3] = a[0] < 0 ? -c[1] : c[1];
    }
    static void ByModel(const double* a, const double*, double* d) {
        const double sign = a[0] < 0 ? -1 : 1;
        d[0 * 4 + 0] = 1;
        d[1 * 4 + 3] = sign;
        d[2 * 4 + 1] = sign;
        d[3 * 4 + 2] = 1;
    }
};

struct ExponentialSplit {
    static constexpr int kBasis = 1, kShapes = 1;
    static constexpr std::array<int, 1> kShapeGroups = {1};  // B
    static void Eval(int, const double* a, double u, double* phi, double* dphi) {
        const double e = std::exp(a[0] * u);
        phi[0] = e;
        dphi[0] = u * e;
    }
    static void ToModel(const double* a, const double* c, double* q) {
        q[0] = c[0];
        q[1] = a[0];
    }
    static void ByModel(const double*, const double*, double* d) {
        d[0 * 2 + 0] = 1;
        d[1 * 2 + 1] = 1;
    }
};

struct PowerSplit {
    static constexpr int kBasis = 1, kShapes = 0;
    static constexpr std::array<int, 0> kShapeGroups = {};
    static void Eval(int term, const double*, double u, double* phi, double*) {
        double up = 1;
        for (int k = 0; k < term; ++k) up *= u;
        phi[0] = up;
    }
    static void ToModel(const double*, const double* c, double* q) { q[0] = c[0]; }
    static void ByModel(const double*, const double*, double* d) { d[0] = 1; }
};

// A sine term's coefficients a = A cos C, b = A sin C by its amplitude A (group 0) and phase C
// (group 2), into rows 0 and 1 of a term's d z / d q with `groups` columns.
void PhaseByModel(const double* c, double* d, int groups) {
    const double phase = std::atan2(c[1], c[0]);
    d[0] = std::cos(phase);
    d[2] = -c[1];
    d[groups + 0] = std::sin(phase);
    d[groups + 2] = c[0];
}

struct SineSplit {
    static constexpr int kBasis = 2, kShapes = 1;
    static constexpr std::array<int, 1> kShapeGroups = {1};  // B
    static void Eval(int, const double* a, double u, double* phi, double* dphi) {
        const double theta = kTwoPi * a[0] * u;
        const double sn = std::sin(theta), cs = std::cos(theta);
        phi[0] = sn;
        phi[1] = cs;
        dphi[0] = kTwoPi * u * cs;
        dphi[1] = -kTwoPi * u * sn;
    }
    static void ToModel(const double* a, const double* c, double* q) {
        q[0] = std::hypot(c[0], c[1]);
        q[1] = a[0];
        q[2] = std::atan2(c[1], c[0]);
    }
    static void ByModel(const double*, const double* c, double* d) {
        PhaseByModel(c, d, 3);
        d[2 * 3 + 1] = 1;
    }
};

struct SineExponentialSplit {
    static constexpr int kBasis = 2, kShapes = 2;
    static constexpr std::array<int, 2> kShapeGroups = {1, 3};  // B, D
    static void Eval(int, const double* a, double u, double* phi, double* dphi) {
        const double theta = kTwoPi * a[0] * u;
        const double e = std::exp(a[1] * u);
        const double sn = std::sin(theta) * e, cs = std::cos(theta) * e;
        phi[0] = sn;
        phi[1] = cs;
        dphi[0] = kTwoPi * u * cs;
        dphi[1] = u * sn;
        dphi[2] = -kTwoPi * u * sn;
        dphi[3] = u * cs;
    }
    static void ToModel(const double* a, const double* c, double* q) {
        q[0] = std::hypot(c[0], c[1]);
        q[1] = a[0];
        q[2] = std::atan2(c[1], c[0]);
        q[3] = a[1];
    }
    static void ByModel(const double*, const double* c, double* d) {
        PhaseByModel(c, d, 4);
        d[2 * 4 + 1] = 1;
        d[3 * 4 + 3] = 1;
    }
};

struct BellCurveSplit {
    static constexpr int kBasis = 1, kShapes = 2;
    static constexpr std::array<int, 2> kShapeGroups = {0, 2};  // T0, B
    static void Eval(int, const double* a, double u, double* phi, double* dphi) {
        const double r = 1 / a[1];
        const double z = (u - a[0]) * r;
        const double g = std::exp(-z * z / 2);
        phi[0] = g;
        dphi[0] = g * z * r;
        dphi[1] = g * z * z * r;
    }
    static void ToModel(const double* a, const double* c, double* q) {
        q[0] = a[0];
        q[1] = c[0];
        q[2] = std::fabs(a[1]);
    }
    static void ByModel(const double* a, const double*, double* d) {
        d[0 * 3 + 1] = 1;
        d[1 * 3 + 0] = 1;
        d[2 * 3 + 2] = a[1] < 0 ? -1 : 1;
    }
};

// Calls f with the split of model `id` as a type.
template <class F>
void WithSplit(int id, F&& f) {
    switch (id) {
        case model::Lorentzian:
            return f(LorentzianSplit{});
        case model::ModifiedLorentzian:
            return f(ModifiedLorentzianSplit{});
        case model::Exponential:
            return f(ExponentialSplit{});
        case model::Power:
            return f(PowerSplit{});
        case model::Sine:
            return f(SineSplit{});
        case model::SineExponential:
            return f(SineExponentialSplit{});
        case model::BellCurve:
            return f(BellCurveSplit{});
    }
}

template <class S, bool kDerivatives>
void Fill(const SeparableModel& sm, const double* alpha, const double* u, const double* v, const double* w,
          std::size_t rows, double* out) {
    constexpr int nb = S::kBasis, ns = kDerivatives ? S::kShapes : 0;
    const bool offset = sm.model().kind().hasOffset;
    const std::size_t first = offset ? 1 : 0, m = static_cast<std::size_t>(sm.linearCount());
    auto column = [&](std::size_t c) { return out + c * rows; };
    if (offset)
        for (std::size_t j = 0; j < rows; ++j) out[j] = w ? w[j] : 1;
    for (int t = 0; t < sm.model().terms(); ++t) {
        // A copy the column stores cannot alias, so that what depends on the shape alone (the
        // reciprocal of a width) is computed once per term rather than once per point.
        double a[S::kShapes > 0 ? S::kShapes : 1];
        std::copy_n(alpha + t * S::kShapes, S::kShapes, a);
        double* basis[nb];
        double* derivs[nb * (ns > 0 ? ns : 1)];
        for (int b = 0; b < nb; ++b) {
            basis[b] = column(first + static_cast<std::size_t>(t * nb + b));
            for (int k = 0; k < ns; ++k)
                derivs[b * ns + k] = column(m + static_cast<std::size_t>((t * nb + b) * ns + k));
        }
        for (std::size_t j = 0; j < rows; ++j) {
            double phi[nb], dphi[nb * (S::kShapes > 0 ? S::kShapes : 1)];
            S::Eval(t + 1, a, u[j], phi, dphi);
            const double wj = w ? w[j] : 1;
            for (int b = 0; b < nb; ++b) basis[b][j] = wj * phi[b];
            for (int d = 0; d < nb * ns; ++d) derivs[d][j] = wj * dphi[d];
        }
    }
    double* data = column(static_cast<std::size_t>(sm.width(kDerivatives) - 1));
    for (std::size_t j = 0; j < rows; ++j) data[j] = (w ? w[j] : 1) * v[j];
}

}  // namespace

SeparableModel::SeparableModel(const Model& model) : model_(model) {
    WithSplit(model.kind().id, [&](auto s) {
        basisPerTerm_ = s.kBasis;
        shapePerTerm_ = s.kShapes;
    });
    const int n = model.terms();
    linear_ = (model.kind().hasOffset ? 1 : 0) + n * basisPerTerm_;
    nonlinear_ = n * shapePerTerm_;
    derivatives_ = n * basisPerTerm_ * shapePerTerm_;
}

void SeparableModel::FillBlock(const double* alpha, const double* u, const double* v, const double* w, std::size_t rows,
                               double* out, bool derivatives) const {
    WithSplit(model_.kind().id, [&](auto s) {
        if (derivatives)
            Fill<decltype(s), true>(*this, alpha, u, v, w, rows, out);
        else
            Fill<decltype(s), false>(*this, alpha, u, v, w, rows, out);
    });
}

Eigen::MatrixXd SeparableModel::Mixing(const Eigen::VectorXd& c) const {
    Eigen::MatrixXd mix = Eigen::MatrixXd::Zero(derivatives_, nonlinear_);
    const int first = model_.kind().hasOffset ? 1 : 0;
    for (int t = 0; t < model_.terms(); ++t)
        for (int b = 0; b < basisPerTerm_; ++b)
            for (int k = 0; k < shapePerTerm_; ++k)
                mix((t * basisPerTerm_ + b) * shapePerTerm_ + k, t * shapePerTerm_ + k) =
                    c(first + t * basisPerTerm_ + b);
    return mix;
}

int SeparableModel::FullIndexOfShape(int k) const {
    int group = 0;
    WithSplit(model_.kind().id, [&](auto s) {
        if constexpr (s.kShapes > 0) group = s.kShapeGroups[static_cast<std::size_t>(k % s.kShapes)];
    });
    return model_.index(group, k / shapePerTerm_ + 1);
}

std::vector<double> SeparableModel::ShapeOf(const std::vector<double>& params) const {
    std::vector<double> alpha(static_cast<std::size_t>(nonlinear_));
    for (int k = 0; k < nonlinear_; ++k)
        alpha[static_cast<std::size_t>(k)] = params[static_cast<std::size_t>(FullIndexOfShape(k))];
    return alpha;
}

std::vector<double> SeparableModel::ParamsOf(const std::vector<double>& alpha, const Eigen::VectorXd& c) const {
    std::vector<double> params(static_cast<std::size_t>(model_.parameterCount()));
    const int first = model_.kind().hasOffset ? 1 : 0;
    if (first) params[0] = c(0);
    const int groups = static_cast<int>(model_.kind().groups.size());
    WithSplit(model_.kind().id, [&](auto s) {
        for (int t = 0; t < model_.terms(); ++t) {
            double q[4];
            s.ToModel(alpha.data() + t * s.kShapes, c.data() + first + t * s.kBasis, q);
            for (int g = 0; g < groups; ++g) params[static_cast<std::size_t>(model_.index(g, t + 1))] = q[g];
        }
    });
    return params;
}

Eigen::MatrixXd SeparableModel::SplitByParams(const std::vector<double>& alpha, const Eigen::VectorXd& c) const {
    const int groups = static_cast<int>(model_.kind().groups.size());
    const int first = model_.kind().hasOffset ? 1 : 0;
    Eigen::MatrixXd d = Eigen::MatrixXd::Zero(linear_ + nonlinear_, model_.parameterCount());
    if (first) d(0, 0) = 1;
    WithSplit(model_.kind().id, [&](auto s) {
        constexpr int nz = s.kBasis + s.kShapes;
        for (int t = 0; t < model_.terms(); ++t) {
            std::array<double, 4 * 4> local{};
            s.ByModel(alpha.data() + t * s.kShapes, c.data() + first + t * s.kBasis, local.data());
            for (int z = 0; z < nz; ++z) {
                const int row = z < s.kBasis ? first + t * s.kBasis + z : linear_ + t * s.kShapes + (z - s.kBasis);
                for (int g = 0; g < groups; ++g)
                    d(row, model_.index(g, t + 1)) = local[static_cast<std::size_t>(z * groups + g)];
            }
        }
    });
    return d;
}

}  // namespace quillet::fitting
