// Tags and chapters of AIFF, FLAC, Ogg and MP3 files.
#include <gmock/gmock.h>

#include "exchange_files.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using testing::IsEmpty;

FileBytes AiffChunkBytes(std::string_view id, const FileBytes& content) {
    FileBytes bytes =
        ByteBuilder().Text(id).Big32(static_cast<std::uint32_t>(content.size())).Bytes() + content;
    if (content.size() % 2 != 0) bytes.push_back(0);
    return bytes;
}

FileBytes MarkBytes(unsigned id, std::uint32_t frame, std::string_view name) {
    FileBytes bytes = ByteBuilder()
                          .Big16(id)
                          .Big32(frame)
                          .Byte(static_cast<unsigned>(name.size()))
                          .Text(name)
                          .Bytes();
    if (bytes.size() % 2 != 0) bytes.push_back(0);
    return bytes;
}

TEST(AiffExtras, MarkersLoopsAndTexts) {
    const FileBytes marks = ByteBuilder().Big16(5).Bytes() + MarkBytes(7, 4, "verse") +
                            MarkBytes(1, 10, "beg loop") + MarkBytes(2, 30, "end loop") +
                            MarkBytes(3, 50, "bridge") + MarkBytes(4, 60, "");
    FileBytes instrument(8);
    instrument = instrument + ByteBuilder().Big16(1).Big16(1).Big16(2).Bytes() +
                 ByteBuilder().Big16(1).Big16(3).Big16(4).Bytes();
    AiffParts parts;
    parts.beforeCommon = AiffChunkBytes("MARK", marks) + AiffChunkBytes("NAME", BytesOf("A song")) +
                         AiffChunkBytes("AUTH", BytesOf("odd")) +
                         AiffChunkBytes("INST", instrument) +
                         AiffChunkBytes("(c) ", BytesOf("2026 us"));
    parts.data = FileBytes(7);
    const SoundExtras extras = ExtrasOf(AiffBytes(parts) + AiffChunkBytes("APPL", {1, 2, 3}));
    // The bridge has a name of its own and stays, though a loop begins there.
    EXPECT_THAT(MarkerTexts(extras),
                ElementsAre("4+0 verse", "10+20 Loop 1", "50+10 Loop 2", "50+0 bridge"));
    EXPECT_THAT(TagTexts(extras), ElementsAre("title=A song", "artist=odd", "copyright=2026 us"));
    ASSERT_EQ(extras.chunks.size(), 2u);
    EXPECT_EQ(extras.chunks[1].bytes, (FileBytes{1, 2, 3}));
    EXPECT_EQ(extras.chunks[1].side, ChunkSide::kBehindSound);
}

FileBytes CommentBlock(const std::vector<std::string>& comments, std::uint32_t count) {
    ByteBuilder block;
    block.Little32(5).Text("maker").Little32(count);
    for (const std::string& comment : comments)
        block.Little32(static_cast<std::uint32_t>(comment.size())).Text(comment);
    return block.Bytes();
}

FileBytes CommentBlock(const std::vector<std::string>& comments) {
    return CommentBlock(comments, static_cast<std::uint32_t>(comments.size()));
}

const std::vector<std::string> kComments = {"TITLE=A song",
                                            "Artist=one",
                                            "ARTIST=two",
                                            "DESCRIPTION=x=y",
                                            "TrackNumber=3",
                                            "CHAPTER002=00:00:02.500",
                                            "CHAPTER002NAME=Two",
                                            "CHAPTER001=00:00:00.0005",
                                            "CHAPTER003NAME=nowhere",
                                            "CHAPTER004=nonsense",
                                            "CHAPTER005=99:59:59.999999999",
                                            "no equals",
                                            "METADATA_BLOCK_PICTURE=AAAA",
                                            "=nameless"};

void ExpectTheComments(const SoundExtras& extras) {
    EXPECT_THAT(TagTexts(extras),
                ElementsAre("title=A song", "artist=one", "comment=x=y", "track=3"));
    EXPECT_THAT(MarkerTexts(extras), ElementsAre("4+0 ", "20000+0 Two", "2880000000+0 "));
}

