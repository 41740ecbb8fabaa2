// Reads the frames of a file in pieces, in the samples in which they are sent.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "codec/main/library_file.h"

namespace sonavel {

// What is sent at once: fits the processor's cache with the library's own buffers.
inline constexpr std::size_t kPieceBytes = std::size_t{256} << 10;

// The largest number of bytes up to `bytes` that are whole frames; one frame at least.
constexpr std::size_t WholeFrames(std::size_t bytes, std::size_t frameBytes) {
    return bytes < frameBytes ? frameBytes : bytes - bytes % frameBytes;
}

class FrameReader {
  public:
    virtual ~FrameReader() = default;

    // The next frames, in whole pages of memory; none at the end.
    virtual std::span<const std::uint8_t> Next() = 0;
    // What the last so many calls gave stays as it is during the next one.
    virtual std::size_t KeptCalls() const = 0;

    std::uint64_t Frames() const { return frames_; }      // that were read
    std::uint64_t Silenced() const { return silenced_; }  // samples that were no finite numbers
    // Whether the library met what it could not make sense of. It goes on behind that where it can.
    bool HadError() const { return hadError_; }

  protected:
    std::uint64_t frames_ = 0;
    std::uint64_t silenced_ = 0;
    bool hadError_ = false;
};

// The fastest way for this file, which must stay open as long as its reader.
std::unique_ptr<FrameReader> MakeFrameReader(const char* path, const LibraryFile& file,
                                             const SoundFileDescription& description);

}  // namespace sonavel
