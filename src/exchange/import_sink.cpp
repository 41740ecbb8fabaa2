#include "exchange/import_sink.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

#include "exchange/sample_packing.h"
#include "platform/failure_texts.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

constexpr std::size_t kLeastRoomBytes = std::size_t{4} << 20;

unsigned BitsOf(FrameSamples samples) {
    return static_cast<unsigned>(8 * BytesPerSample(samples));
}

unsigned BitsFor(const ImportChoice& choice, FrameSamples samples) {
    const bool rounds =
        samples == FrameSamples::kFloat32 && choice.depth == ImportDepth::kRoundTo16;
    return rounds ? WordSample::kBits : BitsOf(samples);
}

// What becomes of the channels; nothing where they stay as they are.
std::optional<ChannelMatrix> MatrixFor(const ImportChoice& choice,
                                       const SoundFileDescription& file) {
    if (choice.matrix) return choice.matrix;
    const unsigned first[] = {0}, second[] = {file.channels > 1 ? 1u : 0u};
    switch (choice.channels) {
        case ImportChannels::kKeep:
            break;
        case ImportChannels::kMono:
            if (file.channels == 1) return std::nullopt;
            return MixToMono(file.speakers, file.channels);
        case ImportChannels::kLeft:
            if (file.channels == 1) return std::nullopt;
            return PickChannels(first, file.channels);
        case ImportChannels::kRight:
            if (file.channels == 1) return std::nullopt;
            return PickChannels(second, file.channels);
    }
    if (file.channels <= 2) return std::nullopt;
    return MixToStereo(file.speakers, file.channels);
}

bool Fits(const ChannelMatrix& matrix, unsigned channels) {
    const auto fits = [channels](const std::vector<float>& row) { return row.size() == channels; };
    return (matrix.rows.size() == 1 || matrix.rows.size() == 2) &&
           std::ranges::all_of(matrix.rows, fits);
}

}  // namespace

ImportSink::ImportSink(const ImportChoice& choice, const TransferHost& host) : choice_(choice) {
    if (!host.progress) return;
    window_ = host.progress->CreateProgress("Import Sound");
    window_->SetRange(0, 100);
}

GoOn ImportSink::Watch() {
    return window_ && window_->Poll() ? GoOn::kNo : GoOn::kYes;
}

Outcome ImportSink::Begin(const SoundFileHead& head) {
    head_ = head;
    const SoundFileDescription& file = head.description;
    matrix_ = MatrixFor(choice_, file);
    if (matrix_ && !Fits(*matrix_, file.channels))
        return Failed("The channels that were chosen are not those of the file.");
    const auto channels = matrix_ ? static_cast<unsigned>(matrix_->rows.size())
                                  : static_cast<unsigned>(file.channels);
    format_ = MakeSoundFormat(channels, BitsFor(choice_, file.samples), file.rate);
    if (!IsEditable(format_)) return Failed("The file holds no sound.");
    ReserveAll(file.frames);
    return Done();
}

// A count may lie, so no more than this is taken on its word; and where there is no room for it,
// what comes decides.
void ImportSink::ReserveAll(std::uint64_t frames) {
    constexpr std::uint64_t kMostOnTrust = std::uint64_t{1} << 30;
    const std::uint64_t most = std::min(MostSoundBytes(format_), kMostOnTrust);
    const std::uint64_t reserved = std::min(frames, most / format_.blockAlign);
    static_cast<void>(
        samples_.AllocBuffer(static_cast<std::size_t>(reserved * format_.blockAlign)));
}

// More than is asked for, so that a sound of unknown length is not moved for every piece; pages
// that nothing is written to cost nothing.
bool ImportSink::Reserve(std::size_t bytes) {
    const std::size_t needed = takenBytes_ + bytes;
    if (needed <= samples_.Size()) return true;
    const std::uint64_t most = MostSoundBytes(format_);
    if (needed > most) return false;
    const std::size_t wanted = std::max({needed, takenBytes_ + takenBytes_ / 2, kLeastRoomBytes});
    return samples_.ReAllocBuffer(static_cast<std::size_t>(std::min<std::uint64_t>(wanted, most)));
}

std::span<std::uint8_t> ImportSink::Room(std::size_t bytes) {
    if (!TakesAsTheyAre() || !Reserve(bytes)) return {};
    return samples_.Bytes().subspan(takenBytes_, bytes);
}

Outcome ImportSink::Take(std::span<const std::uint8_t> frames) {
    takenFrames_ += frames.size() / std::max<std::size_t>(head_.description.BytesPerFrame(), 1);
    ShowProgress();
    if (!TakesAsTheyAre()) return Append(Floats(frames));
    if (!Reserve(frames.size())) return Failed(failure::kMemory);
    std::uint8_t* to = samples_.Data() + takenBytes_;
    if (frames.data() != to) std::memcpy(to, frames.data(), frames.size());
    takenBytes_ += frames.size();
    return Done();
}

bool ImportSink::TakesAsTheyAre() const {
    return !matrix_ && format_.bitsPerSample == BitsOf(head_.description.samples);
}

// In the channels of the sound.
std::span<const float> ImportSink::Floats(std::span<const std::uint8_t> frames) {
    const SoundFileDescription& file = head_.description;
    floats_.resize(frames.size() / BytesPerSample(file.samples));
    const std::span<float> floats = floats_;
    PackSamples(frames, file.samples, {.depth = EncodedDepth::kFloat32},
                {reinterpret_cast<std::uint8_t*>(floats.data()), floats.size_bytes()});
    // Bytes of a sound count down from its greatest value, those of a file up.
    if (file.samples == FrameSamples::kUnsigned8)
        std::ranges::transform(floats, floats.begin(), std::negate());
    if (!matrix_) return floats;
    mixed_.resize(floats.size() / file.channels * matrix_->rows.size());
    ApplyMatrix(*matrix_, floats, mixed_);
    return mixed_;
}

Outcome ImportSink::Append(std::span<const float> samples) {
    const std::size_t bytes = samples.size() * (format_.bitsPerSample / 8);
    if (!Reserve(bytes)) return Failed(failure::kMemory);
    takenBytes_ += bytes;
    const std::span<std::uint8_t> taken = samples_.Bytes().first(takenBytes_);
    VisitSampleType(format_.bitsPerSample, [&](auto type) {
        using Type = decltype(type);
        const std::span<typename Type::Stored> to = SamplesOf<Type>(taken);
        if constexpr (kHoldsWholeNumbers<Type>)
            rounder_.Take<Type>(samples, to);
        else
            std::ranges::copy(samples, to.last(samples.size()).begin());
    });
    return Done();
}

void ImportSink::ShowProgress() {
    const SoundFileDescription& file = head_.description;
    if (!window_ || file.counted == FrameCount::kUnknown || file.frames == 0) return;
    const std::uint64_t done = std::min(takenFrames_, file.frames);
    window_->SetPosition(
        static_cast<int>(static_cast<double>(done) * 100 / static_cast<double>(file.frames)));
}

Sound ImportSink::TakeSound() {
    samples_.ReAllocBuffer(takenBytes_);
    return {format_, std::move(samples_)};
}

// What was mixed is another sound, whose rounding takes nothing of the file's.
AllTaken ImportSink::TookAllBits() const {
    const bool wasFloat = head_.description.samples == FrameSamples::kFloat32;
    return wasFloat && !rounder_.AllFit() ? AllTaken::kNo : AllTaken::kYes;
}

}  // namespace sonavel
