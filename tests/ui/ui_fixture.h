#pragma once
// The desktop program on a fresh machine: a program folder in a temporary folder with a demo
// and a run script that stands in for the solver, an empty file hive, scripted message boxes,
// the real run window, and a shell opener that records what it was asked to open.
#include <gtest/gtest.h>

#include <QApplication>
#include <functional>
#include <memory>

#include "env/file_registry_posix.h"
#include "model/app_state.h"
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
bool WaitUntil(const std::function<bool()>& done, int ms = 10000);

class UiFixture : public ::testing::Test {
protected:
    UiFixture();
    ~UiFixture() override;

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
    std::string RegistryText(const std::string& key, const std::string& name);

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
