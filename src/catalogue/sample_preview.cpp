#include "catalogue/sample_preview.h"

#include "document/document_options.h"

namespace sonavel {

SamplePreview::SamplePreview(UserPrompts& prompts, ProgressFactory& progress, WaveDevices& devices,
                             const SoundCodecs* codecs)
    : codecs_(codecs), player_(prompts, progress, devices) {
    player_.SetObserver(this);
}

Outcome SamplePreview::Play(const std::filesystem::path& path, const ProgramFolder& folder) {
    Stop();
    Result<Sound> read = ReadSample(path, codecs_, player_.FileHost());
    if (!read) return read.Ended();
    player_.Adopt(std::move(*read));
    if (!player_.HasData()) return Failed("The sound is empty.");
    const DocumentOptions chosen = DocumentOptions::Read(folder.Options().Read());
    player_.SetPlaybackDevice(chosen.playbackDeviceId);
    player_.SetPlaybackBlockFrames(chosen.playbackBlockFrames);
    player_.SetLastError("");
    if (player_.Play(0)) return Done();
    return Failed(player_.LastError().empty() ? "The sound cannot be played."
                                              : player_.LastError());
}

}  // namespace sonavel
