// A series of data files fitted with one response file: the table's values, a chain that
// follows a drifting peak, a bad file among good ones, and shards merged into one table.
#include "fitting/series.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <random>
#include <sstream>

#include "fit_test_files.h"
#include "fitting/fit_error.h"
#include "fitting/number_text.h"
#include "support/run_command.h"
#include "support/test_env.h"

namespace quillet::fitting {
namespace {

class Series : public ::testing::Test {
  protected:
    // A Lorentzian of height 50 and width 4 on an offset of 2, centred at `centre`, with noise.
    void WritePeak(const std::string& name, double centre, std::uint64_t seed) {
        std::mt19937_64 rng(seed);
        std::normal_distribution<double> noise(0, 0.5);
        std::vector<double> x, y;
        for (int i = 0; i < 400; ++i) {
            x.push_back(i * 0.25);
            const double s = 2 * (x.back() - centre) / 4;
            y.push_back(2 + 50 / (1 + s * s) + noise(rng));
        }
        testing::WriteData(dir / name, x, y);
        files.push_back(name);
    }
    // The response file: the peak starting at x = 20.
    void WriteResponse() {
        testing::ResponseAnswers r;
        r.answers = {"", files.front(), "Lorentzian", "3", "400", "1", "100", "100", "0", "0.5", "0.04", "0.2", ""};
        testing::WriteResponse(dir.path(), "S.Fit", r);
    }
    SeriesTable Run(SeriesRequest::Start start, int jobs = 2, int shard = 1, int shards = 1) {
        SeriesRequest request{"S.Fit", files, start, jobs, shard, shards};
        std::atomic<bool> stop{false};
        return RunSeries(request, dir.path(), {}, stop);
    }

