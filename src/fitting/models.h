#pragma once
// The seven series models in normalised units u = x / Xnorm, v = y / Ynorm.
// Parameters are laid out as the questions give them: Y0 first (when the model has an
// offset), then the terms' values of each series question in question order.
#include <cstddef>
#include <string>
#include <vector>

namespace quillet::fitting {

// How a normalised parameter becomes a physical one.
enum class Scale {
    Y,            // times Ynorm
    X,            // times Xnorm
    PerX,         // divided by Xnorm
    YPerXPower,   // times Ynorm / Xnorm^i (the i-th power term)
    None,         // as it is
};

struct ParameterGroup {
    const char* name;   // "A", "PW50", ...
    int question;       // series question 9..12 that gives its starting values
    Scale scale;
    bool frequency;     // bounded between 0 and 130% of its starting value
};

class Model;

// The model's values at u[0..n) into values[]; when `jacobian` is given, row j (of
// parameterCount() entries) receives the derivatives at u[j].
using ValuesFn = void (*)(const Model& model, const double* p, const double* u, std::size_t n, double* values,
                          double* jacobian);

struct ModelKind {
    int id;  // list position in the model catalogue, which also names it
    bool hasOffset;
    std::vector<ParameterGroup> groups;
    ValuesFn values;
};

// The kind of model `id` (1..7); nullptr for any other id.
const ModelKind* FindModelKind(int id);

class Model {
public:
    Model(const ModelKind& kind, int terms);
    const ModelKind& kind() const { return *kind_; }
    int terms() const { return terms_; }
    int parameterCount() const;
    // Index of group g's value for term i (1-based) in the parameter vector.
    int index(int group, int term) const;
    // "Lorentzian, 3 terms"
    std::string description() const;
    // "Y0", "A(2)", "PW50(1)", ...
    std::string parameterName(int k) const;
    // Physical value = normalised value * this factor.
    double physicalFactor(int k, double xnorm, double ynorm) const;
    bool isFrequency(int k) const;
    // v at u; when `grad` is given it receives dv/dp for every parameter.
    double Value(const double* p, double u, double* grad) const;
    // Value() at every point of u[0..n), as ValuesFn describes.
    void Values(const double* p, const double* u, std::size_t n, double* values, double* jacobian) const;

private:
    const ModelKind* kind_;
    int terms_;
    int offset_;  // 1 when Y0 leads the parameters
};

}  // namespace quillet::fitting
