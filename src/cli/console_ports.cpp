#include "cli/console_ports.h"

#include <iostream>

#include "env/errors.h"

namespace quillet::cli {

int ConsoleDialogs::MsgBox(const std::string& text, int style, const std::string& title) {
    ++shown_;
    (void)title;
    std::cerr << text << "\n";
    switch (style & 7) {
        case mb::YesNo:
        case mb::YesNoCancel: return mb::No;
        case mb::OKCancel: return mb::Cancel;
        default: return mb::OK;
    }
}

std::string ConsoleDialogs::FileDialog(const FileDialogRequest&) { Raise(err::DialogCancelled); }

}  // namespace quillet::cli
