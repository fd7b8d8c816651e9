#include "fit_test_files.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "model/app_state.h"
#include "model/form_events.h"
#include "model/response_file.h"
#include "solver/solver_tab.h"
#include "support/fake_dialogs.h"
#include "support/test_env.h"

namespace quillet::testing {

void WriteResponse(const std::string& folder, const std::string& name, const ResponseAnswers& r) {
    FakeDialogs dialogs;
    FixedClock clock;
    AppState s;
    s.env.dialogs = &dialogs;
    s.env.clock = &clock;
    s.env.currentFolder = folder;
    InitFormDesign(s);
    for (int q = 1; q <= 12; ++q) {
        const std::string& v = r.answers[static_cast<std::size_t>(q)];
        if (q == 2)
            SetMethodsText(s, v);
        else
            SetText(s, *AnswerBox(s.form, q), v);
    }
    s.form.chkWeight.value = r.weighted;
    for (int i = 1; i <= 6; ++i) SetText(s, SolverBox(s.form, i), r.solver[static_cast<std::size_t>(i - 1)]);
    selectSolverQuest(s);
    WriteAnsFile(s, name, folder);
    ASSERT_EQ(s.PathStatus, "Ok") << name;
}

void WriteData(const std::string& path, const std::vector<double>& x, const std::vector<double>& y) {
    std::string text = "made by the solver's tests\r\nX\tY\r\n";
    for (std::size_t i = 0; i < x.size(); ++i) {
        char buf[96];
        std::snprintf(buf, sizeof buf, "%.17g\t%.17g\r\n", x[i], y[i]);
        text += buf;
    }
    WriteBytes(path, text);
}

}  // namespace quillet::testing
