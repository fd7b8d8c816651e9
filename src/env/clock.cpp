#include "env/ports.h"

namespace quillet {

std::tm SystemClock::Now() {
    std::time_t t = std::time(nullptr);
    std::tm out{};
#ifdef _WIN32
    localtime_s(&out, &t);
#else
    localtime_r(&t, &out);
#endif
    return out;
}

}  // namespace quillet
