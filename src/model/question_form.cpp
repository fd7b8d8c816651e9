#include "model/question_form.h"

#include "env/errors.h"
#include "env/paths.h"
#include "env/text.h"
#include "model/catalogue.h"
#include "model/form_events.h"

namespace quillet {

void OnGotFocus(AppState& s, Ctl id) {
    auto& f = s.form;
    switch (id) {
        case Ctl::Amplitude:
        case Ctl::Amplitude2:
        case Ctl::PW50:
        case Ctl::PeakLocations:
        case Ctl::Note1:
        case Ctl::Note2: {
            TextBox* box = id == Ctl::Amplitude       ? &f.Amplitude
                           : id == Ctl::Amplitude2    ? &f.Amplitude2
                           : id == Ctl::PW50          ? &f.PW50
                           : id == Ctl::PeakLocations ? &f.PeakLocations
                           : id == Ctl::Note1         ? &f.Note1
                                                      : &f.Note2;
            box->selStart = 0;
            box->selLength = 9999;
            f.focus = id;
            break;
        }
        case Ctl::timeData:
            f.cmdFileData.visible = true;
            // The data file is normally chosen through the file dialog, not typed.
            f.focus = f.activeTab == Tab::Input ? Ctl::cmdFileData : Ctl::timeData;
            break;
        default: f.focus = id; break;
    }
}

void cmdFileData_Click(AppState& s) {
    const std::string title = "Select File Name containing your Data to be curve fitted";
    try {
        std::string chosen = s.env.dialogs->FileDialog(
            {FileDialogRequest::Kind::Open, title,
             "All Files (*.*)|*.*|Input Data files (*.??0.data)|*.??0.data|Plot data files (*.plt)|*.plt", s.UserDir,
             "", ""});
        std::string folder;
        std::string name = SplitPath(s.env, chosen, folder);
        if (!s.UserDir.empty() && folder != s.UserDir) {
            s.env.dialogs->MsgBox("Sorry, Input & Data files -must- be in same directory!", mb::Exclamation, title);
            return;
        }
        s.DataDir = folder;
        s.DataFile = name;
        SetText(s, s.form.timeData, name);
    } catch (const RuntimeError& e) {
        if (e.number() != err::DialogCancelled)
            s.env.dialogs->MsgBox(UnexpectedErrorText(e), mb::Critical, "In 'cmdFileData' routine ...");
    }
}

bool AllNeededFieldsFilled(const AppState& s) {
    const FormModel& f = s.form;
    const int id = f.Methods.listIndex;
    if (id < model::Lorentzian || id > model::BellCurve) return false;
    for (int q = 1; q <= 12; ++q) {
        if (q == 2 || !ModelUsesQuestion(id, q)) continue;
        if (Trim(AnswerBox(f, q)->text).empty()) return false;
    }
    return true;
}

bool isCompleteTest(AppState& s) {
    if (AllNeededFieldsFilled(s)) return true;
    s.env.dialogs->MsgBox("Some fields are Blank, please fill them and submit again", mb::Exclamation,
                          "Missing some data fields");
    return false;
}

}  // namespace quillet
