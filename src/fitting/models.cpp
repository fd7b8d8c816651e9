#include "fitting/models.h"

#include <array>
#include <cmath>

#include "fitting/model_terms.h"
#include "model/catalogue.h"

namespace quillet::fitting {

namespace {

constexpr int kMaxGroups = 4;

const std::array<ModelKind, 7>& Kinds() {
    static const std::array<ModelKind, 7> kinds = {{
        {model::Lorentzian, true,
         {{"A", 9, Scale::Y, false}, {"PW50", 10, Scale::X, false}, {"t0", 11, Scale::X, false}},
         terms::Lorentzian},
        {model::ModifiedLorentzian, true,
         {{"A", 9, Scale::Y, false},
          {"PW50", 10, Scale::X, false},
          {"t0", 11, Scale::X, false},
          {"B", 12, Scale::Y, false}},
         terms::ModifiedLorentzian},
        {model::Exponential, true, {{"A", 9, Scale::Y, false}, {"B", 10, Scale::PerX, false}},
         terms::Exponential},
        {model::Power, true, {{"A", 9, Scale::YPerXPower, false}}, terms::Power},
        {model::Sine, true,
         {{"A", 9, Scale::Y, false}, {"B", 10, Scale::PerX, true}, {"C", 11, Scale::None, false}},
         terms::Sine},
        {model::SineExponential, true,
         {{"A", 9, Scale::Y, false},
          {"B", 10, Scale::PerX, true},
          {"C", 11, Scale::None, false},
          {"D", 12, Scale::PerX, false}},
         terms::SineExponential},
        {model::BellCurve, false,
         {{"T0", 9, Scale::X, false}, {"A", 10, Scale::Y, false}, {"B", 11, Scale::X, false}},
         terms::BellCurve},
    }};
    return kinds;
}

}  // namespace

const ModelKind* FindModelKind(int id) {
    for (const auto& k : Kinds())
        if (k.id == id) return &k;
    return nullptr;
}

Model::Model(const ModelKind& kind, int terms) : kind_(&kind), terms_(terms), offset_(kind.hasOffset ? 1 : 0) {}

int Model::parameterCount() const { return offset_ + static_cast<int>(kind_->groups.size()) * terms_; }

int Model::index(int group, int term) const { return offset_ + group * terms_ + term - 1; }

std::string Model::parameterName(int k) const {
    if (k < offset_) return "Y0";
    const int g = (k - offset_) / terms_;
    const int term = (k - offset_) % terms_ + 1;
    return std::string(kind_->groups[static_cast<std::size_t>(g)].name) + "(" + std::to_string(term) + ")";
}

double Model::physicalFactor(int k, double xnorm, double ynorm) const {
    if (k < offset_) return ynorm;
    const int g = (k - offset_) / terms_;
    const int term = (k - offset_) % terms_ + 1;
    switch (kind_->groups[static_cast<std::size_t>(g)].scale) {
        case Scale::Y: return ynorm;
        case Scale::X: return xnorm;
        case Scale::PerX: return 1 / xnorm;
        case Scale::YPerXPower: return ynorm / std::pow(xnorm, term);
        case Scale::None: break;
    }
    return 1;
}

bool Model::isFrequency(int k) const {
    if (k < offset_) return false;
    return kind_->groups[static_cast<std::size_t>((k - offset_) / terms_)].frequency;
}

double Model::Value(const double* p, double u, double* grad) const {
    const int groups = static_cast<int>(kind_->groups.size());
    double v = 0;
    if (offset_) {
        v = p[0];
        if (grad) grad[0] = 1;
    }
    double q[kMaxGroups];
    double dq[kMaxGroups];
    for (int i = 1; i <= terms_; ++i) {
        for (int g = 0; g < groups; ++g) q[g] = p[index(g, i)];
        v += kind_->term(i, q, u, grad ? dq : nullptr);
        if (grad)
            for (int g = 0; g < groups; ++g) grad[index(g, i)] = dq[g];
    }
    return v;
}

}  // namespace quillet::fitting
