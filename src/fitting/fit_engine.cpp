#include "fitting/fit_engine.h"

#include <Eigen/Dense>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <optional>

#include "fitting/covariance.h"
#include "fitting/data_passes.h"
#include "fitting/dot.h"
#include "fitting/number_text.h"
#include "fitting/separable.h"
#include "fitting/streaming_qr.h"

namespace quillet::fitting {

namespace {

// Basis functions whose scaled columns are dependent below this ratio count as one: their
// split is left to the smallest coefficients instead of cancelling huge ones.
constexpr double kLinearRankTolerance = 1e-11;
// A Gauss-Newton step that would lower the sum of squares by less than this share of it
// finds nothing that rounding does not hide.
constexpr double kRoundingDecrease = 1e-12;
// Below this share of the data's sum of squares the curve goes through every point.
constexpr double kExactFit = 1e-26;
// The damping a refused undamped step starts from, relative to the squared column norms.
constexpr double kLeastDamping = 1e-3;
constexpr double kMostDamping = 1e16;
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kStraightBend = 0.02, kStraightQuality = 0.02;

// The model at one shape: the triangular factor R of W [basis | derivatives | v] over all
// points, the best linear coefficients and the weighted sum of squares.
struct Evaluation {
    bool ok = false;
    Eigen::MatrixXd r;
    Eigen::VectorXd c;
    double rss = kInf;
    int linearRank = 0;
};

void SolveLinear(const SeparableModel& sm, Evaluation& ev) {
    const int m = sm.linearCount(), last = static_cast<int>(ev.r.cols()) - 1;
    const Eigen::MatrixXd r11 = ev.r.topLeftCorner(m, m);
    const Eigen::VectorXd rhs = ev.r.col(last).head(m);
    // Columns scaled to unit length, so the rank test does not depend on the units.
    Eigen::VectorXd scale = r11.colwise().norm().transpose();
    for (double& s : scale)
        if (!(s > 0)) s = 1;
    Eigen::CompleteOrthogonalDecomposition<Eigen::MatrixXd> cod;
    cod.setThreshold(kLinearRankTolerance);
    cod.compute(r11 * scale.cwiseInverse().asDiagonal());
    ev.c = scale.cwiseInverse().asDiagonal() * cod.solve(rhs);
    ev.linearRank = static_cast<int>(cod.rank());
    ev.rss = (r11 * ev.c - rhs).squaredNorm() + ev.r.col(last).tail(last + 1 - m).squaredNorm();
}

// Without derivatives only the linear solve is made: c and the sum of squares, not a step.
Evaluation Evaluate(const SeparableModel& sm, const FitProblem& fp, const std::vector<double>& alpha,
                    bool derivatives = true) {
    Evaluation ev;
    const std::size_t n = fp.u.size();
    const int parts = PartsFor(n), width = sm.width(derivatives);
    std::vector<StreamingQr> qr(static_cast<std::size_t>(parts), StreamingQr(width));
    std::vector<std::vector<double>> blocks(static_cast<std::size_t>(parts),
                                            std::vector<double>(kBlockRows * static_cast<std::size_t>(width)));
    const double* w = fp.weights.empty() ? nullptr : fp.weights.data();
    PassInParts(n, parts, [&](int part, std::size_t first, std::size_t rows) {
        double* block = blocks[static_cast<std::size_t>(part)].data();
        sm.FillBlock(alpha.data(), fp.u.data() + first, fp.v.data() + first, w ? w + first : nullptr, rows, block,
                     derivatives);
        qr[static_cast<std::size_t>(part)].Fold(block, rows);
    });
    for (int part = 1; part < parts; ++part) qr[0].Merge(qr[static_cast<std::size_t>(part)]);
    ev.r = qr[0].R();
    if (!ev.r.allFinite()) return ev;
    SolveLinear(sm, ev);
    ev.ok = std::isfinite(ev.rss) && ev.c.allFinite();
    return ev;
}

// The residuals and their derivatives by the shape parameters with the linear coefficients
// re-solved (Kaufman's form), in the orthogonal complement of the basis: minimise |b + A d|.
struct Linearised {
    Eigen::MatrixXd a;
    Eigen::VectorXd b;
};

Linearised Linearise(const SeparableModel& sm, const Evaluation& ev) {
    const int nd = sm.derivativeCount();
    const Eigen::MatrixXd t = ev.r.bottomRightCorner(nd + 1, nd + 1);
    return {t.leftCols(nd) * sm.Mixing(ev.c), -t.col(nd)};
}

// The damped step over the free parameters: minimises |b + A d|^2 + lambda |D d|^2.
Eigen::VectorXd Step(const Linearised& l, const Eigen::VectorXd& d, double lambda, const std::vector<int>& free) {
    const auto nf = static_cast<Eigen::Index>(free.size());
    Eigen::VectorXd step = Eigen::VectorXd::Zero(l.a.cols());
    if (nf == 0) return step;
    const Eigen::Index rows = l.a.rows();
    Eigen::MatrixXd m = Eigen::MatrixXd::Zero(rows + nf, nf);
    m.topRows(rows) = l.a(Eigen::all, free);
    for (Eigen::Index k = 0; k < nf; ++k) m(rows + k, k) = std::sqrt(lambda) * d(free[static_cast<std::size_t>(k)]);
    Eigen::VectorXd rhs = Eigen::VectorXd::Zero(rows + nf);
    rhs.head(rows) = -l.b;
    const Eigen::VectorXd sub = m.completeOrthogonalDecomposition().solve(rhs);
    for (Eigen::Index k = 0; k < nf; ++k) step(free[static_cast<std::size_t>(k)]) = sub(k);
    return step;
}

double PredictedDecrease(const Linearised& l, const Eigen::VectorXd& step) {
    return l.b.squaredNorm() - (l.b + l.a * step).squaredNorm();
}

// The curve at shape `beta` (its best linear coefficients and sum of squares) and J' x, J the
// Kaufman Jacobian at `ev` (shape `alpha`), x the weighted residuals of that curve, in one pass
// over the data: X' x = (X' Y) [c; -1] for the blocks X at alpha and Y = W [basis | v] at beta.
// Then J' x = Mix' (D' P x), P the projection off the basis, through R's blocks (Phi = Q1 R11,
// Q1' D = R12).
struct Probe {
    Evaluation there;
    Eigen::VectorXd jacobianTimesResidual;
};

Probe ProbeAt(const SeparableModel& sm, const FitProblem& fp, const std::vector<double>& alpha,
              const Evaluation& ev, const std::vector<double>& beta) {
    const int m = sm.linearCount(), nd = sm.derivativeCount(), width = sm.width();
    Probe probe;
    const std::size_t n = fp.u.size();
    const int parts = PartsFor(n);
    const auto count = static_cast<std::size_t>(parts);
    std::vector<StreamingQr> qr(count, StreamingQr(m + 1));
    std::vector<Eigen::MatrixXd> cross(count, Eigen::MatrixXd::Zero(width, m + 1));
    std::vector<std::vector<double>> here(count, std::vector<double>(kBlockRows * static_cast<std::size_t>(width))),
        there(count, std::vector<double>(kBlockRows * static_cast<std::size_t>(m + 1)));
    const double* weights = fp.weights.empty() ? nullptr : fp.weights.data();
    PassInParts(n, parts, [&](int part, std::size_t first, std::size_t rows) {
        const auto p = static_cast<std::size_t>(part);
        const double* wt = weights ? weights + first : nullptr;
        double *x = here[p].data(), *y = there[p].data();
        sm.FillBlock(alpha.data(), fp.u.data() + first, fp.v.data() + first, wt, rows, x);
        sm.FillBlock(beta.data(), fp.u.data() + first, fp.v.data() + first, wt, rows, y, false);
        AddColumnProducts(x, width, y, m + 1, rows, cross[p].data());
        qr[p].Fold(y, rows);
    });
    for (std::size_t p = 1; p < count; ++p) {
        qr[0].Merge(qr[p]);
        cross[0] += cross[p];
    }
    probe.there.r = qr[0].R();
    if (!probe.there.r.allFinite()) return probe;
    SolveLinear(sm, probe.there);
    probe.there.ok = std::isfinite(probe.there.rss) && probe.there.c.allFinite();
    if (!probe.there.ok) return probe;
    Eigen::VectorXd coefficients(m + 1);
    coefficients << probe.there.c, -1;
    const Eigen::VectorXd xtx = cross[0] * coefficients;
    const Eigen::MatrixXd mix = sm.Mixing(ev.c);
    const Eigen::MatrixXd r11 = ev.r.topLeftCorner(m, m);
    const Eigen::VectorXd z = r11.transpose().triangularView<Eigen::Lower>().solve(xtx.head(m));
    probe.jacobianTimesResidual =
        mix.transpose() * xtx.segment(m, nd) - (ev.r.block(0, m, m, nd) * mix).transpose() * z;
    return probe;
}

class ShapeSearch {
  public:
    ShapeSearch(const FitProblem& fp, const SeparableModel& sm) : fp_(fp), sm_(sm), o_(fp.options) {
        const int q = sm.nonlinearCount();
        alpha_ = sm.ShapeOf(fp.start);
        lower_.assign(static_cast<std::size_t>(q), -kInf);
        upper_.assign(static_cast<std::size_t>(q), kInf);
        for (int k = 0; k < q; ++k) {
            const auto full = static_cast<std::size_t>(sm.FullIndexOfShape(k)), i = static_cast<std::size_t>(k);
            if (full < fp.lower.size()) lower_[i] = fp.lower[full];
            if (full < fp.upper.size()) upper_[i] = fp.upper[full];
            alpha_[i] = std::clamp(alpha_[i], lower_[i], upper_[i]);
        }
        scale_ = Eigen::VectorXd::Zero(q);
    }

