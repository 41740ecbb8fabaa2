#include "codec/wire_values.h"

namespace sonavel::wire {
namespace {

template <class E>
std::uint32_t Number(E value) {
    return static_cast<std::uint32_t>(value);
}

template <class E>
E Enumerator(Parser& parser, E last) {
    return static_cast<E>(parser.U32UpTo(Number(last)));
}

template <class T>
std::optional<T> WhenAtEnd(const Parser& parser, T value) {
    if (!parser.IsAtEnd()) return std::nullopt;
    return value;
}

bool IsPossible(const SoundFileDescription& of) {
    return of.rate > 0 && of.channels > 0 &&
           (of.speakers.empty() || of.speakers.size() == of.channels);
}

bool IsPossible(const EncodeRequest& of) {
    return of.rate > 0 && of.channels > 0 && of.kind != SoundFileKind::kOther;
}

constexpr std::uint32_t kMostBits = 64;

}  // namespace

std::size_t MostBytes(RecordType type) {
    switch (type) {
        case RecordType::kDescription:
            return 4 * kMostNameBytes + 4 * kMostChannels;
        case RecordType::kTag:
            return kMostTagBytes + 2 * kMostNameBytes;
        case RecordType::kChapter:
            return kMostChapterName + kMostNameBytes;
        case RecordType::kFrames:
            return kMostFrameBytes;
        case RecordType::kEnd:
        case RecordType::kRequest:
        case RecordType::kResponseHead:
            return 64;
        case RecordType::kFailure:
            return 2 * kMostNameBytes;
    }
    return 0;
}

Bytes Greeting() {
    return Packer().U32(kMagic).U32(kVersion).Done();
}

bool IsGreeting(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    return parser.U32() == kMagic && parser.U32() == kVersion && parser.IsAtEnd();
}

Bytes Pack(const RecordHead& head) {
    return Packer().U32(Number(head.type)).U32(head.bytes).Done();
}

std::optional<RecordHead> ParseHead(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    RecordHead head;
    head.type = static_cast<RecordType>(parser.U32());
    head.bytes = parser.U32UpTo(static_cast<std::uint32_t>(MostBytes(head.type)));
    if (MostBytes(head.type) == 0) return std::nullopt;
    return WhenAtEnd(parser, head);
}

Bytes Pack(const SoundFileDescription& description) {
    Packer packer;
    packer.U32(Number(description.kind))
        .Text(description.format, kMostNameBytes)
        .Text(description.coding, kMostNameBytes)
        .U32(Number(description.depth))
        .U32(description.bits)
        .U32(description.rate)
        .U32(description.channels)
        .U32(Number(description.counted))
        .U64(description.frames)
        .U32(Number(description.samples))
        .U32(static_cast<std::uint32_t>(description.speakers.size()));
    for (const Speaker speaker : description.speakers) packer.U32(Number(speaker));
    return packer.Done();
}

std::optional<SoundFileDescription> ParseDescription(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    SoundFileDescription description;
    description.kind = Enumerator(parser, SoundFileKind::kMp3);
    description.format = parser.Text(kMostNameBytes);
    description.coding = parser.Text(kMostNameBytes);
    description.depth = Enumerator(parser, FileDepth::kFloat);
    description.bits = parser.U32UpTo(kMostBits);
    description.rate = parser.U32UpTo(kMostRate);
    description.channels = parser.U32UpTo(kMostChannels);
    description.counted = Enumerator(parser, FrameCount::kStated);
    description.frames = parser.U64UpTo(kMostFrames);
    description.samples = Enumerator(parser, FrameSamples::kFloat32);
    for (std::uint32_t left = parser.U32UpTo(kMostChannels); left > 0; --left)
        description.speakers.push_back(Enumerator(parser, Speaker::kUnknown));
    if (!IsPossible(description)) return std::nullopt;
    return WhenAtEnd(parser, std::move(description));
}

Bytes Pack(const SoundTag& tag) {
    return Packer().Text(tag.key, kMostNameBytes).Text(tag.value, kMostTagBytes).Done();
}

std::optional<SoundTag> ParseTag(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    SoundTag tag;
    tag.key = parser.Text(kMostNameBytes);
    tag.value = parser.Text(kMostTagBytes);
    return WhenAtEnd(parser, std::move(tag));
}

Bytes Pack(const SoundChapter& chapter) {
    return Packer()
        .U64(chapter.startFrame)
        .U64(chapter.frames)
        .Text(chapter.name, kMostChapterName)
        .Done();
}

std::optional<SoundChapter> ParseChapter(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    SoundChapter chapter;
    chapter.startFrame = parser.U64UpTo(kMostFrames);
    chapter.frames = parser.U64UpTo(kMostFrames);
    chapter.name = parser.Text(kMostChapterName);
    return WhenAtEnd(parser, std::move(chapter));
}

Bytes Pack(const DecodedSound& end) {
    return Packer()
        .U64(end.frames)
        .U64(end.promisedFrames)
        .U32(Number(end.condition))
        .U64(end.silencedSamples)
        .Done();
}

std::optional<DecodedSound> ParseEnd(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    DecodedSound end;
    end.frames = parser.U64UpTo(kMostFrames);
    end.promisedFrames = parser.U64UpTo(kMostFrames);
    end.condition = Enumerator(parser, SoundCondition::kDamaged);
    end.silencedSamples = parser.U64();
    return WhenAtEnd(parser, end);
}

Bytes Pack(const Failure& failure) {
    return Packer().U32(Number(failure.code)).Text(failure.text, kMostNameBytes).Done();
}

std::optional<Failure> ParseFailure(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    Failure failure;
    failure.code = Enumerator(parser, FailureCode::kBadCall);
    failure.text = parser.Text(kMostNameBytes);
    if (Number(failure.code) == 0) return std::nullopt;
    return WhenAtEnd(parser, std::move(failure));
}

Bytes Pack(const ResponseHead& head) {
    return Packer().U32(head.rate).U32(head.directions).U32(head.taps).Done();
}

std::optional<ResponseHead> ParseResponseHead(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    ResponseHead head;
    head.rate = parser.U32UpTo(kMostRate);
    head.directions = parser.U32UpTo(kMostDirections);
    head.taps = parser.U32UpTo(kMostTaps);
    if (head.rate == 0 || head.directions == 0 || head.taps == 0) return std::nullopt;
    if (head.Floats() > kMostResponseFloats) return std::nullopt;
    return WhenAtEnd(parser, head);
}

Bytes Pack(const EncodeRequest& request) {
    return Packer()
        .U32(Number(request.kind))
        .U32(Number(request.depth))
        .U32(request.quality)
        .U32(request.rate)
        .U32(request.channels)
        .U64(request.frames)
        .U32(Number(request.samples))
        .Done();
}

std::optional<EncodeRequest> ParseRequest(std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    EncodeRequest request;
    request.kind = Enumerator(parser, SoundFileKind::kMp3);
    request.depth = Enumerator(parser, EncodedDepth::kFloat32);
    request.quality = parser.U32UpTo(kBestQuality);
    request.rate = parser.U32UpTo(kMostRate);
    request.channels = parser.U32UpTo(kMostChannels);
    request.frames = parser.U64UpTo(kMostFrames);
    request.samples = Enumerator(parser, FrameSamples::kFloat32);
    if (!IsPossible(request)) return std::nullopt;
    return WhenAtEnd(parser, std::move(request));
}

}  // namespace sonavel::wire
