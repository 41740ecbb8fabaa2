// What reading or writing a sound file asks of whoever wants it done.
#pragma once

#include <functional>
#include <string_view>

#include "platform/progress_window.h"

namespace sonavel {

// Whether a WAV save writes the markers. kOff stands for "no active view, or its document's option
// is off", which makes the save report failure behind the data.
enum class MarkerSaving { kOff, kOn };

// Without its parts nothing is shown and nobody cancels.
struct TransferHost {
    using Tell = std::function<void(std::string_view text)>;

    ProgressFactory* progress = nullptr;
    // A flaw of the file, in a message box of its own; reading goes on.
    Tell warn;
    // What becomes of the sound because of it, in the status bar.
    Tell note;

    void Warn(std::string_view text) const {
        if (warn) warn(text);
    }
    void Note(std::string_view text) const {
        if (note) note(text);
    }
};

}  // namespace sonavel