    FitResult Run() {
        FitResult result;
        ev_ = Evaluated(alpha_, result);
        if (!ev_.ok) {
            result.outcome = FitOutcome::Diverged;
            result.reason = "the model cannot be evaluated at the starting values";
            return result;
        }
        if (sm_.nonlinearCount() == 0) {
            result.outcome = FitOutcome::Converged;
            result.reason =
                "the model is linear in all its parameters: one weighted least-squares solve, no iterations";
        } else {
            Iterate(result);
        }
        result.params = sm_.ParamsOf(alpha_, ev_.c);
        result.weightedRss = ev_.rss;
        result.linearRankDeficient = ev_.linearRank < sm_.linearCount();
        for (std::size_t k = 0; k < alpha_.size(); ++k)
            if (alpha_[k] <= lower_[k] || alpha_[k] >= upper_[k])
                result.atBound.push_back(sm_.FullIndexOfShape(static_cast<int>(k)));
        return result;
    }

    // R of the weighted Jacobian of the full model at the result (every parameter, linear ones
    // included): the split's Jacobian [basis | derivatives Mix] times d split / d params, from
    // the factor the last evaluation left, without another pass over the data.
    Eigen::MatrixXd ParameterFactor() const {
        const int m = sm_.linearCount(), nd = sm_.derivativeCount(), q = sm_.nonlinearCount();
        Eigen::MatrixXd mix = Eigen::MatrixXd::Zero(m + nd, m + q);
        mix.topLeftCorner(m, m).setIdentity();
        mix.bottomRightCorner(nd, q) = sm_.Mixing(ev_.c);
        // Products of a few columns: lazily, without the blocking set-up of a large product.
        const Eigen::MatrixXd j =
            ev_.r.topLeftCorner(m + nd, m + nd).lazyProduct(mix).lazyProduct(sm_.SplitByParams(alpha_, ev_.c));
        const Eigen::HouseholderQR<Eigen::MatrixXd> qr(j);
        return qr.matrixQR().topRows(j.cols()).triangularView<Eigen::Upper>();
    }

