#include "codec/client/helper_encoding.h"

#include <algorithm>
#include <new>
#include <vector>

#include "codec/client/codec_texts.h"
#include "codec/client/record_stream.h"
#include "codec/client/watched_child.h"

namespace sonavel {
namespace {

using wire::RecordType;

constexpr std::size_t kPieceBytes = std::size_t{256} << 10;

ChildCommand CommandFor(const CodecSetup& setup, const std::filesystem::path& path,
                        const EncodeRequest& request) {
    ChildCommand command;
    command.program = setup.programs.helper;
    command.arguments = {"encode", path.string()};
    command.input = ChildInput::kPipe;
    command.memoryBytes = setup.limits.helperMemory;
    command.cpuSeconds = SecondsFor(setup.limits, request.frames * request.BytesPerFrame());
    return command;
}

class HelperEncoding {
  public:
    HelperEncoding(WatchedChild& child, const EncodeRequest& request, FrameSource& source)
        : child_(child), request_(request), source_(source) {}

    Outcome Run() {
        Outcome given = Done();
        // When it takes no more, it says why on its own side.
        if (SendHead()) given = SendFrames();
        if (!given) {
            child_.Stop();
            return given;
        }
        child_.CloseInput();
        return TakeAnswer();
    }

  private:
    bool Send(RecordType type, std::span<const std::uint8_t> content) {
        const wire::RecordHead head{type, static_cast<std::uint32_t>(content.size())};
        return child_.Write(wire::Pack(head)) && child_.Write(content);
    }

    bool SendHead() {
        if (!child_.Write(wire::Greeting()) || !Send(RecordType::kRequest, wire::Pack(request_)))
            return false;
        std::size_t bytes = 0;
        for (const SoundTag& tag : request_.tags) {
            bytes += std::min(tag.value.size(), kMostTagBytes);
            if (bytes > kMostTagBytesOfFile) break;
            if (!Send(RecordType::kTag, wire::Pack(tag))) return false;
        }
        return true;
    }

    // Not done only when the source is not.
    Outcome SendFrames() {
        const std::size_t frameBytes = request_.BytesPerFrame();
        const std::uint64_t framesPerPiece = std::max<std::size_t>(1, kPieceBytes / frameBytes);
        std::vector<std::uint8_t> piece(framesPerPiece * frameBytes);
        for (std::uint64_t left = request_.frames; left > 0;) {
            const std::uint64_t frames = std::min(left, framesPerPiece);
            const std::span<std::uint8_t> bytes{piece.data(), frames * frameBytes};
            if (Outcome given = source_.Give(bytes); !given) return given;
            if (!Send(RecordType::kFrames, bytes)) return Done();
            left -= frames;
        }
        DecodedSound end;
        end.frames = request_.frames;
        Send(RecordType::kEnd, wire::Pack(end));
        return Done();
    }

    Outcome TakeAnswer() {
        RecordStream stream(child_, CodecWork::kEncoding);
        const Result<wire::RecordHead> head = stream.Next();
        if (!head) return head.Ended();
        if (Outcome taken = stream.TakeContent(); !taken) return taken;
        if (head->type == RecordType::kFailure) {
            const auto failure = wire::ParseFailure(stream.Content());
            return failure ? OutcomeOf(*failure, CodecWork::kEncoding) : stream.Nonsense();
        }
        const auto end = wire::ParseEnd(stream.Content());
        if (head->type != RecordType::kEnd || !end || end->frames != request_.frames)
            return stream.Nonsense();
        return child_.End();
    }

    WatchedChild& child_;
    const EncodeRequest& request_;
    FrameSource& source_;
};

}  // namespace

Outcome EncodeWithHelper(const CodecSetup& setup, const std::filesystem::path& path,
                         const EncodeRequest& request, FrameSource& source) try {
    WatchedChild child(source, setup.limits, CodecWork::kEncoding);
    if (!child.Start(CommandFor(setup, path, request)))
        return Failed(codec_texts::NeedsProgram("Writing this file", "sonavel-codec"));
    return HelperEncoding(child, request, source).Run();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
