#include "spatial/live_scene.h"

#include <algorithm>
#include <cmath>

#include "sound/sample_io.h"
#include "spatial/placed_range.h"
#include "spatial/sound_at_rate.h"

namespace sonavel {
namespace {

using Sources = std::vector<LiveScene::Source>;

float FactorOf(double gain) {
    return static_cast<float>(std::pow(10, gain / 20));
}

// Which of the frames from `first` on a sound has that starts there.
struct Overlap {
    std::uint32_t from = 0;  // frame of the sound
    std::size_t skipped = 0;
    std::size_t count = 0;

    Overlap(std::uint32_t first, std::size_t frames, std::uint32_t start, std::uint32_t length) {
        const std::uint64_t begin = std::max(first, start);
        const std::uint64_t end =
            std::min(std::uint64_t{first} + frames, std::uint64_t{start} + length);
        if (end <= begin) return;
        from = static_cast<std::uint32_t>(begin - start);
        skipped = static_cast<std::size_t>(begin - first);
        count = static_cast<std::size_t>(end - begin);
    }
};

// The sounds one over the other, each on both sides.
class UnplacedSounds : public LiveRenderer {
  public:
    explicit UnplacedSounds(std::shared_ptr<const Sources> sources)
        : sources_(std::move(sources)), heard_(sources_->size()) {
        for (std::size_t i = 0; i < heard_.size(); ++i) heard_[i] = (*sources_)[i].gain;
    }

    void Render(std::uint32_t first, std::span<float> pairs) override {
        std::ranges::fill(pairs, 0.0f);
        for (std::size_t i = 0; i < heard_.size(); ++i) Add(i, first, pairs);
    }

  private:
    void Add(std::size_t number, std::uint32_t first, std::span<float> pairs) {
        const LiveScene::Source& source = (*sources_)[number];
        const float wanted = source.gain;
        const float former = std::exchange(heard_[number], wanted);
        const Sound* const sound = source.sound.load(std::memory_order_acquire);
        if (!sound) return;
        const std::size_t frames = pairs.size() / 2;
        const Overlap overlap(first, frames, source.start, sound->GetFrameCount());
        if (overlap.count == 0) return;
        channel_.resize(overlap.count);
        ReadChannel(*sound, 0, overlap.from, channel_, EightBitReading::kFull);
        const float share = VisitSampleType(
            sound->GetBits(), [](auto type) { return 1.0f / static_cast<float>(type.kHalfScale); });
        for (std::size_t i = 0; i < overlap.count; ++i) {
            const std::size_t at = overlap.skipped + i;
            const float way = static_cast<float>(at + 1) / static_cast<float>(frames);
            const float value = (former + (wanted - former) * way) * share * channel_[i];
            pairs[2 * at] += value;
            pairs[2 * at + 1] += value;
        }
    }

    std::shared_ptr<const Sources> sources_;
    std::vector<float> heard_;  // the gains
    std::vector<float> channel_;
};

// What is to be heard for the first time may take its time, for a smoother beginning: many sources
// that begin at once have much to compute.
constexpr std::uint32_t kFirstPreparedSeconds = 10;

class PlacedSounds : public LiveRenderer {
  public:
    struct Part {
        std::shared_ptr<PlacedRange> range;
        std::uint32_t start;
        std::uint32_t frames;
        float gain;
        LiveScene::Making making;
    };

    PlacedSounds(std::vector<Part> parts, std::uint32_t framesPerSecond)
        : framesPerSecond_(framesPerSecond), parts_(std::move(parts)) {}

    void Render(std::uint32_t first, std::span<float> pairs) override {
        std::ranges::fill(pairs, 0.0f);
        for (const Part& part : parts_) {
            const Overlap overlap(first, pairs.size() / 2, part.start, part.frames);
            if (overlap.count == 0) continue;
            rendered_.resize(2 * overlap.count);
            part.range->Render(overlap.from, rendered_);
            float* to = pairs.data() + 2 * overlap.skipped;
            for (const float value : rendered_) *to++ += part.gain * value;
        }
    }

