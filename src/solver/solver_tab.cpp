#include "solver/solver_tab.h"

#include "model/catalogue.h"
#include "model/form_events.h"

namespace quillet {

const std::array<SolverVariable, 6> kSolverFamilyA = {{
    {"   20             1. »  REMAX: Maximum iterations.", nullptr, "20"},
    {"    0              2. »  DETAIL: Detailed report every Nth iteration.", nullptr, "0"},
    {"1.E-7           3. »  DELTA: Convergent tolerance for unknowns.", "Delta", "1.E-7"},
    {"   1               4. »  PREDAMP: Damping factor for 1st iteration;  0 < PREDAMP <= 1.", "PreDamp", "1"},
    {"   .2              5. »  DAMP: Criteria for imposing damping; 0 < DAMP <= 1.", "Damp", ".2"},
    {"", nullptr, ".02"},
}};

const std::array<SolverVariable, 6> kSolverFamilyB = {{
    {"   20             1. »  REMAX: Maximum iterations.", nullptr, "20"},
    {"    0              2. »  DETAIL: Detailed report every Nth iteration.", nullptr, "0"},
    {" 2000           3. »  EvalMax: Max. # of model evaluations.", "EvalMax", "2000"},
    {" 1.e-6           4. »  ZERO: Iteration convergence tolerance.", "Zero", "1.e-6"},
    {"  .001           5. »  ACCURACY: Relative tolerance for constraint satisfaction at convergence.",
     "Accuracy", ".001"},
    {"   .02            6. »  RHO: Weighting factor for the penalty function during initial iteration.",
     nullptr, ".02"},
}};

bool UsesFamilyB(int modelId) { return modelId >= model::Sine; }

void selectSolverQuest(AppState& s) {
    auto& f = s.form;
    const int id = s.rec.ModelID;
    const auto& family = UsesFamilyB(id) ? kSolverFamilyB : kSolverFamilyA;
    for (int i = 1; i <= 5; ++i) {
        const auto& v = family[static_cast<std::size_t>(i - 1)];
        f.SolvQuestion[static_cast<std::size_t>(i)].caption = v.caption;
        if (v.toolTip) SolverBox(f, i).toolTip = v.toolTip;
    }
    bool showSix = UsesFamilyB(id) && id != model::BellCurve;
    if (UsesFamilyB(id)) f.SolvQuestion[6].caption = kSolverFamilyB[5].caption;
    f.Rho.visible = f.SolvQuestion[6].visible = showSix;
}

void EnableSolverBoxes(AppState& s, bool enabled) {
    for (int i = 1; i <= 6; ++i) SolverBox(s.form, i).enabled = enabled;
}

void cmdEditSolverData_Click(AppState& s) {
    const auto& family = UsesFamilyB(s.form.Methods.listIndex) ? kSolverFamilyB : kSolverFamilyA;
    for (int i = 1; i <= 6; ++i) SetText(s, SolverBox(s.form, i), family[static_cast<std::size_t>(i - 1)].defaultValue);
    EnableSolverBoxes(s, true);
}

void cmdDefaultSolverData_Click(AppState& s) {
    for (int i = 1; i <= 6; ++i) SetText(s, SolverBox(s.form, i), "");
    EnableSolverBoxes(s, false);
}

}  // namespace quillet
