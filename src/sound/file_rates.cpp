#include "sound/file_rates.h"

#include <algorithm>

namespace sonavel {
namespace {

constexpr std::uint32_t kOpusRates[] = {8000, 12000, 16000, 24000, 48000};
constexpr std::uint32_t kMp3Rates[] = {8000,  11025, 12000, 16000, 22050,
                                       24000, 32000, 44100, 48000};

}  // namespace

std::span<const std::uint32_t> RatesOfKind(SoundFileKind kind) {
    if (kind == SoundFileKind::kOpus) return kOpusRates;
    if (kind == SoundFileKind::kMp3) return kMp3Rates;
    return {};
}

std::uint32_t WrittenRate(SoundFileKind kind, std::uint32_t rate) {
    const std::span<const std::uint32_t> rates = RatesOfKind(kind);
    if (rates.empty()) return rate;
    const auto found = std::ranges::lower_bound(rates, rate);
    return found != rates.end() ? *found : rates.back();
}

}  // namespace sonavel
