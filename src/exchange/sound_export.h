// Export: writes a copy of a sound, or of a part of it, into a file of a kind that other programs
// read. The sound stays as it is.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "exchange/sound_extras.h"
#include "platform/outcome.h"
#include "sound/codec_values.h"
#include "sound/frame_range.h"
#include "sound/sound.h"
#include "sound/sound_codecs.h"
#include "sound/transfer_host.h"

namespace sonavel {

enum class ExportPart : std::uint8_t { kLeaveOut, kWrite };

struct ExportChoice {
    SoundFileKind kind = SoundFileKind::kWav;
    EncodedDepth depth = EncodedDepth::k16;  // of kinds that are not lossy
    std::uint32_t quality = 5;               // 0 to 10, of those that are
    ExportPart markers = ExportPart::kWrite;
    ExportPart tags = ExportPart::kWrite;
    FrameRange frames;  // cut to those that the sound has
};

// By the short name of the kind, which is its usual extension without the dot, in small letters;
// "aif" and "snd" stand for the files that they name, too. Nothing for other names.
std::optional<SoundFileKind> ExportKindOf(std::string_view name);
// That name; empty for kinds that cannot be exported.
std::string_view ExportNameOf(SoundFileKind kind);
// By what stands behind the last dot of the name, in letters of either case.
std::optional<SoundFileKind> ExportKindOf(const std::filesystem::path& path);

// The depth that loses least: that of the file that the sound came from, null where it came from
// none, else the sound's own; of floats the greatest that the kind holds.
EncodedDepth ExportDepth(SoundFileKind kind, const Sound& sound,
                         const SoundFileDescription* origin);

// Writes a file beside `path` and renames it over it. Fails with a sentence for the person. Where
// samples are rounded to 8 or 16 bits, they are dithered unless all of them fit. Tags and chunks
// are those of the extras. Takes the memory of the part that is written once more where it is not
// the whole sound as it is.
Outcome ExportSound(const std::filesystem::path& path, const Sound& sound,
                    const SoundExtras& extras, const ExportChoice& choice,
                    const SoundCodecs* codecs, const TransferHost& host);

}  // namespace sonavel
