#pragma once
// A series model split by how the curve depends on its parameters: linearly on the offset and
// the amplitudes, nonlinearly on the shapes (widths, centres, rates, frequencies). The fit
// searches the shapes only; for each shape the best linear coefficients follow from one linear
// least-squares solve (variable projection).
//
// The linear basis: the offset's constant (when the model has one), then per term its basis
// functions (one; two for the modified Lorentzian, sin and cos for the sine models). A sine
// term A sin(2 pi B u + C) is a sin(2 pi B u) + b cos(2 pi B u), with A = hypot(a, b) and
// C = atan2(b, a) in (-pi, pi].
#include <Eigen/Core>
#include <cstddef>
#include <vector>

#include "fitting/models.h"

namespace quillet::fitting {

class SeparableModel {
  public:
    explicit SeparableModel(const Model& model);
    const Model& model() const { return model_; }
    int linearCount() const { return linear_; }        // offset and basis functions
    int nonlinearCount() const { return nonlinear_; }  // shape parameters
    int derivativeCount() const { return derivatives_; }
    // Columns of a block: the basis, the basis' derivatives by the shape parameters (unless
    // only the linear solve is wanted), the data.
    int width(bool derivatives = true) const { return linear_ + (derivatives ? derivatives_ : 0) + 1; }

    // `rows` rows of W [basis | derivatives | v] (or W [basis | v]) at shape `alpha`, weights w
    // (nullptr: 1), column-major with leading dimension `rows`.
    void FillBlock(const double* alpha, const double* u, const double* v, const double* w, std::size_t rows,
                   double* out, bool derivatives = true) const;
    // The derivatives of the curve by the shape parameters as combinations of the derivative
    // columns, for linear coefficients c: (derivativeCount x nonlinearCount).
    Eigen::MatrixXd Mixing(const Eigen::VectorXd& c) const;

    // The shape parameters of a full parameter vector (laid out as Model lays them out).
    std::vector<double> ShapeOf(const std::vector<double>& params) const;
    // The full parameters of the curve with shape `alpha` and linear coefficients `c`; widths
    // come out positive (the curve does not change with their sign).
    std::vector<double> ParamsOf(const std::vector<double>& alpha, const Eigen::VectorXd& c) const;
    // d z / d params at the curve (alpha, c), z its linear coefficients followed by its shape
    // parameters: ((linearCount + nonlinearCount) x parameterCount).
    Eigen::MatrixXd SplitByParams(const std::vector<double>& alpha, const Eigen::VectorXd& c) const;
    // The index in the full parameter vector of shape parameter k.
    int FullIndexOfShape(int k) const;

  private:
    const Model& model_;
    int basisPerTerm_, shapePerTerm_;
    int linear_, nonlinear_, derivatives_;
};

}  // namespace quillet::fitting
