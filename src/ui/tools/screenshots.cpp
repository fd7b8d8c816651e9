// Takes the screenshots of the manual and the README: every tab, the run window of a demo run,
// the plot and output viewers, the walk of a new user from a data file to a fit, About and E-mail,
// File > Recent Files and the question asked when the window closes with unsaved answers. Run it
// on a display (Xvfb serves) with a built
// program folder whose solver works, and a registry folder of its own:
//   QUILLET_REGISTRY_DIR=DIR quillet_screenshots PROGRAM_FOLDER OUTPUT_FOLDER
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>
#include <QTemporaryDir>
#include <QProcess>
#include <QFile>
#include <QComboBox>
#include <cmath>
#include <cstdio>

#include "env/errors.h"
#include "env/files.h"
#include "env/paths.h"
#include "fitting/new_from_data.h"
#include "fitting/suggest_form.h"
#include "run/submit.h"
#include "ui/data_view.h"
#include "env/registry_backend.h"
#include "model/calculator.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "model/startup.h"
#include "ui/about_forms.h"
#include "ui/calculator_page.h"
#include "ui/demos_page.h"
#include "ui/desktop_ports.h"
#include "ui/main_window.h"
#include "ui/output_viewer.h"
#include "ui/plot_viewer.h"
#include "ui/series_window.h"

namespace {

using namespace quillet;

void Wait(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

template <class W>
W* Showing() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* t = qobject_cast<W*>(w); t && t->isVisible()) return t;
    return nullptr;
}

class Shooter {
public:
    explicit Shooter(QString folder) : folder_(std::move(folder)) { QDir().mkpath(folder_); }
    void operator()(QWidget* w, const QString& name) {
        Wait(400);  // let the window be drawn and the folder lists be read
        const QString path = folder_ + "/" + name + ".png";
        if (!w || !w->grab().save(path)) {
            std::fprintf(stderr, "screenshots: could not take %s\n", qPrintable(path));
            failed_ = true;
        }
    }
    // The screen around `w`, with the menus and message boxes open over it.
    void Screen(QWidget* w, const QString& name) {
        Wait(400);
        const QString path = folder_ + "/" + name + ".png";
        const QRect around = w->frameGeometry().adjusted(-20, -20, 20, 20);
        if (!w->screen()->grabWindow(0, around.x(), around.y(), around.width(), around.height()).save(path)) {
            std::fprintf(stderr, "screenshots: could not take %s\n", qPrintable(path));
            failed_ = true;
        }
    }
    bool failed() const { return failed_; }

private:
    QString folder_;
    bool failed_ = false;
};

// Puts a response file on the form as File, Open does, without its file dialog.
void OpenResponse(AppState& s, const std::string& folder, const std::string& name) {
    SetCurrentFile(s, JoinPath(folder, name));
    LineReader in = LineReader::Open(JoinPath(folder, name));
    FileReadMe(s, in, name, folder);
    PutAnswers(s);
    ShowFilename(s);
    s.DataChanged = false;
}

// The walk of a new user: answers the file dialogs with the walk's files and every question
// box as its default button would, so that the walk runs without a person.
class WalkDialogs : public Dialogs {
public:
    std::vector<std::string> files;  // what the file dialogs return, in order
    std::vector<std::string> shown;  // every message box's text
    int MsgBox(const std::string& text, int style, const std::string&) override {
        shown.push_back(text);
        if ((style & 7) == mb::YesNo || (style & 7) == mb::YesNoCancel) return mb::Yes;
        return mb::OK;
    }
    std::string FileDialog(const FileDialogRequest&) override {
        if (files.empty()) Raise(err::DialogCancelled);
        std::string f = files.front();
        files.erase(files.begin());
        return f;
    }
};

// Two Gaussian peaks on a slope with a little noise, under a header of two lines.
std::string TwoPeaks() {
    std::string text = "Two peaks, measured 2026-11-16\r\nchannel  counts\r\n";
    unsigned noise = 12345;
    for (int i = 0; i <= 200; ++i) {
        const double x = i * 0.5;
        noise = noise * 1103515245u + 12345u;
        const double y = 40 + 0.1 * x + 300 * std::exp(-std::pow((x - 35) / 6, 2) / 2) +
                         180 * std::exp(-std::pow((x - 62) / 9, 2) / 2) + ((noise >> 16) % 200) / 20.0 - 5;
        char line[64];
        std::snprintf(line, sizeof line, "%.1f %.2f\r\n", x, y);
        text += line;
    }
    return text;
}

