#include "codec/client/listener_reading.h"

#include <atomic>
#include <utility>

#include "platform/beside.h"

namespace sonavel {
namespace {

class CancelWatcher : public CodecWatcher {
  public:
    explicit CancelWatcher(const std::atomic<bool>& cancelled) : cancelled_(cancelled) {}
    GoOn Watch() override { return cancelled_ ? GoOn::kNo : GoOn::kYes; }

  private:
    const std::atomic<bool>& cancelled_;
};

}  // namespace

Outcome ReadListener(const ChildCodecs& codecs, const std::filesystem::path& path,
                     const std::function<bool()>& poll, Listener& listener) {
    Listener analysed;
    Outcome used = Done();
    const bool isWhole = DoBeside(poll, [&](const std::atomic<bool>& cancelled) {
        CancelWatcher watcher(cancelled);
        Result<MeasuredResponses> measured = codecs.ReadResponses(path, watcher);
        used = measured ? analysed.Use(*std::move(measured)) : measured.Ended();
    });
    if (!isWhole) return Cancelled();
    if (used) listener = std::move(analysed);
    return used;
}

}  // namespace sonavel
