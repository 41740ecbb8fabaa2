#include "codec/client/child_codecs.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "codec/client/codec_texts.h"
#include "codec/client/ffmpeg_decoding.h"
#include "codec/client/foreign_formats.h"
#include "codec/client/helper_decoding.h"
#include "codec/client/helper_encoding.h"
#include "codec/client/response_reading.h"
#include "codec/kind_rules.h"
#include "platform/commit_beside.h"
#include "platform/replacing_file.h"

namespace sonavel {

using namespace codec_texts;

std::string codec_texts::NeedsProgram(std::string_view doing, std::string_view program) {
    return std::string(doing) + " needs the program " + std::string(program) +
           ", which is not installed.";
}

namespace {

Outcome CheckReadable(const std::filesystem::path& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return Failed(errno == ENOENT   ? kNoSuchFile
                      : errno == EACCES ? kNotPermitted
                                        : kUnreadable);
    if (!S_ISREG(status.st_mode)) return Failed(kNoRegularFile);
    if (access(path.c_str(), R_OK) != 0) return Failed(kNotPermitted);
    return Done();
}

// What would have helped, where the file was refused for lack of ffmpeg.
Outcome WhatIsMissing(const std::filesystem::path& path, const Outcome& refused) {
    const std::string name(ForeignFormatName(path));
    return name.empty() ? refused : Failed(NeedsProgram("Reading " + name + " files", "ffmpeg"));
}

// A file that begins as one of ffmpeg's and that ffmpeg makes nothing of is damaged; of others the
// codec program has said what is to be said.
Outcome NeitherKnowsIt(const std::filesystem::path& path, const Outcome& refused) {
    return ForeignFormatName(path).empty() ? refused : Failed(kDamaged);
}

// Keeps the head and wants no frames.
class HeadSink : public FrameSink {
  public:
    explicit HeadSink(CodecWatcher& watcher) : watcher_(watcher) {}

    GoOn Watch() override { return watcher_.Watch(); }
    Outcome Begin(const SoundFileHead& of) override {
        head = of;
        return Done();
    }
    Outcome Take(std::span<const std::uint8_t>) override { return Done(); }

    SoundFileHead head;

  private:
    CodecWatcher& watcher_;
};

}  // namespace

Result<DecodedSound> ChildCodecs::DecodeBy(const std::filesystem::path& path, DecodeExtent extent,
                                           FrameSink& sink) const {
    if (Outcome readable = CheckReadable(path); !readable) return readable;
    Outcome refused = Failed(NeedsProgram("Reading this file", "sonavel-codec"));
    if (!setup_.programs.helper.empty()) {
        HelperAnswer answer = DecodeWithHelper(setup_, path, extent, sink);
        if (answer.elsewhere == HelperAnswer::Elsewhere::kNo) return std::move(answer.result);
        refused = answer.result.Ended();
    }
    if (setup_.programs.ffmpeg.empty()) return WhatIsMissing(path, refused);
    Result<DecodedSound> result = DecodeWithFfmpeg(setup_, path, extent, sink);
    if (!result && result.Reason() == kUnknownFormat) return NeitherKnowsIt(path, refused);
    return result;
}

Result<SoundFileHead> ChildCodecs::Probe(const std::filesystem::path& path,
                                         CodecWatcher& watcher) const {
    HeadSink sink(watcher);
    const Result<DecodedSound> decoded = DecodeBy(path, DecodeExtent::kHeadAlone, sink);
    if (!decoded) return decoded.Ended();
    return std::move(sink.head);
}

Result<DecodedSound> ChildCodecs::Decode(const std::filesystem::path& path, FrameSink& sink) const {
    return DecodeBy(path, DecodeExtent::kAll, sink);
}

Result<MeasuredResponses> ChildCodecs::ReadResponses(const std::filesystem::path& path,
                                                     CodecWatcher& watcher) const {
    if (Outcome readable = CheckReadable(path); !readable) return readable;
    return ReadResponsesWithHelper(setup_, path, watcher);
}

Outcome ChildCodecs::Encode(const std::filesystem::path& path, const EncodeRequest& request,
                            FrameSource& source) const {
    if (Outcome encodable = CheckEncodable(request); !encodable) return encodable;
    if (setup_.programs.helper.empty())
        return Failed(NeedsProgram("Writing " + std::string(KindName(request.kind)) + " files",
                                   "sonavel-codec"));
    ReplacingFile file;
    if (!file.Open(path)) return Failed(kUnwritable);
    if (Outcome encoded = EncodeWithHelper(setup_, file.TemporaryPath(), request, source); !encoded)
        return encoded;
    return CommitBeside(
        file, [&] { return source.Watch() == GoOn::kNo; }, kUnwritable);
}

}  // namespace sonavel
