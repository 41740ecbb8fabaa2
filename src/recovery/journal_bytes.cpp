#include "recovery/journal_bytes.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "codec/wire_bytes.h"
#include "platform/file_identity.h"
#include "recovery/crc32.h"

namespace sonavel::recovery {
namespace {

constexpr std::uint32_t kMark = 0x4A764E53;  // "SNvJ"
constexpr std::uint32_t kMostRecordBytes = std::uint32_t{1} << 30;
constexpr std::size_t kPieceBytes = std::size_t{1} << 20;
// The checksum is the head's last number and covers what stands before it.
constexpr std::size_t kCheckedHeadBytes = kHeadBytes - 4;

}  // namespace

RecordHead MakeHead(std::uint32_t number, std::uint32_t type, std::span<const std::uint8_t> record,
                    std::span<const std::uint8_t> samples) {
    wire::Packer packer;
    packer.U32(kMark).U32(number).U32(type).U32(static_cast<std::uint32_t>(record.size()));
    packer.U64(samples.size()).U32(0);
    std::uint32_t checksum = Crc32(packer.Done());
    checksum = Crc32(samples, Crc32(record, checksum));
    packer.U32(checksum);
    RecordHead head{};
    std::ranges::copy(packer.Done(), head.begin());
    return head;
}

bool JournalReader::Open(const std::filesystem::path& path) {
    file_ = FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    const auto identity = file_.IsOpen() ? IdentityOfFile(file_.Get()) : std::nullopt;
    fileBytes_ = identity ? identity->sizeBytes : 0;
    return identity.has_value();
}

bool JournalReader::Read(std::span<std::uint8_t> to) {
    while (!to.empty()) {
        const ssize_t got = pread(file_.Get(), to.data(), to.size(), static_cast<off_t>(position_));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        position_ += static_cast<std::uint64_t>(got);
        to = to.subspan(static_cast<std::size_t>(got));
    }
    return true;
}

std::optional<JournalReader::Lengths> JournalReader::ReadHead(RecordHead& head) {
    position_ = goodBytes_;
    if (fileBytes_ - goodBytes_ < kHeadBytes || !Read(head)) return std::nullopt;
    wire::Parser parser(head);
    const bool expected = parser.U32() == kMark && parser.U32() == number_;
    Lengths lengths;
    lengths.type = parser.U32();
    lengths.recordBytes = parser.U32();
    lengths.sampleBytes = parser.U64();
    parser.U32();
    lengths.checksum = parser.U32();
    const std::uint64_t left = fileBytes_ - position_;
    const bool fits = lengths.recordBytes <= std::min<std::uint64_t>(left, kMostRecordBytes) &&
                      lengths.sampleBytes <= left - lengths.recordBytes;
    return expected && fits ? std::optional(lengths) : std::nullopt;
}

bool JournalReader::ReadSamples(std::uint64_t bytes, Samples samples, const PieceWatch& watch,
                                std::uint32_t& checksum) {
    const bool loads = samples == Samples::kLoad;
    SoundBuffer piece;
    samples_.FreeBuffer();
    if (bytes == 0) return true;
    SoundBuffer& target = loads ? samples_ : piece;
    if (!target.AllocBuffer(loads ? bytes : std::min<std::uint64_t>(bytes, kPieceBytes))) {
        lacksMemory_ = true;
        return false;
    }
    for (std::uint64_t done = 0; done < bytes;) {
        const std::size_t count = std::min<std::uint64_t>(bytes - done, kPieceBytes);
        const std::span<std::uint8_t> room = target.Bytes().subspan(loads ? done : 0, count);
        if (watch(ShareRead()) == Onward::kStop || !Read(room)) return false;
        checksum = Crc32(room, checksum);
        done += count;
    }
    return true;
}

std::optional<JournalRecord> JournalReader::ReadBody(const Lengths& lengths, Samples samples,
                                                     const PieceWatch& watch,
                                                     std::uint32_t checksum) try {
    record_.resize(lengths.recordBytes);
    if (!Read(record_)) return std::nullopt;
    checksum = Crc32(record_, checksum);
    if (!ReadSamples(lengths.sampleBytes, samples, watch, checksum)) return std::nullopt;
    if (checksum != lengths.checksum) return std::nullopt;
    std::optional<JournalRecord> record = ParseRecord(lengths.type, record_);
    return record && SampleBytesOf(*record) == lengths.sampleBytes ? record : std::nullopt;
} catch (const std::bad_alloc&) {
    lacksMemory_ = true;
    return std::nullopt;
}

std::optional<JournalRecord> JournalReader::Next(Samples samples, const PieceWatch& watch) {
    RecordHead head;
    const std::optional<Lengths> lengths = ReadHead(head);
    if (!lengths) return std::nullopt;
    const std::uint32_t headChecksum = Crc32(std::span(head).first(kCheckedHeadBytes));
    std::optional<JournalRecord> record = ReadBody(*lengths, samples, watch, headChecksum);
    if (!record) return std::nullopt;
    goodBytes_ = position_;
    ++number_;
    return record;
}

namespace {

// What stands at the start of these bytes, when it is a whole record of a name.
std::optional<NameRecord> NameAt(std::span<const std::uint8_t> bytes) try {
    if (bytes.size() < kHeadBytes) return std::nullopt;
    wire::Parser parser(bytes.first(kHeadBytes));
    if (parser.U32() != kMark) return std::nullopt;
    const std::uint32_t number = parser.U32(), type = parser.U32(), length = parser.U32();
    if (type != TypeOf(NameRecord()) || parser.U64() != 0 || length > bytes.size() - kHeadBytes)
        return std::nullopt;
    const auto body = bytes.subspan(kHeadBytes, length);
    const RecordHead head = MakeHead(number, type, body, {});
    if (!std::ranges::equal(head, bytes.first(kHeadBytes))) return std::nullopt;
    auto record = ParseRecord(type, body);
    return record ? std::optional(std::get<NameRecord>(std::move(*record))) : std::nullopt;
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::optional<NameRecord> NameIn(std::span<const std::uint8_t> bytes) {
    const auto isMark = [&](std::size_t at) {
        return bytes[at] == (kMark & 0xFF) && bytes[at + 1] == ((kMark >> 8) & 0xFF);
    };
    for (std::size_t at = 0; at + kHeadBytes <= bytes.size(); ++at)
        if (isMark(at))
            if (auto name = NameAt(bytes.subspan(at))) return name;
    return std::nullopt;
}

}  // namespace

std::optional<NameRecord> FindNameRecord(const std::filesystem::path& path) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    const auto identity = file.IsOpen() ? IdentityOfFile(file.Get()) : std::nullopt;
    SoundBuffer bytes;
    if (!identity || !bytes.AllocBuffer(kPieceBytes)) return std::nullopt;
    const std::uint64_t size = identity->sizeBytes;
    for (const std::uint64_t at : {std::uint64_t{0}, size > kPieceBytes ? size - kPieceBytes : 0}) {
        const ssize_t got = pread(file.Get(), bytes.Data(), kPieceBytes, static_cast<off_t>(at));
        if (got <= 0) continue;
        if (auto name = NameIn(bytes.Bytes().first(static_cast<std::size_t>(got)))) return name;
    }
    return std::nullopt;
}

}  // namespace sonavel::recovery
