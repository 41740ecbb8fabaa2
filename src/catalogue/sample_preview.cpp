#include "catalogue/sample_preview.h"

#include "document/document_options.h"

namespace sonavel {

SamplePreview::SamplePreview(UserPrompts& prompts, ProgressFactory& progress, WaveDevices& devices)
    : player_(prompts, progress, devices) {
    player_.SetObserver(this);
}

bool SamplePreview::Play(const std::filesystem::path& path, const ProgramFolder& folder) {
    Stop();
    player_.SetLastError("");
    if (!player_.Take(ReadSample(path, player_.FileHost()))) return false;
    const DocumentOptions chosen = DocumentOptions::Read(folder.Options().Read());
    player_.SetPlaybackDevice(chosen.playbackDeviceId);
    player_.SetPlaybackBlockFrames(chosen.playbackBlockFrames);
    const bool playing = player_.Play(0);
    if (!playing && player_.LastError().empty())
        player_.SetLastError(player_.HasData() ? "The sound cannot be played."
                                               : "The sound is empty.");
    return playing;
}

}  // namespace sonavel
