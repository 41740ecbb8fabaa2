#include "effects/live_effect.h"

#include <algorithm>

#include "effects/piece_input.h"
#include "effects/quantizer.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

// So much of the sound is run through a processor that remembers, before it is heard: what it
// remembers of the time before has died away.
constexpr std::uint32_t kRunUpSeconds = 1;

// What the computed samples of a channel are as shares of full scale.
class SharesOf {
  public:
    SharesOf(const EffectTraits& traits, unsigned bits) : bits_(bits) {
        const bool whole = AreWholeNumbers(bits);
        stored_ = whole &&
                  (traits.storing == Storing::kTruncated || traits.storing == Storing::kQuantized);
        quantized_ = whole && traits.storing == Storing::kQuantized;
    }

    void Convert(std::span<float> samples) const {
        if (quantized_) QuantizeInPlace(samples);
        if (stored_) return AsStored(samples);
        const float scale = bits_ == ByteSample::kBits ? kEightBitScale : 1;
        for (float& sample : samples) sample *= scale / WordSample::kHalfScale;
    }

  private:
    // What the samples of the sound wrap is heard wrapped.
    void AsStored(std::span<float> samples) const {
        VisitSampleType(bits_, [&](auto type) {
            using Type = decltype(type);
            for (float& sample : samples) {
                const auto value = static_cast<typename Type::Value>(sample);
                sample = static_cast<float>(Type::ValueOf(Type::StoredOf(value))) /
                         static_cast<float>(Type::kHalfScale);
            }
        });
    }

    unsigned bits_;
    bool stored_;
    bool quantized_;
};

class ProcessedRange : public LiveRenderer {
  public:
    ProcessedRange(const Effect& effect, const Sound& sound, FrameRange range,
                   std::vector<double> values)
        : effect_(effect),
          sound_(sound),
          range_(range),
          values_(std::move(values)),
          remembers_(effect.traits.spread != Spread::kPieces),
          shares_(effect.traits, sound.GetBits()) {
        MakeVoices();
        const EffectProcessor& processor = *voices_.front().processor;
        pieceFrames_ = processor.PieceFrames();
        stepPieces_ = std::max(1u, processor.FramesPerStep() / pieceFrames_);
        samples_.resize((std::size_t{processor.HistoryFrames()} + pieceFrames_) * 2);
        pairs_.resize(std::size_t{2} * pieceFrames_);
    }

    void Render(std::uint32_t first, std::span<float> pairs) override {
        while (!pairs.empty()) {
            MoveTo(first / pieceFrames_);
            const std::size_t from = std::size_t{2} * (first % pieceFrames_);
            const std::size_t count = std::min(pairs.size(), pairs_.size() - from);
            std::copy_n(pairs_.begin() + static_cast<std::ptrdiff_t>(from), count, pairs.begin());
            pairs = pairs.subspan(count);
            first += static_cast<std::uint32_t>(count / 2);
        }
    }

  private:
    // What computes some of the channels, with a state of its own: none hears what another one
    // left.
    struct Voice {
        std::unique_ptr<EffectState> state;
        std::unique_ptr<EffectProcessor> processor;
        unsigned firstSlot;
        unsigned slots;
    };

    void MakeVoices() {
        voices_.clear();
        const unsigned channels = sound_.GetChannels();
        for (unsigned slot = 0; slot < (remembers_ ? channels : 1); ++slot) {
            auto state = std::make_unique<EffectState>();
            auto processor = effect_.make(values_, {sound_.GetSamplesPerSecond(), sound_.GetBits(),
                                                    channels, range_.Frames(), *state});
            voices_.push_back(
                {std::move(state), std::move(processor), slot, remembers_ ? 1 : channels});
        }
        next_ = 0;
        computed_ = false;
    }

    void MoveTo(std::uint32_t piece) {
        if (computed_ && piece + 1 == next_) return;
        if (!remembers_) {
            next_ = piece;
        } else if (piece < next_ || piece - next_ > RunUpPieces()) {
            MakeVoices();
            const std::uint32_t begin = piece - std::min(piece, RunUpPieces());
            next_ = begin - begin % stepPieces_;
        }
        while (next_ <= piece) Compute(next_++);
        computed_ = true;
    }

    std::uint32_t RunUpPieces() const {
        return kRunUpSeconds * sound_.GetSamplesPerSecond() / pieceFrames_ + stepPieces_;
    }

    void Compute(std::uint32_t number) {
        const std::uint32_t first = number * pieceFrames_;
        const std::uint32_t frames = std::min(pieceFrames_, range_.Frames() - first);
        for (const Voice& voice : voices_) {
            const std::uint32_t history = voice.processor->HistoryFrames();
            const std::size_t each = std::size_t{history} + frames;
            EffectPiece piece{first, frames, {}};
            for (unsigned i = 0; i < voice.slots; ++i)
                piece.channels[voice.firstSlot + i] = {samples_.data() + i * each, each};
            PieceInput{effect_.traits, sound_, range_, history}.Load(piece, voice.firstSlot,
                                                                     voice.slots);
            voice.processor->Process(piece);
            for (unsigned i = 0; i < voice.slots; ++i)
                Keep(voice.firstSlot + i, piece.channels[voice.firstSlot + i].last(frames));
        }
    }

    void Keep(unsigned slot, std::span<float> samples) {
        shares_.Convert(samples);
        const bool mono = sound_.GetChannels() == 1;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            pairs_[2 * i + slot] = samples[i];
            if (mono) pairs_[2 * i + 1] = samples[i];
        }
    }

    const Effect& effect_;
    const Sound& sound_;
    FrameRange range_;
    std::vector<double> values_;
    bool remembers_;
    SharesOf shares_;
    std::vector<Voice> voices_;
    std::uint32_t pieceFrames_ = 0;
    std::uint32_t stepPieces_ = 1;
    std::vector<float> samples_;
    std::vector<float> pairs_;  // of the piece before the next one
    std::uint32_t next_ = 0;
    bool computed_ = false;
};

}  // namespace

const char* LiveRefusal(const Effect& effect, const Sound& sound) {
    if (effect.range.count)
        return "It changes how long the sound is: that can be previewed, but not heard live.";
    if (!effect.make)
        return "It needs the whole range at once: that can be previewed, but not heard live.";
    return sound.GetChannels() == 1 ? effect.traits.monoRefusal : nullptr;
}

const char* LiveNote(const Effect& effect) {
    return effect.traits.peak == PeakRule::kNone
               ? nullptr
               : "Live holds at full scale: the result may differ in level.";
}

std::unique_ptr<LiveRenderer> LiveEffect::MakeLatest() {
    std::vector<double>* const values = values_.Take();
    if (!values) return nullptr;
    return std::make_unique<ProcessedRange>(effect_, HeardSound(), HeardFrames(),
                                            std::move(*values));
}

}  // namespace sonavel
