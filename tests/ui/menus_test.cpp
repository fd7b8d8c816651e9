// The menus: exact captions, the documents and addresses they open, About and E-mail.
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

#include "ui/about_forms.h"
#include "ui/manual_window.h"
#include "ui_fixture.h"

namespace quillet::testing {
namespace {

class Menus : public UiFixture {
protected:
    // Triggers `menu` and answers the label texts of the dialog D it opens; `use` acts on the
    // dialog before it is closed.
    template <class D>
    static QStringList DialogTexts(QAction* menu, const std::function<void(D&)>& use = {}) {
        QStringList texts;
        QTimer::singleShot(0, [&] {
            if (auto* dialog = Showing<D>()) {
                for (const QLabel* l : dialog->template findChildren<QLabel*>()) texts << l->text();
                if (use) use(*dialog);
                dialog->accept();
            }
        });
        menu->trigger();
        return texts;
    }
};

QAction* Action(const ui::frmMain& w, const char* name) {
    for (QAction* a : w.findChildren<QAction*>())
        if (a->objectName() == name) return a;
    return nullptr;
}

TEST_F(Menus, EveryCaptionIsExactInItsPlace) {
    const std::vector<std::pair<const char*, std::vector<const char*>>> menus = {
        {"&File", {"&New", "&Open ...", "&Save", "Save &As ...", "&Delete ...", "", "Submit &Run", "", "E&xit"}},
        {"&Demos", {"Run &Demo ..."}},
        {"&View", {"Calculus-level App Features", "CurveFitting with Lorentzian series",
                   "Lorrentzian vs. Mod. Lorentzian series", "", "&Demos Tab", "&Last Output ...", "&Plots ..."}},
        {"&Web Links", {"Manufacturing Presentation", "Lorentzian Series Presentation",
                        "Irregular Heart Beat Presentation", "Plane Crash Locator App Presentation", "",
                        "Curve Fitting Class Slides", "NotePad++ Code Editor, we recommend it.", "",
                        "Calculus-level Textbook", "", "Morvane Compiler", "", "Calculus-level Apps:", "Tessaly",
                        "Dravik", "Kembrel", "Other Apps", "Orlinda"}},
        {"&Help", {"Manual ...", "Source &Code ...", "Video Apps for Classes (web)", "E-mail Support ...",
                   "Create, Collaborative, && Help Train ...", "Prayer Tree ...", "Donate ...", "&About ..."}},
    };
    const auto bar = window->menuBar()->actions();
    ASSERT_EQ(bar.size(), static_cast<qsizetype>(menus.size()));
    for (std::size_t m = 0; m < menus.size(); ++m) {
        EXPECT_EQ(bar[static_cast<qsizetype>(m)]->text(), menus[m].first);
        const auto entries = bar[static_cast<qsizetype>(m)]->menu()->actions();
        ASSERT_EQ(entries.size(), static_cast<qsizetype>(menus[m].second.size())) << menus[m].first;
        for (std::size_t e = 0; e < menus[m].second.size(); ++e) {
            const QAction* a = entries[static_cast<qsizetype>(e)];
            EXPECT_EQ(a->isSeparator() ? QString() : a->text(), menus[m].second[e]) << menus[m].first << " " << e;
        }
    }
    EXPECT_EQ(window->windowTitle(), "Quillet, a Calculus-level program");
}

TEST_F(Menus, EntriesOpenTheirDocumentOrAddressOrTheManualSectionThatStandsInForIt) {
    const std::pair<const char*, std::string> opened[] = {
        {"mnuViewFeatures", program + "/../Morvane-flyer.pdf"},
        {"mnuHelpManual", program + "/manual.pdf"},
        {"mnuWebLinkEd", "https://notepad-plus-plus.org/"},
    };
    for (const auto& [menu, target] : opened) {
        shell.opened.clear();
        Action(*window, menu)->trigger();
        ASSERT_EQ(shell.opened.size(), 1u) << menu;
        EXPECT_EQ(shell.opened[0].target, target);
        EXPECT_EQ(shell.opened[0].verb, "Open");
    }

    Action(*window, "mnuHelpForum")->trigger();
    auto* manual = Showing<ui::ManualWindow>();
    ASSERT_NE(manual, nullptr);
    EXPECT_EQ(manual->currentHeading(), "Collaboration");
    EXPECT_EQ(shell.opened.size(), 1u);
    EXPECT_FALSE(Action(*window, "mnuWebLinkApp")->isEnabled());
}

TEST_F(Menus, AboutAndEmailShowTheVersionAndEmailOpensAMessageWithTheSubject) {
    const QStringList about = DialogTexts<ui::frmAbout>(Action(*window, "mnuHelpAbout"));
    EXPECT_TRUE(about.contains("Quillet (Version 6.711)"));
    EXPECT_TRUE(about.contains("Quillet ... Version 6.711"));

    const QStringList email = DialogTexts<ui::frmEmail>(
        Action(*window, "mnuHelpEmail"), [](ui::frmEmail& email) { email.findChild<QPushButton*>("cmdEmail")->click(); });
    EXPECT_TRUE(email.contains(
        "3. Enter a Subject: 'Quillet ... Version 6.711' and a few words to describe reason for contact"));
    ASSERT_EQ(shell.opened.size(), 1u);
    EXPECT_EQ(shell.opened[0].target,
              "mailto:?subject=Quillet%20v.%206.711:%20...%20please%20REPLACE%20these%20notes%20with%20your%20"
              "sub-subject%20here");
    EXPECT_EQ(shell.opened[0].verb, "open");
}

TEST_F(Menus, ClosingTheWindowRunsTheExitRoutine) {
    window->close();
    EXPECT_TRUE(s.env.quitRequested);
}

TEST_F(Menus, ExitRunsTheExitRoutineAndClosesTheWindow) {
    Action(*window, "mnuFileExit")->trigger();
    EXPECT_TRUE(s.env.quitRequested);
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace quillet::testing
