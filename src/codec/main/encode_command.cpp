#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <new>
#include <string_view>
#include <vector>

#include "codec/main/commands.h"
#include "codec/main/library_file.h"
#include "codec/main/library_formats.h"
#include "codec/main/target_file.h"

namespace sonavel {
namespace {

using wire::FailureCode;
using wire::RecordType;

constexpr std::pair<std::string_view, int> kStrings[] = {
    {"title", SF_STR_TITLE}, {"artist", SF_STR_ARTIST},   {"album", SF_STR_ALBUM},
    {"date", SF_STR_DATE},   {"comment", SF_STR_COMMENT}, {"copyright", SF_STR_COPYRIGHT},
};

LibraryHandle OpenTarget(const EncodeRequest& request, int format, TargetFile& target) {
    SF_INFO info{};
    info.samplerate = static_cast<int>(request.rate);
    info.channels = static_cast<int>(request.channels);
    info.format = format;
    if (sf_format_check(&info) != SF_TRUE) return nullptr;
    LibraryHandle file(target.Open(SFM_WRITE, info));
    if (!file) return nullptr;
    double quality = static_cast<double>(request.quality) / kBestQuality;
    sf_command(file.get(), SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    // A chunk with the date of writing in it would make no two files alike.
    sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    return file;
}

void SetTag(SNDFILE* file, const SoundTag& tag) {
    for (const auto& [key, number] : kStrings)
        if (key == tag.key) sf_set_string(file, number, tag.value.c_str());
}

// Writes pieces of frames in the samples that they come in. Floats become integers here: the
// library's own scale for writing them is not the one that it reads with.
class PieceWriter {
  public:
    PieceWriter(SNDFILE* file, const EncodeRequest& request) : file_(file), request_(request) {}

    // What is wrong with the frames, if anything: they are not whole, or more than were announced,
    // or the encoder does not take them.
    std::optional<FailureCode> Write(std::span<const std::uint8_t> bytes) {
        const std::size_t frameBytes = request_.BytesPerFrame();
        const std::size_t frames = bytes.size() / frameBytes;
        if (bytes.size() % frameBytes != 0 || frames > request_.frames - frames_)
            return FailureCode::kBadCall;
        frames_ += frames;
        const std::size_t samples = frames * request_.channels;
        const bool taken = WriteSamples(bytes.data(), samples) == static_cast<sf_count_t>(samples);
        return taken ? std::nullopt : std::optional(FailureCode::kUnencodable);
    }
    bool IsComplete() const { return frames_ == request_.frames; }

  private:
    bool KeepsFloats() const {
        return request_.depth == EncodedDepth::kFloat32 ||
               request_.kind == SoundFileKind::kOggVorbis ||
               request_.kind == SoundFileKind::kOpus || request_.kind == SoundFileKind::kMp3;
    }

    sf_count_t WriteSamples(const std::uint8_t* bytes, std::size_t samples) {
        const auto count = static_cast<sf_count_t>(samples);
        if (request_.samples == FrameSamples::kFloat32) {
            const auto* floats = reinterpret_cast<const float*>(bytes);
            if (KeepsFloats()) return sf_write_float(file_, floats, count);
            RoundToInts({floats, samples});
            return sf_write_int(file_, ints_.data(), count);
        }
        if (request_.samples == FrameSamples::kSigned16 && request_.depth == EncodedDepth::k8)
            RoundWords(reinterpret_cast<const std::int16_t*>(bytes), samples);
        else if (request_.samples == FrameSamples::kSigned16)
            return sf_write_short(file_, reinterpret_cast<const short*>(bytes), count);
        else
            Widen({bytes, samples});
        return sf_write_short(file_, words_.data(), count);
    }

    // To the depth of the file, left-aligned in 32 bits.
    void RoundToInts(std::span<const float> floats) {
        const int bits = request_.depth == EncodedDepth::k8    ? 8
                         : request_.depth == EncodedDepth::k16 ? 16
                                                               : 24;
        const float full = std::ldexp(1.0f, bits - 1);
        ints_.resize(floats.size());
        for (std::size_t i = 0; i < floats.size(); ++i) {
            const float value = std::clamp(floats[i] * full, -full, full - 1.0f);
            ints_[i] =
                static_cast<int>(std::lrint(std::isnan(value) ? 0.0f : value)) * (1 << (32 - bits));
        }
    }
    void RoundWords(const std::int16_t* words, std::size_t samples) {
        words_.resize(samples);
        for (std::size_t i = 0; i < samples; ++i)
            words_[i] = static_cast<short>(std::min((words[i] + 128) >> 8, 127) * 256);
    }
    void Widen(std::span<const std::uint8_t> bytes) {
        words_.resize(bytes.size());
        for (std::size_t i = 0; i < bytes.size(); ++i)
            words_[i] = static_cast<short>((bytes[i] - 128) * 256);
    }

    SNDFILE* file_;
    const EncodeRequest& request_;
    std::uint64_t frames_ = 0;
    std::vector<int> ints_;
    std::vector<short> words_;
};

std::optional<EncodeRequest> TakeRequest(RecordInput& input) {
    if (!input.TakeGreeting() || input.Next() != RecordType::kRequest) return std::nullopt;
    return wire::ParseRequest(input.Content());
}

std::optional<FailureCode> TakeTag(std::span<const std::uint8_t> content, SNDFILE* file) {
    const auto tag = wire::ParseTag(content);
    if (!tag) return FailureCode::kBadCall;
    SetTag(file, *tag);
    return std::nullopt;
}

// What went wrong while the records were taken; nothing when all frames are written.
std::optional<FailureCode> TakeRecords(RecordInput& input, SNDFILE* file, PieceWriter& writer,
                                       const TargetFile& target) {
    while (const auto type = input.Next()) {
        if (*type == RecordType::kEnd && writer.IsComplete()) return std::nullopt;
        std::optional<FailureCode> wrong = FailureCode::kBadCall;
        if (*type == RecordType::kTag) wrong = TakeTag(input.Content(), file);
        if (*type == RecordType::kFrames) wrong = writer.Write(input.Content());
        if (target.HasFailed()) wrong = FailureCode::kUnwritable;
        if (wrong) return wrong;
    }
    return FailureCode::kBadCall;
}

using Wrong = std::optional<wire::Failure>;

Wrong WriteFrames(RecordInput& input, const EncodeRequest& request, int format,
                  TargetFile& target) {
    LibraryHandle file = OpenTarget(request, format, target);
    if (!file) return {{FailureCode::kUnencodable, sf_strerror(nullptr)}};
    PieceWriter writer(file.get(), request);
    if (const auto code = TakeRecords(input, file.get(), writer, target))
        return {{*code, sf_strerror(file.get())}};
    const int closed = sf_close(file.release());
    if (closed != 0 || !target.Close())
        return {{FailureCode::kUnwritable, sf_error_number(closed)}};
    return std::nullopt;
}

Wrong Encode(const char* path, RecordInput& input, DecodedSound& end) {
    const auto request = TakeRequest(input);
    if (!request) return {{FailureCode::kBadCall, "no request"}};
    const auto format = LibraryFormatFor(request->kind, request->depth);
    if (!format) return {{FailureCode::kUnencodable, "no such depth"}};
    TargetFile target(path);
    if (target.HasFailed()) return {{FailureCode::kUnwritable, target.Reason()}};
    end.frames = request->frames;
    return WriteFrames(input, *request, *format, target);
}

}  // namespace

int EncodeFile(const char* path, RecordInput& input, RecordOutput& output) try {
    DecodedSound end;
    const Wrong wrong = Encode(path, input, end);
    if (wrong)
        output.SendFailure(wrong->code, wrong->text);
    else
        output.Send(RecordType::kEnd, wire::Pack(end));
    return !wrong && output.IsGood() ? 0 : 1;
} catch (const std::bad_alloc&) {
    output.SendFailure(FailureCode::kMemory, "");
    return 1;
}

}  // namespace sonavel
