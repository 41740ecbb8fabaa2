#include "recovery/journal_record.h"

#include <bit>

#include "codec/wire_bytes.h"
#include "codec/wire_values.h"
#include "sound/sound.h"

namespace sonavel::recovery {
namespace {

using wire::Packer;
using wire::Parser;

constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kMostPathBytes = 65536;
constexpr std::size_t kMostNameBytes = 65536;
constexpr std::uint32_t kMostMarkersRead = 10'000'000;
constexpr std::uint32_t kMostTagsRead = 100'000;
constexpr std::uint32_t kMostChannelsRead = 1024;
constexpr std::size_t kMostDescriptionBytes = 65536;
constexpr std::uint32_t kMostLossesRead = 1000;
constexpr std::uint32_t kMostChunksRead = 100'000;

enum Type : std::uint32_t { kBase = 1, kName, kChange, kStep, kTags, kOrigin };

// --- Packing

void Pack(Packer& packer, const PcmFormat& format) {
    packer.U32(format.formatTag).U32(format.channels).U32(format.samplesPerSecond);
    packer.U32(format.averageBytesPerSecond).U32(format.blockAlign).U32(format.bitsPerSample);
}

void Pack(Packer& packer, const Marker& marker) {
    packer.U32(marker.id).U32(marker.position).U32(marker.chunkId).U32(marker.chunkStart);
    packer.U32(marker.blockStart).U32(marker.sampleOffset).U32(marker.labelId);
    packer.Text(marker.name, kMostNameBytes).U32(marker.textId).U32(marker.length);
    packer.U32(marker.purpose).U32(marker.countryAndLanguage).U32(marker.dialectAndCodePage);
}

void Pack(Packer& packer, const MarkerList& markers) {
    packer.U32(static_cast<std::uint32_t>(markers.Count()));
    for (const Marker& marker : markers.All()) Pack(packer, marker);
}

void Pack(Packer& packer, const ImportChoice& choice) {
    packer.U32(static_cast<std::uint32_t>(choice.depth));
    packer.U32(static_cast<std::uint32_t>(choice.channels));
    packer.U32(choice.matrix ? static_cast<std::uint32_t>(choice.matrix->rows.size()) : 0);
    if (!choice.matrix) return;
    for (const auto& row : choice.matrix->rows) {
        packer.U32(static_cast<std::uint32_t>(row.size()));
        for (const float share : row) packer.U32(std::bit_cast<std::uint32_t>(share));
    }
}

void Pack(Packer& packer, const FileIdentity& identity) {
    packer.U64(identity.sizeBytes).U64(static_cast<std::uint64_t>(identity.changedNs));
    packer.U64(identity.inode).U64(identity.device);
}

void Pack(Packer& packer, const FileOrigin& file) {
    packer.Text(file.path.native(), kMostPathBytes);
    Pack(packer, file.identity);
    packer.U32(file.import ? 1 : 0);
    if (file.import) Pack(packer, *file.import);
}

void Pack(Packer& packer, const BaseRecord& base) {
    packer.U32(kVersion).U32(static_cast<std::uint32_t>(base.kind)).U32(base.frames);
    Pack(packer, base.format);
    if (base.kind == BaseRecord::Kind::kFile) return Pack(packer, base.file.value());
    packer.U64(base.sampleBytes);
    Pack(packer, base.markers);
}

void Pack(Packer& packer, const NameRecord& name) {
    packer.Text(name.path.native(), kMostPathBytes).Text(name.title, kMostNameBytes);
    packer.U32(name.identity ? 1 : 0);
    if (name.identity) Pack(packer, *name.identity);
}

void Pack(Packer& packer, const ChangeRecord& change) {
    packer.U32(static_cast<std::uint32_t>(change.reach));
    packer.U32(static_cast<std::uint32_t>(change.step)).Text(change.name, kMostNameBytes);
    packer.U64(change.startByte).U64(change.bytesBefore).U64(change.sampleBytes);
    Pack(packer, change.format);
    packer.U32(change.framesAfter);
    Pack(packer, change.markers);
}

void Pack(Packer& packer, const StepRecord& step) {
    packer.U32(static_cast<std::uint32_t>(step.way));
    Pack(packer, step.format);
    packer.U32(step.framesAfter);
}

void Pack(Packer& packer, const TagsRecord& tags) {
    packer.U32(static_cast<std::uint32_t>(tags.tags.size()));
    for (const SoundTag& tag : tags.tags)
        packer.Text(tag.key, kMostTagBytes).Text(tag.value, kMostTagBytes);
}

std::string_view AsText(const std::vector<std::uint8_t>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void Pack(Packer& packer, const ForeignChunk& chunk) {
    packer.U32(static_cast<std::uint32_t>(chunk.family)).U32(chunk.id);
    packer.U32(static_cast<std::uint32_t>(chunk.side))
        .Text(AsText(chunk.bytes), kMostTagBytesOfFile);
}

void Pack(Packer& packer, const OriginRecord& record) {
    const ImportOrigin& origin = record.origin;
    packer.Text(AsText(wire::Pack(origin.description)), kMostDescriptionBytes);
    packer.Text(origin.line, kMostNameBytes).U32(static_cast<std::uint32_t>(origin.losses));
    packer.U32(static_cast<std::uint32_t>(origin.taken.size()));
    for (const std::string& loss : origin.taken) packer.Text(loss, kMostNameBytes);
    packer.U32(static_cast<std::uint32_t>(record.chunks.size()));
    for (const ForeignChunk& chunk : record.chunks) Pack(packer, chunk);
}

// --- Parsing

PcmFormat ParseFormat(Parser& parser) {
    constexpr std::uint32_t kMost16 = 0xFFFF;
    PcmFormat format;
    format.formatTag = static_cast<std::uint16_t>(parser.U32UpTo(kMost16));
    format.channels = static_cast<std::uint16_t>(parser.U32UpTo(kMost16));
    format.samplesPerSecond = parser.U32();
    format.averageBytesPerSecond = parser.U32();
    format.blockAlign = static_cast<std::uint16_t>(parser.U32UpTo(kMost16));
    format.bitsPerSample = static_cast<std::uint16_t>(parser.U32UpTo(kMost16));
    return format;
}

Marker ParseMarker(Parser& parser) {
    Marker marker;
    for (auto* number : {&marker.id, &marker.position, &marker.chunkId, &marker.chunkStart,
                         &marker.blockStart, &marker.sampleOffset, &marker.labelId})
        *number = parser.U32();
    marker.name = parser.Text(kMostNameBytes);
    for (auto* number : {&marker.textId, &marker.length, &marker.purpose,
                         &marker.countryAndLanguage, &marker.dialectAndCodePage})
        *number = parser.U32();
    return marker;
}

MarkerList ParseMarkers(Parser& parser) {
    MarkerList markers;
    const std::uint32_t count = parser.U32UpTo(kMostMarkersRead);
    // Grows with what is there, not with what the count says.
    for (std::uint32_t i = 0; i < count && parser.IsGood(); ++i)
        markers.All().push_back(ParseMarker(parser));
    return markers;
}

std::vector<float> ParseShares(Parser& parser) {
    std::vector<float> shares(parser.U32UpTo(kMostChannelsRead));
    for (float& share : shares) share = std::bit_cast<float>(parser.U32());
    return shares;
}

ImportChoice ParseImport(Parser& parser) {
    ImportChoice choice;
    choice.depth =
        static_cast<ImportDepth>(parser.U32UpTo(static_cast<unsigned>(ImportDepth::kRoundTo16)));
    choice.channels =
        static_cast<ImportChannels>(parser.U32UpTo(static_cast<unsigned>(ImportChannels::kRight)));
    const std::uint32_t rows = parser.U32UpTo(2);
    if (rows > 0) choice.matrix.emplace();
    for (std::uint32_t i = 0; i < rows; ++i) choice.matrix->rows.push_back(ParseShares(parser));
    return choice;
}

FileIdentity ParseIdentity(Parser& parser) {
    FileIdentity identity;
    identity.sizeBytes = parser.U64();
    identity.changedNs = static_cast<std::int64_t>(parser.U64());
    identity.inode = parser.U64();
    identity.device = parser.U64();
    return identity;
}

FileOrigin ParseFile(Parser& parser) {
    FileOrigin file;
    file.path = parser.Text(kMostPathBytes);
    file.identity = ParseIdentity(parser);
    if (parser.U32UpTo(1) == 1) file.import = ParseImport(parser);
    return file;
}

// An older or newer program's records are left to that program.
BaseRecord ParseBase(Parser& parser, bool& known) {
    BaseRecord base;
    known = parser.U32() == kVersion;
    base.kind = static_cast<BaseRecord::Kind>(parser.U32UpTo(1));
    base.frames = parser.U32();
    base.format = ParseFormat(parser);
    if (base.kind == BaseRecord::Kind::kFile) {
        base.file = ParseFile(parser);
        return base;
    }
    base.sampleBytes = parser.U64();
    base.markers = ParseMarkers(parser);
    return base;
}

ChangeRecord ParseChange(Parser& parser) {
    ChangeRecord change;
    change.reach =
        static_cast<EditReach>(parser.U32UpTo(static_cast<unsigned>(EditReach::kEverything)));
    change.step = static_cast<ChangeRecord::Step>(parser.U32UpTo(1));
    change.name = parser.Text(kMostNameBytes);
    change.startByte = parser.U64();
    change.bytesBefore = parser.U64();
    change.sampleBytes = parser.U64();
    change.format = ParseFormat(parser);
    change.framesAfter = parser.U32();
    change.markers = ParseMarkers(parser);
    return change;
}

NameRecord ParseName(Parser& parser) {
    NameRecord name;
    name.path = parser.Text(kMostPathBytes);
    name.title = parser.Text(kMostNameBytes);
    if (parser.U32UpTo(1) == 1) name.identity = ParseIdentity(parser);
    return name;
}

StepRecord ParseStep(Parser& parser) {
    StepRecord step;
    step.way = static_cast<StepRecord::Way>(parser.U32UpTo(1));
    step.format = ParseFormat(parser);
    step.framesAfter = parser.U32();
    return step;
}

TagsRecord ParseTags(Parser& parser) {
    TagsRecord tags;
    const std::uint32_t count = parser.U32UpTo(kMostTagsRead);
    for (std::uint32_t i = 0; i < count && parser.IsGood(); ++i) {
        std::string key = parser.Text(kMostTagBytes);
        tags.tags.push_back({std::move(key), parser.Text(kMostTagBytes)});
    }
    return tags;
}

std::span<const std::uint8_t> BytesOfText(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

ForeignChunk ParseChunk(Parser& parser) {
    ForeignChunk chunk;
    chunk.family = static_cast<ChunkFamily>(parser.U32UpTo(1));
    chunk.id = parser.U32();
    chunk.side = static_cast<ChunkSide>(parser.U32UpTo(1));
    const std::string bytes = parser.Text(kMostTagBytesOfFile);
    chunk.bytes.assign(bytes.begin(), bytes.end());
    return chunk;
}

OriginRecord ParseOrigin(Parser& parser, bool& known) {
    OriginRecord record;
    const std::string packed = parser.Text(kMostDescriptionBytes);
    auto description = wire::ParseDescription(BytesOfText(packed));
    known = description.has_value();
    if (known) record.origin.description = *std::move(description);
    record.origin.line = parser.Text(kMostNameBytes);
    record.origin.losses = static_cast<ImportOrigin::Losses>(parser.U32UpTo(1));
    const std::uint32_t losses = parser.U32UpTo(kMostLossesRead);
    for (std::uint32_t i = 0; i < losses && parser.IsGood(); ++i)
        record.origin.taken.push_back(parser.Text(kMostNameBytes));
    const std::uint32_t chunks = parser.U32UpTo(kMostChunksRead);
    for (std::uint32_t i = 0; i < chunks && parser.IsGood(); ++i)
        record.chunks.push_back(ParseChunk(parser));
    return record;
}

std::optional<JournalRecord> ParseByType(std::uint32_t type, Parser& parser) {
    bool known = true;
    switch (type) {
        case kBase: {
            BaseRecord base = ParseBase(parser, known);
            return known ? std::optional<JournalRecord>(std::move(base)) : std::nullopt;
        }
        case kName:
            return ParseName(parser);
        case kChange:
            return ParseChange(parser);
        case kStep:
            return ParseStep(parser);
        case kTags:
            return ParseTags(parser);
        case kOrigin: {
            OriginRecord origin = ParseOrigin(parser, known);
            return known ? std::optional<JournalRecord>(std::move(origin)) : std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

// --- Sense

bool HoldsSamples(const PcmFormat& format, std::uint64_t bytes) {
    return IsEditable(format) && bytes <= MostSoundBytes(format);
}

// Whether a record can be true by itself; whether it fits its sound shows when it is replayed.
struct SenseOf {
    bool operator()(const BaseRecord& base) const {
        if (base.kind == BaseRecord::Kind::kFile) return base.file->path.is_absolute();
        return HoldsSamples(base.format, base.sampleBytes);
    }
    bool operator()(const ChangeRecord& change) const {
        return HoldsSamples(change.format, change.sampleBytes);
    }
    bool operator()(const StepRecord& step) const { return IsEditable(step.format); }
    bool operator()(const NameRecord&) const { return true; }
    bool operator()(const TagsRecord&) const { return true; }
    bool operator()(const OriginRecord&) const { return true; }
};

}  // namespace

std::vector<std::uint8_t> PackRecord(const JournalRecord& record) {
    Packer packer;
    std::visit([&](const auto& one) { Pack(packer, one); }, record);
    return packer.Done();
}

std::uint32_t TypeOf(const JournalRecord& record) {
    return static_cast<std::uint32_t>(record.index()) + kBase;
}

std::optional<JournalRecord> ParseRecord(std::uint32_t type, std::span<const std::uint8_t> bytes) {
    Parser parser(bytes);
    std::optional<JournalRecord> record = ParseByType(type, parser);
    if (!record || !parser.IsAtEnd() || !std::visit(SenseOf(), *record)) return std::nullopt;
    return record;
}

std::uint64_t SampleBytesOf(const JournalRecord& record) {
    if (const auto* base = std::get_if<BaseRecord>(&record)) return base->sampleBytes;
    if (const auto* change = std::get_if<ChangeRecord>(&record)) return change->sampleBytes;
    return 0;
}

}  // namespace sonavel::recovery
