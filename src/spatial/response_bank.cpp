#include "spatial/response_bank.h"

#include <algorithm>
#include <new>

#include "platform/parallel.h"

namespace sonavel {

void BankBlend::Add(std::uint32_t number, float share) {
    for (std::size_t i = 0; i < count; ++i)
        if (numbers[i] == number) {
            shares[i] += share;
            return;
        }
    numbers[count] = number;
    shares[count++] = share;
}

void BankBlend::Add(const BankBlend& other, float share) {
    for (std::size_t i = 0; i < other.count; ++i) Add(other.numbers[i], share * other.shares[i]);
}

ResponseBank::ResponseBank(std::shared_ptr<const ResponseSet> responses)
    : responses_(std::move(responses)) {}

BankBlend ResponseBank::Note(const SphereBlend& blend) {
    const FineBlend fine = Refine(blend);
    BankBlend noted;
    for (int i = 0; i < 3; ++i) {
        const auto next = static_cast<std::uint32_t>(places_.size());
        const auto [known, isNew] = numbers_.try_emplace(fine.places[i], next);
        if (isNew) places_.push_back(fine.places[i]);
        noted.Add(known->second, static_cast<float>(fine.shares[i]));
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
    std::ranges::fill(taps, 0.0f);
    for (std::size_t i = 0; i < blend.count; ++i) {
        const float* const from = taps_[blend.numbers[i]][static_cast<std::size_t>(ear)].data();
        const auto share = static_cast<float>(gain * static_cast<double>(blend.shares[i]));
        for (std::size_t k = 0; k < taps.size(); ++k) taps[k] += share * from[k];
    }
}

}  // namespace sonavel
