#include "support/fake_dialogs.h"

#include <gtest/gtest.h>

#include "env/errors.h"

namespace quillet::testing {

FakeDialogs::~FakeDialogs() {
    EXPECT_TRUE(answers_.empty()) << answers_.size()
                                  << " scripted message box answer(s) left unused";
    EXPECT_TRUE(paths_.empty()) << paths_.size() << " scripted file dialog answer(s) left unused";
}

FakeDialogs& FakeDialogs::Answer(int result) {
    answers_.push_back(result);
    return *this;
}

FakeDialogs& FakeDialogs::Choose(const std::string& path) {
    paths_.push_back(path);
    return *this;
}

int FakeDialogs::MsgBox(const std::string& text, int style, const std::string& title) {
    boxes.push_back({text, title, style});
    if (answers_.empty()) {
        ADD_FAILURE() << "unscripted message box: title '" << title << "', text '" << text << "'";
        return mb::Cancel;
    }
    int r = answers_.front();
    answers_.pop_front();
    return r;
}

std::string FakeDialogs::FileDialog(const FileDialogRequest& request) {
    fileDialogs.push_back(request);
    if (paths_.empty()) {
        ADD_FAILURE() << "unscripted file dialog: " << request.title;
        Raise(err::DialogCancelled);
    }
    std::string p = paths_.front();
    paths_.pop_front();
    if (p.empty()) Raise(err::DialogCancelled);
    return p;
}

}  // namespace quillet::testing
