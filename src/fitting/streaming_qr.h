#pragma once
// The triangular factor R of a tall matrix X = QR, built from blocks of rows as they come, so
// that a fit over a million points never holds more than one block: R'R = X'X without squaring
// X's condition number, and Q'y of any column y of X is the matching column of R.
#include <Eigen/Core>
#include <cstddef>

namespace quillet::fitting {

class StreamingQr {
  public:
    explicit StreamingQr(int width);
    int width() const { return width_; }
    // Folds `rows` rows of X into R. `block` is column-major with leading dimension `rows`;
    // its contents are used up.
    void Fold(double* block, std::size_t rows);
    // Folds in the rows another factor has taken, as if they had come here.
    void Merge(const StreamingQr& other);
    // The upper triangular factor (width x width) of the rows folded so far.
    const Eigen::MatrixXd& R() const { return r_; }

  private:
    int width_;
    Eigen::MatrixXd r_;
};

}  // namespace quillet::fitting
