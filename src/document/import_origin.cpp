#include "document/import_origin.h"

#include "exchange/export_losses.h"
#include "exchange/sound_frames.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

bool HoldsFloats(SoundFileKind kind) {
    return kind != SoundFileKind::kFlac;
}

bool IsLossy(SoundFileKind kind) {
    return kind == SoundFileKind::kOggVorbis || kind == SoundFileKind::kOpus ||
           kind == SoundFileKind::kMp3;
}

EncodedDepth DepthLike(const SoundFileDescription& description) {
    if (description.depth == FileDepth::kInteger) {
        if (description.bits <= 8) return EncodedDepth::k8;
        if (description.bits <= 16) return EncodedDepth::k16;
        if (description.bits <= 24) return EncodedDepth::k24;
    }
    return HoldsFloats(description.kind) ? EncodedDepth::kFloat32 : EncodedDepth::k24;
}

// The bits of a whole number of the depth.
unsigned WholeBitsOf(EncodedDepth depth) {
    constexpr unsigned kBits[] = {8, 16, 24, 32};
    return kBits[static_cast<std::size_t>(depth)];
}

}  // namespace

EncodeRequest RequestLike(const SoundFileDescription& description) {
    EncodeRequest request;
    request.kind = description.kind;
    request.depth = DepthLike(description);
    return request;
}

std::vector<std::string> LossesOfSaving(const ImportOrigin& origin, const Sound& sound,
                                        const SoundExtras& extras) {
    const SoundFileDescription& description = origin.description;
    std::vector<std::string> losses =
        LossesOf(description.kind, sound.GetSamplesPerSecond(), extras);
    losses.insert(losses.end(), origin.taken.begin(), origin.taken.end());
    if (IsLossy(description.kind)) {
        losses.push_back("Each save as " + description.format + " takes away from the sound");
        return losses;
    }
    if (!description.coding.empty())
        losses.push_back("The coding " + description.coding + " is given up for plain samples");
    const unsigned bits = WholeBitsOf(DepthLike(description));
    if (bits < sound.GetBits() && bits != 24)
        losses.push_back("The sound is rounded to " + std::to_string(bits) + " bits");
    return losses;
}

}  // namespace sonavel
