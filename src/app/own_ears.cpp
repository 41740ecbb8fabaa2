#include "app/own_ears.h"

#include <QCoreApplication>
#include <atomic>
#include <cmath>
#include <utility>

#include "codec/client/child_codecs.h"
#include "platform/beside.h"
#include "platform/qt/person_settings.h"

namespace sonavel {
namespace {

const QString kEarsKey = QStringLiteral("3D/responses");

// Ends the reading of a file when the person has cancelled.
class EarsWatcher : public CodecWatcher {
  public:
    explicit EarsWatcher(const std::atomic<bool>& cancelled) : cancelled_(cancelled) {}
    GoOn Watch() override { return cancelled_ ? GoOn::kNo : GoOn::kYes; }

  private:
    const std::atomic<bool>& cancelled_;
};

}  // namespace

std::string ChosenEars() {
    return PersonSettings().value(kEarsKey).toString().toStdString();
}

void ChooseEars(const std::string& path) {
    PersonSettings().setValue(kEarsKey, QString::fromStdString(path));
}

Outcome TakeEars(const std::string& path, Listener& listener, const EarsPoll& poll) {
    if (path.empty()) {
        listener.UseTable();
        return Done();
    }
    Listener analysed;
    Outcome used = Done();
    const bool isWhole = DoBeside(poll, [&](const std::atomic<bool>& cancelled) {
        EarsWatcher watcher(cancelled);
        Result<MeasuredResponses> measured = ChildCodecs().ReadResponses(path, watcher);
        used = measured ? analysed.Use(*std::move(measured)) : measured.Ended();
    });
    if (!isWhole) return Cancelled();
    if (used) listener = std::move(analysed);
    return used;
}

std::string DescribeEars(const std::string& path, const EarsPoll& poll) {
    Listener listener;
    if (Outcome taken = TakeEars(path, listener, poll); !taken) return taken.Reason();
    return QCoreApplication::translate("COption3D",
                                       "%1 directions; no place is farther than %2 degrees from "
                                       "one of them.")
        .arg(listener.Measured().directions.size())
        .arg(std::lround(GreatestGap(listener.Measured())))
        .toStdString();
}

}  // namespace sonavel
