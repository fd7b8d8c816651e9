#include "fitting/models.h"

#include <array>
#include <cmath>

#include "fitting/model_terms.h"
#include "model/catalogue.h"

namespace quillet::fitting {

namespace {

constexpr int kMaxGroups = 4;

// The sum of a model's terms over many points, term by term, with the term's code inlined.
template <double (*Term)(int, const double*, double, double*)>
void SumOfTerms(const Model& m, const double* p, const double* u, std::size_t n, double* values, double* jacobian) {
    const int groups = static_cast<int>(m.kind().groups.size());
    const std::size_t np = static_cast<std::size_t>(m.parameterCount());
    const double offset = m.kind().hasOffset ? p[0] : 0;
    for (std::size_t j = 0; j < n; ++j) values[j] = offset;
    if (jacobian && m.kind().hasOffset)
        for (std::size_t j = 0; j < n; ++j) jacobian[j * np] = 1;
    for (int i = 1; i <= m.terms(); ++i) {
        double q[kMaxGroups];
        std::size_t column[kMaxGroups];
        for (int g = 0; g < groups; ++g) {
            column[g] = static_cast<std::size_t>(m.index(g, i));
            q[g] = p[column[g]];
        }
        if (!jacobian) {
            for (std::size_t j = 0; j < n; ++j) values[j] += Term(i, q, u[j], nullptr);
            continue;
        }
        for (std::size_t j = 0; j < n; ++j) {
            double dq[kMaxGroups];
            values[j] += Term(i, q, u[j], dq);
            double* row = jacobian + j * np;
            for (int g = 0; g < groups; ++g) row[column[g]] = dq[g];
        }
    }
}

const std::array<ModelKind, 7>& Kinds() {
    static const std::array<ModelKind, 7> kinds = {{
        {model::Lorentzian, true,
         {{"A", 9, Scale::Y, false}, {"PW50", 10, Scale::X, false}, {"t0", 11, Scale::X, false}},
         SumOfTerms<terms::Lorentzian>},
        {model::ModifiedLorentzian, true,
         {{"A", 9, Scale::Y, false},
          {"PW50", 10, Scale::X, false},
          {"t0", 11, Scale::X, false},
          {"B", 12, Scale::Y, false}},
         SumOfTerms<terms::ModifiedLorentzian>},
        {model::Exponential, true, {{"A", 9, Scale::Y, false}, {"B", 10, Scale::PerX, false}},
         SumOfTerms<terms::Exponential>},
        {model::Power, true, {{"A", 9, Scale::YPerXPower, false}}, SumOfTerms<terms::Power>},
        {model::Sine, true,
         {{"A", 9, Scale::Y, false}, {"B", 10, Scale::PerX, true}, {"C", 11, Scale::None, false}},
         SumOfTerms<terms::Sine>},
        {model::SineExponential, true,
         {{"A", 9, Scale::Y, false},
          {"B", 10, Scale::PerX, true},
          {"C", 11, Scale::None, false},
          {"D", 12, Scale::PerX, false}},
         SumOfTerms<terms::SineExponential>},
        {model::BellCurve, false,
         {{"T0", 9, Scale::X, false}, {"A", 10, Scale::Y, false}, {"B", 11, Scale::X, false}},
         SumOfTerms<terms::BellCurve>},
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

std::string Model::description() const {
    return std::string(kModelNames[static_cast<std::size_t>(kind_->id)]) + ", " + std::to_string(terms_) + " terms";
}

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
    double v = 0;
    kind_->values(*this, p, &u, 1, &v, grad);
    return v;
}

void Model::Values(const double* p, const double* u, std::size_t n, double* values, double* jacobian) const {
    kind_->values(*this, p, u, n, values, jacobian);
}

}  // namespace quillet::fitting
