// Closing the program with answers that were never saved: the question comes first, and only
// then the exit routine's own work (the run counter).
#include <gtest/gtest.h>

#include <filesystem>

#include "env/mdlRegistryAPI.h"
#include "env/settings.h"
#include "model/response_file.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "model/startup.h"
#include "support/form_fixture.h"
#include "support/test_registry.h"

namespace quillet {
namespace {

using testing::ShownBox;

class Closing : public testing::SavedFormFixture {
protected:
    // The answers of a saved file `name`, then one more edit that is not saved.
    void SavedThenEdited(const std::string& name) {
        SetText(s, s.form.nTerms, "2");
        SetCurrentFile(s, dir / name);
        WriteAnsFile(s, s.CurrentFile, s.UserDir);
        s.DataChanged = false;
        SetText(s, s.form.nTerms, "5");
    }
    bool CounterStored() {
        return RegText(GetRegValue(s.env, reg::CurrentUser, "Software\\Vantorel\\Quillet", "RunCount", reg::Sz,
                                   std::string("<missing>"))) != "<missing>";
    }
    // The number of terms the saved file holds, as Open reads it back.
    std::string SavedTerms(const std::string& name) {
        std::vector<std::string> messages;
        return ReadResponseRecord(dir.path(), name, messages).Answers[5];
    }

};

TEST_F(Closing, UnchangedAnswersCloseWithoutAQuestion) {
    EXPECT_TRUE(CloseProgram(s));
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_TRUE(s.env.quitRequested);
    EXPECT_TRUE(CounterStored());
}

TEST_F(Closing, EachAnswerToTheQuestionDecidesWhetherTheEditsAreSavedAndTheProgramEnds) {
    struct Case {
        int answer;
        bool ends;
        const char* termsInFile;
    };
    for (const Case& c : {Case{mb::Yes, true, "5"}, Case{mb::No, true, "2"}, Case{mb::Cancel, false, "2"}}) {
        SCOPED_TRACE(c.answer);
        s.env.quitRequested = false;
        dialogs.boxes.clear();
        SavedThenEdited("mine.Fit");
        dialogs.Answer(c.answer);
        EXPECT_EQ(CloseProgram(s), c.ends);
        EXPECT_EQ(dialogs.boxes.at(0),
                  (ShownBox{"Save changes to 'mine.Fit' before closing?", "Quillet", mb::YesNoCancel + mb::Question}));
        EXPECT_EQ(SavedTerms("mine.Fit"), c.termsInFile);
        EXPECT_EQ(s.env.quitRequested, c.ends);
        EXPECT_EQ(s.form.nTerms.text, "5");
    }
}

TEST_F(Closing, YesOnANeverSavedFormGoesThroughSaveAsAndACancelledSaveAsKeepsTheProgramOpen) {
    s.CurrentFile = "New data";
    SetText(s, s.form.nTerms, "4");

    dialogs.Answer(mb::Yes).Cancel();
    EXPECT_FALSE(CloseProgram(s));
    EXPECT_EQ(dialogs.boxes.at(0).text, "Save changes to 'New data' before closing?");
    EXPECT_EQ(dialogs.fileDialogs.at(0).proposedName, "New data.Fit");
    EXPECT_FALSE(s.env.quitRequested);
    EXPECT_FALSE(CounterStored());

    dialogs.Answer(mb::Yes).Choose(dir / "kept.Fit");
    EXPECT_TRUE(CloseProgram(s));
    EXPECT_EQ(SavedTerms("kept.Fit"), "4");
    EXPECT_TRUE(CounterStored());
}

TEST_F(Closing, ASaveThatFailsKeepsTheProgramOpen) {
    SavedThenEdited("Ex1.Fit");
    std::filesystem::permissions(dir / "Ex1.Fit", std::filesystem::perms::owner_read);
    dialogs.Answer(mb::Yes).Answer(mb::OK);
    EXPECT_FALSE(CloseProgram(s));
    EXPECT_EQ(dialogs.boxes.at(1).title, "In 'FileSave' routine ...");
    EXPECT_FALSE(s.env.quitRequested);
    EXPECT_TRUE(s.DataChanged);
}

}  // namespace
}  // namespace quillet
