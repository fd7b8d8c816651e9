#include "ui/shell_opener.h"

#include <QDesktopServices>
#include <QRegularExpression>
#include <QUrl>

namespace quillet::ui {

void QtShellOpener::Open(const std::string& target, const std::string& verb) {
    (void)verb;  // the desktop has one way to open a thing
    const QString t = QString::fromStdString(target);
    // "mailto:", "https:", ... are addresses; anything else is a path on this machine.
    static const QRegularExpression scheme("^[A-Za-z][A-Za-z0-9+.-]+:");
    const QUrl url = scheme.match(t).hasMatch() ? QUrl(t, QUrl::TolerantMode) : QUrl::fromLocalFile(t);
    QDesktopServices::openUrl(url);
}

}  // namespace quillet::ui
