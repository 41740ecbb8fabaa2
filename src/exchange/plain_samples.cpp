#include "exchange/plain_samples.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "platform/failure_texts.h"
#include "sound/extended_float.h"

namespace sonavel {
namespace {

constexpr std::size_t kPieceBytes = std::size_t{1} << 20;

std::uint64_t NumberAt(const std::uint8_t* from, std::uint32_t bytes, ByteOrder order) {
    std::uint64_t number = 0;
    for (std::uint32_t i = 0; i < bytes; ++i)
        number |= std::uint64_t{from[order == ByteOrder::kBig ? bytes - 1 - i : i]} << (8 * i);
    return number;
}

void UnpackBytes(std::span<const std::uint8_t> from, EightBitZero zero,
                 std::span<std::uint8_t> to) {
    const std::uint8_t flip = zero == EightBitZero::kAt128 ? 0 : 0x80;
    for (std::size_t i = 0; i < to.size(); ++i) to[i] = from[i] ^ flip;
}

void UnpackWords(std::span<const std::uint8_t> from, ByteOrder order, std::span<std::uint8_t> to) {
    if (order == ByteOrder::kLittle) {
        std::memcpy(to.data(), from.data(), to.size());
        return;
    }
    for (std::size_t i = 0; i + 1 < to.size(); i += 2) {
        to[i] = from[i + 1];
        to[i + 1] = from[i];
    }
}

// An integer with its highest bit at the top of 32.
template <std::uint32_t kBytes, ByteOrder kOrder>
float FloatOfInteger(const std::uint8_t* from) {
    constexpr float kUnit = 0x1p-31f;
    const auto top = static_cast<std::uint32_t>(NumberAt(from, kBytes, kOrder))
                     << (32 - 8 * kBytes);
    return static_cast<float>(static_cast<std::int32_t>(top)) * kUnit;
}

template <std::uint32_t kBytes, ByteOrder kOrder>
float FloatOfFloat(const std::uint8_t* from) {
    const std::uint64_t bits = NumberAt(from, kBytes, kOrder);
    if constexpr (kBytes == 8)
        return static_cast<float>(std::bit_cast<double>(bits));
    else
        return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
}

// Returns how many were no finite numbers.
template <std::uint32_t kBytes, class ToFloat>
std::uint64_t UnpackEach(std::span<const std::uint8_t> from, ToFloat toFloat,
                         std::span<std::uint8_t> to) {
    std::uint64_t silenced = 0;
    const std::size_t count = std::min(from.size() / kBytes, to.size() / sizeof(float));
    for (std::size_t i = 0; i < count; ++i) {
        float value = toFloat(&from[i * kBytes]);
        const bool isFinite = std::isfinite(value);
        silenced += isFinite ? 0 : 1;
        value = isFinite ? value : 0;
        std::memcpy(&to[i * sizeof value], &value, sizeof value);
    }
    return silenced;
}

// Integers are finite whatever they are, which spares asking.
template <std::uint32_t kBytes, ByteOrder kOrder>
std::uint64_t UnpackIntegers(std::span<const std::uint8_t> from, std::span<std::uint8_t> to) {
    const std::size_t count = std::min(from.size() / kBytes, to.size() / sizeof(float));
    for (std::size_t i = 0; i < count; ++i) {
        const float value = FloatOfInteger<kBytes, kOrder>(&from[i * kBytes]);
        std::memcpy(&to[i * sizeof value], &value, sizeof value);
    }
    return 0;
}

// Four samples of 24 bits lie in three words; taken so, the compiler converts them side by side.
void UnpackFourSamples(const std::uint8_t* from, std::uint8_t* to) {
    constexpr float kUnit = 0x1p-31f;
    std::uint32_t word[3];
    std::memcpy(word, from, sizeof word);
    const std::uint32_t tops[4] = {word[0] << 8, (word[0] >> 16 & 0xFF00) | word[1] << 16,
                                   (word[1] >> 8 & 0xFFFF00) | word[2] << 24, word[2] & 0xFFFFFF00};
    float values[4];
    for (int i = 0; i < 4; ++i)
        values[i] = static_cast<float>(static_cast<std::int32_t>(tops[i])) * kUnit;
    std::memcpy(to, values, sizeof values);
}

std::uint64_t UnpackLittle24(std::span<const std::uint8_t> from, std::span<std::uint8_t> to) {
    const std::size_t fours = std::min(from.size() / 12, to.size() / 16);
    for (std::size_t i = 0; i < fours; ++i) UnpackFourSamples(&from[12 * i], &to[16 * i]);
    return UnpackIntegers<3, ByteOrder::kLittle>(from.subspan(12 * fours), to.subspan(16 * fours));
}

template <ByteOrder kOrder>
std::uint64_t UnpackFloats(std::span<const std::uint8_t> from, const PlainNumbers& numbers,
                           std::span<std::uint8_t> to) {
    if (numbers.depth == FileDepth::kFloat)
        return numbers.bytes == 8 ? UnpackEach<8>(from, FloatOfFloat<8, kOrder>, to)
                                  : UnpackEach<4>(from, FloatOfFloat<4, kOrder>, to);
    if (numbers.bytes == 4) return UnpackIntegers<4, kOrder>(from, to);
    return kOrder == ByteOrder::kLittle ? UnpackLittle24(from, to)
                                        : UnpackIntegers<3, kOrder>(from, to);
}

bool IsKnown(const PlainNumbers& numbers) {
    if (numbers.depth == FileDepth::kFloat) return numbers.bytes == 4 || numbers.bytes == 8;
    return numbers.bytes >= 1 && numbers.bytes <= 4;
}

FrameSamples SamplesOf(const PlainNumbers& numbers) {
    if (numbers.depth == FileDepth::kFloat || numbers.bytes > 2) return FrameSamples::kFloat32;
    return numbers.bytes == 1 ? FrameSamples::kUnsigned8 : FrameSamples::kSigned16;
}

// What a program writes that does not know the size yet promises nothing.
bool IsOpenEnded(std::uint64_t statedBytes) {
    return statedBytes >= 0x7FFFF000 && statedBytes <= 0xFFFFFFFF;
}

// Checks what was found, and counts the frames of the chunk that holds them.
std::optional<PlainSound> Settle(PlainSound sound, const ChunkPlace& data,
                                 std::uint64_t bytesBefore) {
    SoundFileDescription& of = sound.description;
    if (!IsKnown(sound.numbers) || of.rate == 0 || of.channels == 0 || of.channels > 1024)
        return std::nullopt;
    const std::uint64_t frameBytes = std::uint64_t{sound.numbers.bytes} * of.channels;
    const auto framesIn = [&](std::uint64_t bytes) {
        return bytes > bytesBefore ? (bytes - bytesBefore) / frameBytes : 0;
    };
    of.depth = sound.numbers.depth;
    of.bits = 8 * sound.numbers.bytes;
    of.samples = SamplesOf(sound.numbers);
    of.counted = FrameCount::kStated;
    of.frames = framesIn(data.sizeBytes);
    sound.dataOffset = data.dataOffset + bytesBefore;
    sound.statedFrames = IsOpenEnded(data.statedBytes) ? 0 : framesIn(data.statedBytes);
    return sound;
}

constexpr std::uint32_t kPcmTag = 1, kFloatTag = 3, kExtensibleTag = 0xFFFE;

// Nothing for a coding, and for samples that do not fill their bytes.
std::optional<PlainNumbers> NumbersOfWave(const ChunkFields& format, ByteOrder order) {
    const bool isExtensible = format.U16(0) == kExtensibleTag;
    const std::uint32_t tag = isExtensible ? format.U16(24) : format.U16(0);
    const std::uint32_t channels = format.U16(2), align = format.U16(12), bits = format.U16(14);
    const bool hasOddDepth = isExtensible && format.U16(18) != 0 && format.U16(18) != bits;
    if ((tag != kPcmTag && tag != kFloatTag) || channels == 0 || bits % 8 != 0 || hasOddDepth ||
        align != channels * (bits / 8))
        return std::nullopt;
    return PlainNumbers{tag == kFloatTag ? FileDepth::kFloat : FileDepth::kInteger, bits / 8, order,
                        EightBitZero::kAt128};
}

void NameWave(ChunkContainer container, SoundFileDescription& description) {
    const bool isRf64 = container == ChunkContainer::kRf64;
    const bool isW64 = container == ChunkContainer::kW64;
    using enum SoundFileKind;
    description.kind = isRf64 ? kRf64 : isW64 ? kW64 : kWav;
    description.format = isRf64 ? "RF64" : isW64 ? "W64" : "WAV";
}

std::optional<PlainSound> FindInWave(RandomBytes& bytes, const ChunkMap& map) {
    const ChunkPlace* format = map.Find(kFormatChunk);
    const ChunkPlace* data = map.Find(kDataChunk);
    if (!format || !data) return std::nullopt;
    const auto content =
        bytes.Part(format->dataOffset, std::min<std::uint64_t>(format->sizeBytes, 40));
    const ChunkFields fields(content, map.Order());
    const auto numbers = NumbersOfWave(fields, map.Order());
    if (!numbers) return std::nullopt;
    PlainSound sound;
    NameWave(map.container, sound.description);
    sound.description.channels = fields.U16(2);
    sound.description.rate = fields.U32(4);
    if (fields.U16(0) == kExtensibleTag)
        sound.description.speakers = SpeakersOfMask(fields.U32(20), sound.description.channels);
    sound.numbers = *numbers;
    return Settle(std::move(sound), *data, 0);
}

// How the types of AIFC files name plain numbers; nothing for codings.
std::optional<PlainNumbers> NumbersOfType(FourCc type, std::uint32_t bits) {
    const std::uint32_t bytes = bits / 8;
    switch (type) {
        case MakeFourCc("NONE"):
        case MakeFourCc("twos"):
            return PlainNumbers{FileDepth::kInteger, bytes, ByteOrder::kBig, EightBitZero::kAt0};
        case MakeFourCc("sowt"):
            return PlainNumbers{FileDepth::kInteger, bytes, ByteOrder::kLittle, EightBitZero::kAt0};
        case MakeFourCc("fl32"):
        case MakeFourCc("FL32"):
            return PlainNumbers{FileDepth::kFloat, 4, ByteOrder::kBig, EightBitZero::kAt0};
        case MakeFourCc("fl64"):
        case MakeFourCc("FL64"):
            return PlainNumbers{FileDepth::kFloat, 8, ByteOrder::kBig, EightBitZero::kAt0};
        default:
            return std::nullopt;
    }
}

std::uint32_t RateOfExtended(std::span<const std::uint8_t> bytes) {
    ExtendedFloat extended{};
    std::ranges::copy(bytes.first(std::min(bytes.size(), extended.size())), extended.begin());
    const double rate = DoubleFromExtended(extended);
    return rate >= 1 && rate <= 0x7FFFFFFF ? static_cast<std::uint32_t>(std::lround(rate)) : 0;
}

std::optional<PlainSound> FindInAiff(RandomBytes& bytes, const ChunkMap& map) {
    const ChunkPlace* common = map.Find(MakeFourCc("COMM"));
    const ChunkPlace* data = map.Find(MakeFourCc("SSND"));
    if (!common || !data) return std::nullopt;
    const std::vector<std::uint8_t> content = bytes.Part(common->dataOffset, 22);
    const ChunkFields fields(content, ByteOrder::kBig);
    const bool hasType = common->sizeBytes >= 22;
    const auto numbers = NumbersOfType(hasType ? fields.Id(18) : MakeFourCc("NONE"), fields.U16(6));
    if (!numbers || fields.U16(6) % 8 != 0) return std::nullopt;
    PlainSound sound;
    sound.description.kind = SoundFileKind::kAiff;
    sound.description.format = "AIFF";
    sound.description.channels = fields.U16(0);
    sound.description.rate = RateOfExtended(fields.Bytes(8, 10));
    sound.numbers = *numbers;
    const std::vector<std::uint8_t> head = bytes.Part(data->dataOffset, 8);
    const std::uint32_t offset = ChunkFields(head, ByteOrder::kBig).U32(0);
    auto settled = Settle(std::move(sound), *data, std::uint64_t{8} + offset);
    // Fewer than there is room for; none where the writer did not know.
    const std::uint32_t counted = fields.U32(2);
    if (settled && counted != 0 && counted < settled->description.frames)
        settled->description.frames = settled->statedFrames = counted;
    return settled;
}

// Where the sink offers no memory for a piece, this does.
std::span<std::uint8_t> RoomFor(std::size_t bytes, FrameSink& sink,
                                std::vector<std::uint8_t>& own) {
    const std::span<std::uint8_t> room = sink.Room(bytes);
    if (room.size() == bytes) return room;
    own.resize(bytes);
    return own;
}

}  // namespace

std::optional<PlainSound> FindPlainSound(RandomBytes& bytes, const ChunkMap& map) {
    if (map.container == ChunkContainer::kNone) return std::nullopt;
    return map.container == ChunkContainer::kAiff ? FindInAiff(bytes, map) : FindInWave(bytes, map);
}

std::uint64_t UnpackSamples(std::span<const std::uint8_t> from, const PlainNumbers& numbers,
                            std::span<std::uint8_t> to) {
    switch (SamplesOf(numbers)) {
        case FrameSamples::kUnsigned8:
            UnpackBytes(from, numbers.zero, to);
            return 0;
        case FrameSamples::kSigned16:
            UnpackWords(from, numbers.order, to);
            return 0;
        case FrameSamples::kFloat32:
            break;
    }
    return numbers.order == ByteOrder::kBig ? UnpackFloats<ByteOrder::kBig>(from, numbers, to)
                                            : UnpackFloats<ByteOrder::kLittle>(from, numbers, to);
}

Result<DecodedSound> ReadPlainSound(RandomBytes& bytes, const PlainSound& sound, FrameSink& sink) {
    if (Outcome begun = sink.Begin({sound.description, {}, {}}); !begun) return begun;
    const std::size_t fileFrame = std::size_t{sound.numbers.bytes} * sound.description.channels;
    const std::size_t frame = sound.description.BytesPerFrame();
    const std::size_t pieceFrames = std::max<std::size_t>(kPieceBytes / fileFrame, 1);
    std::vector<std::uint8_t> packed(pieceFrames * fileFrame), own;
    DecodedSound end;
    while (end.frames < sound.description.frames) {
        if (sink.Watch() == GoOn::kNo) return Cancelled();
        const auto frames = static_cast<std::size_t>(
            std::min<std::uint64_t>(pieceFrames, sound.description.frames - end.frames));
        const auto wanted = std::span(packed).first(frames * fileFrame);
        if (bytes.ReadAt(sound.dataOffset + end.frames * fileFrame, wanted) < wanted.size())
            return Failed(failure::kReadData);
        const auto room = RoomFor(frames * frame, sink, own);
        end.silencedSamples += UnpackSamples(wanted, sound.numbers, room);
        if (Outcome taken = sink.Take(room); !taken) return taken;
        end.frames += frames;
    }
    if (sound.statedFrames > end.frames) {
        end.promisedFrames = sound.statedFrames;
        end.condition = SoundCondition::kCutShort;
    }
    return end;
}

}  // namespace sonavel
