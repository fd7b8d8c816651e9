#include "run/submit.h"

#include <cstdlib>
#include <sstream>
#include <vector>

#include "env/paths.h"
#include "env/text.h"
#include "model/catalogue.h"
#include "model/form_events.h"
#include "model/question_form.h"
#include "run/launcher.h"

namespace quillet {

namespace {

const char* const kSubmitTitle = "In 'cmdSubmit' routine ...";

void Warn(AppState& s, const std::string& text) { s.env.dialogs->MsgBox(text, mb::Exclamation, kSubmitTitle); }

// The data file named in question 1: a bare name lies beside the response file.
void TakeDataPath(AppState& s) {
    const std::string text = Trim(s.form.timeData.text);
    if (text.find_first_of("\\/") == std::string::npos) {
        s.DataDir = s.UserDir;
        s.DataFile = text;
    } else {
        s.DataFile = SplitPath(s.env, text, s.DataDir);
    }
}

int CountValues(const std::string& line) {
    std::istringstream in(line);
    std::string value;
    int n = 0;
    while (in >> value) ++n;
    return n;
}

// The parameter each series question holds, per model, for the padding warning.
std::string ParameterName(int modelId, int question) {
    static const char* kNames[8][4] = {{"", "", "", ""},          {"A", "PW50", "t0", ""}, {"A", "PW50", "t0", "B"},
                                       {"A", "B", "", ""},        {"A", "", "", ""},       {"A", "B", "C", ""},
                                       {"A", "B", "C", "D"},      {"T0", "A", "B", ""}};
    if (modelId < 0 || modelId > 7) return "";
    return kNames[modelId][question - 9];
}

}  // namespace

bool CheckAnswers(AppState& s) { return isCompleteTest(s); }

void SolverListWarning(AppState& s, const std::string& variable, int required, const std::string& parameter) {
    std::string text;
    text += std::string(" ============== Warning! ============== ") + kCrLf;
    text += " =        '" + variable + "' variable must contain " + std::to_string(required) +
            " values          = " + kCrLf;
    text += " =          or more for your '" + parameter + "' parameter.             = " + kCrLf;
    text += std::string(" =================================== ") + kCrLf;
    s.env.dialogs->MsgBox(text, mb::Critical, "In 'cmdSubmit_Click' routine");
}

int PadSeriesParameters(AppState& s) {
    const int terms = std::atoi(Trim(s.form.nTerms.text).c_str());
    const int id = s.form.Methods.listIndex;
    int added = 0;
    for (int q = 9; q <= LastSeriesQuestion(id); ++q) {
        TextBox& box = *AnswerBox(s.form, q);
        const int have = CountValues(box.text);
        if (have >= terms) continue;
        SolverListWarning(s, "Line " + std::to_string(q), terms, ParameterName(id, q));
        std::string padded = box.text;
        for (int i = have; i < terms; ++i) padded += " 1";
        SetText(s, box, padded);
        added += terms - have;
    }
    return added;
}

void EnableControls(AppState& s, bool enabled) {
    auto& f = s.form;
    f.cmdSubmit.enabled = f.cmdFileData.enabled = f.Methods.enabled = enabled;
    f.cmdEditSolverData.enabled = f.cmdDefaultSolverData.enabled = enabled;
}

void cmdSubmit_Click(AppState& s) {
    TakeDataPath(s);
    const std::string dataPath = JoinPath(s.DataDir, s.DataFile);
    const std::string responsePath = JoinPath(s.UserDir, s.CurrentFile);

    if (s.DataDir != s.UserDir || s.UserDir.empty() || s.CurrentFile.empty()) {
        bool dataThere = FileExists(s.env, dataPath);
        bool responseThere = FileExists(s.env, responsePath);
        if (!(dataThere && responseThere))
            Warn(s, "File -not- saved OR path -not- found.  Please, try menu command File | Save As.  "
                    "This -may- resolve this problem.");
        else
            Warn(s, "Sorry, at least one Path is -not- correct.  Please, move both files into the same directory.  "
                    "This should resolve this problem.");
        return;
    }
    if (!FileExists(s.env, dataPath) || !FileExists(s.env, responsePath)) {
        Warn(s, "Sorry, one or both files were -not- found.  Please, move both files into the same directory.  "
                "This should resolve this problem.");
        return;
    }
    if (!FileExists(s.env, dataPath)) {
        Warn(s, dataPath + " file was -not- found.  Please, correct file name and/or its path ...  '" + s.UserDir +
                    "' is the path where your input file is located.");
        return;
    }
    s.ShortDataPath = ShortPathOf(dataPath);
    if (s.ShortDataPath != LCase(dataPath)) {
        Warn(s, s.DataFile + " file name must be a valid DOS file name; ie. 8.3 alpha-numeric characters ... eg. "
                             "~234-678.abc .");
        return;
    }
    if (!CheckAnswers(s)) {
        EnableControls(s, true);
        return;
    }
    if (PadSeriesParameters(s) > 0)
        Warn(s, " ================ Warning ================ Added parameters for series.  This will allow the solver"
                " to continue and come up with a solution.  Re-run with number of terms you desire, if not what you "
                "want. =======================================");
    s.RunMode = "*";
    FileRun2(s);
    EnableControls(s, true);
}

}  // namespace quillet
