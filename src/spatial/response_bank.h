// The responses that a rendering blends, each computed once.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "spatial/response_set.h"

namespace sonavel {

// So many blends have room in one.
inline constexpr int kRoundedBlends = 5;

// Some responses of a bank by their numbers, no two the same, and their shares.
struct BankBlend {
    std::size_t count = 0;
    std::array<std::uint32_t, 3 * kRoundedBlends> numbers{};
    std::array<float, 3 * kRoundedBlends> shares{};

    bool operator==(const BankBlend&) const = default;

    void Add(std::uint32_t number, float share);
    void Add(const BankBlend& other, float share);
};

class ResponseBank {
  public:
    explicit ResponseBank(std::shared_ptr<const ResponseSet> responses);

    const ResponseSet& Responses() const { return *responses_; }
    // Notes which responses the direction needs.
    BankBlend Note(const SphereBlend& blend);
    // Computes what was noted since, on all cores. Throws std::bad_alloc.
    void Compute();
    // gain * an ear's blended response, of computed ones; `taps` are Responses().Taps() values.
    void Blend(const BankBlend& blend, Ear ear, double gain, std::span<float> taps) const;

  private:
    std::shared_ptr<const ResponseSet> responses_;
    std::map<FinePlace, std::uint32_t> numbers_;
    std::vector<FinePlace> places_;
    std::vector<std::array<std::vector<float>, 2>> taps_;  // of both ears
};

}  // namespace sonavel
