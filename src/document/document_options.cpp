#include "document/document_options.h"

namespace sonavel {

DocumentOptions DocumentOptions::Read(const SettingValues& options) {
    return {
        .playbackDeviceId = options[SettingId::kPlaybackDevice],
        .playbackBlockFrames = options[SettingId::kPlaybackBlockFrames],
        .recordDeviceId = options[SettingId::kRecordDevice],
        .recordBlockFrames = options[SettingId::kRecordBlockFrames],
        .displaySampleData = options[SettingId::kDisplaySampleData],
        .displaySeeker = options[SettingId::kDisplaySeeker],
        .openAndPlay = options[SettingId::kOpenAndPlay],
        .openAndMaximize = options[SettingId::kOpenAndMaximize],
        .openAndFullTimeZoom = options[SettingId::kOpenAndFullTimeZoom],
        .applyAutoSkipMode = options[SettingId::kApplyAutoSkipMode],
        .saveUndo = options[SettingId::kSaveUndo],
        .undoMegabytes = options[SettingId::kUndoMemory],
        .playScrolling = options[SettingId::kPlayScrolling],
        .saveMarkers = options[SettingId::kSaveMarkers],
    };
}

}  // namespace sonavel