// The walk from a data file in a folder of its own to a converged fit, a screenshot a step.
void Walk(ui::frmMain& window, AppState& s, Shooter& shoot) {
    const std::string folder = QDir::temp().filePath("quillet-walk").toStdString();
    QDir(QString::fromStdString(folder)).removeRecursively();
    QDir().mkpath(QString::fromStdString(folder));
    const std::string data = JoinPath(folder, "two_peaks.dat");
    WriteFileAtomically(data, TwoPeaks());
    WalkDialogs dialogs;
    Dialogs* desktop = s.env.dialogs;
    s.env.dialogs = &dialogs;
    window.ShowTab(Tab::Input);
    window.binder().Call([](AppState& st) { Methods_Click(st, 0); st.DataChanged = false; });

    dialogs.files = {data};
    window.binder().Call([](AppState& st) { fitting::NewFromDataFile(st); });
    window.dataView()->Redraw();
    shoot(&window, "walk-1-new-from-data");

    window.binder().Call([](AppState& st) {
        Methods_Click(st, 7);  // Bell Curve
        SetText(st, st.form.nTerms, "2");
    });
    window.dataView()->Redraw();
    shoot(&window, "walk-2-model-and-terms");

    window.binder().Call([](AppState& st) { fitting::cmdSuggest_Click(st); });
    window.dataView()->Redraw();
    shoot(&window, "walk-3-suggest");

    // Submit: the save prompt, then Save As proposing the same name, then the run window.
    dialogs.files = {JoinPath(folder, "two_peaks.Fit")};
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* run = Showing<ui::RunWindow>();
        if (!run || run->running()) return;
        poll.stop();
        shoot(run, "walk-4-run");
        run->accept();
    });
    poll.start(100);
    window.binder().Call([](AppState& st) { cmdSubmit_Click(st); });
    window.dataView()->Redraw();
    shoot(&window, "walk-5-fit");
    for (const auto& text : dialogs.shown) std::fprintf(stderr, "walk: message: %s\n", text.c_str());
    s.env.dialogs = desktop;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: quillet_screenshots PROGRAM_FOLDER OUTPUT_FOLDER\n");
        return 2;
    }
    ui::DesktopPorts ports;
    const auto registry = MakePlatformRegistry();
    AppState s;
    ports.Wire(s.env);
    s.env.registry = registry.get();
    s.env.programDir = QDir(argv[1]).absolutePath().toStdString();
    s.env.parentDir = JoinPath(s.env.programDir, "..");
    s.env.currentFolder = s.env.programDir;
    Form_Load(s);

    ui::frmMain window(s);
    ports.SetParent(&window);
    window.resize(1100, 820);
    window.show();
    Shooter shoot(argv[2]);
    const std::string demos = JoinPath(s.env.programDir, "demos");

    // A demo first, so that the viewers and the calculator have a run to show.
    window.ShowTab(Tab::Demos);
    window.demos()->Select("Ex1.Fit");
    shoot(&window, "demos");
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* run = Showing<ui::RunWindow>();
        if (!run || run->running()) return;
        poll.stop();
        shoot(run, "run");
        run->accept();
    });
    poll.start(100);
    window.demos()->RunSelected();

    window.binder().Call([&](AppState& st) { OpenResponse(st, demos, "Ex1.Fit"); });
    window.ShowTab(Tab::Input);
    shoot(&window, "input");
    window.resize(800, 600);
    shoot(&window, "input-800x600");
    window.resize(1100, 820);

    window.binder().Call([](AppState& st) { Methods_Click(st, 5); });
    shoot(&window, "input-sine");
    window.binder().Call([&](AppState& st) { OpenResponse(st, demos, "Ex1.Fit"); });

    window.ShowTab(Tab::Solver);
    shoot(&window, "solver");

    window.ShowTab(Tab::Calculator);
    window.binder().Call([&](AppState& st) {
        st.form.calcFolder = JoinPath(demos, "output");
        st.form.calcSelectedFile = "Ex1.equ";
        SetText(st, st.form.tbXvalue, "9.7");
        cmdCalculate_Click(st);
    });
    Wait(600);
    window.binder().Refresh();
    shoot(&window, "calculator");

    window.ShowTab(Tab::Tips);
    shoot(&window, "tips");

    window.OpenLastPlots();
    auto* plots = Showing<ui::PlotViewer>();
    if (plots) plots->resize(1000, 720);
    shoot(plots, "plots");
    if (plots) plots->close();

    window.OpenLastOutput();
    auto* output = Showing<ui::OutputViewer>();
    shoot(output, "output");
    if (output) output->close();

    if (auto* output = Showing<ui::OutputViewer>()) output->close();
    Walk(window, s, shoot);

    ui::frmAbout about(&window);
    about.show();
    shoot(&about, "about");
    about.close();
    ui::frmEmail email(*s.env.shell, &window);
    email.show();
    shoot(&email, "email");
    email.close();

    // The table of a series: a peak drifting over eight files, fitted as a chain.
    {
        QTemporaryDir folder;
        const std::string dir = folder.path().toStdString();
        fitting::SeriesRequest request{"Drift.Fit", {}, fitting::SeriesRequest::Start::Chain, 1, 1, 1};
        for (int k = 0; k < 8; ++k) {
            std::string data = "x y\r\n";
            for (int i = 0; i < 200; ++i) {
                const double x = i * 0.5, z = 2 * (x - 30 - 4 * k) / (6 + 0.3 * k);
                data += std::to_string(x) + " " + std::to_string(2 + 40 / (1 + z * z) + 0.8 * std::sin(7.7 * i + k)) + "\r\n";
            }
            request.dataFiles.push_back("scan-" + std::to_string(k + 1) + ".dat");
            QFile f(QString::fromStdString(JoinPath(dir, request.dataFiles.back())));
            if (f.open(QIODevice::WriteOnly)) f.write(data.c_str());
        }
        QProcess write;
        write.setWorkingDirectory(folder.path());
        write.start(QString::fromStdString(JoinPath(s.env.programDir, "quillet-cli")), {"write", "Drift.Fit"});
        write.write(R"({"Answers": ["scan-1.dat", "Lorentzian", "2", "200", "1", "100", "10", "0.2", "4", "0.06", "0.3"]})");
        write.closeWriteChannel();
        write.waitForFinished();
        try {
            const std::atomic<bool> stop{false};
            ui::SeriesWindow series(fitting::RunSeries(request, dir, {}, stop), &window);
            series.parameter()->setCurrentIndex(3);  // t0(1), the drifting centre
            series.show();
            shoot(&series, "series");
        } catch (const std::exception& e) {
            std::fprintf(stderr, "screenshots: the series failed: %s\n", e.what());
        }
    }

    // File > Recent Files after three examples were opened.
    window.ShowTab(Tab::Input);
    window.resize(900, 560);
    for (const char* example : {"Ex7.Fit", "Ex5.Fit", "Ex1.Fit"})
        window.binder().Call([&](AppState& st) { OpenResponseFile(st, JoinPath(demos, example)); });
    auto* file = window.findChild<QMenu*>("mnuFile");
    auto* recent = window.findChild<QAction*>("mnuFileRecentMenu");
    file->popup(window.menuBar()->mapToGlobal(window.menuBar()->actionGeometry(file->menuAction()).bottomLeft()));
    Wait(300);
    file->setActiveAction(recent);
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QApplication::sendEvent(file, &right);
    shoot.Screen(&window, "recent-files");
    file->close();

    // Closing with an answer changed and not saved: the question, then Cancel keeps the window.
    window.binder().Call([](AppState& st) { SetText(st, st.form.nTerms, "4"); });
    QTimer::singleShot(300, [&] {
        if (auto* box = Showing<QMessageBox>()) {
            shoot.Screen(&window, "close-prompt");
            box->button(QMessageBox::Cancel)->click();
        }
    });
    window.close();
    return shoot.failed() ? 1 : 0;
}