FileBytes FlacBlock(unsigned type, const FileBytes& content) {
    return ByteBuilder().Byte(type).Byte(0).Big16(static_cast<unsigned>(content.size())).Bytes() +
           content;
}

TEST(VorbisComments, OfFlacFiles) {
    const FileBytes blocks = FlacBlock(0, FileBytes(34)) + FlacBlock(1, FileBytes(9)) +
                             FlacBlock(4 | 0x80, CommentBlock(kComments));
    ExpectTheComments(ExtrasOf(BytesOf("fLaC") + blocks));
    const FileBytes id3 = BytesOf("ID3") + FileBytes{3, 0, 0, 0, 0, 0, 20} + FileBytes(20);
    ExpectTheComments(ExtrasOf(id3 + BytesOf("fLaC") + blocks));
    const FileBytes others = FlacBlock(5, FileBytes(9)) + FlacBlock(0x80 | 6, FileBytes(9));
    EXPECT_THAT(ExtrasOf(BytesOf("fLaC") + FlacBlock(0, FileBytes(34)) + others).remarks.missing,
                ElementsAre("Blocks of unknown kinds are left out.", "A picture is left out."));
}

// Pages of one stream, each with its share of the packets' pieces.
FileBytes PageOf(std::uint32_t stream, const FileBytes& lengths, const FileBytes& content) {
    return ByteBuilder()
               .Text("OggS")
               .Byte(0)
               .Byte(0)
               .Little32(0)
               .Little32(0)
               .Little32(stream)
               .Little32(0)
               .Little32(0)
               .Byte(static_cast<unsigned>(lengths.size()))
               .Bytes() +
           lengths + content;
}

TEST(VorbisComments, OfOggFilesAcrossPagesAndBesideOtherStreams) {
    std::vector<std::string> comments = kComments;
    comments.push_back("LONG=" + std::string(600, 'x'));
    for (const std::string& head :
         {std::string("\x03vorbis"), std::string("OpusTags"), std::string("\x84\0\0\0", 4)}) {
        const FileBytes packet = BytesOf(head) + CommentBlock(comments);
        const auto part = [&](std::size_t from, std::size_t to) {
            return FileBytes(packet.begin() + static_cast<std::ptrdiff_t>(from),
                             packet.begin() + static_cast<std::ptrdiff_t>(to));
        };
        FileBytes lengths((packet.size() - 510) / 255, 255);
        lengths.push_back(static_cast<std::uint8_t>(packet.size() % 255));
        const FileBytes file = PageOf(9, {30}, FileBytes(30)) + PageOf(8, {2}, {1, 2}) +
                               PageOf(9, {255, 255}, part(0, 510)) + PageOf(8, {1}, {1}) +
                               PageOf(9, lengths, part(510, packet.size()));
        SoundExtras extras = ExtrasOf(file);
        ASSERT_EQ(extras.tags.size(), 5u) << head;
        EXPECT_EQ(extras.tags.back().value.size(), 600u);
        extras.tags.pop_back();
        ExpectTheComments(extras);
        EXPECT_THAT(extras.remarks.all,
                    ElementsAre("Further values of a tag are left out.", "A picture is left out."));
    }
}

TEST(VorbisComments, CutListsGiveWhatIsThere) {
    FileBytes block = CommentBlock({"TITLE=A song", "ARTIST=longer"}, 1000);
    block.resize(block.size() - 3);
    const SoundExtras extras = ExtrasOf(BytesOf("fLaC") + FlacBlock(4 | 0x80, block));
    EXPECT_THAT(TagTexts(extras), ElementsAre("title=A song", "artist=lon"));
    EXPECT_THAT(extras.remarks.all, ElementsAre("The list of tags is cut short."));
}

FileBytes Id3Frame(std::string_view name, const FileBytes& content) {
    return ByteBuilder()
               .Text(name)
               .Big32(static_cast<std::uint32_t>(content.size()))
               .Big16(0)
               .Bytes() +
           content;
}