    // Those that are not made anew may just be heard.
    void Prepare(std::uint32_t first) override {
        for (const Part& part : parts_) {
            const bool isHeard = first >= part.start && first - part.start < part.frames;
            if (isHeard && part.making != LiveScene::Making::kKept)
                part.range->Prepare(first - part.start);
            if (part.making == LiveScene::Making::kFirst)
                part.range->PrepareAhead(isHeard ? first - part.start : 0,
                                         kFirstPreparedSeconds * framesPerSecond_);
        }
    }

  private:
    std::uint32_t framesPerSecond_;
    std::vector<Part> parts_;
    std::vector<float> rendered_;
};

}  // namespace

LiveScene::LiveScene(std::vector<LiveSource> sources, std::uint32_t framesPerSecond,
                     Listener& listener)
    : sources_(std::move(sources)),
      rate_(framesPerSecond),
      listener_(listener),
      shared_(std::make_shared<Sources>(sources_.size())),
      voices_(sources_.size()) {
    for (std::size_t i = 0; i < sources_.size(); ++i) {
        (*shared_)[i].start = sources_[i].start;
        if (sources_[i].sound->GetSamplesPerSecond() == rate_)
            (*shared_)[i].sound = sources_[i].sound.get();
    }
}

LiveScene::~LiveScene() = default;

void LiveScene::Set(std::vector<LiveSetting> settings) {
    for (std::size_t i = 0; i < settings.size(); ++i)
        (*shared_)[i].gain = FactorOf(settings[i].gain);
    settings_.Give(std::move(settings));
}

LiveRange LiveScene::Range() const {
    std::uint64_t end = 0;
    for (const LiveSource& source : sources_) {
        const double frames = std::ceil(1.0 * source.sound->GetFrameCount() * rate_ /
                                        source.sound->GetSamplesPerSecond());
        end = std::max(end, source.start + static_cast<std::uint64_t>(frames));
    }
    return {static_cast<std::uint32_t>(std::min(end, kMostSceneFrames)), rate_};
}

std::unique_ptr<LiveRenderer> LiveScene::MakeUntouched() {
    return std::make_unique<UnplacedSounds>(shared_);
}

bool LiveScene::HasAtRate(std::size_t number) {
    Source& source = (*shared_)[number];
    if (source.sound.load(std::memory_order_relaxed)) return true;
    Result<Sound> resampled = FirstChannelAtRate(*sources_[number].sound, rate_);
    if (!resampled) return false;
    source.resampled = *std::move(resampled);
    source.sound.store(&*source.resampled, std::memory_order_release);
    return true;
}

LiveScene::Making LiveScene::Make(std::size_t number, const Placing& placing) {
    Voice& voice = voices_[number];
    if (placing.points.empty() || placing == voice.placing || !HasAtRate(number))
        return Making::kKept;
    const Sound& sound = *(*shared_)[number].sound;
    const RangeInput input{sound, {0, sound.GetFrameCount()}};
    auto blocks = MakeRenderer(placing, input, listener_);
    if (!blocks) return Making::kKept;
    const Making making = voice.range ? Making::kAnew : Making::kFirst;
    voice = {placing, std::make_shared<PlacedRange>(*std::move(blocks), input)};
    return making;
}

std::unique_ptr<LiveRenderer> LiveScene::MakeLatest() {
    const std::vector<LiveSetting>* const settings = settings_.Take();
    if (!settings) return nullptr;
    std::vector<PlacedSounds::Part> parts;
    for (std::size_t i = 0; i < settings->size(); ++i) {
        const LiveSetting& setting = (*settings)[i];
        const Making making = Make(i, setting.placing);
        if (!voices_[i].range) continue;
        const Source& source = (*shared_)[i];
        parts.push_back({voices_[i].range, source.start, source.sound.load()->GetFrameCount(),
                         FactorOf(setting.gain), making});
    }
    return std::make_unique<PlacedSounds>(std::move(parts), rate_);
}

}  // namespace sonavel
