#include "exchange/id3_tags.h"

#include <algorithm>
#include <string>
#include <vector>

#include "exchange/chunk_map.h"
#include "exchange/foreign_text.h"
#include "exchange/tag_names.h"

namespace sonavel {
namespace {

constexpr std::size_t kHeaderBytes = 10;
constexpr std::size_t kVersion1Bytes = 128;
constexpr std::uint32_t kUnsynchronised = 0x80;
constexpr std::uint32_t kExtendedHeader = 0x40;
constexpr std::uint32_t kFrameDataLength = 0x01;
constexpr std::uint32_t kFrameUnsynchronised = 0x02;
constexpr std::uint32_t kFrameEncodedMask2_3 = 0xC0;
constexpr std::uint32_t kFrameEncodedMask2_4 = 0x0C;
constexpr std::string_view kCut = "The ID3 tag is cut short.";

using Bytes = std::vector<std::uint8_t>;

std::string_view AsText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Seven bits a byte.
std::uint32_t SyncSafe(const ChunkFields& fields, std::size_t at) {
    return fields.U8(at) << 21 | (fields.U8(at + 1) & 0x7F) << 14 |
           (fields.U8(at + 2) & 0x7F) << 7 | (fields.U8(at + 3) & 0x7F);
}

Bytes WithoutStuffing(std::span<const std::uint8_t> bytes) {
    Bytes plain;
    plain.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        plain.push_back(bytes[i]);
        if (bytes[i] == 0xFF && i + 1 < bytes.size() && bytes[i + 1] == 0) ++i;
    }
    return plain;
}

bool IsWide(std::uint32_t coding) {
    return coding == 1 || coding == 2;
}

std::string Decoded(std::uint32_t coding, std::span<const std::uint8_t> bytes) {
    if (!IsWide(coding)) return Utf8FromUnknown(bytes);
    return Utf8FromUtf16(bytes, coding == 2 ? Utf16Order::kBig : Utf16Order::kLittle);
}

// What stands behind the first text and its end.
std::span<const std::uint8_t> BehindText(std::uint32_t coding,
                                         std::span<const std::uint8_t> bytes) {
    const std::size_t step = IsWide(coding) ? 2 : 1;
    for (std::size_t at = 0; at + step <= bytes.size(); at += step)
        if (bytes[at] == 0 && bytes[at + step - 1] == 0) return bytes.subspan(at + step);
    return {};
}

constexpr std::string_view kNamedText = "TXXX";

bool IsText(std::string_view frame) {
    return KeyOfId3(frame) || (frame.size() == 4 && frame.starts_with('T'));
}

struct Id3Frame {
    std::string name;
    Bytes content;
};

// Reads the frames of a tag one by one; a chapter holds frames, too.
class Id3Frames {
  public:
    Id3Frames(std::span<const std::uint8_t> bytes, std::uint32_t version)
        : bytes_(bytes), version_(version) {}

    // False at the end.
    bool Next(Id3Frame& frame);
    bool IsCut() const { return isCut_; }
    std::uint32_t Version() const { return version_; }

  private:
    std::size_t NameBytes() const { return version_ == 2 ? 3 : 4; }
    std::size_t HeadBytes() const { return version_ == 2 ? 6 : 10; }
    std::uint64_t SizeOf(const ChunkFields& head) const;
    Bytes ContentOf(const ChunkFields& head, std::span<const std::uint8_t> content) const;

    std::span<const std::uint8_t> bytes_;
    std::uint32_t version_;
    bool isCut_ = false;
};

std::uint64_t Id3Frames::SizeOf(const ChunkFields& head) const {
    if (version_ == 2) return head.U8(3) << 16 | head.U8(4) << 8 | head.U8(5);
    if (version_ == 3) return head.U32(4);
    // Some programs write plain numbers into tags of version 2.4.
    const bool isPlain = ((head.U8(4) | head.U8(5) | head.U8(6) | head.U8(7)) & 0x80) != 0;
    return isPlain ? head.U32(4) : SyncSafe(head, 4);
}

// Compressed and encrypted frames have no content that could be read.
Bytes Id3Frames::ContentOf(const ChunkFields& head, std::span<const std::uint8_t> content) const {
    const std::uint32_t flags = version_ == 2 ? 0 : head.U8(9);
    const std::uint32_t encoded = version_ == 3 ? kFrameEncodedMask2_3 : kFrameEncodedMask2_4;
    if ((flags & encoded) != 0) return {};
    if (version_ == 4 && (flags & kFrameDataLength) != 0)
        content = content.subspan(std::min<std::size_t>(4, content.size()));
    if (version_ == 4 && (flags & kFrameUnsynchronised) != 0) return WithoutStuffing(content);
    return {content.begin(), content.end()};
}

bool Id3Frames::Next(Id3Frame& frame) {
    if (bytes_.size() < HeadBytes() || bytes_[0] == 0) return false;
    const ChunkFields head(bytes_, ByteOrder::kBig);
    const std::uint64_t stated = SizeOf(head);
    const std::size_t there = bytes_.size() - HeadBytes();
    isCut_ = isCut_ || stated > there;
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(stated, there));
    frame.name = AsText(bytes_.first(NameBytes()));
    // Pictures and the like are passed over without a copy.
    const bool isWanted = frame.name == "CHAP" || IsText(frame.name);
    frame.content = isWanted ? ContentOf(head, bytes_.subspan(HeadBytes(), size)) : Bytes();
    bytes_ = bytes_.subspan(HeadBytes() + size);
    return true;
}

