#pragma once
// The solver tab: two families of control variables, chosen by the model.
#include <array>

#include "model/app_state.h"

namespace quillet {

struct SolverVariable {
    const char* caption;  // SolvQuestion caption: default column, number, "»", name and meaning
    const char* toolTip;  // box tool tip; nullptr leaves it unchanged
    const char* defaultValue;
};

// Family A: "-Select-" and the first four models; family B: the sine models and "Bell Curve".
extern const std::array<SolverVariable, 6> kSolverFamilyA;
extern const std::array<SolverVariable, 6> kSolverFamilyB;
bool UsesFamilyB(int modelId);

// Sets captions, tool tips and the visibility of question 6 for the current ModelID.
void selectSolverQuest(AppState& s);
// Enables or disables the six boxes together.
void EnableSolverBoxes(AppState& s, bool enabled);
// "Edit Defaults": the defaults of the family selected in Methods, boxes enabled.
void cmdEditSolverData_Click(AppState& s);
// "Use Defaults": all six boxes blank and disabled.
void cmdDefaultSolverData_Click(AppState& s);

}  // namespace quillet
