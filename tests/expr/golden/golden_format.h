#pragma once
// How the golden file writes an outcome, and the X values of each formula's sweep: shared by
// the generator and the test that reads the file.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "env/errors.h"

namespace quillet::golden {

// A solution as its bits in hex.
inline std::string Bits(double v) {
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    char buf[20];
    std::snprintf(buf, sizeof buf, "%016llx", static_cast<unsigned long long>(bits));
    return buf;
}

// An error as "!number:source:description".
inline std::string ErrorText(const RuntimeError& e) {
    return "!" + std::to_string(e.number()) + ":" + e.source() + ":" + e.description();
}

template <class Solve>
std::string Outcome(Solve solve) {
    try {
        return Bits(solve());
    } catch (const RuntimeError& e) {
        return ErrorText(e);
    }
}

// After its three solves, every formula is solved at these X values in turn and the file
// keeps one hash of all the outcomes. Full-precision values from about 1/100 to 16, both signs; for
// the last sixteen the GNU C library's pow(x, 2) differs from x * x in the last bit, so that
// trading one for the other shows.
inline constexpr std::array<double, 64> kSweepX = {
    0x1.6757710dfa35cp-7, -0x1.5500ea9a34351p-4, 0x1.67892094da4f1p-3, -0x1.78d39e84ed08dp-2,
    0x1.bbd97eab52d88p-3, -0x1.9360577babca6p-1, 0x1.ecdc201b65afap+1, -0x1.069e6a57e066p-1,
    0x1.efa40a45edc28p+2, -0x1.a2406ebc5ab5cp-6, 0x1.e5954f870004p-4,  -0x1.69576c84f3c1ap-4,
    0x1.3223005224904p-3, -0x1.4183593530455p-1, 0x1.3cb8efceb5d3cp+0, -0x1.bf41b392bad6p-1,
    0x1.2c1fbc7e12eacp+2, -0x1.a80ed41256b85p+3, 0x1.e94996dfdad13p-5, -0x1.ea82aafffab3dp-4,
    0x1.0a16a6bdc5efp-4,  -0x1.1c9b2bba58743p-2, 0x1.ee5b6b820f01cp-2, -0x1.b3e6437cc4855p+0,
    0x1.f7d93f3fa1668p+0, -0x1.ec8a754e2eadcp+2, 0x1.24323df7a161fp+3, -0x1.b312b30a405c1p-5,
    0x1.a14634e105c3p-5,  -0x1.54fafc84a2563p-3, 0x1.9e4e6a2395962p-2, -0x1.38c146fcbbd48p-4,
    0x1.5c403428c758p-1,  -0x1.5d8d8098bb8d8p-1, 0x1.adcc93af6e098p+2, -0x1.4ffba176783bdp+3,
    0x1.52ba46c9ea0b5p-5, -0x1.cbb5d69e065ep-6,  0x1.6f169e0ad2358p-4, -0x1.2f37aec92d36ep-3,
    0x1.4c9006f1a9ae3p-1, -0x1.94f9de6ba92ep-5,  0x1.975a0b74bbc31p+1, -0x1.48677bc2253d6p+2,
    0x1.a38510c491623p+3, -0x1.1e42f2f12aac6p-5, 0x1.0c161e54a63e1p-4, -0x1.3c26f0b79dec6p-4,
    -0x1.586b4db4ae31ep-3, -0x1.9ca4c80ac009p-7, 0x1.3d6f0460b1cc3p+2, -0x1.88050269853eap+0,
    -0x1.2143dedb0e118p-3, 0x1.7c4f1eb14501cp+3, -0x1.cb2cc015533a1p-2, 0x1.cffc215f441cbp+1,
    -0x1.c4f9a8b63cbe8p+0, 0x1.52c57ad298a31p-5, -0x1.27e932663712bp+3, 0x1.1a7cf5b0d283p-6,
    0x1.33a65aba9bc0cp+0,  0x1.5a67824d689dp-4,  0x1.73cfc9f205318p+3, -0x1.eddef217b2752p-1,
};

// FNV-1a over the outcomes, each ended by a line feed.
inline void Hash(std::uint64_t& h, const std::string& outcome) {
    for (char c : outcome + "\n") h = (h ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
}
inline constexpr std::uint64_t kHashStart = 0xCBF29CE484222325u;

}  // namespace quillet::golden
