// Builds a sound from the frames of a decoder, in the channels that were chosen.
#pragma once

#include <memory>
#include <vector>

#include "exchange/sound_import.h"
#include "platform/progress_window.h"
#include "sound/float_rounding.h"
#include "sound/sound_buffer.h"

namespace sonavel {

enum class AllTaken : std::uint8_t { kNo, kYes };

class ImportSink : public FrameSink {
  public:
    ImportSink(const ImportChoice& choice, const TransferHost& host);

    GoOn Watch() override;
    Outcome Begin(const SoundFileHead& head) override;
    std::span<std::uint8_t> Room(std::size_t bytes) override;
    Outcome Take(std::span<const std::uint8_t> frames) override;

    const SoundFileHead& Head() const { return head_; }
    // What was taken, in the depth that was chosen; for once.
    Sound TakeSound();

    // Whether the sound has what the file has; known when all frames have come.
    AllTaken TookAllChannels() const { return matrix_ ? AllTaken::kNo : AllTaken::kYes; }
    AllTaken TookAllBits() const;

  private:
    void ReserveAll(std::uint64_t frames);
    bool Reserve(std::size_t bytes);
    bool TakesAsTheyAre() const;
    std::span<const float> Floats(std::span<const std::uint8_t> frames);
    Outcome Append(std::span<const float> samples);
    void ShowProgress();

    const ImportChoice& choice_;
    std::unique_ptr<ProgressWindow> window_;
    SoundFileHead head_;
    std::optional<ChannelMatrix> matrix_;  // none where the channels are taken as they are
    PcmFormat format_;                     // of the sound
    SoundBuffer samples_;                  // longer than what was taken
    std::size_t takenBytes_ = 0;
    std::uint64_t takenFrames_ = 0;
    std::vector<float> floats_, mixed_;
    FloatRounder rounder_;
};

}  // namespace sonavel
