#include <algorithm>
#include <new>
#include <vector>

#include "codec/main/commands.h"
#include "codec/main/frame_reader.h"
#include "codec/main/library_file.h"

namespace sonavel {
namespace {

using wire::RecordType;

void SendHead(const LibraryFile& file, const SoundFileDescription& description,
              RecordOutput& output) {
    output.Send(RecordType::kDescription, wire::Pack(description));
    for (const SoundTag& tag : TagsOf(file)) output.Send(RecordType::kTag, wire::Pack(tag));
    for (const SoundChapter& chapter : ChaptersOf(file))
        output.Send(RecordType::kChapter, wire::Pack(chapter));
}

// What can be said before frames are read.
DecodedSound EndForeseen(const LibraryFile& file) {
    DecodedSound end;
    end.promisedFrames = PromisedFrames(file);
    if (end.promisedFrames > 0 || LacksItsEnd(file)) end.condition = SoundCondition::kCutShort;
    return end;
}

// Sends the frames of a file, never more than its description states.
class FrameSender {
  public:
    FrameSender(FrameReader& reader, const SoundFileDescription& description, RecordOutput& output)
        : reader_(reader),
          output_(output),
          frameBytes_(description.BytesPerFrame()),
          left_(description.counted == FrameCount::kStated ? description.frames
                                                           : wire::kMostFrames) {}

    // Returns how many there were.
    std::uint64_t SendAll() {
        const std::uint64_t stated = left_;
        std::vector<std::uint64_t> behind(reader_.KeptCalls());  // what each of the last calls gave
        for (std::size_t call = 0; output_.IsGood(); ++call) {
            output_.WaitUntilRead(behind[call % behind.size()]);
            if (!SendPiece(reader_.Next())) break;
            behind[call % behind.size()] = output_.Sent();
        }
        return stated - left_;
    }

  private:
    bool SendPiece(std::span<const std::uint8_t> piece) {
        const std::uint64_t frames = std::min<std::uint64_t>(piece.size() / frameBytes_, left_);
        left_ -= frames;
        piece = piece.first(frames * frameBytes_);
        const std::size_t recordBytes = WholeFrames(kPieceBytes, frameBytes_);
        for (auto rest = piece; !rest.empty();) {
            const std::size_t bytes = std::min(recordBytes, rest.size());
            output_.SendLasting(rest.first(bytes));
            rest = rest.subspan(bytes);
        }
        return !piece.empty();
    }

    FrameReader& reader_;
    RecordOutput& output_;
    std::size_t frameBytes_;
    std::uint64_t left_;
};

void SendFrames(const char* path, const LibraryFile& file, const SoundFileDescription& description,
                RecordOutput& output, DecodedSound& end) {
    const auto reader = MakeFrameReader(path, file, description);
    end.frames = FrameSender(*reader, description, output).SendAll();
    end.silencedSamples = reader->Silenced();
    if (description.counted == FrameCount::kStated && end.frames < description.frames) {
        end.promisedFrames = std::max(end.promisedFrames, description.frames);
        end.condition = SoundCondition::kCutShort;
    }
    if (reader->HadError()) end.condition = SoundCondition::kDamaged;
}

int Decode(const char* path, const LibraryFile& file, DecodeExtent extent, RecordOutput& output) {
    const SoundFileDescription description = DescribeFile(file);
    if (description.rate == 0 || description.rate > wire::kMostRate || description.channels == 0 ||
        description.channels > wire::kMostChannels) {
        output.SendFailure(wire::FailureCode::kDamaged, "impossible rate or channels");
        return 1;
    }
    DecodedSound end = EndForeseen(file);
    SendHead(file, description, output);
    if (extent == DecodeExtent::kAll) SendFrames(path, file, description, output, end);
    output.Send(RecordType::kEnd, wire::Pack(end));
    return output.IsGood() ? 0 : 1;
}

}  // namespace

int DecodeFile(const char* path, DecodeExtent extent, RecordOutput& output) try {
    const LibraryFile file = OpenLibraryFile(path);
    if (file.handle) return Decode(path, file, extent, output);
    output.SendFailure(file.failure.code, file.failure.text);
    return 1;
} catch (const std::bad_alloc&) {
    output.SendFailure(wire::FailureCode::kMemory, "");
    return 1;
}

}  // namespace sonavel
