// Reads frames of a file from its present place on into a block of memory, in the samples in which
// they are sent.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "codec/main/library_file.h"

namespace sonavel {

class SampleReader {
  public:
    SampleReader(SNDFILE* file, const SoundFileDescription& description);

    struct Got {
        std::size_t frames = 0;
        std::uint64_t silenced = 0;  // samples that were no finite numbers and became 0
        bool hadError = false;       // the library met what it could not make sense of
    };
    // Fills `to`, which has room for whole frames and is aligned for them; with fewer frames at the
    // end or where there was an error.
    Got Read(std::span<std::uint8_t> to);

  private:
    sf_count_t ReadFrames(std::span<std::uint8_t> to, std::size_t frames);
    sf_count_t ReadBytes(std::span<std::uint8_t> to, std::size_t frames);

    SNDFILE* file_;
    FrameSamples samples_;
    FileDepth depth_;
    std::size_t channels_;
    std::size_t frameBytes_;
    std::vector<short> words_;
};

}  // namespace sonavel
