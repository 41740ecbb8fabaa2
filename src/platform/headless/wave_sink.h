// Where a headless output device puts what is played: nowhere, or into a WAV file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>

#include "platform/wave_device.h"

namespace sonavel {

class WaveSink {
  public:
    virtual ~WaveSink() = default;

    // Before the first block of a playback. False when the sink cannot take sound.
    virtual bool Begin(const WaveFormat& format) = 0;
    virtual void Take(std::span<const std::uint8_t> bytes) = 0;
    virtual void End() = 0;
};

class NullWaveSink : public WaveSink {
  public:
    bool Begin(const WaveFormat&) override { return true; }
    void Take(std::span<const std::uint8_t>) override {}
    void End() override {}
};

// Writes what is played to a RIFF WAVE file, each playback over the one before.
class WavFileSink : public WaveSink {
  public:
    explicit WavFileSink(std::filesystem::path path);

    bool Begin(const WaveFormat& format) override;
    void Take(std::span<const std::uint8_t> bytes) override;
    void End() override;

  private:
    void WriteHeader();

    std::filesystem::path path_;
    std::ofstream file_;
    WaveFormat format_;
    std::uint32_t dataBytes_ = 0;
};

}  // namespace sonavel
