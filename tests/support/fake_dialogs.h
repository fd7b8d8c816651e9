#pragma once
// A scripted Dialogs: answers come from a queue; every box is recorded. A box nobody
// scripted, or answers left unused, fail the test.
#include <deque>
#include <ostream>
#include <string>
#include <vector>

#include "env/ports.h"

namespace quillet::testing {

struct ShownBox {
    std::string text;
    std::string title;
    int style;
    bool operator==(const ShownBox&) const = default;
};
inline void PrintTo(const ShownBox& b, std::ostream* os) {
    *os << "{'" << b.text << "', '" << b.title << "', " << b.style << "}";
}

class FakeDialogs : public Dialogs {
  public:
    ~FakeDialogs() override;
    // The next message box is answered with `result` (mb::OK, mb::Yes, ...).
    FakeDialogs& Answer(int result);
    // The next file dialog returns `path`; an empty path cancels it (error 32755).
    FakeDialogs& Choose(const std::string& path);
    FakeDialogs& Cancel() { return Choose(""); }

    int MsgBox(const std::string& text, int style, const std::string& title) override;
    std::string FileDialog(const FileDialogRequest& request) override;

    std::vector<ShownBox> boxes;
    std::vector<FileDialogRequest> fileDialogs;

  private:
    std::deque<int> answers_;
    std::deque<std::string> paths_;
};

}  // namespace quillet::testing