  private:
    Evaluation Evaluated(const std::vector<double>& alpha, FitResult& result) const {
        ++result.evaluations;
        return Evaluate(sm_, fp_, alpha);
    }

    // Parameters on a bound that the gradient presses against it stay where they are.
    std::vector<int> FreeParameters(const Linearised& l) const {
        const Eigen::VectorXd g = l.a.transpose() * l.b;
        std::vector<int> free;
        for (int k = 0; k < static_cast<int>(alpha_.size()); ++k) {
            const auto i = static_cast<std::size_t>(k);
            const bool pressed = (alpha_[i] <= lower_[i] && g(k) > 0) || (alpha_[i] >= upper_[i] && g(k) < 0);
            if (!pressed) free.push_back(k);
        }
        return free;
    }

    // Why the fit has converged at the current shape, if it has.
    std::optional<std::string> Converged(const Linearised& l, const std::vector<int>& free, double lastDecrease) const {
        const double total = ev_.r.col(sm_.width() - 1).squaredNorm();
        if (ev_.rss <= kExactFit * total) return "the curve passes through every point within rounding";
        const Eigen::VectorXd full = Step(l, scale_, 0, free);
        const double predicted = std::max(0.0, PredictedDecrease(l, full));
        if (predicted <= kRoundingDecrease * ev_.rss) return "the sum of squares is at its least within rounding";
        if (o_.stepTolerance) {
            const double size =
                Eigen::Map<const Eigen::VectorXd>(alpha_.data(), static_cast<Eigen::Index>(alpha_.size())).norm();
            const double tol = *o_.stepTolerance;
            if (full.norm() <= tol * (size + tol))
                return "a full step would change the shape parameters by less than DELTA = " + FormatShort(tol) +
                       " of their size";
        }
        if (o_.functionTolerance && lastDecrease <= *o_.functionTolerance &&
            predicted <= *o_.functionTolerance * ev_.rss)
            return "the sum of squares changed by less than ZERO = " + FormatShort(*o_.functionTolerance) +
                   " of its value, and a full step would lower it by less";
        if (o_.gradientTolerance) {
            const Eigen::VectorXd g = l.a.transpose() * l.b;
            double cosine = 0;
            for (int k : free) {
                const double norm = l.a.col(k).norm() * l.b.norm();
                if (norm > 0) cosine = std::max(cosine, std::fabs(g(k)) / norm);
            }
            if (cosine <= *o_.gradientTolerance)
                return "the residuals are orthogonal to every direction the parameters can move the curve within "
                       "ACCURACY = " +
                       FormatShort(*o_.gradientTolerance);
        }
        return std::nullopt;
    }

