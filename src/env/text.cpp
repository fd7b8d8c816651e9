#include "env/text.h"

#include <algorithm>

namespace quillet {

std::string LTrim(std::string_view s) {
    auto b = s.find_first_not_of(' ');
    return b == std::string_view::npos ? std::string() : std::string(s.substr(b));
}

std::string RTrim(std::string_view s) {
    auto e = s.find_last_not_of(' ');
    return e == std::string_view::npos ? std::string() : std::string(s.substr(0, e + 1));
}

std::string Trim(std::string_view s) { return LTrim(RTrim(s)); }

std::string Left(std::string_view s, long n) {
    if (n <= 0) return {};
    return std::string(s.substr(0, std::min<std::size_t>(s.size(), static_cast<std::size_t>(n))));
}

std::string Right(std::string_view s, long n) {
    if (n <= 0) return {};
    auto k = std::min<std::size_t>(s.size(), static_cast<std::size_t>(n));
    return std::string(s.substr(s.size() - k));
}

static char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
static char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }

std::string LCase(std::string_view s) {
    std::string r(s);
    std::transform(r.begin(), r.end(), r.begin(), Lower);
    return r;
}

std::string UCase(std::string_view s) {
    std::string r(s);
    std::transform(r.begin(), r.end(), r.begin(), Upper);
    return r;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

bool StartsWith(std::string_view s, std::string_view p) { return s.substr(0, p.size()) == p; }
bool EndsWith(std::string_view s, std::string_view x) {
    return s.size() >= x.size() && s.substr(s.size() - x.size()) == x;
}
bool StartsWithNoCase(std::string_view s, std::string_view p) {
    return s.size() >= p.size() && EqualsNoCase(s.substr(0, p.size()), p);
}

static std::string Replace(std::string_view s, std::string_view from, std::string_view to,
                           bool ignoreCase, int maxCount) {
    if (from.empty()) return std::string(s);
    std::string out;
    std::size_t i = 0;
    int done = 0;
    while (i < s.size()) {
        bool hit = (maxCount < 0 || done < maxCount) && i + from.size() <= s.size() &&
                   (ignoreCase ? EqualsNoCase(s.substr(i, from.size()), from)
                               : s.substr(i, from.size()) == from);
        if (hit) {
            out += to;
            i += from.size();
            ++done;
        } else {
            out += s[i++];
        }
    }
    return out;
}

std::string ReplaceAll(std::string_view s, std::string_view from, std::string_view to) {
    return Replace(s, from, to, false, -1);
}

std::string ReplaceNoCase(std::string_view s, std::string_view from, std::string_view to,
                          int maxCount) {
    return Replace(s, from, to, true, maxCount);
}

std::string RemoveAll(std::string_view s, char c) {
    std::string r;
    for (char ch : s)
        if (ch != c) r += ch;
    return r;
}

static bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

std::size_t CharCount(std::string_view s) {
    return static_cast<std::size_t>(
        std::count_if(s.begin(), s.end(), [](char c) { return !IsContinuation(static_cast<unsigned char>(c)); }));
}

static std::size_t ByteOffsetOfChar(std::string_view s, std::size_t n) {
    std::size_t i = 0, seen = 0;
    while (i < s.size()) {
        if (!IsContinuation(static_cast<unsigned char>(s[i]))) {
            if (seen == n) return i;
            ++seen;
        }
        ++i;
    }
    return s.size();
}

std::string LeftChars(std::string_view s, std::size_t n) {
    return std::string(s.substr(0, ByteOffsetOfChar(s, n)));
}

std::string MidChars(std::string_view s, std::size_t n) {
    return std::string(s.substr(ByteOffsetOfChar(s, n)));
}

}  // namespace quillet
