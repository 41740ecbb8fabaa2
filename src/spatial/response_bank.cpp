#include "spatial/response_bank.h"

#include <new>

#include "platform/parallel.h"

namespace sonavel {

ResponseBank::ResponseBank(std::shared_ptr<const ResponseSet> responses)
    : responses_(std::move(responses)) {}

BankBlend ResponseBank::Note(const SphereBlend& blend) {
    const FineBlend fine = Refine(blend);
    BankBlend noted;
    for (int i = 0; i < 3; ++i) {
        const auto next = static_cast<std::uint32_t>(places_.size());
        const auto [known, isNew] = numbers_.try_emplace(fine.places[i], next);
        if (isNew) places_.push_back(fine.places[i]);
        noted.numbers[i] = known->second;
        noted.shares[i] = static_cast<float>(fine.shares[i]);
    }
    return noted;
}

void ResponseBank::Compute() {
    const std::size_t first = taps_.size();
    taps_.resize(places_.size());
    const WorkEnd end = ComputeParts(2 * (places_.size() - first), [&](std::size_t part) {
        const std::size_t number = first + part / 2;
        taps_[number][part % 2] = responses_->TapsAt(places_[number], kBothEars[part % 2]);
    });
    if (end == WorkEnd::kOutOfMemory) throw std::bad_alloc();
}

void ResponseBank::Blend(const BankBlend& blend, Ear ear, double gain,
                         std::span<float> taps) const {
    std::array<const float*, 3> from{};
    std::array<float, 3> shares{};
    for (int i = 0; i < 3; ++i) {
        from[i] = taps_[blend.numbers[i]][static_cast<std::size_t>(ear)].data();
        shares[i] = static_cast<float>(gain * blend.shares[i]);
    }
    for (std::size_t k = 0; k < taps.size(); ++k)
        taps[k] = shares[0] * from[0][k] + shares[1] * from[1][k] + shares[2] * from[2][k];
}

}  // namespace sonavel