    // Geodesic acceleration (Transtrum and Sethna): the second-order correction of a step along
    // a curved valley, from the residuals a tenth of the way along it. Nothing when it would
    // dominate the step, or when the basis is singular.
    Eigen::VectorXd Acceleration(const Linearised& l, const Eigen::VectorXd& d, double lambda,
                                 const std::vector<int>& free, const Eigen::VectorXd& velocity,
                                 FitResult& result) const {
        constexpr double h = 0.1;
        Eigen::VectorXd acc = Eigen::VectorXd::Zero(velocity.size());
        const int m = sm_.linearCount();
        if (free.empty() || !(ev_.r.topLeftCorner(m, m).diagonal().cwiseAbs().minCoeff() > 0)) return acc;
        std::vector<double> beta = alpha_;
        for (std::size_t i = 0; i < beta.size(); ++i) beta[i] += h * velocity(static_cast<Eigen::Index>(i));
        result.evaluations += 2;  // both curves once more over all points
        const Probe probe = ProbeAt(sm_, fp_, alpha_, ev_, beta);
        if (!probe.there.ok) return acc;
        const Eigen::VectorXd& jr = probe.jacobianTimesResidual;
        const Eigen::MatrixXd at = l.a.transpose();
        // J' times the second directional derivative of the residuals, by finite differences.
        const Eigen::VectorXd curvature = (2 / h) * ((jr - at * l.b) / h - at * (l.a * velocity));
        Eigen::MatrixXd normal = at * l.a;
        normal.diagonal() += lambda * d.cwiseAbs2();
        const Eigen::VectorXd sub = normal(free, free).ldlt().solve(-curvature(free));
        for (std::size_t k = 0; k < free.size(); ++k) acc(free[k]) = sub(static_cast<Eigen::Index>(k));
        if (!acc.allFinite() || 2 * acc.norm() > 0.75 * velocity.norm()) acc.setZero();
        return acc / 2;
    }

