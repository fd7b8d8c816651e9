#include "fitting/shortest_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace quillet::fitting {

namespace {

constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kMostDigits = 9;
// Digits are copied in runs of this fixed length, which compile to two moves instead of a call;
// the bytes past the text are scratch (hence the room WriteShortest asks for).
constexpr std::size_t kCopy = 16;

// The digits of m (0 < m < 10^9) at `out` (room for kCopy), most significant first; returns
// their count.
int WriteDigits(char* out, std::uint64_t m) {
    static constexpr char kPairs[] =
        "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
        "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
        "8081828384858687888990919293949596979899";
    char buffer[20 + kCopy];  // digits end at 20; a copy from the first one reads kCopy bytes
    char* const last = buffer + 20;
    char* p = last;
    while (m >= 100) {
        p -= 2;
        std::memcpy(p, kPairs + 2 * (m % 100), 2);
        m /= 100;
    }
    if (m >= 10) {
        p -= 2;
        std::memcpy(p, kPairs + 2 * m, 2);
    } else {
        *--p = static_cast<char>('0' + m);
    }
    std::memcpy(out, p, kCopy);
    return static_cast<int>(last - p);
}

// v = digits x 10^q with `count` digits, in the shorter of fixed and scientific notation, fixed
// when both are as long: the choice std::to_chars makes.
char* Place(char* out, const char* digits, int count, int q) {
    const int exponent = q + count - 1;
    const int magnitude = exponent < 0 ? -exponent : exponent;
    const int scientific = count + (count > 1 ? 1 : 0) + 2 + (magnitude >= 100 ? 3 : 2);
    const int fixed = q >= 0 ? count + q : (count + q > 0 ? count + 1 : 2 - q);
    if (fixed <= scientific) {
        if (q >= 0) {
            std::memcpy(out, digits, kCopy);
            std::memset(out + count, '0', kCopy);
            return out + count + q;
        }
        if (count + q > 0) {
            const int whole = count + q;
            std::memcpy(out, digits, kCopy);
            out[whole] = '.';
            std::memcpy(out + whole + 1, digits + whole, kCopy);
            return out + count + 1;
        }
        out[0] = '0';
        out[1] = '.';
        std::memset(out + 2, '0', kCopy);
        std::memcpy(out + 2 - q - count, digits, kCopy);
        return out + 2 - q;
    }
    *out++ = digits[0];
    if (count > 1) {
        *out++ = '.';
        std::memcpy(out, digits + 1, kCopy);
        out += count - 1;
    }
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    if (magnitude >= 100) *out++ = static_cast<char>('0' + magnitude / 100);
    *out++ = static_cast<char>('0' + magnitude / 10 % 10);
    *out++ = static_cast<char>('0' + magnitude % 10);
    return out;
}

}  // namespace

char* WriteShortest(char* out, double v) {
    const double a = std::fabs(v);
    // The nine-digit decimal m / 10^k nearest to a, for the largest k that keeps m below 10^9.
    // If it reads back to a, it is the shortest text: another decimal of at most nine digits
    // lies at least 1e-9 of a away, far outside the doubles that read back to a.
    if (a >= 1e-7 && a < 1e9) {
        std::uint64_t bits;
        std::memcpy(&bits, &a, sizeof bits);
        // floor(e2 log10(2)) by integers (78913 / 2^18 is just under log10(2)): the first guess of
        // k is at most one too large.
        const int e2 = static_cast<int>(bits >> 52) - 1023;
        int k = kMostDigits - 1 - ((e2 * 78913) >> 18);
        if (a * kPowers[k] >= 1e9) --k;
        const double scaled = static_cast<double>(static_cast<std::int64_t>(a * kPowers[k] + 0.5));
        if (scaled / kPowers[k] == a) {
            auto m = static_cast<std::uint64_t>(scaled);
            int q = -k;
            while (m % 100 == 0) {
                m /= 100;
                q += 2;
            }
            if (m % 10 == 0) {
                m /= 10;
                ++q;
            }
            char digits[32];
            const int count = WriteDigits(digits, m);
            if (v < 0) *out++ = '-';
            return Place(out, digits, count, q);
        }
    }
    return std::to_chars(out, out + kShortestRoom, v).ptr;
}

}  // namespace quillet::fitting
