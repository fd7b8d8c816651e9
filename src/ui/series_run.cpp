// File > "Fit a Series of Data Files...": the batch runs in the run window, then its table shows.
#include <QFileDialog>
#include <QThread>
#include <filesystem>

#include "env/paths.h"
#include "fitting/fit_error.h"
#include "fitting/series.h"
#include "ui/main_window.h"
#include "ui/run_window.h"
#include "ui/series_window.h"

namespace quillet::ui {

namespace {
constexpr const char* kSeriesTitle = "Fit a Series of Data Files";
}  // namespace

void frmMain::ChooseSeries() {
    const QStringList files =
        QFileDialog::getOpenFileNames(this, kSeriesTitle, QString::fromStdString(state().UserDir), "All Files (*)");
    if (!files.isEmpty()) FitSeries(files);
}

void frmMain::FitSeries(const QStringList& dataFiles) {
    AppState& s = state();
    // Every file is fitted with the answers as saved, so unsaved ones would silently not count.
    if (s.CurrentFile == "New data" || s.DataChanged) {
        s.env.dialogs->MsgBox(
            "Save the response file first (File, Save): each data file of the series is fitted "
            "with the saved answers.",
            mb::Exclamation, kSeriesTitle);
        return;
    }
    const std::string response = JoinPath(s.UserDir, s.CurrentFile);
    const std::string tablePath = fitting::SeriesTablePath(response, s.UserDir);
    std::error_code ec;
    std::filesystem::remove(tablePath, ec);  // a run that writes none must not show the last one
    QStringList args{"batch", QString::fromStdString(response), "--jobs",
                     QString::number(std::max(1, QThread::idealThreadCount())), "--"};
    args << dataFiles;
    RunWindow window(this);
    window.Exec(QString::fromStdString(JoinPath(s.env.programDir, "quillet-cli")), args,
                QString::fromStdString(s.UserDir), !s.form.AutoExit.value);
    try {
        auto* results = new SeriesWindow(fitting::ReadSeriesCsv(tablePath), this);
        results->setAttribute(Qt::WA_DeleteOnClose);
        results->show();
    } catch (const fitting::FitInputError& e) {
        s.env.dialogs->MsgBox(std::string("The series wrote no table: ") + e.what(), mb::Exclamation, kSeriesTitle);
    }
}

}  // namespace quillet::ui
