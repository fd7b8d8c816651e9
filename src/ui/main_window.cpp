#include "ui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QFileInfo>
#include <QProcess>
#include <QScreen>
#include <QTabWidget>

#include <filesystem>

#include "env/paths.h"
#include "model/catalogue.h"
#include "model/file_commands.h"
#include "model/startup.h"
#include "run/launcher.h"
#include "ui/app_icon.h"
#include "ui/calculator_page.h"
#include "ui/data_view.h"
#include "ui/demos_page.h"
#include "ui/lazy_page.h"
#include "ui/links.h"
#include "ui/manual_window.h"
#include "ui/output_viewer.h"
#include "ui/plot_viewer.h"

namespace quillet::ui {

frmMain::frmMain(AppState& s, QWidget* parent) : QMainWindow(parent), binder_(s, this) {
    setObjectName("frmMain");
    // The program's icon is the application's (main sets it); a window made without it, as in
    // the screenshots, brings its own.
    if (QApplication::windowIcon().isNull()) setWindowIcon(AppIcon());
    tabs_ = new QTabWidget(this);
    tabs_->addTab(BuildInputPage(), "Input Parameters");
    // The other tabs are built when first shown: a start shows only the first one.
    auto lazy = [this](std::function<QWidget*()> build) {
        return new LazyPage([this, build = std::move(build)] { return binder_.BuildBound(build); }, this);
    };
    tabs_->addTab(lazy([this] { return BuildSolverPage(); }), "Solver Varia&bles");
    tabs_->addTab(lazy([this] { return new CalculatorPage(binder_); }), "&Calculator");
    demosPage_ = lazy([this] { return new DemosPage(binder_); });
    // Alt+D belongs to the Demos menu.
    tabs_->addTab(demosPage_, "D&emos");
    tabs_->addTab(lazy([this] { return BuildTipsPage(); }), "&Tips");
    setCentralWidget(tabs_);
    BuildMenus();
    setAcceptDrops(true);

    connect(tabs_, &QTabWidget::currentChanged, this,
            [this](int i) { binder_.Call([i](AppState& st) { st.form.activeTab = static_cast<Tab>(i); }); });
    binder_.OnRefresh([this] {
        setWindowTitle(QString::fromStdString(state().form.caption));
        const QSignalBlocker quiet(tabs_);
        tabs_->setCurrentIndex(static_cast<int>(state().form.activeTab));
    });
    // A routine that unloads the main form ends the program.
    binder_.AfterCall([this] {
        if (state().env.quitRequested) {
            close();
            return;
        }
        if (state().RunsEnded != runsSeen_) {
            runsSeen_ = state().RunsEnded;
            ReloadViewers();
        }
        dataView_->ScheduleRedraw();
    });
    binder_.Refresh();
    dataView_->ScheduleRedraw();

    // Usable from 800x600 up; a larger screen gets a larger window, never a fixed one.
    const QSize avail = screen() ? screen()->availableSize() : QSize(1280, 900);
    resize(std::max(800, std::min(avail.width() * 2 / 3, 1400)), std::max(600, std::min(avail.height() * 4 / 5, 1000)));
}

DemosPage* frmMain::demos() const {
    return static_cast<DemosPage*>(demosPage_->page());
}

void frmMain::ShowTab(Tab tab) {
    binder_.Call([tab](AppState& s) { s.form.activeTab = tab; });
}

void frmMain::closeEvent(QCloseEvent* event) {
    // A routine that ended the program has already run the exit routine.
    if (state().env.quitRequested) {
        event->accept();
        return;
    }
    const bool ends = CloseProgram(state());
    binder_.Refresh();
    if (ends)
        event->accept();
    else
        event->ignore();
}

// Files dropped on the window: the first local one is taken.
static QString DroppedFile(const QMimeData* mime) {
    if (!mime || !mime->hasUrls()) return {};
    for (const QUrl& url : mime->urls())
        if (url.isLocalFile()) return url.toLocalFile();
    return {};
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFile(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
    const std::string path = DroppedFile(event->mimeData()).toStdString();
    if (path.empty()) return;
    event->acceptProposedAction();
    binder_.Call([&path](AppState& s) { DropFile(s, path); });
}

void frmMain::OpenLastOutput() {
    if (!output_) {
        output_ = new OutputViewer(this);
        output_->setAttribute(Qt::WA_DeleteOnClose);
    }
    output_->Load(QString::fromStdString(JoinPath(FindLastRun(state().env).outputFolder, "~Quillet.out")));
    output_->show();
    output_->raise();
}

void frmMain::OpenLastPlots() {
    const LastRun last = FindLastRun(state().env);
    if (!plots_) {
        plots_ = new PlotViewer(this);
        plots_->setAttribute(Qt::WA_DeleteOnClose);
    }
    plots_->Load(QString::fromStdString(JoinPath(last.outputFolder, last.plotFile)));
    plots_->show();
    plots_->raise();
}

void frmMain::ReloadViewers() {
    if (output_) OpenLastOutput();
    if (plots_) OpenLastPlots();
}

void frmMain::OpenManualSection(const QString& heading) {
    auto* manual = new ManualWindow(this);
    manual->setAttribute(Qt::WA_DeleteOnClose);
    manual->show();
    manual->ShowSection(heading);
}

void frmMain::OpenDocument(const std::string& menu) {
    const DocumentLink* doc = FindDocument(menu);
    if (!doc || !state().env.shell) return;
    const std::string path = DocumentPath(state().env, *doc);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        // The program carries the manual itself; any other document is only on disk.
        if (menu == "mnuHelpManual")
            OpenManualSection("Quillet Manual");
        else
            state().env.dialogs->MsgBox("The document '" + path + "' is missing.  Installing " + kProductName +
                                            " again puts it back.",
                                        mb::Exclamation, kProductName);
        return;
    }
    state().env.shell->Open(path, "Open");
}

void frmMain::OpenWebEntry(const std::string& menu) {
    const WebLink* link = FindWebLink(menu);
    if (!link) return;
    if (*link->address == '\0')
        OpenManualSection(link->manualSection);
    else if (state().env.shell)
        state().env.shell->Open(link->address, "Open");
}

void frmMain::OpenSourceInEditor() {
    const Env& env = state().env;
    const std::string editor = JoinPath(env.parentDir, "MyEditor");
    const std::string source = JoinPath(env.programDir, "Fit4user.mv");
    std::string missing;
    if (!QFileInfo(QString::fromStdString(editor)).isExecutable())
        missing = "The editor script '" + editor + "' is missing.";
    else if (!QFileInfo::exists(QString::fromStdString(source)))
        missing = "The solver's source '" + source + "' is missing.";
    else if (!QProcess::startDetached(QString::fromStdString(editor), {QString::fromStdString(source)}))
        missing = "The editor script '" + editor + "' could not be started.";
    if (!missing.empty())
        env.dialogs->MsgBox(missing + "  Installing " + kProductName + " again puts it back.", mb::Exclamation,
                            kProductName);
}

}  // namespace quillet::ui