std::string TextOfFrame(const Id3Frame& frame) {
    if (frame.content.empty()) return {};
    const std::uint32_t coding = frame.content[0];
    std::span<const std::uint8_t> text = std::span(frame.content).subspan(1);
    // A comment has a language and a short description before the text.
    const bool isComment = frame.name.starts_with("COM");
    if (isComment) text = text.subspan(std::min<std::size_t>(3, text.size()));
    if (isComment || frame.name == kNamedText) text = BehindText(coding, text);
    return Decoded(coding, text);
}

// Of a text with a name of its own, that name; else what the frame stands for.
std::string KeyOfText(const Id3Frame& frame) {
    if (frame.name != kNamedText) return KeyOfId3(frame.name).value_or(frame.name);
    if (frame.content.empty()) return {};
    return KeyOfComment(Decoded(frame.content[0], std::span(frame.content).subspan(1)));
}

void AddChapter(const Id3Frame& frame, std::uint32_t version, std::uint32_t rate,
                ExtrasKeeper& keeper) {
    const auto times = BehindText(0, frame.content);
    if (times.size() < 16 || rate == 0) return;
    const ChunkFields fields(times, ByteOrder::kBig);
    const auto frameOf = [&](std::uint64_t ms) { return (ms * rate + 500) / 1000; };
    SoundChapter chapter{frameOf(fields.U32(0)), 0, {}};
    const std::uint64_t end = frameOf(fields.U32(4));
    if (end > chapter.startFrame) chapter.frames = end - chapter.startFrame;
    Id3Frames inner(times.subspan(16), version);
    for (Id3Frame part; inner.Next(part);)
        if (KeyOfId3(part.name) == "title") chapter.name = TextOfFrame(part);
    keeper.AddMarker(std::move(chapter));
}

std::span<const std::uint8_t> BehindExtendedHeader(std::span<const std::uint8_t> body,
                                                   std::uint32_t version) {
    const ChunkFields fields(body, ByteOrder::kBig);
    const std::uint64_t size =
        version == 4 ? SyncSafe(fields, 0) : std::uint64_t{fields.U32(0)} + 4;
    return body.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(size, body.size())));
}

void AddVersion1(const Bytes& tag, ExtrasKeeper& keeper) {
    const ChunkFields fields(tag, ByteOrder::kBig);
    const auto add = [&](const char* key, std::size_t at, std::size_t bytes) {
        keeper.AddTag(key, Utf8FromUnknown(fields.Bytes(at, bytes)));
    };
    add("title", 3, 30);
    add("artist", 33, 30);
    add("album", 63, 30);
    add("date", 93, 4);
    add("comment", 97, 30);
    if (fields.U8(125) == 0 && fields.U8(126) != 0)
        keeper.AddTag("track", std::to_string(fields.U8(126)));
}

void TakeText(const Id3Frame& frame, ExtrasKeeper& keeper, Id3Rest& rest) {
    const std::string key = KeyOfText(frame);
    rest.others = rest.others || keeper.HasTag(key);
    keeper.AddTag(key, TextOfFrame(frame));
}

Id3Rest TakeFrames(Id3Frames& frames, std::uint32_t rate, ExtrasKeeper& keeper) {
    Id3Rest rest;
    for (Id3Frame frame; frames.Next(frame);) {
        if (frame.name == "CHAP")
            AddChapter(frame, frames.Version(), rate, keeper);
        else if (frame.name == "APIC" || frame.name == "PIC")
            rest.pictures = true;
        else if (IsText(frame.name))
            TakeText(frame, keeper, rest);
        else if (frame.name != "CTOC")
            rest.others = true;
    }
    return rest;
}

}  // namespace

Id3Rest AddId3Tags(std::span<const std::uint8_t> bytes, std::uint32_t rate, ExtrasKeeper& keeper) {
    const ChunkFields fields(bytes, ByteOrder::kBig);
    const std::uint32_t version = fields.U8(3), flags = fields.U8(5);
    if (!AsText(bytes).starts_with("ID3") || version < 2 || version > 4) return {};
    const std::uint64_t size = SyncSafe(fields, 6);
    if (bytes.size() < kHeaderBytes + size) keeper.Remark(kCut);
    std::span<const std::uint8_t> body = fields.Bytes(kHeaderBytes, size);
    Bytes plain;
    // Version 2.4 marks the frames one by one.
    if ((flags & kUnsynchronised) != 0 && version < 4) body = plain = WithoutStuffing(body);
    if ((flags & kExtendedHeader) != 0 && version > 2) body = BehindExtendedHeader(body, version);
    Id3Frames frames(body, version);
    const Id3Rest rest = TakeFrames(frames, rate, keeper);
    if (frames.IsCut()) keeper.Remark(kCut);
    return rest;
}

std::uint64_t BytesOfId3(std::span<const std::uint8_t> head) {
    if (head.size() < kHeaderBytes || !AsText(head).starts_with("ID3")) return 0;
    return kHeaderBytes + SyncSafe({head, ByteOrder::kBig}, 6);
}

void ReadMp3Extras(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper) {
    const std::uint64_t size = BytesOfId3(bytes.Part(0, kHeaderBytes));
    if (size > 0) {
        const Bytes tag = bytes.Part(0, std::min<std::uint64_t>(size, kMostTagBytesOfFile));
        const Id3Rest rest = AddId3Tags(tag, rate, keeper);
        if (rest.pictures) keeper.PassOverPicture();
        if (rest.others) keeper.Remark("Parts of the ID3 tag are left out.");
    }
    if (bytes.Size() < kVersion1Bytes) return;
    const Bytes tail = bytes.Part(bytes.Size() - kVersion1Bytes, kVersion1Bytes);
    if (AsText(tail).starts_with("TAG")) AddVersion1(tail, keeper);
}

}  // namespace sonavel
