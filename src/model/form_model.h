#pragma once
// The main form's state as plain data, named after its controls. The Qt form mirrors it
// both ways; all behaviour works on this struct, so it runs without a display.
#include <array>
#include <string>
#include <vector>

namespace quillet {

// Every control whose text or value a handler reacts to.
enum class Ctl {
    None,
    timeData, Methods, Line0, nPoints, nTerms, xnorm, ynorm, Y0,
    Amplitude, PW50, PeakLocations, Amplitude2, Note1, Note2,
    Remax, Detail, Delta, PreDamp, Damp, Rho,
    tPause, tbXvalue, tbYanswer, tbDeviation, Combo10, cboPatterns,
    chkWeight, AutoExit, cmdFileData, cmdNewFromData, cmdSuggest, cmdPlots, cmdSubmit,
    cmdEditSolverData, cmdDefaultSolverData, cmdCalculate,
};

struct TextBox {
    explicit TextBox(Ctl i = Ctl::None) : id(i) {}
    Ctl id;
    std::string text;
    bool visible = true;
    bool enabled = true;
    std::string toolTip;
    int selStart = 0;
    int selLength = 0;
};

struct Label {
    std::string caption;
    bool visible = true;
};

struct ComboBox {
    explicit ComboBox(Ctl i = Ctl::None) : id(i) {}
    Ctl id;
    std::vector<std::string> items;
    std::string text;
    int listIndex = -1;
    bool visible = true;
    bool enabled = true;
};

struct CheckBox {
    explicit CheckBox(Ctl i = Ctl::None) : id(i) {}
    Ctl id;
    bool value = false;
    std::string caption;
    bool visible = true;
    bool enabled = true;
};

struct Button {
    explicit Button(Ctl i = Ctl::None) : id(i) {}
    Ctl id;
    std::string caption;
    std::string toolTip;
    bool visible = true;
    bool enabled = true;
};

enum class Tab { Input = 0, Solver = 1, Calculator = 2, Demos = 3, Tips = 4 };

struct FormModel {
    std::string caption;

    // "Input Parameters": questions 1..12 and their controls.
    std::array<Label, 9> Question;  // 1..8; element 0 unused
    Label Question9, Question10, Question11, Question12;
    Label lblNote, lblKeepNotes;
    TextBox timeData{Ctl::timeData};
    ComboBox Methods{Ctl::Methods};
    TextBox Line0{Ctl::Line0}, nPoints{Ctl::nPoints}, nTerms{Ctl::nTerms};
    TextBox xnorm{Ctl::xnorm}, ynorm{Ctl::ynorm}, Y0{Ctl::Y0};
    TextBox Amplitude{Ctl::Amplitude}, PW50{Ctl::PW50};
    TextBox PeakLocations{Ctl::PeakLocations}, Amplitude2{Ctl::Amplitude2};
    ComboBox Combo10{Ctl::Combo10};
    CheckBox chkWeight{Ctl::chkWeight};
    TextBox Note1{Ctl::Note1}, Note2{Ctl::Note2};
    Button cmdFileData{Ctl::cmdFileData};
    Button cmdNewFromData{Ctl::cmdNewFromData};
    Button cmdSuggest{Ctl::cmdSuggest};
    Button cmdSubmit{Ctl::cmdSubmit};
    TextBox tPause{Ctl::tPause};
    CheckBox AutoExit{Ctl::AutoExit};
    Button cmdPlots{Ctl::cmdPlots};

    // "Solver Variables".
    std::array<Label, 7> SolvQuestion;  // 1..6; element 0 unused
    TextBox Remax{Ctl::Remax}, Detail{Ctl::Detail}, Delta{Ctl::Delta};
    TextBox PreDamp{Ctl::PreDamp}, Damp{Ctl::Damp}, Rho{Ctl::Rho};
    Button cmdEditSolverData{Ctl::cmdEditSolverData};
    Button cmdDefaultSolverData{Ctl::cmdDefaultSolverData};

    // "Calculator".
    std::string calcFolder;        // the folder shown in the folder list
    std::string calcSelectedFile;  // the file selected in the file list; empty when none
    ComboBox cboPatterns{Ctl::cboPatterns};
    TextBox tbXvalue{Ctl::tbXvalue}, tbYanswer{Ctl::tbYanswer}, tbDeviation{Ctl::tbDeviation};
    Button cmdCalculate{Ctl::cmdCalculate};
    std::string lblInstructions;

    Tab activeTab = Tab::Input;
    Ctl focus = Ctl::None;
};

// The answer boxes of questions 1, 3..12 in question order (question 2 is Methods).
TextBox* AnswerBox(FormModel& f, int question);
const TextBox* AnswerBox(const FormModel& f, int question);
// The six solver boxes, 1..6.
TextBox& SolverBox(FormModel& f, int index);
const TextBox& SolverBox(const FormModel& f, int index);

}  // namespace quillet
