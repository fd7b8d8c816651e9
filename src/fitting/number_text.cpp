#include "fitting/number_text.h"

#include <charconv>
#include <cmath>

#include "fitting/shortest_text.h"

namespace quillet::fitting {

std::optional<double> ParseNumber(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    // from_chars takes no leading "+".
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    double v = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (ec != std::errc() || end != text.data() + text.size() || !std::isfinite(v)) return std::nullopt;
    return v;
}

namespace {

bool IsSeparator(char c) { return c == ' ' || c == '\t' || c == ','; }

}  // namespace

void SplitFields(std::string_view line, std::vector<std::string_view>& fields) {
    fields.clear();
    const char* p = line.data();
    const char* const end = p + line.size();
    while (p != end) {
        if (IsSeparator(*p)) {
            ++p;
            continue;
        }
        const char* start = p;
        while (p != end && !IsSeparator(*p)) ++p;
        fields.emplace_back(start, static_cast<std::size_t>(p - start));
    }
}

std::vector<std::string_view> SplitFields(std::string_view line) {
    std::vector<std::string_view> fields;
    SplitFields(line, fields);
    return fields;
}

void AppendNumber(std::string& out, double v) {
    char buf[kShortestRoom];
    out.append(buf, WriteShortest(buf, v));
}

std::string FormatNumber(double v) {
    std::string t;
    AppendNumber(t, v);
    return t;
}

std::string FormatShort(double v, int digits) {
    char buf[64];
    auto [end, ec] = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, digits);
    return std::string(buf, ec == std::errc() ? end : buf);
}

}  // namespace quillet::fitting
