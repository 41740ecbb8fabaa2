// What a script that runs by itself asks of its host: no display, no sound device, a clipboard of
// its own.
#pragma once

#include <iosfwd>

#include "platform/headless/headless_progress.h"
#include "platform/headless/headless_wave_devices.h"
#include "platform/headless/memory_clipboard.h"
#include "script/script_session.h"

namespace sonavel::batch {

class BatchHost {
  public:
    // Reports, messages and questions go to `out`; the percentages of long operations to
    // `progressOut`, null for nowhere.
    BatchHost(const ProgramFolder& folder, std::ostream& out, std::ostream* progressOut)
        : folder_(folder), prompts_(out), progress_(progressOut), script_{prompts_, codecs_, out} {}

    HostServices Services() {
        return {prompts_,
                progress_,
                clipboard_,
                devices_,
                folder_,
                &codecs_,
                UndoStorage::OfThisSystem()};
    }
    const script::ScriptHost& Script() const { return script_; }

  private:
    ProgramFolder folder_;
    ScriptedPrompts prompts_;
    HeadlessProgress progress_;
    MemoryClipboard clipboard_;
    HeadlessWaveDevices devices_{WavePace::kAsFastAsAsked};
    ChildCodecs codecs_;
    script::ScriptHost script_;
};

}  // namespace sonavel::batch