FileBytes Id3Tag(unsigned version, unsigned flags, const FileBytes& frames) {
    return ByteBuilder()
               .Text("ID3")
               .Byte(version)
               .Byte(0)
               .Byte(flags)
               .Byte(0)
               .Byte(0)
               .Byte(static_cast<unsigned>(frames.size() >> 7))
               .Byte(frames.size() & 0x7F)
               .Bytes() +
           frames;
}

FileBytes Latin(std::string_view text) {
    return ByteBuilder().Byte(0).Text(text).Bytes();
}

TEST(Id3Tags, TextsOfAllCodingsAndVersions) {
    const FileBytes wide = {1, 0xFF, 0xFE, 'A', 0, 0xE9, 0, 0x3D, 0xD8, 0, 0xDE, 0, 0};
    const FileBytes bigWide = {2, 0xC1, 0x8C, 0xB9, 0xAC};
    const FileBytes comment = BytesOf(std::string("\0engshort\0the comment", 21));
    const FileBytes v3 = Id3Tag(3, 0,
                                Id3Frame("TIT2", wide) + Id3Frame("APIC", FileBytes(50)) +
                                    Id3Frame("TPE1", bigWide) + Id3Frame("COMM", comment) +
                                    Id3Frame("TALB", Latin("Andr\xE9")) + FileBytes(20));
    EXPECT_THAT(TagTexts(ExtrasOf(v3)),
                ElementsAre("title=A\xC3\xA9\xF0\x9F\x98\x80", "artist=\xEC\x86\x8C\xEB\xA6\xAC",
                            "comment=the comment", "album=Andr\xC3\xA9"));
    const FileBytes v2 =
        Id3Tag(2, 0, ByteBuilder().Text("TT2").Byte(0).Byte(0).Byte(4).Bytes() + Latin("old"));
    EXPECT_THAT(TagTexts(ExtrasOf(v2)), ElementsAre("title=old"));
    // A size whose bytes hold seven bits each, and a plain one as some programs write it.
    const std::string text(200, 'x');
    FileBytes frame = Id3Frame("TIT2", Latin(text));
    frame[6] = 1, frame[7] = 201 - 128;
    EXPECT_THAT(TagTexts(ExtrasOf(Id3Tag(4, 0, frame))), ElementsAre("title=" + text));
    EXPECT_THAT(TagTexts(ExtrasOf(Id3Tag(4, 0, Id3Frame("TIT2", Latin(text))))),
                ElementsAre("title=" + text));
    const FileBytes stuffed = Id3Frame("TIT2", {1, 0xFF, 0, 0xFE, 'B', 0});
    FileBytes sized = stuffed;
    sized[7] = 5;
    EXPECT_THAT(TagTexts(ExtrasOf(Id3Tag(3, 0x80, sized))), ElementsAre("title=B"));
    const FileBytes extended = ByteBuilder().Big32(6).Big32(0).Big16(0).Bytes();
    EXPECT_THAT(TagTexts(ExtrasOf(Id3Tag(3, 0x40, extended + Id3Frame("TIT2", Latin("C"))))),
                ElementsAre("title=C"));
}

TEST(Id3Tags, OtherTextsKeepTheirNamesAndWhatIsPassedOverIsSaid) {
    const FileBytes named = {0, 'M', 'o', 'o', 'd', 0, 'l', 'o', 'w'};
    const FileBytes frames = Id3Frame("TXXX", named) + Id3Frame("TENC", Latin("me")) +
                             Id3Frame("TXXX", {}) + Id3Frame("APIC", FileBytes(9)) +
                             Id3Frame("PRIV", FileBytes(9));
    const SoundExtras mp3 = ExtrasOf(Id3Tag(3, 0, frames));
    EXPECT_THAT(TagTexts(mp3), ElementsAre("mood=low", "TENC=me"));
    EXPECT_THAT(mp3.remarks.missing,
                ElementsAre("A picture is left out.", "Parts of the ID3 tag are left out."));
    // The chunk is kept as it came, with all that is in it.
    const SoundExtras wav = ExtrasOf(WavWith({}, RiffChunkBytes("id3 ", Id3Tag(3, 0, frames))));
    EXPECT_THAT(TagTexts(wav), ElementsAre("mood=low", "TENC=me"));
    EXPECT_THAT(wav.remarks.all, IsEmpty());
}

