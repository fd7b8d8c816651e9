#include "ui/main_window.h"

#include <QCloseEvent>
#include <QProcess>
#include <QScreen>
#include <QTabWidget>

#include "env/paths.h"
#include "model/startup.h"
#include "run/launcher.h"
#include "ui/calculator_page.h"
#include "ui/data_view.h"
#include "ui/demos_page.h"
#include "ui/links.h"
#include "ui/manual_window.h"
#include "ui/output_viewer.h"
#include "ui/plot_viewer.h"

namespace quillet::ui {

frmMain::frmMain(AppState& s, QWidget* parent) : QMainWindow(parent), binder_(s, this) {
    setObjectName("frmMain");
    setWindowIcon(QIcon(":/quillet.svg"));
    tabs_ = new QTabWidget(this);
    tabs_->addTab(BuildInputPage(), "Input Parameters");
    tabs_->addTab(BuildSolverPage(), "Solver Varia&bles");
    tabs_->addTab(new CalculatorPage(binder_, this), "&Calculator");
    demos_ = new DemosPage(binder_, this);
    tabs_->addTab(demos_, "&Demos");
    tabs_->addTab(BuildTipsPage(), "&Tips");
    setCentralWidget(tabs_);
    BuildMenus();

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

void frmMain::ShowTab(Tab tab) {
    binder_.Call([tab](AppState& s) { s.form.activeTab = tab; });
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (!state().env.quitRequested) exitWin(state());
    event->accept();
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
    if (doc && state().env.shell) state().env.shell->Open(DocumentPath(state().env, *doc), "Open");
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
    QProcess::startDetached(QString::fromStdString(JoinPath(env.parentDir, "MyEditor")),
                            {QString::fromStdString(JoinPath(env.programDir, "Fit4user.mv"))});
}

}  // namespace quillet::ui
