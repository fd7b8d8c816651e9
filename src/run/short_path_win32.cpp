#include <windows.h>

#include <string>

#include "env/text.h"
#include "run/submit.h"

namespace quillet {

std::string ShortPathOf(const std::string& path) {
    char buffer[165] = {};
    DWORD n = GetShortPathNameA(path.c_str(), buffer, 164);
    if (n > 164) n = 0;
    return LCase(std::string(buffer, n));
}

}  // namespace quillet
