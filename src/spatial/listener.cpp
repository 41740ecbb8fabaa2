#include "spatial/listener.h"

#include <new>

namespace sonavel {
namespace {

// Some 60000 responses of the table.
constexpr std::size_t kMostBankBytes = std::size_t{64} << 20;

}  // namespace

Listener::Listener() : measured_(TableResponses()) {}

Outcome Listener::Use(MeasuredResponses measured, const PieceWatch& watch) {
    const double rate = measured.rate;
    Result<std::shared_ptr<const ResponseSet>> set = ResponseSet::Make(measured, rate, watch);
    if (!set) return set.Ended();
    measured_ = std::move(measured);
    usesTable_ = false;
    rates_.clear();
    rates_[rate].responses = *set;
    return Done();
}

void Listener::UseTable() {
    measured_ = TableResponses();
    usesTable_ = true;
    rates_.clear();
}

Result<std::shared_ptr<ResponseBank>> Listener::At(double rate) try {
    AtRate& known = rates_[rate];
    if (!known.responses) {
        Result<std::shared_ptr<const ResponseSet>> made = ResponseSet::Make(measured_, rate);
        if (!made) return made.Ended();
        known.responses = *made;
    }
    if (!known.bank || known.bank->Bytes() > kMostBankBytes)
        known.bank = std::make_shared<ResponseBank>(known.responses);
    return known.bank;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
