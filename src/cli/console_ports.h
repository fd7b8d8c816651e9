#pragma once
// Ports for a program without a window: messages go to stderr, dialogs cannot be answered.
#include <string>

#include "env/ports.h"

namespace quillet::cli {

class ConsoleDialogs : public Dialogs {
public:
    // Prints the text to stderr and answers as a person who declines would (OK, No, Cancel).
    int MsgBox(const std::string& text, int style, const std::string& title) override;
    // Raises the cancel error: there is nobody to choose a file.
    std::string FileDialog(const FileDialogRequest& request) override;
    int shown() const { return shown_; }

private:
    int shown_ = 0;
};

}  // namespace quillet::cli
