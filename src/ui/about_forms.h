#pragma once
// frmAbout and frmEmail.
#include <QDialog>

#include "env/ports.h"

namespace quillet::ui {

// "Quillet (Version 6.711)" and "Quillet ... Version 6.711".
QString VersionLine();
QString VersionLineDots();

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);
};

class frmEmail : public QDialog {
    Q_OBJECT
public:
    // The E-mail button opens the person's mail program through `shell`.
    frmEmail(ShellOpener& shell, QWidget* parent = nullptr);
};

}  // namespace quillet::ui
