#pragma once
// Small text helpers with the classic semantics the routines rely on:
// Trim removes blanks only (never tabs), case folding is ASCII only.
#include <string>
#include <string_view>

namespace quillet {

inline constexpr const char* kCrLf = "\r\n";

std::string Trim(std::string_view s);
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);
std::string Left(std::string_view s, long n);
std::string Right(std::string_view s, long n);
std::string LCase(std::string_view s);
std::string UCase(std::string_view s);
bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWith(std::string_view s, std::string_view prefix);
bool EndsWith(std::string_view s, std::string_view suffix);
bool StartsWithNoCase(std::string_view s, std::string_view prefix);

// Every occurrence of `from` by `to`, scanning left to right without rescanning replaced text.
std::string ReplaceAll(std::string_view s, std::string_view from, std::string_view to);
// The same, matching `from` without regard to ASCII case; `maxCount` < 0 means all.
std::string ReplaceNoCase(std::string_view s, std::string_view from, std::string_view to,
                          int maxCount = -1);
std::string RemoveAll(std::string_view s, char c);

// Number of UTF-8 characters (code points) in a valid UTF-8 string.
std::size_t CharCount(std::string_view utf8);
// The first n characters (code points) of a UTF-8 string.
std::string LeftChars(std::string_view utf8, std::size_t n);
// Everything after the first n characters (code points).
std::string MidChars(std::string_view utf8, std::size_t n);

}  // namespace quillet
