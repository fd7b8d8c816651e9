#include "env/errors.h"
#include "env/paths.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "solver/solver_tab.h"

namespace quillet {

namespace {

// Keeps the texts of message boxes for the caller; nobody is there to answer a dialog.
class CollectingDialogs : public Dialogs {
public:
    explicit CollectingDialogs(std::vector<std::string>& messages) : messages_(messages) {}
    int MsgBox(const std::string& text, int, const std::string&) override {
        messages_.push_back(text);
        return mb::OK;
    }
    std::string FileDialog(const FileDialogRequest&) override { Raise(err::DialogCancelled); }

private:
    std::vector<std::string>& messages_;
};

}  // namespace

ResponseRecord ReadResponseRecord(const std::string& folder, const std::string& fileName,
                                  std::vector<std::string>& messages) {
    CollectingDialogs dialogs(messages);
    AppState s;
    s.env.dialogs = &dialogs;
    s.env.currentFolder = folder;
    InitFormDesign(s);
    Questions_Visible(s);
    selectSolverQuest(s);
    LineReader in = LineReader::Open(JoinPath(folder, fileName));
    FileReadMe(s, in, fileName, folder);
    return s.rec;
}

}  // namespace quillet
