// What computes an effect: pieces of float frames in, pieces out. It knows parameters and a format,
// and neither a document nor a window.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

namespace sonavel {

struct EffectState;

// The frames of one piece of a run, if nothing else is said of it.
inline constexpr std::uint32_t kPieceFrames = 4096;

// What a processor is made for.
struct EffectRun {
    std::uint32_t samplesPerSecond;
    unsigned bits;
    unsigned channels;
    std::uint32_t frames;
    EffectState& state;
};

struct EffectPiece {
    std::uint32_t first;   // frames of the run before it
    std::uint32_t frames;  // of its own
    // As many samples of each channel that is computed now, and before them the processor's
    // history; the others are empty.
    std::array<std::span<float>, 2> channels;
};

class EffectProcessor {
  public:
    virtual ~EffectProcessor() = default;

    // Replaces the piece's own frames by the result. Throws std::bad_alloc alone, and nothing where
    // the effect changes the sound piece by piece, which could not be taken back.
    virtual void Process(const EffectPiece& piece) = 0;
    virtual std::uint32_t PieceFrames() const { return kPieceFrames; }
    // Progress is shown at multiples of so many frames.
    virtual std::uint32_t FramesPerStep() const { return 1; }
    // How many frames before each piece it is given; those before the run are silent.
    virtual std::uint32_t HistoryFrames() const { return 0; }
};

// Of the values that the dialog shows for the effect's parameters.
using MakeEffectProcessor = std::unique_ptr<EffectProcessor> (*)(std::span<const double> values,
                                                                 const EffectRun& run);

}  // namespace sonavel
