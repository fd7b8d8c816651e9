#pragma once
// The Dialogs port on the desktop: QMessageBox and QFileDialog.
#include <QPointer>
#include <QWidget>

#include "env/ports.h"

namespace quillet::ui {

class QtDialogs : public Dialogs {
public:
    // Boxes are centred on `parent` once the main window exists.
    void setParent(QWidget* parent) { parent_ = parent; }
    int MsgBox(const std::string& text, int style, const std::string& title) override;
    std::string FileDialog(const FileDialogRequest& request) override;

private:
    QPointer<QWidget> parent_;
};

}  // namespace quillet::ui
