#include <cctype>
#include <string>

#include "env/text.h"
#include "run/submit.h"

namespace quillet {

namespace {

bool IsSafe(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '_' || c == '-' || c == '~' || c == '+';
}

// A component that a command line would split or a shell would read becomes an
// 8.3-style alias; safe long names stay as they are, since Linux has no short names.
std::string ShortComponent(const std::string& name) {
    bool safe = true;
    for (char c : name) safe = safe && IsSafe(c) && c != ' ';
    if (safe) return name;
    auto dot = name.find_last_of('.');
    std::string base = dot == std::string::npos ? name : name.substr(0, dot);
    std::string ext = dot == std::string::npos ? std::string() : name.substr(dot + 1);
    auto keep = [](const std::string& s, std::size_t n) {
        std::string out;
        for (char c : s)
            if (IsSafe(c) && c != '.' && out.size() < n) out += c;
        return UCase(out);
    };
    std::string alias = keep(base, 6) + "~1";
    std::string shortExt = keep(ext, 3);
    return shortExt.empty() ? alias : alias + "." + shortExt;
}

}  // namespace

std::string ShortPathOf(const std::string& path) {
    std::string out;
    std::string component;
    for (char c : path) {
        if (c == '/') {
            out += ShortComponent(component) + "/";
            component.clear();
        } else {
            component += c;
        }
    }
    if (!component.empty()) out += ShortComponent(component);
    return LCase(out);
}

}  // namespace quillet