    void Iterate(FitResult& result) {
        double lambda = o_.firstDamping, growth = 2, lastDecrease = kInf;
        for (;;) {
            const Linearised l = Linearise(sm_, ev_);
            for (Eigen::Index k = 0; k < scale_.size(); ++k) scale_(k) = std::max(scale_(k), l.a.col(k).norm());
            const std::vector<int> free = FreeParameters(l);
            if (auto why = Converged(l, free, lastDecrease)) {
                result.outcome = FitOutcome::Converged;
                result.reason = *why;
                return;
            }
            result.outcome = FitOutcome::NotConverged;
            if (result.iterations >= o_.maxIterations) {
                result.reason = "the limit of " + std::to_string(o_.maxIterations) + " iterations (REMAX) was reached";
                return;
            }
            if (o_.maxEvaluations && result.evaluations >= *o_.maxEvaluations) {
                result.reason =
                    "the limit of " + std::to_string(*o_.maxEvaluations) + " model evaluations (EvalMax) was reached";
                return;
            }
            ++result.iterations;
            Eigen::VectorXd d = scale_;
            for (double& s : d)
                if (!(s > 0)) s = 1;
            const Eigen::VectorXd velocity = Step(l, d, lambda, free);
            // A valley that hardly bent at the last probe, followed by a step that did as the
            // linear model said, needs no probe for this step.
            Eigen::VectorXd step = velocity;
            if (!(bend_ < kStraightBend && std::fabs(lastQuality_ - 1) < kStraightQuality)) {
                const Eigen::VectorXd acc = Acceleration(l, d, lambda, free, velocity, result);
                bend_ = acc.norm() / velocity.norm();
                step += acc;
            }
            std::vector<double> trial = alpha_;
            Eigen::VectorXd taken(step.size());
            for (Eigen::Index k = 0; k < step.size(); ++k) {
                const auto i = static_cast<std::size_t>(k);
                trial[i] = std::clamp(alpha_[i] + step(k), lower_[i], upper_[i]);
                taken(k) = trial[i] - alpha_[i];
            }
            // The acceleration bends the step along the valley, which the linear model cannot see.
            const double predicted = std::max(PredictedDecrease(l, taken), PredictedDecrease(l, velocity));
            Evaluation next = Evaluated(trial, result);
            const double decrease = next.ok ? ev_.rss - next.rss : -kInf;
            const double quality = predicted > 0 ? decrease / predicted : -kInf;
            lastQuality_ = quality;
            if (quality > 1e-4) {
                lastDecrease = decrease / ev_.rss;
                alpha_ = std::move(trial);
                ev_ = std::move(next);
                // Less damping the better the step did as predicted (Nielsen's rule).
                if (quality < o_.dampingThreshold)
                    lambda = lambda > 0 ? lambda * 2 : kLeastDamping;
                else
                    lambda *= std::max(1.0 / 3, 1 - std::pow(2 * quality - 1, 3));
                growth = 2;
            } else {
                lambda = lambda > 0 ? lambda * growth : kLeastDamping;
                growth *= 2;
            }
            Progress(result, taken.norm());
            if (lambda > kMostDamping || taken.norm() == 0) {
                result.reason = "no step lowers the sum of squares any more";
                return;
            }
        }
    }

    void Progress(const FitResult& result, double stepLength) const {
        const int every = o_.progressEvery;
        if (every > 0 && result.iterations % every == 0 && fp_.progress)
            fp_.progress("iteration " + std::to_string(result.iterations) + ": normalised RSS " +
                         FormatShort(ev_.rss, 10) + ", step " + FormatShort(stepLength, 3) + ", evaluations " +
                         std::to_string(result.evaluations));
    }

    const FitProblem& fp_;
    const SeparableModel& sm_;
    const EngineOptions& o_;
    std::vector<double> alpha_, lower_, upper_;
    Eigen::VectorXd scale_;  // Marquardt's damping scale: the largest column norms seen
    double bend_ = kInf;      // |acceleration| / |velocity| at the last probe
    double lastQuality_ = 0;  // actual / predicted decrease of the last step
    Evaluation ev_;
};

}  // namespace

void SetModelBounds(FitProblem& problem) {
    const Model& m = *problem.model;
    const std::size_t np = static_cast<std::size_t>(m.parameterCount());
    problem.lower.assign(np, -kInf);
    problem.upper.assign(np, kInf);
    for (std::size_t k = 0; k < np; ++k)
        if (m.isFrequency(static_cast<int>(k))) {
            problem.lower[k] = 0;
            problem.upper[k] = 1.3 * problem.start[k];
        }
}

std::vector<double> BestLinearFor(const FitProblem& fp) {
    const SeparableModel sm(*fp.model);
    const std::vector<double> alpha = sm.ShapeOf(fp.start);
    const Evaluation ev = Evaluate(sm, fp, alpha, false);
    if (!ev.ok) return {};
    return sm.ParamsOf(alpha, ev.c);
}

FitResult RunEngine(const FitProblem& fp) {
    const auto t0 = std::chrono::steady_clock::now();
    const SeparableModel sm(*fp.model);
    ShapeSearch search(fp, sm);
    FitResult result = search.Run();
    if (result.outcome != FitOutcome::Diverged) {
        const long dof = static_cast<long>(fp.u.size()) - fp.model->parameterCount();
        result.stdErrors = StandardErrors(search.ParameterFactor(),
                                          result.weightedRss / static_cast<double>(dof), result.stdErrorsNote);
    }
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    return result;
}

}  // namespace quillet::fitting
