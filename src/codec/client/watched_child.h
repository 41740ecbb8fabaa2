// A decoder or encoder in a child process, waited for under the eyes of its watcher: cancelled, it
// is ended at once; silent for too long, it is taken for hung.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>

#include "codec/client/codec_setup.h"
#include "platform/child_process.h"
#include "platform/outcome.h"
#include "sound/sound_codecs.h"

namespace sonavel {

enum class CodecWork { kDecoding, kEncoding };

class WatchedChild {
  public:
    WatchedChild(CodecWatcher& watcher, const CodecLimits& limits, CodecWork work)
        : watcher_(watcher), limits_(limits), work_(work) {}

    bool Start(const ChildCommand& command) { return child_.Start(command); }

    // Fills `to` from the child's output. Returns how many bytes came; fewer than asked for only
    // when the child has closed its output, was cancelled or hung.
    std::size_t Read(std::span<std::uint8_t> to);
    // False when the child takes no more.
    bool Write(std::span<const std::uint8_t> from);
    void CloseInput() { child_.CloseInput(); }

    // Lets the child come to its end, then says how: done when it exited by itself, else cancelled
    // or failed with a sentence.
    Outcome End();
    // Ends the child, since this side wants no more of it.
    void Stop() { child_.Kill(); }
    // Of a child that exited by itself, once End() has been called.
    int ExitStatus() const { return exitStatus_; }
    const std::string& ErrorText() const { return child_.ErrorText(); }

  private:
    using Clock = std::chrono::steady_clock;

    // Asks the watcher when it is time to; false when it has cancelled.
    bool MayGoOn();
    // Notes that the child did something, or that it has been silent for too long.
    bool NoteTransfer(ChildTransfer::How how);

    CodecWatcher& watcher_;
    const CodecLimits& limits_;
    CodecWork work_;
    ChildProcess child_;
    Outcome trouble_ = Done();
    int exitStatus_ = 0;
    Clock::time_point lastWatch_;
    Clock::time_point lastSign_ = Clock::now();
};

}  // namespace sonavel
