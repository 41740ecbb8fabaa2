#include "codec/client/helper_decoding.h"

#include <new>
#include <optional>

#include "codec/client/codec_texts.h"
#include "codec/client/record_stream.h"
#include "codec/client/watched_child.h"

namespace sonavel {
namespace {

using wire::RecordType;
using Elsewhere = HelperAnswer::Elsewhere;

ChildCommand CommandFor(const CodecSetup& setup, const std::filesystem::path& path,
                        DecodeExtent extent) {
    ChildCommand command;
    command.program = setup.programs.helper;
    command.arguments = {extent == DecodeExtent::kAll ? "decode" : "probe", path.string()};
    command.memoryBytes = setup.limits.helperMemory;
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    command.cpuSeconds = SecondsFor(setup.limits, error ? 0 : bytes);
    return command;
}

class HelperDecoding {
  public:
    HelperDecoding(WatchedChild& child, FrameSink& sink)
        : child_(child), stream_(child, CodecWork::kDecoding), sink_(sink) {}

    HelperAnswer Run() {
        while (!end_) {
            if (Outcome taken = TakeRecord(); !taken) {
                child_.Stop();
                return {taken, elsewhere_};
            }
        }
        // What it says last counts, however it then ends.
        child_.Stop();
        return {*end_};
    }

  private:
    Outcome TakeRecord() {
        const Result<wire::RecordHead> head = stream_.Next();
        if (!head) return head.Ended();
        if (head->type == RecordType::kFrames) return TakeFrames(head->bytes);
        if (Outcome taken = stream_.TakeContent(); !taken) return taken;
        if (head->type == RecordType::kFailure) return TakeFailure();
        if (described_ == (head->type == RecordType::kDescription)) return stream_.Nonsense();
        switch (head->type) {
            case RecordType::kDescription:
                return TakeDescription();
            case RecordType::kTag:
                return TakeTag();
            case RecordType::kChapter:
                return TakeChapter();
            case RecordType::kEnd:
                return TakeEnd();
            default:
                return stream_.Nonsense();
        }
    }

    Outcome TakeFailure() {
        const auto failure = wire::ParseFailure(stream_.Content());
        if (!failure) return stream_.Nonsense();
        const bool isOfFormat = failure->code == wire::FailureCode::kUnknownFormat ||
                                failure->code == wire::FailureCode::kDamaged;
        if (isOfFormat && !begun_) elsewhere_ = Elsewhere::kMayTry;
        return OutcomeOf(*failure, CodecWork::kDecoding);
    }

    Outcome TakeDescription() {
        auto description = wire::ParseDescription(stream_.Content());
        if (!description) return stream_.Nonsense();
        head_.description = std::move(*description);
        described_ = true;
        return Done();
    }

    Outcome TakeTag() {
        auto tag = wire::ParseTag(stream_.Content());
        if (!tag || begun_ || head_.tags.size() == wire::kMostTags) return stream_.Nonsense();
        tagBytes_ += tag->key.size() + tag->value.size();
        if (tagBytes_ > kMostTagBytesOfFile + wire::kMostNameBytes * wire::kMostTags)
            return stream_.Nonsense();
        head_.tags.push_back(std::move(*tag));
        return Done();
    }

    Outcome TakeChapter() {
        auto chapter = wire::ParseChapter(stream_.Content());
        if (!chapter || begun_ || head_.chapters.size() == wire::kMostChapters)
            return stream_.Nonsense();
        tagBytes_ += chapter->name.size();
        if (tagBytes_ > kMostTagBytesOfFile) return stream_.Nonsense();
        head_.chapters.push_back(std::move(*chapter));
        return Done();
    }

    Outcome Begin() {
        if (begun_) return Done();
        begun_ = true;
        return sink_.Begin(head_);
    }

    Outcome TakeFrames(std::size_t bytes) {
        if (!described_) return stream_.Nonsense();
        const SoundFileDescription& description = head_.description;
        const std::size_t frameBytes = description.BytesPerFrame();
        if (bytes == 0 || bytes % frameBytes != 0) return stream_.Nonsense();
        frames_ += bytes / frameBytes;
        if (description.counted == FrameCount::kStated && frames_ > description.frames)
            return stream_.Nonsense();
        if (Outcome begun = Begin(); !begun) return begun;
        if (Outcome taken = stream_.TakeContent(sink_.Room(bytes)); !taken) return taken;
        return sink_.Take(stream_.Content());
    }

    Outcome TakeEnd() {
        const auto end = wire::ParseEnd(stream_.Content());
        if (!end || end->frames != frames_) return stream_.Nonsense();
        if (Outcome begun = Begin(); !begun) return begun;
        end_ = *end;
        return Done();
    }

    WatchedChild& child_;
    RecordStream stream_;
    FrameSink& sink_;
    SoundFileHead head_;
    std::size_t tagBytes_ = 0;
    std::uint64_t frames_ = 0;
    bool described_ = false;
    bool begun_ = false;
    std::optional<DecodedSound> end_;
    Elsewhere elsewhere_ = Elsewhere::kNo;
};

}  // namespace

HelperAnswer DecodeWithHelper(const CodecSetup& setup, const std::filesystem::path& path,
                              DecodeExtent extent, FrameSink& sink) try {
    WatchedChild child(sink, setup.limits, CodecWork::kDecoding);
    if (!child.Start(CommandFor(setup, path, extent)))
        return {Failed(codec_texts::NeedsProgram("Reading this file", "sonavel-codec"))};
    return HelperDecoding(child, sink).Run();
} catch (const std::bad_alloc&) {
    return {Failed(failure::kMemory)};
}

}  // namespace sonavel
