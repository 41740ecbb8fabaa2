#include "document/marker_words.h"

#include "document/step_words.h"

namespace sonavel {
namespace {

class MarkerWriter {
  public:
    MarkerWriter(const MarkerList& before, const MarkerList& now)
        : before_(before), now_(now), made_(before) {}

    std::optional<std::vector<std::string>> Write() {
        const std::size_t kept = RemoveWhatIsGone();
        for (std::size_t i = 0; i < kept; ++i) Set(now_.All()[i]);
        for (std::size_t i = kept; i < now_.Count(); ++i) Add(now_.All()[i]);
        // Ids that stand twice, or texts that no script holds, come out otherwise.
        if (!canBeWritten_ || made_ != now_) return std::nullopt;
        return std::move(lines_);
    }

  private:
    // How many markers of the beginning of the new list were there before.
    std::size_t RemoveWhatIsGone() {
        std::size_t kept = 0;
        for (const Marker& marker : before_.All()) {
            if (kept < now_.Count() && now_.All()[kept].id == marker.id) {
                ++kept;
            } else {
                lines_.push_back("marker-delete " + std::to_string(marker.id));
                made_.Remove(marker.id);
            }
        }
        return kept;
    }

    void Set(const Marker& marker) {
        const Marker* old = made_.Find(marker.id);
        if (old && *old == marker) return;
        lines_.push_back("marker-set " + std::to_string(marker.id) + Words(marker));
        made_.Set(marker.id, marker.position, marker.name, marker.length);
    }

    void Add(const Marker& marker) {
        lines_.push_back("marker-add" + Words(marker));
        made_.Add(marker.position, marker.name, marker.length);
    }

    std::string Words(const Marker& marker) {
        const auto name = QuotedWord(marker.name);
        if (!name) canBeWritten_ = false;
        return ' ' + std::to_string(marker.position) + " name=" + name.value_or("") +
               (marker.length > 0 ? " length=" + std::to_string(marker.length) : "");
    }

    const MarkerList& before_;
    const MarkerList& now_;
    MarkerList made_;
    std::vector<std::string> lines_;
    bool canBeWritten_ = true;
};

}  // namespace

std::optional<std::vector<std::string>> MarkerWords(const MarkerList& before,
                                                    const MarkerList& now) {
    return MarkerWriter(before, now).Write();
}

}  // namespace sonavel
