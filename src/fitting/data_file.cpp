#include "fitting/data_file.h"

#include <algorithm>

#include "env/errors.h"
#include "env/files.h"
#include "fitting/data_passes.h"
#include "fitting/fit_error.h"
#include "fitting/number_text.h"

namespace quillet::fitting {

namespace {

std::string Where(const std::string& path, long line) {
    return "Line " + std::to_string(line) + " of the data file \"" + path + "\"";
}

}  // namespace

std::string ReadForFit(const std::string& path, const std::string& what) {
    try {
        return ReadWholeFile(path);
    } catch (const RuntimeError& e) {
        throw FitInputError("The " + what + " \"" + path + "\" cannot be read: " + e.description() + ".");
    }
}

namespace {

// Where the points lie: from `begin` to `end`, starting at line `line`, one point a line.
struct PointLines {
    std::size_t begin = 0, end = 0;
    long line = 1;
    std::size_t count = 0;
};

std::size_t NextLine(const std::string& bytes, std::size_t pos) {
    const std::size_t end = bytes.find('\n', pos);
    return end == std::string::npos ? bytes.size() : end + 1;
}

// The position `lines` lines after `pos`.
std::size_t Skip(const std::string& bytes, std::size_t pos, std::size_t lines) {
    for (; lines > 0 && pos < bytes.size(); --lines) pos = NextLine(bytes, pos);
    return pos;
}

PointLines FindPointLines(const std::string& bytes, int firstLine, int count) {
    PointLines p;
    for (; p.line < firstLine && p.begin < bytes.size(); ++p.line) p.begin = NextLine(bytes, p.begin);
    const auto wanted = static_cast<std::size_t>(std::max(count, 0));
    p.end = p.begin;
    for (; p.count < wanted && p.end < bytes.size(); ++p.count) p.end = NextLine(bytes, p.end);
    return p;
}

// The points of the lines from `pos` to `end`, the first of them line `line`, into x and y.
void ParseLines(const std::string& path, std::string_view bytes, std::size_t pos, std::size_t end, long line,
                double* x, double* y) {
    std::vector<std::string_view> fields;
    for (; pos < end; ++line, ++x, ++y) {
        std::size_t stop = bytes.find('\n', pos);
        if (stop == std::string_view::npos || stop > end) stop = end;
        std::string_view text(bytes.data() + pos, stop - pos);
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        pos = stop + 1;
        SplitFields(text, fields);
        if (fields.size() != 2)
            throw FitInputError(Where(path, line) + " does not hold one X and one Y value: \"" + std::string(text) +
                                "\".");
        auto px = ParseNumber(fields[0]);
        auto py = ParseNumber(fields[1]);
        if (!px || !py)
            throw FitInputError(Where(path, line) + " holds \"" + std::string(!px ? fields[0] : fields[1]) +
                                "\", which is not a number.");
        *x = *px;
        *y = *py;
    }
}

}  // namespace

DataPoints ReadDataPoints(const std::string& path, int firstLine, int count) {
    const std::string bytes = ReadForFit(path, "data file");
    const PointLines p = FindPointLines(bytes, firstLine, count);
    DataPoints d;
    d.x.resize(p.count);
    d.y.resize(p.count);
    // Two halves side by side for many points; a bad line in the first half is reported first.
    if (PartsFor(p.count) > 1) {
        const std::size_t half = p.count / 2, middle = Skip(bytes, p.begin, half);
        const long middleLine = p.line + static_cast<long>(half);
        RunSideBySide({[&] { ParseLines(path, bytes, p.begin, middle, p.line, d.x.data(), d.y.data()); },
                       [&] { ParseLines(path, bytes, middle, p.end, middleLine, d.x.data() + half, d.y.data() + half); }});
    } else {
        ParseLines(path, bytes, p.begin, p.end, p.line, d.x.data(), d.y.data());
    }
    if (static_cast<int>(p.count) < count)
        throw FitInputError("The data file \"" + path + "\" holds " + std::to_string(p.count) +
                            " points from line " + std::to_string(firstLine) + " on; question 4 asks for " +
                            std::to_string(count) + ".");
    return d;
}

void CheckFittable(const DataPoints& data, const Model& model, const std::string& path, int firstLine) {
    const std::string where = "The data file \"" + path + "\" from line " + std::to_string(firstLine) + " on";
    const auto& y = data.y;
    if (std::all_of(y.begin(), y.end(), [&](double v) { return v == y.front(); }))
        throw FitInputError(where + " holds the same Y value (" + FormatNumber(y.front()) +
                            ") on every line: there is no curve to fit.");
    // Parameters need as many different X values as there are of them; stop counting there.
    const auto np = static_cast<std::size_t>(model.parameterCount());
    std::vector<double> seen;
    for (double x : data.x) {
        if (std::find(seen.begin(), seen.end(), x) == seen.end()) seen.push_back(x);
        if (seen.size() >= np) return;
    }
    throw FitInputError(where + " holds only " + std::to_string(seen.size()) + " different X value" +
                        (seen.size() == 1 ? "" : "s") + "; the model's " + std::to_string(np) +
                        " parameters need at least " + std::to_string(np) + ".");
}

}  // namespace quillet::fitting
