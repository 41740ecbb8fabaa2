// The service that decodes and encodes sound files of foreign formats. It does so outside of this
// program's memory: whatever happens to a decoder costs its own file, with a message.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/outcome.h"
#include "sound/codec_values.h"

namespace sonavel {

enum class GoOn { kNo, kYes };

// Who waits for a decoder or an encoder.
class CodecWatcher {
  public:
    virtual ~CodecWatcher() = default;

    // Asked many times a second, also while nothing comes. kNo ends the work at once as cancelled.
    virtual GoOn Watch() { return GoOn::kYes; }
};

// Takes what is decoded.
class FrameSink : public CodecWatcher {
  public:
    // Called once, before the frames. What is not done refuses the file and becomes the outcome.
    virtual Outcome Begin(const SoundFileHead& head) = 0;
    // Memory for the next frames, which spares copying them: `bytes` of it or none, aligned for the
    // samples. The Take that follows gets its beginning, as far as it has been filled.
    virtual std::span<std::uint8_t> Room([[maybe_unused]] std::size_t bytes) { return {}; }
    // Whole frames in the samples that the description names, aligned for them, some ten thousand
    // at once. What is not done becomes the outcome.
    virtual Outcome Take(std::span<const std::uint8_t> frames) = 0;
};

// Gives what is to be encoded.
class FrameSource : public CodecWatcher {
  public:
    // Fills `to`, which has room for whole frames, with the frames that follow; it is asked for as
    // many as were announced and no more. What is not done becomes the outcome.
    virtual Outcome Give(std::span<std::uint8_t> to) = 0;
};

class SoundCodecs {
  public:
    virtual ~SoundCodecs() = default;

    // What the file says of itself. Fails with a sentence for the person.
    virtual Result<SoundFileHead> Probe(const std::filesystem::path& path,
                                        CodecWatcher& watcher) const = 0;
    // Hands the frames of the file to the sink. A file that ends early or is damaged is decoded as
    // far as it goes; that it is so stands in the result.
    virtual Result<DecodedSound> Decode(const std::filesystem::path& path,
                                        FrameSink& sink) const = 0;
    // Writes a file beside `path` and renames it over it when it is complete and on the disk.
    virtual Outcome Encode(const std::filesystem::path& path, const EncodeRequest& request,
                           FrameSource& source) const = 0;
    // Whether M4A, WMA, WavPack, G.722 and the sound of films can be decoded too.
    virtual bool CanDecodeWithFfmpeg() const = 0;
};

}  // namespace sonavel
