// A recording on its way to the disk, as a plain WAV file whose header is kept true, so that any
// program can play what a crash left of it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "platform/file_descriptor.h"
#include "platform/outcome.h"
#include "sound/pcm_format.h"
#include "sound/sound.h"

namespace sonavel::recovery {

inline constexpr const char* kTakeName = "take.wav";

class TakeFile {
  public:
    // Replaces what lies there. Each is false when the disk is full or fails.
    bool Open(const std::filesystem::path& path, const PcmFormat& format);
    bool Append(std::span<const std::uint8_t> wholeFrames);
    // Makes the header say what has been appended, and brings all to the disk.
    bool Sync();

  private:
    bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes);

    FileDescriptor file_;
    PcmFormat format_;
    std::uint64_t soundBytes_ = 0;
};

struct TakeFacts {
    PcmFormat format;
    std::uint64_t soundBytes = 0;  // that are there, in whole frames, whatever the header says

    std::uint32_t Frames() const {
        return static_cast<std::uint32_t>(soundBytes / format.blockAlign);
    }
};

// Nothing where no take lies there, or an empty one.
std::optional<TakeFacts> LookAtTake(const std::filesystem::path& path);
Result<SoundBuffer> ReadTake(const std::filesystem::path& path, const TakeFacts& facts);

}  // namespace sonavel::recovery
