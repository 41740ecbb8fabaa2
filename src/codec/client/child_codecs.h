// The codec service by child processes: the codec program for what it knows, ffmpeg for the rest.
#pragma once

#include "codec/client/codec_setup.h"
#include "codec/decode_extent.h"
#include "sound/sound_codecs.h"
#include "spatial/measured_responses.h"

namespace sonavel {

class ChildCodecs : public SoundCodecs {
  public:
    ChildCodecs() : ChildCodecs(CodecSetup{FindCodecPrograms(), {}}) {}
    explicit ChildCodecs(CodecSetup setup) : setup_(std::move(setup)) {}

    Result<SoundFileHead> Probe(const std::filesystem::path& path,
                                CodecWatcher& watcher) const override;
    Result<DecodedSound> Decode(const std::filesystem::path& path, FrameSink& sink) const override;
    Outcome Encode(const std::filesystem::path& path, const EncodeRequest& request,
                   FrameSource& source) const override;
    bool CanDecodeWithFfmpeg() const override { return !setup_.programs.ffmpeg.empty(); }

    // The responses of a SOFA file, as they were measured. Fails with a sentence for the person.
    Result<MeasuredResponses> ReadResponses(const std::filesystem::path& path,
                                            CodecWatcher& watcher) const;

  private:
    Result<DecodedSound> DecodeBy(const std::filesystem::path& path, DecodeExtent extent,
                                  FrameSink& sink) const;

    CodecSetup setup_;
};

}  // namespace sonavel
