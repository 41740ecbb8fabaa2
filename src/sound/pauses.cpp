#include "sound/pauses.h"

#include <algorithm>
#include <cmath>

#include "platform/parallel.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kPartFrames = 1 << 20;

// The shares of full scale from which on a value is loud, as stored samples are compared.
double LoudFrom(double threshold) {
    constexpr double kDecibelsPerDecade = 20;
    return std::pow(10.0, threshold / kDecibelsPerDecade);
}

// A run of loud frames, with every quiet stretch inside it shorter than the least pause.
class SoundCollector {
  public:
    explicit SoundCollector(std::uint32_t leastPause) : leastPause_(leastPause) {}

    void Add(FrameRange loud) {
        const bool joins = !sounds_.empty() && loud.start - sounds_.back().end < leastPause_;
        if (joins)
            sounds_.back().end = loud.end;
        else
            sounds_.push_back(loud);
    }
    std::vector<FrameRange> Take() { return std::move(sounds_); }

  private:
    std::uint32_t leastPause_;
    std::vector<FrameRange> sounds_;
};

template <class Type>
bool IsLoud(const typename Type::Stored* frame, unsigned channels, double least) {
    for (unsigned channel = 0; channel < channels; ++channel)
        if (std::abs(static_cast<double>(Type::ValueOf(frame[channel]))) >= least) return true;
    return false;
}

template <class Type>
std::vector<FrameRange> LoudRuns(const Sound& sound, FrameRange range, const PauseRule& rule) {
    const auto samples = SamplesOf<Type>(sound.Bytes());
    const unsigned channels = sound.GetChannels();
    const auto whole = static_cast<std::uint32_t>(samples.size() / channels);
    const double least = LoudFrom(rule.threshold) * static_cast<double>(Type::kHalfScale);
    SoundCollector runs(std::max(rule.leastPause, std::uint32_t{1}));
    for (std::uint32_t frame = range.start; frame < std::min(range.end, whole); ++frame)
        if (IsLoud<Type>(samples.data() + std::size_t{frame} * channels, channels, least))
            runs.Add({frame, frame + 1});
    return runs.Take();
}

// The parts of a range are looked at side by side; runs that meet at a seam are joined behind.
std::vector<FrameRange> LoudParts(const Sound& sound, FrameRange range, const PauseRule& rule) {
    const std::size_t count = (range.Frames() + std::size_t{kPartFrames} - 1) / kPartFrames;
    std::vector<std::vector<FrameRange>> parts(count);
    const WorkEnd end = ComputeParts(count, [&](std::size_t part) {
        const auto start = range.start + static_cast<std::uint32_t>(part * kPartFrames);
        const FrameRange here{start, start + std::min(kPartFrames, range.end - start)};
        parts[part] = VisitSampleType(sound.GetBits(), [&](auto type) {
            return LoudRuns<decltype(type)>(sound, here, rule);
        });
    });
    if (end != WorkEnd::kFinished) throw std::bad_alloc();
    SoundCollector sounds(std::max(rule.leastPause, std::uint32_t{1}));
    for (const auto& part : parts)
        for (const FrameRange& loud : part) sounds.Add(loud);
    return sounds.Take();
}

}  // namespace

PausesFound FindPauses(const Sound& sound, FrameRange range, const PauseRule& rule) {
    const FrameRange looked = range.ClampedTo(sound.GetFrameCount());
    PausesFound found;
    if (looked.IsEmpty()) return found;
    found.sounds = LoudParts(sound, looked, rule);
    std::erase_if(found.sounds,
                  [&](const FrameRange& one) { return one.Frames() < rule.leastSound; });
    std::uint32_t at = looked.start;
    const auto takePause = [&](std::uint32_t end) {
        if (end > at && end - at >= rule.leastPause) found.pauses.push_back({at, end});
    };
    for (const FrameRange& one : found.sounds) {
        takePause(one.start);
        at = one.end;
    }
    takePause(looked.end);
    return found;
}

}  // namespace sonavel
