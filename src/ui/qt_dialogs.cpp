#include "ui/qt_dialogs.h"

#include <QFileDialog>
#include <QMessageBox>

#include "env/errors.h"
#include "ui/file_filter.h"
#include "ui/msgbox_style.h"

namespace quillet::ui {

int QtDialogs::MsgBox(const std::string& text, int style, const std::string& title) {
    const MsgBoxStyle decoded = DecodeMsgBoxStyle(style);
    QMessageBox box(decoded.icon, QString::fromStdString(title), QString::fromStdString(text),
                    decoded.buttons, parent_);
    box.setDefaultButton(decoded.defaultButton);
    box.setTextFormat(Qt::PlainText);
    return ClassicResult(static_cast<QMessageBox::StandardButton>(box.exec()));
}

std::string QtDialogs::FileDialog(const FileDialogRequest& request) {
    const bool save = request.kind == FileDialogRequest::Kind::Save;
    QFileDialog dialog(parent_, QString::fromStdString(request.title),
                       QString::fromStdString(request.startFolder));
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // The routines ask their own question before replacing a file.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(NameFilters(request.filter));
    // Qt drops the leading dot itself.
    dialog.setDefaultSuffix(QString::fromStdString(request.defaultExt));
    if (!request.proposedName.empty()) dialog.selectFile(QString::fromStdString(request.proposedName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        Raise(err::DialogCancelled, "CommonDialog", "Cancel was selected.");
    return dialog.selectedFiles().front().toStdString();
}

}  // namespace quillet::ui
