// The menus: exact captions, the documents and addresses they open, About and E-mail.
#include <QAction>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSet>
#include <QTabWidget>
#include <QUrl>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

#include "model/form_events.h"
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

// The examples are read when the Demos tab is first shown, not at start: one that arrives after
// the start is listed, and the first example is ready to run.
TEST_F(Menus, TheDemosMenuShowsTheExamplesOfTheFolderAsItIsWhenTheTabFirstShows) {
    std::filesystem::copy_file(QUILLET_TEST_DATA "/model/Run1.Fit", program + "/demos/ExLater.Fit");
    Find<QAction>("mnuDemosRun")->trigger();
    EXPECT_EQ(window->tabs()->currentIndex(), static_cast<int>(Tab::Demos));
    auto* list = Find<QTreeWidget>("demoList");
    ASSERT_EQ(list->topLevelItemCount(), 2);
    EXPECT_EQ(list->topLevelItem(1)->text(0), "ExLater.Fit");
    EXPECT_EQ(list->currentItem(), list->topLevelItem(0));
    EXPECT_TRUE(Find<QPushButton>("cmdRunDemo")->isEnabled());
}

TEST_F(Menus, EveryCaptionIsExactInItsPlace) {
    const std::vector<std::pair<QString, QStringList>> menus = {
        {"&File",
         {"&New", "New &from Data File...", "&Open ...", "&Save", "Save &As ...", "&Delete ...", "Recent Files", "",
          "Submit &Run", "Fit a S&eries of Data Files...", "", "E&xit"}},
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
    WriteBytes(program + "/../Morvane-flyer.pdf", "%PDF");
    WriteBytes(program + "/manual.pdf", "%PDF");
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

TEST_F(Menus, AMissingDocumentOrEditorScriptIsReportedAndAMissingManualShowsTheOneBuiltIn) {
    dialogs.Answer(mb::OK).Answer(mb::OK);
    Action("mnuHelpDonate")->trigger();
    Action("mnuHelpSource")->trigger();
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(dialogs.boxes[0].text,
              "The document '" + program + "/../donate.html' is missing.  Installing Quillet again puts it back.");
    EXPECT_EQ(dialogs.boxes[1].text,
              "The editor script '" + program + "/../MyEditor' is missing.  Installing Quillet again puts it back.");
    EXPECT_EQ(dialogs.boxes[1].style, mb::Exclamation);

    Action("mnuHelpManual")->trigger();
    EXPECT_TRUE(shell.opened.empty());
    auto* manual = Showing<ui::ManualWindow>();
    ASSERT_NE(manual, nullptr);
    EXPECT_EQ(manual->currentHeading(), "Quillet Manual");
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

TEST_F(Menus, NoAccessKeyReachesBothAMenuAndATab) {
    auto key = [](const QString& caption) {
        const auto at = caption.indexOf('&');
        return at < 0 ? QChar() : caption.at(at + 1).toLower();
    };
    QSet<QChar> menuKeys;
    for (const QAction* menu : window->menuBar()->actions()) menuKeys.insert(key(menu->text()));
    for (int i = 0; i < window->tabs()->count(); ++i) {
        const QString tab = window->tabs()->tabText(i);
        EXPECT_FALSE(!key(tab).isNull() && menuKeys.contains(key(tab))) << tab.toStdString();
    }
}

TEST_F(Menus, EachStandardShortcutTriggersItsCommand) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto press = [this](QKeyCombination keys) {
        QTest::keyClick(window.get(), keys.key(), keys.keyboardModifiers());
    };

    dialogs.Answer(mb::Cancel);
    press(Qt::CTRL | Qt::Key_N);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, "Okay to Clear responses?");

    const std::pair<QKeyCombination, std::string> fileDialogs[] = {
        {Qt::CTRL | Qt::Key_O, "Select Response (Input) File to Open"},
        {Qt::CTRL | Qt::Key_S, "Save Input File As ..."},  // never saved: Save goes through Save As
        {Qt::CTRL | Qt::SHIFT | Qt::Key_S, "Save Input File As ..."},
    };
    for (const auto& [keys, title] : fileDialogs) {
        dialogs.Cancel();
        press(keys);
        ASSERT_FALSE(dialogs.fileDialogs.empty()) << title;
        EXPECT_EQ(dialogs.fileDialogs.back().title, title);
        dialogs.fileDialogs.clear();
    }

    press(QKeyCombination(Qt::Key_F1));
    EXPECT_NE(Showing<ui::ManualWindow>(), nullptr);
    Showing<ui::ManualWindow>()->close();

    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    press(Qt::CTRL | Qt::Key_Q);
    EXPECT_TRUE(s.env.quitRequested);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Menus, RecentFilesListsWhatWasSavedAndOpensItAndADroppedResponseFileOpens) {
    const std::string first = dir / "first.Fit";
    const std::string second = dir / "second.Fit";
    for (const auto& [path, terms] : {std::pair{first, "2"}, std::pair{second, "3"}}) {
        window->binder().Call([terms](AppState& st) { SetText(st, st.form.nTerms, terms); });
        dialogs.Choose(path);
        Action("mnuFileSaveAs")->trigger();
    }
    auto* recent = window->findChild<QMenu*>("mnuFileRecent");
    ASSERT_NE(recent, nullptr);
    emit recent->aboutToShow();
    QStringList entries;
    for (const QAction* a : recent->actions()) entries << a->text();
    EXPECT_EQ(entries, (QStringList{"&1  " + QString::fromStdString(second), "&2  " + QString::fromStdString(first)}));

    recent->actions().at(1)->trigger();
    EXPECT_EQ(s.CurrentFile, "first.Fit");
    EXPECT_EQ(Find<QLineEdit>("nTerms")->text(), "2");

    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(second))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(s.CurrentFile, "second.Fit");
    EXPECT_EQ(Find<QLineEdit>("nTerms")->text(), "3");
    EXPECT_EQ(window->windowTitle(), "second.Fit ... Quillet, a Calculus-level program");
}

TEST_F(Menus, ClosingTheWindowRunsTheExitRoutine) {
    window->close();
    EXPECT_TRUE(s.env.quitRequested);
}

TEST_F(Menus, ClosingWithUnsavedAnswersAsksFirstAndCancelKeepsTheWindowOpen) {
    window->binder().Call([](AppState& st) { st.DataChanged = true; });
    dialogs.Answer(mb::Cancel);
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(s.env.quitRequested);
    EXPECT_EQ(dialogs.boxes.at(0).text, "Save changes to 'New data' before closing?");

    dialogs.Answer(mb::No);
    Action("mnuFileExit")->trigger();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(s.env.quitRequested);
}

TEST_F(Menus, ExitRunsTheExitRoutineAndClosesTheWindow) {
    Action("mnuFileExit")->trigger();
    EXPECT_TRUE(s.env.quitRequested);
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace quillet::testing
