#include "env/codepage.h"

#include <array>
#include <cstdint>

namespace quillet {

namespace {
// Code points of bytes 0x80..0x9F; 0 marks the five bytes that Windows-1252 leaves undefined.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// Decodes one UTF-8 sequence at s[i]; returns its length, 0 when it is not valid.
std::size_t DecodeOne(std::string_view s, std::size_t i, char32_t& cp) {
    auto b = static_cast<unsigned char>(s[i]);
    std::size_t len;
    if (b < 0x80) {
        cp = b;
        return 1;
    } else if ((b & 0xE0) == 0xC0) {
        len = 2;
        cp = b & 0x1F;
    } else if ((b & 0xF0) == 0xE0) {
        len = 3;
        cp = b & 0x0F;
    } else if ((b & 0xF8) == 0xF0) {
        len = 4;
        cp = b & 0x07;
    } else {
        return 0;
    }
    if (i + len > s.size()) return 0;
    for (std::size_t k = 1; k < len; ++k) {
        auto c = static_cast<unsigned char>(s[i + k]);
        if ((c & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (c & 0x3F);
    }
    static constexpr char32_t kMin[] = {0, 0, 0x80, 0x800, 0x10000};
    if (cp < kMin[len] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return len;
}
// The end of the run of ASCII bytes that starts at s[i].
std::size_t AsciiRun(std::string_view s, std::size_t i) {
    while (i < s.size() && static_cast<unsigned char>(s[i]) < 0x80) ++i;
    return i;
}
}  // namespace

bool IsValidUtf8(std::string_view s) {
    for (std::size_t i = 0; i < s.size();) {
        char32_t cp;
        auto n = DecodeOne(s, i, cp);
        if (n == 0) return false;
        i += n;
    }
    return true;
}

std::string Cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (char c : bytes) {
        auto b = static_cast<unsigned char>(c);
        char32_t cp = b;
        if (b >= 0x80 && b < 0xA0) cp = kHigh[b - 0x80] ? kHigh[b - 0x80] : b;
        AppendUtf8(out, cp);
    }
    return out;
}

std::string Utf8ToCp1252(std::string_view s) {
    std::string out;
    out.reserve(s.size());
    for (std::size_t i = 0; i < s.size();) {
        // Runs of ASCII, nearly all of a plot or report, go over as they are.
        const std::size_t ascii = AsciiRun(s, i);
        if (ascii > i) {
            out.append(s, i, ascii - i);
            i = ascii;
            continue;
        }
        char32_t cp;
        auto n = DecodeOne(s, i, cp);
        if (n == 0) {  // not UTF-8 after all: keep the byte
            out += s[i++];
            continue;
        }
        i += n;
        // Bytes that Windows-1252 leaves undefined were read as the same code points: give them back.
        bool undefinedByte = cp >= 0x80 && cp < 0xA0 && kHigh[cp - 0x80] == 0;
        if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF) || undefinedByte) {
            out += static_cast<char>(cp);
            continue;
        }
        char mapped = '?';
        for (std::size_t k = 0; k < kHigh.size(); ++k)
            if (kHigh[k] == cp) mapped = static_cast<char>(0x80 + k);
        out += mapped;
    }
    return out;
}

std::string DecodeLine(std::string_view bytes) {
    return IsValidUtf8(bytes) ? std::string(bytes) : Cp1252ToUtf8(bytes);
}

}  // namespace quillet
