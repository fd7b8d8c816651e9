#include "run/run_outcome.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "env/codepage.h"
#include "env/files.h"
#include "env/text.h"

namespace quillet {

namespace {

std::string After(const std::string& line, std::string_view prefix) { return Trim(line.substr(prefix.size())); }

std::string Sentence(const std::string& text) {
    return text.empty() || text.back() == '.' ? text : text + ".";
}

std::vector<std::string> Words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string w; in >> w;) words.push_back(w);
    return words;
}

bool IsNumber(const std::string& t) {
    char* end = nullptr;
    std::strtod(t.c_str(), &end);
    return !t.empty() && end == t.c_str() + t.size();
}

}  // namespace

std::string ShortNumberText(const std::string& text) {
    const std::string t = Trim(text);
    char* end = nullptr;
    const double v = std::strtod(t.c_str(), &end);
    if (t.empty() || end != t.c_str() + t.size() || !std::isfinite(v)) return t;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.7g", v);
    return buf;
}

RunOutcome ParseRunReport(const std::string& text) {
    RunOutcome o;
    std::istringstream in(text);
    std::string line;
    std::string stopped;
    bool inParameters = false;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (StartsWith(line, "Response file:")) o.responsePath = After(line, "Response file:");
        else if (line == "Result: converged") o.kind = RunOutcome::Kind::Converged;
        else if (StartsWith(line, "Result: did NOT converge")) o.kind = RunOutcome::Kind::NotConverged;
        else if (StartsWith(line, "Result: FAILED:")) {
            o.kind = RunOutcome::Kind::Failed;
            o.reason = After(line, "Result: FAILED:");
        } else if (StartsWith(line, "The fit was not started:")) {
            o.kind = RunOutcome::Kind::Failed;
            o.reason = After(line, "The fit was not started:");
        } else if (StartsWith(line, "Flagged: ")) o.flags.push_back(After(line, "Flagged: "));
        else if (StartsWith(line, "  why it stopped")) stopped = After(line, "  why it stopped");
        else if (line == "Parameters") inParameters = true;
        else if (inParameters) {
            const auto w = Words(line);
            // Rows: name, start, fitted, std. error, physical, physical error.
            if (w.size() == 6 && IsNumber(w[1]))
                o.parameters.push_back({w[0], ShortNumberText(w[2]), ShortNumberText(w[3]), ShortNumberText(w[4])});
            else if (w.empty())
                inParameters = false;
        }
    }
    if (o.kind == RunOutcome::Kind::NotConverged) o.reason = stopped;
    if (o.kind == RunOutcome::Kind::Failed && !stopped.empty()) o.reason += " (" + stopped + ")";
    return o;
}

RunOutcome ReadRunOutcome(const std::string& reportPath, int status,
                          std::optional<std::filesystem::file_time_type> started) {
    namespace fs = std::filesystem;
    std::error_code ec;
    const auto written = fs::last_write_time(reportPath, ec);
    // A coarse file clock may round the new report's time down.
    const bool fresh = !ec && (!started || written + std::chrono::seconds(1) >= *started);
    RunOutcome o;
    if (fresh) {
        try {
            o = ParseRunReport(DecodeLine(ReadWholeFile(reportPath)));
            o.reportPath = reportPath;
        } catch (...) {
            o = RunOutcome{};
        }
    }
    if (o.reportPath.empty() && status != 0) {
        o.kind = RunOutcome::Kind::Failed;
        o.reason = status < 0 ? "the run was stopped or could not start, and left no report"
                              : "the solver left no report (exit status " + std::to_string(status) + ")";
    }
    return o;
}

std::string OutcomeLine(const RunOutcome& o) {
    switch (o.kind) {
        case RunOutcome::Kind::Converged: return "The fit converged.";
        case RunOutcome::Kind::NotConverged: return Sentence("The fit did not converge: " + o.reason);
        case RunOutcome::Kind::Failed: return Sentence("The run failed: " + o.reason);
        case RunOutcome::Kind::Unknown: break;
    }
    return "";
}

void ReportRunOutcome(AppState& s, const RunOutcome& o) {
    if (o.kind != RunOutcome::Kind::NotConverged && o.kind != RunOutcome::Kind::Failed) return;
    std::string text = OutcomeLine(o);
    if (!o.reportPath.empty())
        text += std::string(kCrLf) + kCrLf + "The report is " + o.reportPath + " (View > Last Output).";
    s.env.dialogs->MsgBox(text, mb::Exclamation, "Quillet run");
}

}  // namespace quillet