    testing::TempDir dir;
    std::vector<std::string> files;
};

TEST_F(Series, TableHoldsEveryFilesParametersWithinThreeStandardErrors) {
    for (int k = 0; k < 6; ++k) WritePeak("p" + std::to_string(k) + ".dat", 20 + 0.2 * k, 10 + k);
    WriteResponse();
    const SeriesTable table = Run(SeriesRequest::Start::Answers);
    EXPECT_EQ(table.parameterNames, (std::vector<std::string>{"Y0", "A(1)", "PW50(1)", "t0(1)"}));
    ASSERT_EQ(table.rows.size(), 6u);
    for (std::size_t k = 0; k < 6; ++k) {
        const SeriesRow& r = table.rows[k];
        EXPECT_EQ(r.index, k + 1);
        EXPECT_EQ(r.dataFile, files[k]);
        ASSERT_EQ(r.verdict, "converged") << r.reason;
        const double truth[] = {2, 50, 4, 20 + 0.2 * static_cast<double>(k)};
        for (std::size_t p = 0; p < 4; ++p)
            EXPECT_LE(std::fabs(r.values[p] - truth[p]), 3 * r.errors[p]) << k << " " << p;
    }
    // The table on disk, and each file's own report in a folder named after it.
    EXPECT_EQ(testing::ReadBytes(dir / "output/S.series.csv"), SeriesCsv(table));
    EXPECT_TRUE(std::filesystem::exists(dir / "output/p3.dat/~Quillet.out"));
    EXPECT_TRUE(std::filesystem::exists(dir / "output/p3.dat/s.plt"));
}

TEST_F(Series, AChainFollowsADriftingPeakThatIndependentFitsLose) {
    for (int k = 0; k < 12; ++k) WritePeak("d" + std::to_string(k) + ".dat", 20 + 2.0 * k, 30 + k);
    WriteResponse();
    auto lastCentre = [](const SeriesTable& t) { return t.rows.back().values.empty() ? 0 : t.rows.back().values[3]; };
    const SeriesTable chained = Run(SeriesRequest::Start::Chain);
    for (const auto& r : chained.rows) EXPECT_EQ(r.verdict, "converged") << r.dataFile << ": " << r.reason;
    EXPECT_NEAR(lastCentre(chained), 42, 0.1);
    const SeriesTable independent = Run(SeriesRequest::Start::Answers);
    EXPECT_GT(std::fabs(lastCentre(independent) - 42), 1);
    // Each file's own proposal finds the peak wherever it is.
    for (const auto& r : Run(SeriesRequest::Start::Suggest).rows) EXPECT_EQ(r.verdict, "converged") << r.dataFile;
}

TEST_F(Series, ABadFileFailsItsRowWithTheReasonAndTheOthersGoOn) {
    WritePeak("a.dat", 20, 1);
    testing::WriteBytes(dir / "b.dat", "x y\r\nX Y\r\n1 2\r\n3 oops\r\n");
    files.push_back("b.dat");
    WritePeak("c.dat", 21, 2);
    WriteResponse();
    const SeriesTable table = Run(SeriesRequest::Start::Answers, 1);
    ASSERT_EQ(table.rows.size(), 3u);
    EXPECT_EQ(table.rows[0].verdict, "converged");
    EXPECT_EQ(table.rows[1].verdict, "failed");
    EXPECT_EQ(table.rows[1].reason,
              "Line 4 of the data file \"" + dir / "b.dat" + "\" holds \"oops\", which is not a number.");
    EXPECT_EQ(table.rows[2].verdict, "converged");
    const std::string csv = SeriesCsv(table);
    EXPECT_NE(csv.find("\r\n2,b.dat,failed,\"Line 4 of the data file \"\"" + dir / "b.dat" +
                       "\"\" holds \"\"oops\"\", which is not a number.\"\r\n3,c.dat,converged,"),
              std::string::npos)
        << csv;
    // The table reads back as it was written, quoted reasons and failed rows included.
    EXPECT_EQ(SeriesCsv(ReadSeriesCsv(table.path)), csv);
}

TEST_F(Series, ShardsMergeIntoTheTableOfOneRun) {
    for (int k = 0; k < 7; ++k) WritePeak("m" + std::to_string(k) + ".dat", 20 + 0.1 * k, 50 + k);
    WriteResponse();
    const std::string whole = SeriesCsv(Run(SeriesRequest::Start::Answers));
    for (int shard = 1; shard <= 3; ++shard) {
        const SeriesTable part = Run(SeriesRequest::Start::Answers, 1, shard, 3);
        EXPECT_EQ(part.path, dir / ("output/S.series." + std::to_string(shard) + "-of-3.csv"));
        EXPECT_EQ(part.rows.front().index, static_cast<std::size_t>(shard));
    }
    std::filesystem::remove(dir / "output/S.series.csv");
    EXPECT_EQ(MergeSeriesShards("S.Fit", dir.path()), dir / "output/S.series.csv");
    EXPECT_EQ(testing::ReadBytes(dir / "output/S.series.csv"), whole);
}

TEST_F(Series, CommandLineSaysEachFileAsItEndsAndExitsByTheWorstVerdict) {
    WritePeak("a.dat", 20, 1);
    WritePeak("b.dat", 20.5, 2);
    WriteResponse();
    auto run = testing::RunProgram(QUILLET_CLI, {"batch", "S.Fit", "a.dat", "b.dat", "--jobs", "1"}, "", dir.path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("1/2 a.dat converged, RSS ", 0), 0u) << run.out;
    run = testing::RunProgram(QUILLET_CLI, {"batch", "S.Fit", "a.dat", "none.dat"}, "", dir.path());
    EXPECT_EQ(run.status, 1);
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"batch", "S.Fit"},
                                                  {"batch", "S.Fit", "a.dat", "--shard", "4/3"},
                                                  {"batch", "S.Fit", "a.dat", "--jobs", "0"}})
        EXPECT_EQ(testing::RunProgram(QUILLET_CLI, wrong, "", dir.path()).status, 2) << wrong.back();
}

}  // namespace
}  // namespace quillet::fitting
