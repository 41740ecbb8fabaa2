// What a document takes from Options.ini when it is created.
#pragma once

#include "platform/settings.h"

namespace sonavel {

// As the numbers stand in the file; missing keys read as 0.
struct DocumentOptions {
    int playbackDeviceId = 0;
    int playbackBlockFrames = 0;
    int recordDeviceId = 0;
    int recordBlockFrames = 0;
    int displaySampleData = 1;
    int displaySeeker = 0;
    int openAndPlay = 0;
    int openAndMaximize = 0;
    int openAndFullTimeZoom = 0;
    int applyAutoSkipMode = 1;
    int saveUndo = 1;
    int undoMegabytes = 0;  // 0: what the host gives
    int playScrolling = 1;
    int saveMarkers = 0;

    static DocumentOptions Read(const SettingValues& options);
};

}  // namespace sonavel
