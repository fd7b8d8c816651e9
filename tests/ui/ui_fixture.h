#pragma once
// The desktop program on a fresh machine: a program folder in a temporary folder with a saved
// response file as its demo and a run script that stands in for the solver, an empty file hive,
// scripted message boxes, the real run window, and a shell opener that records what it was asked
// to open.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <filesystem>
#include <functional>
#include <memory>

#include "env/file_registry_posix.h"
#include "env/paths.h"
#include "model/app_state.h"
#include "model/startup.h"
#include "support/fake_dialogs.h"
#include "support/test_env.h"
#include "ui/main_window.h"
#include "ui/run_window.h"

namespace quillet::testing {

struct Opened {
    std::string target;
    std::string verb;
};

class RecordingShell : public ShellOpener {
public:
    void Open(const std::string& target, const std::string& verb) override { opened.push_back({target, verb}); }
    std::vector<Opened> opened;
};

// Processes events until `done` holds or `ms` have passed; answers whether it held.
inline bool WaitUntil(const std::function<bool()>& done, int ms = 10000) {
    for (int waited = 0; waited < ms; waited += 10) {
        if (done()) return true;
        QTest::qWait(10);
    }
    return done();
}

class UiFixture : public ::testing::Test {
protected:
    UiFixture() : program(dir / "Quillet"), registry(dir / "hive") {
        namespace fs = std::filesystem;
        fs::create_directories(program + "/demos");
        fs::copy_file(QUILLET_UI_TEST_DATA "/run-FitW.sh", program + "/run-FitW.sh");
        fs::copy_file(QUILLET_UI_TEST_DATA "/curve.plt", program + "/sample.plt");
        fs::copy_file(QUILLET_TEST_DATA "/model/Run1.Fit", program + "/demos/ExDemo.Fit");
        s.env.dialogs = &dialogs;
        s.env.clock = &clock;
        s.env.runner = &runner;
        s.env.shell = &shell;
        s.env.registry = &registry;
        s.env.programDir = program;
        s.env.parentDir = JoinPath(program, "..");
        s.env.currentFolder = program;
        Form_Load(s);
        window = std::make_unique<ui::frmMain>(s);
        runner.setParent(window.get());
        window->show();
    }
    // Deleting the window runs no exit routine; the tests that close it check that it ran.
    ~UiFixture() override { window.reset(); }

    template <class W>
    W* Find(const char* name) const {
        W* w = window->findChild<W*>(name);
        EXPECT_NE(w, nullptr) << "no widget named " << name;
        return w;
    }
    // The top-level window of type W that is showing, or nullptr.
    template <class W>
    static W* Showing() {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* t = qobject_cast<W*>(w); t && t->isVisible()) return t;
        return nullptr;
    }

    TempDir dir;
    std::string program;
    FileRegistry registry;
    FakeDialogs dialogs;
    FixedClock clock;
    RecordingShell shell;
    ui::RunWindowRunner runner;
    AppState s;
    std::unique_ptr<ui::frmMain> window;
};

}  // namespace quillet::testing

// Failures show texts as text.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
