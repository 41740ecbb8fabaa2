#include "spatial/listener.h"

namespace sonavel {

Listener::Listener() : measured_(TableResponses()) {}

Outcome Listener::Use(MeasuredResponses measured) {
    const double rate = measured.rate;
    Result<std::shared_ptr<const ResponseSet>> set = ResponseSet::Make(measured, rate);
    if (!set) return set.Ended();
    measured_ = std::move(measured);
    usesTable_ = false;
    sets_.clear();
    sets_[rate] = *set;
    return Done();
}

void Listener::UseTable() {
    measured_ = TableResponses();
    usesTable_ = true;
    sets_.clear();
}

Result<std::shared_ptr<const ResponseSet>> Listener::At(double rate) {
    if (const auto known = sets_.find(rate); known != sets_.end()) return known->second;
    Result<std::shared_ptr<const ResponseSet>> set = ResponseSet::Make(measured_, rate);
    if (set) sets_[rate] = *set;
    return set;
}

}  // namespace sonavel
