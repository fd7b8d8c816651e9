// Quillet, the desktop program.
#include <QApplication>

#include "env/paths.h"
#include "env/registry_backend.h"
#include "model/startup.h"
#include "ui/app_icon.h"
#include "ui/desktop_ports.h"
#include "ui/main_window.h"
#include "ui/program_style.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Quillet");
    QApplication::setOrganizationName("Vantorel");
    QApplication::setWindowIcon(quillet::ui::AppIcon());
    // Over the style the platform or the person (-style, QT_STYLE_OVERRIDE) chose.
    QApplication::setStyle(new quillet::ui::ProgramStyle(QApplication::style()->name()));

    quillet::ui::DesktopPorts ports;
    const auto registry = quillet::MakePlatformRegistry();
    quillet::AppState s;
    ports.Wire(s.env);
    s.env.registry = registry.get();
    s.env.programDir = quillet::DefaultProgramDir();
    s.env.parentDir = quillet::JoinPath(s.env.programDir, "..");
    s.env.currentFolder = s.env.programDir;

    quillet::Form_Load(s);
    if (s.env.quitRequested) return 1;
    quillet::ui::frmMain window(s);
    ports.SetParent(&window);
    window.show();
    return app.exec();
}
