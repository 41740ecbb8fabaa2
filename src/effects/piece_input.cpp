#include "effects/piece_input.h"

#include <algorithm>
#include <array>

#include "sound/sample_io.h"

namespace sonavel {

std::uint32_t PieceInput::SilentFrames(const EffectPiece& piece) const {
    return historyFrames - std::min(historyFrames, piece.first);
}

void PieceInput::Load(const EffectPiece& piece, unsigned firstSlot, unsigned slots) const {
    const std::uint32_t silent = SilentFrames(piece);
    std::array<std::span<float>, 2> heard;
    for (unsigned slot = firstSlot; slot < firstSlot + slots; ++slot) {
        std::ranges::fill(piece.channels[slot].first(silent), 0.0f);
        heard[slot] = piece.channels[slot].subspan(silent);
    }
    const std::uint32_t first = range.start + piece.first - (historyFrames - silent);
    const auto reading = traits.storing == Storing::kQuantized ? EightBitReading::kSignedByte
                                                               : EightBitReading::kFull;
    const unsigned channels = sound.GetChannels();
    if (slots == 2 && channels == 2)
        return ReadBothChannels(sound, first, heard[0], heard[1], reading);
    for (unsigned slot = firstSlot; slot < firstSlot + slots; ++slot)
        ReadChannel(sound, std::min(slot, channels - 1), first, heard[slot], reading);
}

}  // namespace sonavel
