// The mu-law and A-law codes of ITU-T G.711, expanded to 16-bit samples.
#pragma once

#include <array>
#include <cstdint>

namespace sonavel {

using ExpansionTable = std::array<std::int16_t, 256>;

const ExpansionTable& MuLawTable();  // -32124 to 32124
const ExpansionTable& ALawTable();   // -32256 to 32256

}  // namespace sonavel
