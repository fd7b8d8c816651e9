#include "model/form_events.h"

#include "model/catalogue.h"
#include "solver/solver_tab.h"

namespace quillet {

namespace {

// The record field that an answer control is compared with, or nullptr.
const std::string* RecordFieldOf(AppState& s, Ctl id) {
    auto& a = s.rec.Answers;
    switch (id) {
        case Ctl::timeData: return &a[1];
        case Ctl::Line0: return &a[3];
        case Ctl::nPoints: return &a[4];
        case Ctl::nTerms: return &a[5];
        case Ctl::xnorm: return &a[6];
        case Ctl::ynorm: return &a[7];
        case Ctl::Y0: return &a[8];
        case Ctl::Amplitude: return &a[9];
        case Ctl::PW50: return &a[10];
        case Ctl::PeakLocations: return &a[11];
        case Ctl::Amplitude2: return &a[12];
        case Ctl::Note1: return &s.rec.Note1;
        case Ctl::Note2: return &s.rec.Note2;
        default: return nullptr;
    }
}

TextBox* TextBoxOf(FormModel& f, Ctl id) {
    for (int q = 1; q <= 12; ++q)
        if (auto* b = AnswerBox(f, q); b && b->id == id) return b;
    for (int i = 1; i <= 6; ++i)
        if (SolverBox(f, i).id == id) return &SolverBox(f, i);
    if (id == Ctl::Note1) return &f.Note1;
    if (id == Ctl::Note2) return &f.Note2;
    return nullptr;
}

bool IsSolverBox(Ctl id) {
    return id == Ctl::Remax || id == Ctl::Detail || id == Ctl::Delta || id == Ctl::PreDamp ||
           id == Ctl::Damp || id == Ctl::Rho;
}

}  // namespace

void SetText(AppState& s, TextBox& box, const std::string& text) {
    if (box.text == text) return;
    box.text = text;
    OnTextChange(s, box.id);
}

void SetCheck(AppState& s, CheckBox& box, bool value) {
    // A check box fires no Change handler of its own here: its answer is read by GetAnswers.
    (void)s;
    box.value = value;
}

void SetMethodsText(AppState& s, const std::string& text) {
    auto& m = s.form.Methods;
    int index = -1;
    for (std::size_t i = 0; i < m.items.size(); ++i)
        if (m.items[i] == text) index = static_cast<int>(i);
    bool differs = m.text != text;
    m.text = text;
    m.listIndex = index;
    if (differs) Methods_Change(s);
}

void Methods_Click(AppState& s, int index) {
    auto& m = s.form.Methods;
    if (index < 0 || index >= static_cast<int>(m.items.size())) return;
    m.listIndex = index;
    m.text = m.items[static_cast<std::size_t>(index)];
    if (m.text != s.rec.Answers[2]) s.DataChanged = true;
    Questions_Visible(s);
    RefreshTabs(s);
}

void OnTextChange(AppState& s, Ctl id) {
    if (IsSolverBox(id)) {
        s.DataChanged = true;
        return;
    }
    const std::string* field = RecordFieldOf(s, id);
    TextBox* box = TextBoxOf(s.form, id);
    if (field && box && box->text != *field) s.DataChanged = true;
}

void Methods_Change(AppState& s) {
    if (s.form.Methods.text != s.rec.Answers[2]) s.DataChanged = true;
    Questions_Visible(s);
    RefreshTabs(s);
}

void Questions_Visible(AppState& s) {
    auto& f = s.form;
    const auto& slot = s.rec.QuestionLabels;
    s.rec.ModelID = static_cast<std::int16_t>(f.Methods.listIndex);

    f.Question[8].visible = f.Y0.visible = f.Question9.visible = f.Question10.visible = true;
    f.PW50.visible = f.PeakLocations.visible = f.Question11.visible = true;
    f.Combo10.visible = f.Amplitude2.visible = f.Question12.visible = false;

    switch (s.rec.ModelID) {
        case model::Lorentzian:
        case model::ModifiedLorentzian:
            f.Question9.caption = slot[0];
            f.Question10.caption = slot[1];
            f.Question11.caption = slot[2];
            if (s.rec.ModelID == model::ModifiedLorentzian) {
                f.Question12.caption = slot[3];
                f.Amplitude2.visible = f.Question12.visible = true;
            }
            break;
        case model::Exponential:
            f.Question9.caption = slot[4];
            f.Question10.caption = slot[5];
            f.PeakLocations.visible = f.Question11.visible = false;
            break;
        case model::Power:
            f.Question9.caption = slot[6];
            f.PW50.visible = f.Question10.visible = false;
            f.PeakLocations.visible = f.Question11.visible = false;
            break;
        case model::Sine:
        case model::SineExponential:
            f.Question9.caption = slot[7];
            f.Question10.caption = kBareQuestion10;
            f.Question11.caption = slot[9];
            if (!f.Combo10.items.empty()) {
                f.Combo10.text = f.Combo10.items.front();
                f.Combo10.listIndex = 0;
            }
            f.Combo10.visible = true;
            if (s.rec.ModelID == model::SineExponential) {
                f.Question12.caption = slot[10];
                f.Amplitude2.visible = f.Question12.visible = true;
            }
            break;
        case model::BellCurve:
            f.Question[8].visible = f.Y0.visible = false;
            f.Question9.caption = slot[11];
            f.Question10.caption = slot[12];
            f.Question11.caption = slot[13];
            break;
        default: break;
    }
}

void RefreshTabs(AppState& s) { selectSolverQuest(s); }

void GetAnswers(AppState& s) { s.rec = RecordOnForm(s); }

ResponseRecord RecordOnForm(const AppState& s) {
    const auto& f = s.form;
    ResponseRecord r = s.rec;
    for (int q = 1; q <= 12; ++q)
        r.Answers[static_cast<std::size_t>(q)] = q == 2 ? f.Methods.text : AnswerBox(f, q)->text;
    r.ModelID = static_cast<std::int16_t>(f.Methods.listIndex);
    r.WeightFlag = f.chkWeight.value ? 1 : 0;
    r.Note1 = f.Note1.text;
    r.Note2 = f.Note2.text;
    for (int i = 1; i <= 6; ++i) r.SolverValues[static_cast<std::size_t>(i)] = SolverBox(f, i).text;
    return r;
}

void PutAnswers(AppState& s) {
    auto& f = s.form;
    // The record is copied first: the change handlers compare each field with it.
    const ResponseRecord r = s.rec;
    for (int q = 1; q <= 12; ++q) {
        if (q == 2)
            SetMethodsText(s, r.Answers[2]);
        else
            SetText(s, *AnswerBox(f, q), r.Answers[static_cast<std::size_t>(q)]);
    }
    SetCheck(s, f.chkWeight, r.WeightFlag != 0);
    SetText(s, f.Note1, r.Note1);
    SetText(s, f.Note2, r.Note2);
    bool anyValue = false;
    for (int i = 1; i <= 6; ++i) {
        SetText(s, SolverBox(f, i), r.SolverValues[static_cast<std::size_t>(i)]);
        anyValue = anyValue || !r.SolverValues[static_cast<std::size_t>(i)].empty();
    }
    EnableSolverBoxes(s, anyValue);
}

void InitFormDesign(AppState& s) {
    auto& f = s.form;
    for (int q = 1; q <= 8; ++q) f.Question[static_cast<std::size_t>(q)].caption = kQuestionCaptions[static_cast<std::size_t>(q)];
    f.lblNote.caption = kBanner;
    f.lblKeepNotes.caption = kKeepNotesCaption;
    f.chkWeight.caption = kWeightCaption;
    f.timeData.text = FormDefaults::timeData;
    f.Amplitude.text = FormDefaults::Amplitude;
    f.PW50.text = FormDefaults::PW50;
    f.PeakLocations.text = FormDefaults::PeakLocations;
    f.Amplitude2.text = FormDefaults::Amplitude2;
    f.Note1.text = FormDefaults::Note1;
    f.Note2.text = FormDefaults::Note2;
    f.Note1.toolTip = "Note1...Keep notes for future runs";
    f.Note2.toolTip = "Note2...Keep notes for future runs";
    f.Methods.items.assign(kModelNames.begin(), kModelNames.end());
    f.Methods.text = kModelNames[0];
    f.Methods.listIndex = 0;
    f.Combo10.items = kCombo10Entries;
    f.Combo10.visible = false;
    f.cmdFileData.caption = "...";
    f.cmdNewFromData.caption = "New from Data File...";
    f.cmdNewFromData.toolTip = "Makes a new response file beside a data file in any folder, with questions 1, 3, 4, 6 and 7 answered from the data";
    f.cmdSuggest.caption = "Su&ggest";
    f.cmdSuggest.toolTip = "Proposes the starting values of questions 8 to 12 from the data file";
    f.cmdSubmit.caption = "Submit Batch &Run";
    f.cmdPlots.caption = "View Last Plots";
    f.AutoExit.caption = "Auto-exit DOSbox";
    f.cmdEditSolverData.caption = "&Edit Defaults";
    f.cmdEditSolverData.toolTip = "Enters default values for editing";
    f.cmdDefaultSolverData.caption = "&Use Defaults";
    f.cmdDefaultSolverData.toolTip = "Sets all values to blank";
    f.cmdCalculate.caption = "Calculate Y @ X";
    f.tbXvalue.text = "Enter X value";
    f.tbYanswer.text = "Y Result will be shown here.";
    f.tbDeviation.text = "Std Deviation here.";
    for (std::size_t i = 0; i < kQuestionLabelSlots.size(); ++i) s.rec.QuestionLabels[i] = kQuestionLabelSlots[i];
}

}  // namespace quillet
