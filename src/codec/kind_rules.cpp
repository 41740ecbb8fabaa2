#include "codec/kind_rules.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <string>

#include "sound/file_rates.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

using enum SoundFileKind;

enum class Sizes : std::uint8_t { k32Bit, k64Bit };

struct KindRule {
    SoundFileKind kind;
    std::string_view name;
    std::uint32_t mostChannels;
    Sizes sizes;
};

constexpr KindRule kRules[] = {
    {kWav, "WAV", 1024, Sizes::k32Bit},  {kRf64, "RF64", 1024, Sizes::k64Bit},
    {kW64, "W64", 1024, Sizes::k64Bit},  {kAiff, "AIFF", 1024, Sizes::k32Bit},
    {kAu, "AU", 1024, Sizes::k32Bit},    {kCaf, "CAF", 1024, Sizes::k64Bit},
    {kFlac, "FLAC", 8, Sizes::k64Bit},   {kOggVorbis, "Ogg Vorbis", 255, Sizes::k64Bit},
    {kOpus, "Opus", 255, Sizes::k64Bit}, {kMp3, "MP3", 2, Sizes::k64Bit},
};

constexpr std::uint64_t kMost32BitBytes = 0xFFFFFFFF - (std::uint64_t{32} << 20);  // head and tags

const KindRule* RuleFor(SoundFileKind kind) {
    const auto* found = std::ranges::find(kRules, kind, &KindRule::kind);
    return found != std::end(kRules) ? found : nullptr;
}

std::string RateList(std::span<const std::uint32_t> rates) {
    std::string list;
    for (const std::uint32_t rate : rates) {
        if (!list.empty()) list += rate == rates.back() ? " and " : ", ";
        list += RateText(rate);
    }
    return list;
}

std::uint64_t BytesPerSampleAt(EncodedDepth depth) {
    constexpr std::uint64_t kBytes[] = {1, 2, 3, 4};
    return kBytes[static_cast<std::size_t>(depth)];
}

}  // namespace

std::string_view KindName(SoundFileKind kind) {
    const KindRule* rule = RuleFor(kind);
    return rule != nullptr ? rule->name : std::string_view{};
}

bool IsLossy(SoundFileKind kind) {
    return kind == kOggVorbis || kind == kOpus || kind == kMp3;
}

Outcome CheckEncodable(const EncodeRequest& request) {
    const KindRule* rule = RuleFor(request.kind);
    if (rule == nullptr || request.channels == 0 || request.rate == 0)
        return Failed("There is no such kind of file.");
    const std::string files = std::string(rule->name) + " files ";
    if (request.channels > rule->mostChannels)
        return Failed(files + "hold at most " + std::to_string(rule->mostChannels) + " channels.");
    if (WrittenRate(request.kind, request.rate) != request.rate)
        return Failed(files + "know only the rates " + RateList(RatesOfKind(request.kind)) + ".");
    if (request.kind == kFlac && request.depth == EncodedDepth::kFloat32)
        return Failed(files + "cannot hold 32-bit float samples.");
    const std::uint64_t frameBytes = request.channels * BytesPerSampleAt(request.depth);
    if (rule->sizes == Sizes::k32Bit && request.frames > kMost32BitBytes / frameBytes)
        return Failed(files + "hold at most 4 GiB.");
    return Done();
}

}  // namespace sonavel
