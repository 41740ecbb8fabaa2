#include "spatial/response_bank.h"

#include <algorithm>

namespace sonavel {

void BankBlend::Add(const EarTaps& responses, float share) {
    for (std::size_t i = 0; i < count; ++i)
        if (taps[i] == &responses) {
            shares[i] += share;
            return;
        }
    taps[count] = &responses;
    shares[count++] = share;
}

void BankBlend::Add(const BankBlend& other, float share) {
    for (std::size_t i = 0; i < other.count; ++i) Add(*other.taps[i], share * other.shares[i]);
}

void BankBlend::Sum(Ear ear, double gain, std::span<float> response) const {
    std::ranges::fill(response, 0.0f);
    for (std::size_t i = 0; i < count; ++i) {
        const float* const from = (*taps[i])[static_cast<std::size_t>(ear)].data();
        const auto share = static_cast<float>(gain * static_cast<double>(shares[i]));
        for (std::size_t k = 0; k < response.size(); ++k) response[k] += share * from[k];
    }
}

ResponseBank::ResponseBank(std::shared_ptr<const ResponseSet> responses)
    : responses_(std::move(responses)) {}

const EarTaps& ResponseBank::TapsAt(const FinePlace& place) {
    std::unique_lock lock(mutex_);
    Response& response = known_[place];
    lock.unlock();
    std::call_once(response.computed, [&] { response.taps = responses_->TapsAt(place); });
    return response.taps;
}

BankBlend ResponseBank::At(const SphereBlend& blend) {
    const FineBlend fine = Refine(blend);
    BankBlend found;
    for (int i = 0; i < 3; ++i)
        found.Add(TapsAt(fine.places[i]), static_cast<float>(fine.shares[i]));
    return found;
}

std::size_t ResponseBank::Bytes() const {
    const std::lock_guard lock(mutex_);
    return known_.size() * (sizeof(Response) + 2 * responses_->Taps() * sizeof(float));
}

}  // namespace sonavel
