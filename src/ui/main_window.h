#pragma once
// frmMain: the tabs, the menus and the windows they open. Every widget mirrors the form
// model; every command calls the library.
#include <QMainWindow>
#include <QPointer>

#include "model/app_state.h"
#include "ui/form_binder.h"

class QMenu;
class QTabWidget;

namespace quillet::ui {

class DataView;
class DemosPage;
class LazyPage;
class OutputViewer;
class PlotViewer;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain(AppState& s, QWidget* parent = nullptr);

    FormBinder& binder() { return binder_; }
    AppState& state() { return binder_.state(); }
    QTabWidget* tabs() const { return tabs_; }
    // The Demos tab's page, built now if the tab has not shown yet.
    DemosPage* demos() const;
    void ShowTab(Tab tab);

    // The last run's report and plot file, in the run's output folder.
    // An open viewer is brought to the front and reloaded, not opened twice.
    void OpenLastOutput();
    void OpenLastPlots();
    // After every run the open viewers show what it left.
    void ReloadViewers();
    DataView* dataView() const { return dataView_; }
    void OpenManualSection(const QString& heading);
    void OpenDocument(const std::string& menu);
    void OpenWebEntry(const std::string& menu);
    void OpenSourceInEditor();
    // File > "Fit a Series of Data Files...": data files chosen, then fitted in the run window.
    void ChooseSeries();
    void FitSeries(const QStringList& dataFiles);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildMenus();
    void FillRecentFiles(QMenu* recent);
    QWidget* BuildInputPage();
    QWidget* BuildSolverPage();
    QWidget* BuildTipsPage();

    FormBinder binder_;
    QTabWidget* tabs_;
    LazyPage* demosPage_;
    DataView* dataView_ = nullptr;
    QPointer<OutputViewer> output_;
    QPointer<PlotViewer> plots_;
    int runsSeen_ = 0;
};

}  // namespace quillet::ui
