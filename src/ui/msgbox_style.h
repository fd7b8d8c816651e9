#pragma once
// The classic numeric message-box style, decoded field by field: bits 0..3 choose the
// buttons, bits 4..7 the icon, bits 8..9 the default button.
#include <QMessageBox>

namespace quillet::ui {

struct MsgBoxStyle {
    QMessageBox::StandardButtons buttons;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

// A field value that names nothing (e.g. the icon field of 481) gives no icon / the first
// button as the default, as the classic box does.
MsgBoxStyle DecodeMsgBoxStyle(int style);
// The classic result code of a pressed button (1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore,
// 6 Yes, 7 No).
int ClassicResult(QMessageBox::StandardButton pressed);

}  // namespace quillet::ui
