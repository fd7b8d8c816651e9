#include "fitting/data_file.h"

#include <algorithm>

#include "env/errors.h"
#include "env/files.h"
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

DataPoints ReadDataPoints(const std::string& path, int firstLine, int count) {
    const std::string bytes = ReadForFit(path, "data file");
    DataPoints d;
    // A point takes at least four bytes ("1 2" and a line end), whatever question 4 asks for.
    const std::size_t expected = std::min(static_cast<std::size_t>(std::max(count, 0)), bytes.size() / 4 + 1);
    d.x.reserve(expected);
    d.y.reserve(expected);
    std::vector<std::string_view> fields;
    std::size_t pos = 0;
    long line = 1;
    for (; line < firstLine && pos < bytes.size(); ++line) {
        pos = bytes.find('\n', pos);
        pos = pos == std::string::npos ? bytes.size() : pos + 1;
    }
    for (; static_cast<int>(d.x.size()) < count && pos < bytes.size(); ++line) {
        std::size_t end = bytes.find('\n', pos);
        if (end == std::string::npos) end = bytes.size();
        std::string_view text(bytes.data() + pos, end - pos);
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        pos = end + 1;
        SplitFields(text, fields);
        if (fields.size() != 2)
            throw FitInputError(Where(path, line) + " does not hold one X and one Y value: \"" + std::string(text) +
                                "\".");
        auto x = ParseNumber(fields[0]);
        auto y = ParseNumber(fields[1]);
        if (!x || !y)
            throw FitInputError(Where(path, line) + " holds \"" + std::string(!x ? fields[0] : fields[1]) +
                                "\", which is not a number.");
        d.x.push_back(*x);
        d.y.push_back(*y);
    }
    if (static_cast<int>(d.x.size()) < count)
        throw FitInputError("The data file \"" + path + "\" holds " + std::to_string(d.x.size()) +
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
