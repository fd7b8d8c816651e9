// What a run came to, read from the report it left ("~Quillet.out"), for the run window's
// last line, the message after a run, the viewers and the data view.
#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "model/app_state.h"

namespace quillet {

struct ReportedParameter {
    std::string name;
    // As a person reads them: 7 significant digits; "-" when the report has none.
    std::string fitted, stdError, physical;
};

struct RunOutcome {
    enum class Kind { Converged, NotConverged, Failed, Unknown };
    Kind kind = Kind::Unknown;
    std::string reason;                  // why it stopped or what was wrong; may be empty when converged
    std::vector<std::string> flags;      // "Flagged: ..." lines, without the prefix
    std::string reportPath;              // empty when the run left no report
    std::string responsePath;            // the "Response file:" the report names
    std::vector<ReportedParameter> parameters;
};

// Reads the report text as the solver writes it.
RunOutcome ParseRunReport(const std::string& text);

// The outcome of the run that just ended with `status` (-1: stopped or not started). A report
// older than `started` belongs to an earlier run and does not count.
RunOutcome ReadRunOutcome(const std::string& reportPath, int status,
                          std::optional<std::filesystem::file_time_type> started = std::nullopt);

// In words: "The fit converged.", "The fit did not converge: ...", "The run failed: ...";
// empty for a report that says none of these.
std::string OutcomeLine(const RunOutcome& o);

// After a run: a run that failed or did not converge is told in a message quoting the reason.
void ReportRunOutcome(AppState& s, const RunOutcome& o);

// "12.3456789012" -> "12.34568": 7 significant digits for a person; other text as it is.
std::string ShortNumberText(const std::string& text);

}  // namespace quillet
