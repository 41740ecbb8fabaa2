#include "sound/loans.h"

#include <algorithm>
#include <new>

#include "sound/lent_samples.h"

namespace sonavel {

bool Loans::Add(const std::shared_ptr<LentSamples>& lent) try {
    ForgetEnded();
    const auto isSame = [&](const Loan& loan) { return loan.lent.lock() == lent; };
    if (std::ranges::none_of(loans_, isSame)) loans_.push_back({lent});
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void Loans::ForgetEnded() {
    std::erase_if(loans_, [](const Loan& loan) { return loan.lent.expired(); });
}

void Loans::SettleAt(const BytePlace& place) {
    if (place.bytes == 0) return;
    for (const Loan& loan : loans_)
        if (const auto lent = loan.lent.lock())
            lent->SettleAt(place, LentSamples::Touching::kAnyPart);
}

void Loans::SettleAcross(const BytePlace& place) {
    if (place.bytes == 0) return;
    for (const Loan& loan : loans_)
        if (const auto lent = loan.lent.lock())
            lent->SettleAt(place, LentSamples::Touching::kNotAsAWhole);
}

bool Loans::ShareWith(Loans& other) const {
    return std::ranges::all_of(loans_, [&](const Loan& loan) {
        const auto lent = loan.lent.lock();
        return !lent || other.Add(lent);
    });
}

void Loans::GoOver(const BytePlace& place, const std::uint8_t* copy, Loans& other) {
    // What the other does not know of must not lie there.
    if (!ShareWith(other)) return;
    const HeldLoans held(*this);
    held.Moved(place, copy);
}

void Loans::Hold() {
    for (Loan& loan : loans_) {
        loan.held = loan.lent.lock();
        if (loan.held) loan.held->Hold();
    }
}

void Loans::Release() {
    for (Loan& loan : loans_) {
        if (loan.held) loan.held->Release();
        loan.held.reset();
    }
}

void HeldLoans::Moved(const BytePlace& from, const std::uint8_t* to) const {
    for (const Loans::Loan& loan : loans_.loans_)
        if (loan.held) loan.held->Moved(from, to);
}

}  // namespace sonavel
