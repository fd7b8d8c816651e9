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
    QAction* Action(const char* name) const { return window->findChild<QAction*>(name); }
};

TEST_F(Menus, EveryCaptionIsExactInItsPlace) {
    const std::vector<std::pair<QString, QStringList>> menus = {
        {"&File", {"&New", "New &from Data File...", "&Open ...", "&Save", "Save &As ...", "&Delete ...", "", "Submit &Run", "", "E&xit"}},
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
        const QAction* menu = bar.at(static_cast<qsizetype>(m));
        EXPECT_EQ(menu->text(), menus[m].first);
        QStringList captions;  // a separator shows as an empty caption
        for (const QAction* a : menu->menu()->actions()) captions << (a->isSeparator() ? QString() : a->text());
        EXPECT_EQ(captions, menus[m].second);
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
        Action(menu)->trigger();
        ASSERT_EQ(shell.opened.size(), 1u) << menu;
        EXPECT_EQ(shell.opened[0].target, target);
        EXPECT_EQ(shell.opened[0].verb, "Open");
    }

    Action("mnuHelpForum")->trigger();
    auto* manual = Showing<ui::ManualWindow>();
    ASSERT_NE(manual, nullptr);
    EXPECT_EQ(manual->currentHeading(), "Collaboration");
    EXPECT_FALSE(Action("mnuWebLinkApp")->isEnabled());
}

TEST_F(Menus, AboutAndEmailShowTheVersionAndEmailOpensAMessageWithTheSubject) {
    const QStringList about = DialogTexts<ui::frmAbout>(Action("mnuHelpAbout"));
    EXPECT_TRUE(about.contains("Quillet (Version 6.711)"));
    EXPECT_TRUE(about.contains("Quillet ... Version 6.711"));

    const QStringList email = DialogTexts<ui::frmEmail>(
        Action("mnuHelpEmail"), [](ui::frmEmail& email) { email.findChild<QPushButton*>("cmdEmail")->click(); });
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
    Action("mnuFileExit")->trigger();
    EXPECT_TRUE(s.env.quitRequested);
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace quillet::testing
