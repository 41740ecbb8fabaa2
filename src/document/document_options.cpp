#include "document/document_options.h"

namespace sonavel {

DocumentOptions DocumentOptions::Read(const ProfileText& options) {
    const auto wave = [&](std::string_view key) {
        return options.GetInteger("__SOUND_WAVE_OPTIONS", key);
    };
    const auto general = [&](std::string_view key) {
        return options.GetInteger("__SOUND_GENERAL_OPTIONS", key);
    };
    return {
        .playbackDeviceId = wave("PLAYBACK DEVICE ID"),
        .playbackBlockFrames = wave("PLAYBACK BUFFER SIZE"),
        .recordDeviceId = wave("RECORD DEVICE ID"),
        .recordBlockFrames = wave("RECORD BUFFER SIZE"),
        .displaySampleData = general("DISPLAY SAMPLE DATA"),
        .displaySeeker = general("DISPLAY SEEKER"),
        .openAndPlay = general("OPEN AND PLAY"),
        .openAndMaximize = general("OPEN AND MAXIMIZE"),
        .openAndFullTimeZoom = general("OPEN AND FULL TIME ZOOM"),
        .applyAutoSkipMode = general("APPLY AUTO SKIP MODE"),
        // Spelled so in every Options.ini that exists.
        .saveUndo = general("SAVE UNDO REDO INFOMATION"),
        .playScrolling = general("PLAY SCROLLING"),
        .saveMarkers = general("마커 저장"),
    };
}

}  // namespace sonavel
