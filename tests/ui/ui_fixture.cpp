#include "ui_fixture.h"

#include <QTest>
#include <filesystem>

#include "env/mdlRegistryAPI.h"
#include "env/paths.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "model/startup.h"

namespace quillet::testing {

namespace {

// A complete one-peak Lorentzian answer set, saved as an example.
void WriteDemo(const Env& env, const std::string& folder) {
    AppState demo;
    demo.env = env;
    InitFormDesign(demo);
    SetMethodsText(demo, "Lorentzian");
    SetText(demo, demo.form.timeData, "ExDemo.100");
    SetText(demo, demo.form.Line0, "1");
    SetText(demo, demo.form.nPoints, "5");
    SetText(demo, demo.form.nTerms, "1");
    SetText(demo, demo.form.xnorm, "1");
    SetText(demo, demo.form.ynorm, "1");
    SetText(demo, demo.form.Y0, "0");
    SetText(demo, demo.form.Note1, "One peak on a flat base");
    WriteAnsFile(demo, "ExDemo.Fit", folder);
}

}  // namespace

bool WaitUntil(const std::function<bool()>& done, int ms) {
    for (int waited = 0; waited < ms; waited += 10) {
        if (done()) return true;
        QTest::qWait(10);
    }
    return done();
}

UiFixture::UiFixture() : program(dir / "Quillet"), registry(dir / "hive") {
    namespace fs = std::filesystem;
    fs::create_directories(program + "/demos");
    fs::copy_file(QUILLET_UI_TEST_DATA "/run-FitW.sh", program + "/run-FitW.sh");
    fs::copy_file(QUILLET_UI_TEST_DATA "/curve.plt", program + "/sample.plt");

    s.env.dialogs = &dialogs;
    s.env.clock = &clock;
    s.env.runner = &runner;
    s.env.shell = &shell;
    s.env.registry = &registry;
    s.env.programDir = program;
    s.env.parentDir = JoinPath(program, "..");
    s.env.currentFolder = program;
    WriteDemo(s.env, program + "/demos");

    Form_Load(s);
    window = std::make_unique<ui::frmMain>(s);
    runner.setParent(window.get());
    window->show();
}

// Deleting the window runs no exit routine; the test that closes it checks what that stored.
UiFixture::~UiFixture() { window.reset(); }

std::string UiFixture::RegistryText(const std::string& key, const std::string& name) {
    return RegText(GetRegValue(s.env, reg::CurrentUser, key, name, reg::Sz));
}

}  // namespace quillet::testing
