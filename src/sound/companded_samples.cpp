#include "sound/companded_samples.h"

namespace sonavel {
namespace {

// All bits are inverted on the line: sign, 3 bits of exponent, 4 bits of mantissa. The 14-bit
// values of the standard are scaled to 16 bits.
constexpr std::int16_t ExpandMuLaw(unsigned code) {
    constexpr int kBias = 0x84;
    const unsigned bits = ~code & 0xFF;
    const int magnitude = ((static_cast<int>(bits & 0x0F) * 8 + kBias) << (bits >> 4 & 7)) - kBias;
    return static_cast<std::int16_t>(bits & 0x80 ? -magnitude : magnitude);
}

// Every second bit is inverted on the line, and a set sign bit means a positive sample. The 13-bit
// values of the standard are scaled to 16 bits.
constexpr std::int16_t ExpandALaw(unsigned code) {
    const unsigned bits = code ^ 0x55;
    const int mantissa = static_cast<int>(bits & 0x0F) * 16 + 8;
    const unsigned exponent = bits >> 4 & 7;
    const int magnitude = exponent == 0 ? mantissa : (mantissa + 256) << (exponent - 1);
    return static_cast<std::int16_t>(bits & 0x80 ? magnitude : -magnitude);
}

template <class Expand>
constexpr ExpansionTable MakeTable(Expand expand) {
    ExpansionTable table{};
    for (unsigned code = 0; code < table.size(); ++code) table[code] = expand(code);
    return table;
}

constexpr ExpansionTable kMuLaw = MakeTable(ExpandMuLaw);
constexpr ExpansionTable kALaw = MakeTable(ExpandALaw);

}  // namespace

const ExpansionTable& MuLawTable() {
    return kMuLaw;
}

const ExpansionTable& ALawTable() {
    return kALaw;
}

}  // namespace sonavel
