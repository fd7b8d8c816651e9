// The least a Levenberg-Marquardt fit of a Lorentzian series with offset must do per model
// evaluation: the model's values and its analytic Jacobian at every point, and the normal
// equations J'J and J'r accumulated from them, nothing else. `quillet-cli fit` is compared
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
#include <vector>

namespace {

constexpr std::size_t kBlockRows = 256;

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

// One evaluation: J'J (lower triangle) and J'r over all points, in blocks of rows.
double Evaluate(const Data& d, const std::vector<double>& p, Eigen::MatrixXd& jtj, Eigen::VectorXd& jtr) {
    const int np = static_cast<int>(p.size()), terms = (np - 1) / 3;
    Eigen::MatrixXd j(kBlockRows, np);
    Eigen::VectorXd r(kBlockRows);
    jtj.setZero();
    jtr.setZero();
    double rss = 0;
    const std::size_t n = d.u.size();
    for (std::size_t first = 0; first < n; first += kBlockRows) {
        const std::size_t rows = std::min(kBlockRows, n - first);
        for (std::size_t i = 0; i < rows; ++i) {
            const double u = d.u[first + i];
            double y = p[0];
            j(static_cast<Eigen::Index>(i), 0) = 1;
            for (int t = 0; t < terms; ++t) {
                const double a = p[1 + 3 * t], w = p[2 + 3 * t], c = p[3 + 3 * t];
                const double rw = 1 / w, s = 2 * (u - c) * rw, l = 1 / (1 + s * s);
                const double dl = -2 * a * s * l * l;
                y += a * l;
                j(static_cast<Eigen::Index>(i), 1 + 3 * t) = l;
                j(static_cast<Eigen::Index>(i), 2 + 3 * t) = dl * (-s * rw);
                j(static_cast<Eigen::Index>(i), 3 + 3 * t) = dl * (-2 * rw);
            }
            r(static_cast<Eigen::Index>(i)) = y - d.v[first + i];
        }
        const auto rws = static_cast<Eigen::Index>(rows);
        jtj.selfadjointView<Eigen::Lower>().rankUpdate(j.topRows(rws).transpose());
        jtr.noalias() += j.topRows(rws).transpose() * r.head(rws);
        rss += r.head(rws).squaredNorm();
    }
    return rss;
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
