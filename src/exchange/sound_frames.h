// The frames of a sound for whoever writes them into a file.
#pragma once

#include <filesystem>
#include <memory>

#include "exchange/sound_extras.h"
#include "platform/progress_window.h"
#include "sound/sound.h"
#include "sound/sound_codecs.h"
#include "sound/transfer_host.h"

namespace sonavel {

// In which samples a sound of that format has its frames.
FrameSamples FrameSamplesOf(const PcmFormat& format);

// Gives the bytes of whole frames, with a progress window that can cancel. The bytes stay with
// their owner.
class SoundFrames : public FrameSource {
  public:
    SoundFrames(std::span<const std::uint8_t> frames, std::string_view progressTitle,
                const TransferHost& host);

    GoOn Watch() override;
    // Fails when there are no more.
    Outcome Give(std::span<std::uint8_t> to) override;

  private:
    std::span<const std::uint8_t> frames_;
    std::size_t given_ = 0;
    std::unique_ptr<ProgressWindow> window_;
};

// Writes the whole sound into a file beside `path` and renames it over it: here, or by `codecs`
// where the kind of file needs an encoder. Of the request the kind, the depth and the quality
// count; markers are the sound's, tags and chunks those of the extras.
Outcome WriteForeignFile(const std::filesystem::path& path, const Sound& sound,
                         EncodeRequest request, SoundExtras extras, const SoundCodecs* codecs,
                         const TransferHost& host);

}  // namespace sonavel
