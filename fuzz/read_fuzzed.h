// Runs a file reader over the bytes that the fuzzer made, and then what every reader promises: a
// sound that can be edited and held, or the old sound untouched.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "sound/wave.h"
#include "support/fake_progress.h"
#include "support/recording_prompts.h"

namespace sonavel {

inline constexpr std::uint32_t kMostTriedBytes = std::uint32_t{1} << 24;

inline void Require(bool promise) {
    if (!promise) std::abort();
}

// A file in memory, which has a path like any other.
class MemoryFile {
  public:
    MemoryFile(const std::uint8_t* data, std::size_t size) : descriptor_(memfd_create("fuzz", 0)) {
        Require(descriptor_ >= 0 && pwrite(descriptor_, data, size, 0) == ssize_t(size));
    }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::filesystem::path Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};

template <class Reader>
void ReadFuzzed(const std::uint8_t* data, std::size_t size, Reader read) {
    const MemoryFile file(data, size);
    RecordingPrompts prompts;
    FakeProgress progress;
    // A few bytes may stand for gigabytes of silence, which would take the fuzzer's time.
    progress.cancelAtPoll = 16;
    CWave wave(prompts, progress);
    Require(wave.Create(1, 8, 7, 3));
    const bool opened = wave.Take(read(file.Path(), wave.FileHost()));
    Require(progress.openWindows == 0);
    if (!opened) {
        Require(wave.GetFormat() == MakePcmFormat(1, 8, 7) && wave.GetFrameCount() == 3);
        Require(!wave.LastError().empty());
        return;
    }
    Require(IsEditable(wave.GetFormat()));
    if (wave.GetDataSize() > kMostTriedBytes) return;
    // Conversions read every byte, so that one that does not exist shows.
    Require(wave.ConvertBits(wave.GetBits() == 8 ? 16 : 8));
    Require(wave.ConvertChannels(3 - wave.GetChannels(), ChannelChoice::kBothOrMix));
    const std::string frame(wave.GetBlockAlign(), 'x');
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(frame.data());
    Require(wave.InsertFrames(wave.GetFrameCount() / 2, {bytes, frame.size()}));
    Require(wave.RemoveFrames(0, wave.GetFrameCount()));
}

}  // namespace sonavel
