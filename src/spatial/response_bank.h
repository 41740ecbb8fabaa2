// The responses that renderings blend, each computed once: when it is needed first.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <span>

#include "spatial/response_set.h"

namespace sonavel {

// So many blends have room in one.
inline constexpr int kRoundedBlends = 5;

// Some responses of a bank, no two the same, and their shares.
struct BankBlend {
    std::size_t count = 0;
    std::array<const EarTaps*, std::size_t{3} * kRoundedBlends> taps{};
    std::array<float, std::size_t{3} * kRoundedBlends> shares{};

    bool operator==(const BankBlend&) const = default;

    void Add(const EarTaps& responses, float share);
    void Add(const BankBlend& other, float share);
    // gain * an ear's response; `response` has as many values as the responses.
    void Sum(Ear ear, double gain, std::span<float> response) const;
};

// Usable on several threads at once.
class ResponseBank {
  public:
    explicit ResponseBank(std::shared_ptr<const ResponseSet> responses);

    const ResponseSet& Responses() const { return *responses_; }
    // What is heard of a direction, for as long as the bank is there. Throws std::bad_alloc.
    BankBlend At(const SphereBlend& blend);
    // What it has computed so far.
    std::size_t Bytes() const;

  private:
    struct Response {
        std::once_flag computed;
        EarTaps taps;
    };
    const EarTaps& TapsAt(const FinePlace& place);

    std::shared_ptr<const ResponseSet> responses_;
    mutable std::mutex mutex_;  // of the map, not of what is computed
    std::map<FinePlace, Response> known_;
};

}  // namespace sonavel
