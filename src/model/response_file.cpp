#include "model/response_file.h"

#include "env/codepage.h"
#include "env/errors.h"
#include "env/files.h"
#include "env/paths.h"
#include "env/text.h"
#include "model/catalogue.h"
#include "model/form_events.h"

namespace quillet {

LineReader LineReader::Open(const std::string& path) {
    try {
        return OpenOrRaise(path);
    } catch (const RuntimeError&) {
        return LineReader();
    }
}

LineReader LineReader::OpenOrRaise(const std::string& path) {
    LineReader r;
    const std::string bytes = ReadWholeFile(path);
    std::size_t start = 0;
    while (start < bytes.size()) {
        auto end = bytes.find('\n', start);
        if (end == std::string::npos) end = bytes.size();
        std::string_view line(bytes.data() + start, end - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        r.lines_.push_back(DecodeLine(line));
        start = end + 1;
    }
    r.open_ = true;
    return r;
}

bool LineReader::Next(std::string& line) {
    if (!open_ || pos_ >= lines_.size()) {
        open_ = false;
        return false;
    }
    line = lines_[pos_++];
    return true;
}

std::string WriteValueLine(const std::string& value, const std::string& label, bool starred) {
    std::string v = Trim(value);
    if (v.empty()) v = "-999";
    std::string comment = starred ? "!* " + LeftChars(label, 50) : "! " + LeftChars(label, 70);
    return Trim(v + "  \t\t" + comment);
}

std::string ReadValueLine(LineReader& in) {
    std::string line;
    if (!in.Next(line)) return "-EOF-";
    auto bang = line.find('!');
    std::string v = Trim(bang == std::string::npos ? line : line.substr(0, bang));
    if (StartsWith(v, "-999")) v.clear();
    return Trim(RemoveAll(v, '\t'));
}

std::string FormatFileDate(const std::tm& t) {
    static const char* kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                    "July",    "August",   "September", "October", "November", "December"};
    int hour12 = t.tm_hour % 12 == 0 ? 12 : t.tm_hour % 12;
    char buf[64];
    std::snprintf(buf, sizeof buf, "%s %02d, %04d @ %d:%02d %s", kMonths[t.tm_mon % 12], t.tm_mday,
                  t.tm_year + 1900, hour12, t.tm_min, t.tm_hour < 12 ? "AM" : "PM");
    return buf;
}

std::string SolverLineLabel(const std::string& caption) {
    long keep = static_cast<long>(CharCount(caption)) - 15;
    std::string rest = Trim(MidChars(caption, 10));
    return Trim(keep > 0 ? LeftChars(rest, static_cast<std::size_t>(keep)) : std::string());
}

namespace {

std::int16_t SettleSolverCount(const ResponseRecord& r) {
    if (r.SolverValues[1].empty() && r.SolverValues[2].empty() && r.SolverValues[3].empty()) return 0;
    return (r.ModelID == model::Sine || r.ModelID == model::SineExponential) ? 6 : 5;
}

void AppendSeriesLines(std::vector<std::string>& out, const ResponseRecord& r) {
    const auto& a = r.Answers;
    const auto& slot = r.QuestionLabels;
    const int id = r.ModelID;
    if (id < 1 || id > 7) {
        out.push_back(WriteValueLine(a[9], slot[0]));
        out.push_back(WriteValueLine(a[10], slot[1]));
        out.push_back(WriteValueLine("------", ""));
        out.push_back(WriteValueLine("Error: ", "Model #" + a[2] + " is invalid!!!"));
        out.push_back(WriteValueLine("------", ""));
        return;
    }
    // The label slot of each series question, per model.
    static const int kSlots[8][4] = {{0, 0, 0, 0},  {0, 1, 2, -1}, {0, 1, 2, 3},     {4, 5, -1, -1},
                                     {6, -1, -1, -1}, {7, 8, 9, -1}, {7, 8, 9, 10}, {11, 12, 13, -1}};
    for (int q = 9; q <= 12; ++q) {
        int slotIndex = kSlots[id][q - 9];
        if (slotIndex < 0) break;
        out.push_back(WriteValueLine(a[static_cast<std::size_t>(q)], slot[static_cast<std::size_t>(slotIndex)]));
    }
}

}  // namespace

std::string BuildResponseText(AppState& s, const std::string& fileName) {
    GetAnswers(s);
    auto& r = s.rec;
    r.ResponseTitle = ReplaceNoCase(fileName, ".Fit", "");
    r.SolverCount = SettleSolverCount(r);

    std::vector<std::string> lines;
    std::tm now = s.env.clock->Now();
    lines.push_back(WriteValueLine(
        r.ResponseTitle, "12, and " + std::to_string(r.SolverCount) + "          " + FormatFileDate(now), true));
    for (int q = 1; q <= 7; ++q)
        lines.push_back(WriteValueLine(r.Answers[static_cast<std::size_t>(q)], s.form.Question[static_cast<std::size_t>(q)].caption));
    if (r.ModelID != model::BellCurve) lines.push_back(WriteValueLine(r.Answers[8], s.form.Question[8].caption));
    AppendSeriesLines(lines, r);
    lines.push_back(WriteValueLine(r.WeightFlag ? "Y" : "N", kWeightCaption));
    lines.push_back(WriteValueLine(r.Note1 + " ", "20. » Note1"));
    lines.push_back(WriteValueLine(r.Note2 + " ", "    » Note2"));
    lines.push_back(std::string(r.SolverCount ? "Y" : "N") + "\t\t! " + kSolverQuestion22);
    for (int i = 1; i <= r.SolverCount; ++i)
        lines.push_back(WriteValueLine(r.SolverValues[static_cast<std::size_t>(i)],
                                       SolverLineLabel(s.form.SolvQuestion[static_cast<std::size_t>(i)].caption)));

    std::string text;
    for (const auto& l : lines) text += l + kCrLf;
    return text;
}

void WriteAnsFile(AppState& s, const std::string& fileName, const std::string& folder) {
    s.PathStatus.clear();
    try {
        std::string bytes = Utf8ToCp1252(BuildResponseText(s, fileName));
        WriteFileAtomically(JoinPath(folder, fileName), bytes);
        s.SaveFailed = false;
        s.Written = true;
        s.PathStatus = "Ok";
    } catch (const RuntimeError& e) {
        s.SaveFailed = true;
        if (e.number() == err::PathFileAccess) throw;
        std::string text = std::string("File Path\\FileName error occured: ") + kCrLf + "    Path = " + folder + kCrLf +
                           "    FileName = " + fileName + kCrLf + kCrLf +
                           "If these are okay then the error may be do to following:" + kCrLf +
                           "  Ex*.fit files in Quillet's User directory are for 'read-only'." + kCrLf +
                           "  Do not save changes in these Example files.  Save changes under other names." + kCrLf;
        s.env.dialogs->MsgBox(text, mb::Critical, "File not saved; Error in 'WriteAnsFile' routine.");
    }
}

void FileReadMe(AppState& s, LineReader& in, const std::string& fileName, const std::string& folder) {
    if (!FileExists(s.env, JoinPath(folder, fileName))) {
        if (!fileName.empty())
            s.env.dialogs->MsgBox("Missing '" + fileName + "' file?", mb::Exclamation, " File not found.");
        return;
    }
    auto& r = s.rec;
    auto& a = r.Answers;
    std::string headerFolder;
    r.ResponseTitle = SplitPath(s.env, ReadValueLine(in), headerFolder);
    r.ResponseFolder = headerFolder;
    for (int q = 1; q <= 7; ++q) a[static_cast<std::size_t>(q)] = ReadValueLine(in);
    std::string ignored;
    a[1] = SplitPath(s.env, a[1], ignored);

    SetMethodsText(s, a[2]);
    r.ModelID = static_cast<std::int16_t>(s.form.Methods.listIndex);
    const int id = r.ModelID;
    a[8] = id >= model::BellCurve ? std::string() : ReadValueLine(in);
    a[9] = ReadValueLine(in);
    if (id < model::Exponential) {
        a[10] = ReadValueLine(in);
        a[11] = ReadValueLine(in);
        if (id == model::ModifiedLorentzian) a[12] = ReadValueLine(in);
    } else if (id == model::Exponential) {
        a[10] = ReadValueLine(in);
        a[11].clear();
        a[12].clear();
    } else if (id == model::Power) {
        a[11].clear();
        a[12].clear();
    } else {
        a[10] = ReadValueLine(in);
        a[11] = ReadValueLine(in);
        if (id == model::SineExponential) a[12] = ReadValueLine(in);
    }
    Questions_Visible(s);
    RefreshTabs(s);

    r.WeightFlag = LCase(ReadValueLine(in)) == "y" ? 1 : 0;
    // A tab before the "-999" of an empty note hides it from the line's own rule.
    for (std::string* note : {&r.Note1, &r.Note2}) {
        *note = ReadValueLine(in);
        if (*note == "-999") note->clear();
    }
    if (ReadValueLine(in) == "Y") {
        r.SolverCount = 6;
        for (int i = 1; i <= 6; ++i) r.SolverValues[static_cast<std::size_t>(i)] = ReadValueLine(in);
    } else {
        r.SolverCount = 0;
        for (int i = 1; i <= 6; ++i) r.SolverValues[static_cast<std::size_t>(i)].clear();
    }
}

}  // namespace quillet
