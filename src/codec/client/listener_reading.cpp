#include "codec/client/listener_reading.h"

#include <utility>

#include "platform/beside.h"

namespace sonavel {
namespace {

// Of the time that reading and analysing take.
constexpr double kShareOfReading = 0.5;

// The helper does not say how far it is.
class ReadingWatcher : public CodecWatcher {
  public:
    explicit ReadingWatcher(const PieceWatch& watch) : watch_(watch) {}
    GoOn Watch() override { return watch_(0) == Onward::kStop ? GoOn::kNo : GoOn::kYes; }

  private:
    const PieceWatch& watch_;
};

}  // namespace

Outcome ReadListener(const ChildCodecs& codecs, const std::filesystem::path& path,
                     ProgressWindow& window, Listener& listener) {
    Listener analysed;
    Outcome used = Done();
    const bool isWhole = DoWatchedBeside(window, [&](const PieceWatch& watch) {
        ReadingWatcher watcher(watch);
        Result<MeasuredResponses> measured = codecs.ReadResponses(path, watcher);
        used = measured ? analysed.Use(*std::move(measured), PartOf(watch, kShareOfReading, 1))
                        : measured.Ended();
    });
    if (!isWhole) return Cancelled();
    if (used) listener = std::move(analysed);
    return used;
}

}  // namespace sonavel
