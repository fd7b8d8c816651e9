#include "ui/msgbox_style.h"

#include <vector>

namespace quillet::ui {

namespace {

using SB = QMessageBox::StandardButton;

std::vector<SB> ButtonsOf(int field) {
    switch (field) {
        case 1: return {SB::Ok, SB::Cancel};
        case 2: return {SB::Abort, SB::Retry, SB::Ignore};
        case 3: return {SB::Yes, SB::No, SB::Cancel};
        case 4: return {SB::Yes, SB::No};
        case 5: return {SB::Retry, SB::Cancel};
        default: return {SB::Ok};
    }
}

QMessageBox::Icon IconOf(int field) {
    switch (field) {
        case 16: return QMessageBox::Critical;
        case 32: return QMessageBox::Question;
        case 48: return QMessageBox::Warning;
        case 64: return QMessageBox::Information;
        default: return QMessageBox::NoIcon;
    }
}

}  // namespace

MsgBoxStyle DecodeMsgBoxStyle(int style) {
    MsgBoxStyle out;
    const auto buttons = ButtonsOf(style & 0x0F);
    for (SB b : buttons) out.buttons |= b;
    out.icon = IconOf(style & 0xF0);
    const auto defaultIndex = static_cast<std::size_t>((style & 0x300) >> 8);
    out.defaultButton = defaultIndex < buttons.size() ? buttons[defaultIndex] : buttons.front();
    return out;
}

int ClassicResult(QMessageBox::StandardButton pressed) {
    switch (pressed) {
        case SB::Ok: return 1;
        case SB::Cancel: return 2;
        case SB::Abort: return 3;
        case SB::Retry: return 4;
        case SB::Ignore: return 5;
        case SB::Yes: return 6;
        case SB::No: return 7;
        default: return 2;
    }
}

}  // namespace quillet::ui
