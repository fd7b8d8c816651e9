#include "model/file_commands.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "env/text.h"
#include "model/form_events.h"
#include "support/form_fixture.h"

namespace quillet {
namespace {

using testing::FormFixture;
using testing::ReadBytes;
using testing::ShownBox;

class FileCommands : public FormFixture {
protected:
    FileCommands() {
        s.UserDir = dir.path();
        GetAnswers(s);
    }
    bool Exists(const std::string& name) { return std::filesystem::exists(dir / name); }
    const ShownBox& Box(std::size_t i) { return dialogs.boxes.at(i); }
};

TEST_F(FileCommands, APersonEditsSavesOpensAndClearsAResponse) {
    // Choose a model and answer; Save on a never-saved form goes through Save As.
    SetMethodsText(s, "Exponential");
    SetText(s, s.form.nTerms, "2");
    dialogs.Choose(dir / "first.Fit");
    FileSave(s);
    EXPECT_EQ(dialogs.fileDialogs[0].proposedName, ".Fit");
    EXPECT_EQ(s.CurrentFile, "first.Fit");
    EXPECT_FALSE(s.DataChanged);

    // Edit, then Open: Cancel keeps everything, No discards, Yes saves first.
    SetText(s, s.form.nTerms, "5");
    dialogs.Answer(mb::Cancel);
    FileOld(s);
    EXPECT_EQ(s.form.nTerms.text, "5");
    EXPECT_EQ(Box(0), (ShownBox{"Save current data?", "Data in form has changed!", 35}));

    dialogs.Answer(mb::No).Choose(dir / "first.Fit");
    FileOld(s);
    EXPECT_EQ(s.form.nTerms.text, "2");
    EXPECT_FALSE(s.DataChanged);

    SetText(s, s.form.nTerms, "6");
    dialogs.Answer(mb::Yes).Choose(dir / "third.Fit").Choose(dir / "first.Fit");
    FileOld(s);
    EXPECT_TRUE(Exists("third.Fit"));
    EXPECT_EQ(s.form.nTerms.text, "2");

    // New asks to confirm; OK clears the answers and shows "Lorentzian".
    dialogs.Answer(mb::OK);
    FileNew(s);
    EXPECT_EQ(dialogs.boxes.back(), (ShownBox{"Okay to Clear responses?", "Confirm 'New' Response.", 33}));
    EXPECT_EQ(s.form.Methods.text, "Lorentzian");
    EXPECT_EQ(s.form.nTerms.text, "");

    // New again on "New data" does not ask to save, even after edits.
    SetText(s, s.form.nTerms, "9");
    dialogs.Answer(mb::Cancel);
    FileNew(s);
    EXPECT_EQ(s.form.nTerms.text, "9");
}

TEST_F(FileCommands, SaveAsAsksBeforeReplacingAndProposesOneExtension) {
    SetText(s, s.form.nTerms, "3");
    s.CurrentFile = "My.Fit.fit";
    testing::WriteBytes(dir / "My.Fit", "old");
    dialogs.Choose(dir / "My.Fit").Answer(mb::No);
    EXPECT_FALSE(FileSaveAs(s));
    EXPECT_EQ(dialogs.fileDialogs[0].proposedName, "My.Fit");
    EXPECT_EQ(Box(0),
              (ShownBox{"Replace " + LCase(dir / "My.Fit") + " file?", "File exists, want to replace it?", 36}));
    EXPECT_EQ(ReadBytes(dir / "My.Fit"), "old");

    dialogs.Choose(dir / "My.Fit").Answer(mb::Yes);
    EXPECT_TRUE(FileSaveAs(s));
    EXPECT_NE(ReadBytes(dir / "My.Fit"), "old");
}

TEST_F(FileCommands, SaveOfAnExampleFileIsRefusedAndNothingIsLost) {
    testing::WriteBytes(dir / "Ex1.Fit", "example");
    std::filesystem::permissions(dir / "Ex1.Fit", std::filesystem::perms::owner_read);
    s.CurrentFile = "Ex1.Fit";
    SetText(s, s.form.nTerms, "3");
    dialogs.Answer(mb::OK);
    FileSave(s);
    EXPECT_EQ(Box(0),
              (ShownBox{"Unexpected error #75 occured: Path/File access error", "In 'FileSave' routine ...", 16}));
    EXPECT_EQ(ReadBytes(dir / "Ex1.Fit"), "example");
    EXPECT_TRUE(s.DataChanged);
}

TEST_F(FileCommands, DeleteConfirmsOnlyExistingFilesAndKeepsTheAnswers) {
    testing::WriteBytes(dir / "old.Fit", "x");
    SetText(s, s.form.nTerms, "3");
    dialogs.Choose(dir / "old.Fit").Answer(mb::No);
    FileDelete(s);
    EXPECT_TRUE(Exists("old.Fit"));
    EXPECT_EQ(Box(0), (ShownBox{"Delete '" + (dir / "old.Fit") + "' File.", "Confirm Delete?", 36}));

    dialogs.Choose(dir / "old.Fit").Answer(mb::Yes);
    FileDelete(s);
    EXPECT_FALSE(Exists("old.Fit"));
    EXPECT_EQ(s.form.nTerms.text, "3");
}

TEST_F(FileCommands, ANameTypedWithoutExtensionGetsTheResponseExtensionInEveryFileDialog) {
    std::filesystem::create_directory(dir / "v1.2");
    const std::pair<std::string, std::string> typedAndWritten[] = {
        {"run1.txt", "run1.txt"}, {"v1.2/run1", "v1.2/run1.Fit"}, {"run1", "run1.Fit"}};
    for (const auto& [typed, written] : typedAndWritten) {
        SetText(s, s.form.nTerms, "4");
        dialogs.Choose(dir / typed);
        EXPECT_TRUE(FileSaveAs(s)) << typed;
        EXPECT_TRUE(Exists(written)) << typed;
    }
    EXPECT_FALSE(Exists("run1"));
    EXPECT_EQ(s.form.caption, "run1.Fit ... Quillet, a Calculus-level program");

    // The replace question is about the file that would be written.
    dialogs.Choose(dir / "run1").Answer(mb::No);
    EXPECT_FALSE(FileSaveAs(s));
    EXPECT_EQ(Box(0),
              (ShownBox{"Replace " + LCase(dir / "run1.Fit") + " file?", "File exists, want to replace it?", 36}));

    // Open and Delete add it too, but an existing file without extension is taken as named.
    testing::WriteBytes(dir / "legacy", ReadBytes(dir / "run1.Fit"));
    dialogs.Choose(dir / "legacy").Choose(dir / "run1").Answer(mb::Yes);
    FileOld(s);
    EXPECT_EQ(s.CurrentFile, "legacy");
    FileDelete(s);
    EXPECT_FALSE(Exists("run1.Fit"));

    // The desktop's dialog is told too, so that it shows the name it will return.
    for (const auto& request : dialogs.fileDialogs) EXPECT_EQ(request.defaultExt, ".Fit") << request.title;
}

// A chosen response file that is there and still cannot be read: its read permission is gone,
// or a folder stands under its name. Both fail with the same access error.
enum class Unreadable { NoReadPermission, FolderOfThatName };
std::string Name(Unreadable u) {
    return u == Unreadable::NoReadPermission ? "NoReadPermission" : "FolderOfThatName";
}
void PrintTo(Unreadable u, std::ostream* os) {
    *os << Name(u);
}

class OpenOfAnUnreadableFile : public FileCommands, public ::testing::WithParamInterface<Unreadable> {
protected:
    // Everything the person sees of the answers, and the caption.
    std::vector<std::string> Shown() {
        auto& f = s.form;
        std::vector<std::string> shown{f.caption, f.Methods.text, f.Question9.caption, f.Note1.text, f.Note2.text};
        for (int q = 1; q <= 12; ++q)
            if (q != 2) shown.push_back(AnswerBox(f, q)->text + (AnswerBox(f, q)->visible ? "" : " (hidden)"));
        for (int i = 1; i <= 6; ++i) shown.push_back(SolverBox(f, i).text);
        return shown;
    }
};

TEST_P(OpenOfAnUnreadableFile, ShowsTheErrorAndLeavesTheFormAndTheCurrentFileAsTheyWere) {
    SetMethodsText(s, "Exponential");
    SetText(s, s.form.nTerms, "2");
    dialogs.Choose(dir / "first.Fit");
    FileSave(s);

    const std::string unreadable = dir / "locked.Fit";
    if (GetParam() == Unreadable::NoReadPermission) {
        testing::WriteBytes(unreadable, ReadBytes(dir / "first.Fit"));
        if (!testing::TakeAwayReadPermission(unreadable))
            GTEST_SKIP() << "this user reads files without read permission (root or Windows)";
    } else {
        std::filesystem::create_directory(unreadable);
    }

    const auto before = Shown();
    const std::string userDir = s.UserDir;
    dialogs.Choose(unreadable).Answer(mb::OK);
    FileOld(s);
    EXPECT_EQ(dialogs.boxes, (std::vector<ShownBox>{{"Unexpected error #75 occured: Path/File access error",
                                                     "In 'FileOld' routine ...", 16}}));
    EXPECT_EQ(Shown(), before);
    EXPECT_EQ(s.CurrentFile, "first.Fit");
    EXPECT_EQ(s.UserDir, userDir);
    EXPECT_FALSE(s.DataChanged);
}

INSTANTIATE_TEST_SUITE_P(Causes, OpenOfAnUnreadableFile,
                         ::testing::Values(Unreadable::NoReadPermission, Unreadable::FolderOfThatName),
                         [](const auto& info) { return Name(info.param); });

}  // namespace
}  // namespace quillet