TEST(Id3Tags, ChaptersAreRegions) {
    const auto chapter = [](std::uint32_t start, std::uint32_t end, std::string_view name) {
        return Id3Frame("CHAP",
                        BytesOf(std::string("ch\0", 3)) +
                            ByteBuilder().Big32(start).Big32(end).Big32(0).Big32(0).Bytes() +
                            Id3Frame("TIT2", Latin(name)));
    };
    const FileBytes frames = Id3Frame("TIT2", Latin("all")) + chapter(2000, 3500, "second") +
                             chapter(0, 2000, "first") + chapter(9000, 1, "odd");
    const SoundExtras extras = ExtrasOf(Id3Tag(3, 0, frames));
    EXPECT_THAT(MarkerTexts(extras),
                ElementsAre("0+16000 first", "16000+12000 second", "72000+0 odd"));
    EXPECT_THAT(TagTexts(extras), ElementsAre("title=all"));
    // The same tag in a WAV file gives the same, and stays with the sound.
    const SoundExtras wav = ExtrasOf(WavWith({}, RiffChunkBytes("id3 ", Id3Tag(3, 0, frames))));
    EXPECT_EQ(wav.markers, extras.markers);
    EXPECT_EQ(wav.chunks.size(), 1u);
}

TEST(Id3Tags, Version1SaysWhatTheOtherDoesNot) {
    FileBytes old = BytesOf("TAG");
    for (const std::string_view field : {"old title", "old artist"}) {
        old = old + BytesOf(field);
        old.resize(old.size() + 30 - field.size(), ' ');
    }
    old.resize(125);
    old = old + FileBytes{0, 7, 12};
    const FileBytes sound = {0xFF, 0xFB, 0x90, 0};
    EXPECT_THAT(TagTexts(ExtrasOf(Id3Tag(3, 0, Id3Frame("TIT2", Latin("new"))) + sound + old)),
                ElementsAre("title=new", "artist=old artist", "track=7"));
    EXPECT_THAT(TagTexts(ExtrasOf(sound + old)),
                ElementsAre("title=old title", "artist=old artist", "track=7"));
}

// Cut anywhere, and with bytes changed anywhere, a file gives something bounded and no fault.
TEST(ReadExtras, BrokenFilesGiveWhatIsThere) {
    FileBytes frames;
    for (int i = 0; i < 5; ++i) frames = frames + Id3Frame("TALB", Latin("Album"));
    const FileBytes files[] = {
        WavWith(RiffChunkBytes("id3 ", Id3Tag(3, 0, frames)),
                CueBytes(1, CuePointBytes(1, 5)) +
                    ListBytes("adtl", LabelBytes(1, "x") + RegionTextBytes(1, 5))),
        BytesOf("fLaC") + FlacBlock(4 | 0x80, CommentBlock(kComments)),
        PageOf(9, {1}, {1}) + PageOf(9, {200}, BytesOf("OpusTags") + CommentBlock(kComments)),
        Id3Tag(4, 0x40, frames),
        AiffBytes({}) +
            AiffChunkBytes("MARK", ByteBuilder().Big16(2).Bytes() + MarkBytes(1, 4, "v")),
    };
    unsigned seed = 1;
    for (const FileBytes& file : files) {
        for (std::size_t size = 0; size < file.size(); ++size)
            (void)ExtrasOf(
                FileBytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
        for (int i = 0; i < 500; ++i) {
            FileBytes changed = file;
            for (int n = 0; n < 3; ++n) {
                seed = seed * 1664525 + 1013904223;
                changed[(seed >> 8) % changed.size()] = static_cast<std::uint8_t>(seed >> 24);
            }
            EXPECT_LE(ExtrasOf(changed).markers.size(), 100u);
        }
    }
}

}  // namespace
}  // namespace sonavel
