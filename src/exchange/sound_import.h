// Import: opens any sound file that can be read here or by a decoder, with its markers, tags and
// chunks, and salvages what is there of a damaged one.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "exchange/channel_choices.h"
#include "exchange/sound_extras.h"
#include "platform/outcome.h"
#include "sound/codec_values.h"
#include "sound/sound.h"
#include "sound/sound_codecs.h"
#include "sound/transfer_host.h"

namespace sonavel {

// kKeep: 8 and 16 bits as they are, all else as 32-bit floats.
enum class ImportDepth : std::uint8_t { kKeep, kRoundTo16 };
// kKeep mixes more than two channels down to stereo. kLeft and kRight take the first and the second
// channel of a file, which of a mono file are the same.
enum class ImportChannels : std::uint8_t { kKeep, kMono, kLeft, kRight };

struct ImportChoice {
    ImportDepth depth = ImportDepth::kKeep;
    ImportChannels channels = ImportChannels::kKeep;
    std::optional<ChannelMatrix> matrix{};  // of a file with as many channels; outranks the above
};

struct ImportedSound {
    Sound sound;  // with its markers
    SoundFileDescription description;
    // Tags and chunks; the markers are the sound's. The remarks say all that was wrong or missing.
    SoundExtras extras;
    // What the file has and the sound has not: a save over the file takes it away. Each a clause
    // for the person without a full stop.
    std::vector<std::string> losses;
};

// What the file says of itself. Without `codecs` only plain samples are known.
Result<SoundFileHead> ProbeImport(const std::filesystem::path& path, const SoundCodecs* codecs,
                                  CodecWatcher& watcher);

// Fails with a sentence for the person. Needs the memory of the sound, and as much again as floats
// where it is rounded or mixed.
Result<ImportedSound> ImportSound(const std::filesystem::path& path, const SoundCodecs* codecs,
                                  const ImportChoice& choice, const TransferHost& host);

// Whether a file of that description is asked about before it is imported: whether to round it, and
// which of its channels to take.
bool IsDeeperThan16(const SoundFileDescription& description);
inline bool HasManyChannels(const SoundFileDescription& description) {
    return description.channels > 2;
}

// "FLAC, 24 bit, 96,000 Hz": the format, its coding and depth where it has one, and its rate.
std::string DescriptionText(const SoundFileDescription& description);
// The same, with what was wrong with the file behind it.
std::string ImportLine(const SoundFileDescription& description, const SoundExtras& extras);

}  // namespace sonavel
