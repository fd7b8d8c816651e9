// The menu bar of the main window.
#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "env/settings.h"
#include "fitting/new_from_data.h"
#include "model/file_commands.h"
#include "model/startup.h"
#include "run/submit.h"
#include "ui/about_forms.h"
#include "ui/main_window.h"

namespace quillet::ui {

namespace {

struct Entry {
    const char* name;     // the entry's control name
    const char* caption;  // "&" marks the access key; nullptr for a separator
};

QAction* Add(QMenu* menu, const Entry& e) {
    QAction* a = e.caption ? menu->addAction(e.caption) : menu->addSeparator();
    a->setObjectName(e.name);
    return a;
}

}  // namespace

void frmMain::BuildMenus() {
    auto menu = [this](const char* name, const char* caption) {
        QMenu* m = menuBar()->addMenu(caption);
        m->setObjectName(name);
        return m;
    };
    auto command = [this](void (*routine)(AppState&)) { return [this, routine] { binder_.Call(routine); }; };

    QMenu* file = menu("mnuFile", "&File");
    const std::pair<Entry, std::function<void()>> fileEntries[] = {
        {{"mnuFileNew", "&New"}, command(FileNew)},
        {{"mnuFileNewFromData", "New &from Data File..."}, command(fitting::NewFromDataFile)},
        {{"mnuFileOpen", "&Open ..."}, command(FileOld)},
        {{"mnuFileSave", "&Save"}, command(FileSave)},
        {{"mnuFileSaveAs", "Save &As ..."}, [this] { binder_.Call([](AppState& s) { FileSaveAs(s); }); }},
        {{"mnuFileDelete", "&Delete ..."}, command(FileDelete)},
        {{"mnuFileSeperater", nullptr}, nullptr},
        {{"mnuFileSubmit", "Submit &Run"}, command(cmdSubmit_Click)},
        {{"mnuFileSeries", "Fit a S&eries of Data Files..."}, [this] { ChooseSeries(); }},
        {{"mnuFileSeperater2", nullptr}, nullptr},
        {{"mnuFileExit", "E&xit"}, [this] { binder_.Call([](AppState& s) { CloseProgram(s); }); }},
    };
    for (const auto& [e, run] : fileEntries) {
        if (QAction* a = Add(file, e); run) connect(a, &QAction::triggered, this, run);
        if (std::string(e.name) == "mnuFileDelete") {
            QMenu* recent = file->addMenu("Recent Files");
            recent->setObjectName("mnuFileRecent");
            recent->menuAction()->setObjectName("mnuFileRecentMenu");
            connect(recent, &QMenu::aboutToShow, this, [this, recent] { FillRecentFiles(recent); });
        }
    }
    // The desktop's usual keys, beside the access keys of the captions.
    const std::pair<const char*, QKeySequence> shortcuts[] = {
        {"mnuFileNew", QKeySequence(Qt::CTRL | Qt::Key_N)},
        {"mnuFileOpen", QKeySequence(Qt::CTRL | Qt::Key_O)},
        {"mnuFileSave", QKeySequence(Qt::CTRL | Qt::Key_S)},
        {"mnuFileSaveAs", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
        {"mnuFileExit", QKeySequence(Qt::CTRL | Qt::Key_Q)},
    };
    for (const auto& [name, keys] : shortcuts) file->findChild<QAction*>(name)->setShortcut(keys);

    QMenu* demos = menu("mnuDemos", "&Demos");
    connect(Add(demos, {"mnuDemosRun", "Run &Demo ..."}), &QAction::triggered, this, [this] { ShowTab(Tab::Demos); });

    QMenu* view = menu("mnuView", "&View");
    for (const Entry& e : {Entry{"mnuViewFeatures", "Calculus-level App Features"},
                           Entry{"mnuViewLorentz", "CurveFitting with Lorentzian series"},
                           Entry{"mnuViewModLorentz", "Lorrentzian vs. Mod. Lorentzian series"}})
        connect(Add(view, e), &QAction::triggered, this, [this, n = std::string(e.name)] { OpenDocument(n); });
    Add(view, {"mnuViewSeperater", nullptr});
    connect(Add(view, {"mnuViewDemos", "&Demos Tab"}), &QAction::triggered, this, [this] { ShowTab(Tab::Demos); });
    connect(Add(view, {"mnuViewOutput", "&Last Output ..."}), &QAction::triggered, this, [this] { OpenLastOutput(); });
    connect(Add(view, {"mnuViewPlots", "&Plots ..."}), &QAction::triggered, this, [this] { OpenLastPlots(); });

    QMenu* web = menu("mnuWeb", "&Web Links");
    const Entry webEntries[] = {
        {"mnuWebPres", "Manufacturing Presentation"},
        {"mnuWebPres2", "Lorentzian Series Presentation"},
        {"mnuWebPres3", "Irregular Heart Beat Presentation"},
        {"mnuWebPres4", "Plane Crash Locator App Presentation"},
        {"mnuWebSeperater", nullptr},
        {"mnuWebVideo", "Curve Fitting Class Slides"},
        {"mnuWebLinkEd", "NotePad++ Code Editor, we recommend it."},
        {"mnuWebSeperater2", nullptr},
        {"mnuWebLink3", "Calculus-level Textbook"},
        {"mnuWebSeperater3", nullptr},
        {"mnuWebLinkComp", "Morvane Compiler"},
        {"mnuWebSeperater5", nullptr},
        {"mnuWebLinkApp", "Calculus-level Apps:"},
        {"mnuWebLinkTessaly", "Tessaly"},
        {"mnuWebLinkDravik", "Dravik"},
        {"mnuWebLinkKembrel", "Kembrel"},
        {"mnuWebLinkApp2", "Other Apps"},
        {"mnuWebLinkO", "Orlinda"},
    };
    for (const Entry& e : webEntries) {
        QAction* a = Add(web, e);
        const std::string name = e.name;
        // The two headings only name the group below them.
        if (name == "mnuWebLinkApp" || name == "mnuWebLinkApp2")
            a->setEnabled(false);
        else if (e.caption)
            connect(a, &QAction::triggered, this, [this, name] { OpenWebEntry(name); });
    }

    QMenu* help = menu("mnuHelp", "&Help");
    QAction* manual = Add(help, {"mnuHelpManual", "Manual ..."});
    manual->setShortcut(QKeySequence(Qt::Key_F1));
    connect(manual, &QAction::triggered, this, [this] { OpenDocument("mnuHelpManual"); });
    connect(Add(help, {"mnuHelpSource", "Source &Code ..."}), &QAction::triggered, this, [this] { OpenSourceInEditor(); });
    connect(Add(help, {"mnuHelpVideos", "Video Apps for Classes (web)"}), &QAction::triggered, this,
            [this] { OpenWebEntry("mnuHelpVideos"); });
    connect(Add(help, {"mnuHelpEmail", "E-mail Support ..."}), &QAction::triggered, this, [this] {
        if (state().env.shell) frmEmail(*state().env.shell, this).exec();
    });
    connect(Add(help, {"mnuHelpForum", "Create, Collaborative, && Help Train ..."}), &QAction::triggered, this,
            [this] { OpenWebEntry("mnuHelpForum"); });
    connect(Add(help, {"mnuHelpPrayer", "Prayer Tree ..."}), &QAction::triggered, this,
            [this] { OpenWebEntry("mnuHelpPrayer"); });
    connect(Add(help, {"mnuHelpDonate", "Donate ..."}), &QAction::triggered, this, [this] { OpenDocument("mnuHelpDonate"); });
    connect(Add(help, {"mnuHelpAbout", "&About ..."}), &QAction::triggered, this, [this] { frmAbout(this).exec(); });
}

void frmMain::FillRecentFiles(QMenu* recent) {
    recent->clear();
    const std::vector<std::string> files = GetRecentFiles(state().env);
    for (std::size_t i = 0; i < files.size(); ++i) {
        QString path = QString::fromStdString(files[i]);
        QAction* a = recent->addAction(QString("&%1  %2").arg(i + 1).arg(QString(path).replace("&", "&&")));
        connect(a, &QAction::triggered, this, [this, file = files[i]] {
            binder_.Call([&file](AppState& s) { OpenResponseFile(s, file); });
        });
    }
    if (files.empty()) recent->addAction("(none)")->setEnabled(false);
}

}  // namespace quillet::ui
