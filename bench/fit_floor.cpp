// The least a Levenberg-Marquardt fit of a Lorentzian series with offset must do per model
// evaluation: the model's values and its analytic Jacobian at every point, and the normal
// equations J'J and J'r accumulated from them, nothing else; large data in two halves side by
// side, as quillet-cli takes them. `quillet-cli fit` is compared
// with this program doing as many evaluations as the fit reports.
//
//   fit_floor DATA XNORM YNORM EVALUATIONS RUNS Y0 A1 W1 T1 [A2 W2 T2 ...]
//
// DATA holds "x y" rows; the parameters are normalised (x / XNORM, y / YNORM). Prints the
// median time of RUNS runs of EVALUATIONS evaluations in milliseconds, and a checksum that
// keeps the compiler from leaving anything out.
#include <Eigen/Core>
#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kBlockRows = 256;
constexpr std::size_t kPointsPerPart = 16384;

struct Data {
    std::vector<double> u, v;
};

Data Read(const char* path, double xnorm, double ynorm) {
    std::ifstream in(path);
    Data d;
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        double x = 0, y = 0;
        if (fields >> x >> y) {
            d.u.push_back(x / xnorm);
            d.v.push_back(y / ynorm);
        }
    }
    return d;
}

// Four partial sums, so that the loop vectorises without reordering one sum. Faster here than
// Eigen's rank update, whose packing costs more than it saves on ten columns.
double Dot(const double* x, const double* y, std::size_t n) {
    double s0 = 0, s1 = 0, s2 = 0, s3 = 0;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        s0 += x[i] * y[i];
        s1 += x[i + 1] * y[i + 1];
        s2 += x[i + 2] * y[i + 2];
        s3 += x[i + 3] * y[i + 3];
    }
    for (; i < n; ++i) s0 += x[i] * y[i];
    return (s0 + s1) + (s2 + s3);
}

// J'J (lower triangle) and J'r over the points [begin, end), in blocks of rows.
double EvaluateRange(const Data& d, const std::vector<double>& p, std::size_t begin, std::size_t end,
                     Eigen::MatrixXd& jtj, Eigen::VectorXd& jtr) {
    const auto np = static_cast<Eigen::Index>(p.size());
    const int terms = static_cast<int>((np - 1) / 3);
    Eigen::MatrixXd j(kBlockRows, np);
    Eigen::VectorXd r(kBlockRows);
    jtj.setZero();
    jtr.setZero();
    double rss = 0;
    for (std::size_t first = begin; first < end; first += kBlockRows) {
        const std::size_t rows = std::min(kBlockRows, end - first);
        const auto rws = static_cast<Eigen::Index>(rows);
        const double* u = d.u.data() + first;
        // Column by column, each term's shape constants hoisted: the loops vectorise.
        j.col(0).head(rws).setOnes();
        for (std::size_t i = 0; i < rows; ++i) r(static_cast<Eigen::Index>(i)) = p[0] - d.v[first + i];
        for (int t = 0; t < terms; ++t) {
            const double a = p[1 + 3 * t], rw = 1 / p[2 + 3 * t], c = p[3 + 3 * t];
            double* cl = j.col(1 + 3 * t).data();
            double* cw = j.col(2 + 3 * t).data();
            double* ct = j.col(3 + 3 * t).data();
            double* res = r.data();
            for (std::size_t i = 0; i < rows; ++i) {
                const double s = 2 * (u[i] - c) * rw, l = 1 / (1 + s * s);
                const double dl = -2 * a * s * l * l;
                res[i] += a * l;
                cl[i] = l;
                cw[i] = dl * (-s * rw);
                ct[i] = dl * (-2 * rw);
            }
        }
        for (Eigen::Index c1 = 0; c1 < np; ++c1)
            for (Eigen::Index c2 = c1; c2 < np; ++c2) jtj(c2, c1) += Dot(j.col(c1).data(), j.col(c2).data(), rows);
        jtr.noalias() += j.topRows(rws).transpose() * r.head(rws);
        rss += r.head(rws).squaredNorm();
    }
    return rss;
}

// One evaluation over all points, in two halves side by side from kPointsPerPart * 2 points on,
// as quillet-cli cuts its passes.
double Evaluate(const Data& d, const std::vector<double>& p, Eigen::MatrixXd& jtj, Eigen::VectorXd& jtr) {
    const std::size_t n = d.u.size();
    if (n < 2 * kPointsPerPart) return EvaluateRange(d, p, 0, n, jtj, jtr);
    const std::size_t blocks = (n + kBlockRows - 1) / kBlockRows, middle = blocks / 2 * kBlockRows;
    Eigen::MatrixXd jtj2(jtj.rows(), jtj.cols());
    Eigen::VectorXd jtr2(jtr.size());
    double rss2 = 0;
    std::thread other([&] { rss2 = EvaluateRange(d, p, middle, n, jtj2, jtr2); });
    const double rss = EvaluateRange(d, p, 0, middle, jtj, jtr);
    other.join();
    jtj += jtj2;
    jtr += jtr2;
    return rss + rss2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 10 || (argc - 7) % 3 != 0) {
        std::fprintf(stderr, "usage: fit_floor DATA XNORM YNORM EVALUATIONS RUNS Y0 A1 W1 T1 [A2 W2 T2 ...]\n");
        return 2;
    }
    const Data d = Read(argv[1], std::atof(argv[2]), std::atof(argv[3]));
    const int evaluations = std::atoi(argv[4]), runs = std::atoi(argv[5]);
    std::vector<double> p;
    for (int k = 6; k < argc; ++k) p.push_back(std::atof(argv[k]));
    const auto np = static_cast<Eigen::Index>(p.size());
    Eigen::MatrixXd jtj(np, np);
    Eigen::VectorXd jtr(np);
    std::vector<double> ms;
    double checksum = 0;
    for (int run = 0; run < runs; ++run) {
        const auto t0 = std::chrono::steady_clock::now();
        for (int e = 0; e < evaluations; ++e) {
            checksum += Evaluate(d, p, jtj, jtr);
            checksum += jtj(np - 1, 0) + jtr(0);
        }
        ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count());
    }
    std::nth_element(ms.begin(), ms.begin() + runs / 2, ms.end());
    std::printf("%.4f %.6g\n", ms[static_cast<std::size_t>(runs / 2)], checksum);
    return 0;
}
