#include "exchange/sound_frames.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "exchange/random_bytes.h"
#include "exchange/resampled_frames.h"
#include "exchange/tagged_file.h"
#include "exchange/write_sound_file.h"
#include "platform/commit_beside.h"
#include "platform/failure_texts.h"
#include "platform/replacing_file.h"
#include "sound/file_rates.h"

namespace sonavel {

FrameSamples FrameSamplesOf(const PcmFormat& format) {
    switch (format.bitsPerSample) {
        case 8:
            return FrameSamples::kUnsigned8;
        case 16:
            return FrameSamples::kSigned16;
        default:
            return FrameSamples::kFloat32;
    }
}

SoundFrames::SoundFrames(std::span<const std::uint8_t> frames, std::string_view progressTitle,
                         const TransferHost& host)
    : frames_(frames) {
    if (!host.progress) return;
    window_ = host.progress->CreateProgress(progressTitle);
    window_->SetRange(0, 100);
}

GoOn SoundFrames::Watch() {
    return window_ && window_->Poll() ? GoOn::kNo : GoOn::kYes;
}

Outcome SoundFrames::Give(std::span<std::uint8_t> to) {
    if (to.size() > frames_.size() - given_) return Failed("The sound has no more frames.");
    std::copy_n(frames_.begin() + static_cast<std::ptrdiff_t>(given_), to.size(), to.begin());
    given_ += to.size();
    if (window_)
        window_->SetPosition(static_cast<int>(static_cast<double>(given_) * 100 /
                                              static_cast<double>(frames_.size())));
    return Done();
}

namespace {

// Encodes beside the target and copies from there with tags and chapters, whose frames are those of
// a sound of `rate`.
Outcome EncodeTagged(const std::filesystem::path& path, EncodeRequest request,
                     const SoundExtras& extras, std::uint32_t rate, const SoundCodecs& codecs,
                     FrameSource& frames) {
    ReplacingFile encoded, target;
    if (!encoded.Open(path) || !target.Open(path)) return Failed(failure::kOpenFile);
    request.tags.clear();
    if (Outcome done = codecs.Encode(encoded.TemporaryPath(), request, frames); !done) return done;
    BytesOfFile bytes;
    if (!bytes.Open(encoded.TemporaryPath())) return Failed(failure::kReadData);
    if (Outcome written = WriteTagged(bytes, request.kind, extras, rate, target); !written)
        return written;
    return CommitBeside(
        target, [&] { return frames.Watch() == GoOn::kNo; }, failure::kWriteData);
}

Outcome Encode(const std::filesystem::path& path, const EncodeRequest& request,
               const SoundExtras& extras, std::uint32_t rate, const SoundCodecs& codecs,
               FrameSource& frames) {
    const bool isBare = extras.tags.empty() && extras.markers.empty();
    if (isBare || !IsTaggedHere(request.kind)) return codecs.Encode(path, request, frames);
    return EncodeTagged(path, request, extras, rate, codecs, frames);
}

Outcome EncodeAtKnownRate(const std::filesystem::path& path, const EncodeRequest& request,
                          const SoundExtras& extras, const SoundCodecs& codecs,
                          FrameSource& frames) {
    const std::uint32_t rate = WrittenRate(request.kind, request.rate);
    if (rate == request.rate) return Encode(path, request, extras, rate, codecs, frames);
    ResampledFrames resampled(frames, request, rate);
    return Encode(path, resampled.Request(), extras, request.rate, codecs, resampled);
}

}  // namespace

Outcome WriteForeignFile(const std::filesystem::path& path, const Sound& sound,
                         EncodeRequest request, SoundExtras extras, const SoundCodecs* codecs,
                         const TransferHost& host) try {
    request.rate = sound.GetSamplesPerSecond();
    request.channels = sound.GetChannels();
    request.samples = FrameSamplesOf(sound.GetFormat());
    // A last frame that was cut off is none.
    request.frames = sound.GetDataSize() / request.BytesPerFrame();
    request.tags = extras.tags;
    extras.markers = ChaptersOf(sound.Markers());
    SoundFrames frames(sound.Bytes().first(request.frames * request.BytesPerFrame()), "Save Sound",
                       host);
    if (IsWrittenHere(request.kind)) return WriteSoundFile(path, request, extras, frames);
    if (!codecs) return Failed("Writing this file needs the program sonavel-codec.");
    return EncodeAtKnownRate(path, request, extras, *codecs, frames);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
