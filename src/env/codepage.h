#pragma once
// Response and math-model files are Windows-1252 bytes with CR LF line ends on every
// platform; the library works in UTF-8.
#include <string>
#include <string_view>

namespace quillet {

// Characters that Windows-1252 cannot hold become "?".
std::string Utf8ToCp1252(std::string_view utf8);
std::string Cp1252ToUtf8(std::string_view bytes);
bool IsValidUtf8(std::string_view bytes);
// A line read from a file: kept as it is when it is valid UTF-8, else taken as Windows-1252.
std::string DecodeLine(std::string_view bytes);

}  // namespace quillet
