// Records as bytes: what is written comes back, and what was torn or falsified does not.
#include "recovery/journal_bytes.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstring>
#include <utility>
#include <vector>

#include "recovery/crc32.h"
#include "recovery/journal_file.h"
#include "recovery/left_work.h"
#include "support/test_files.h"

namespace sonavel::recovery {
namespace {

TEST(Crc32Test, IsTheCommonOneInPiecesToo) {
    const FileBytes digits = sonavel::BytesOf("123456789");
    EXPECT_EQ(Crc32(digits), 0xCBF43926u);
    for (std::size_t cut = 0; cut <= digits.size(); ++cut)
        EXPECT_EQ(Crc32(std::span(digits).subspan(cut), Crc32(std::span(digits).first(cut))),
                  0xCBF43926u);
}

SoundBuffer Samples(std::size_t bytes) {
    SoundBuffer samples;
    EXPECT_TRUE(samples.AllocBuffer(bytes));
    for (std::size_t i = 0; i < bytes; ++i) samples.Data()[i] = static_cast<std::uint8_t>(i * 7);
    return samples;
}

MarkerList TwoMarkers() {
    MarkerList markers;
    markers.Add(3, "one", 0);
    markers.Add(70000, std::string("zwei\0\xff", 6), 12);
    markers.All()[1].countryAndLanguage = 0xFFFFFFFF;
    return markers;
}

// A record of every kind, and how many bytes of samples go with it.
std::vector<std::pair<JournalRecord, std::size_t>> AllRecords() {
    const PcmFormat stereo = MakeSoundFormat(2, 16, 44100);
    const FileIdentity identity{1ull << 40, -5, 7, 9};
    FileOrigin imported{"/a b/\xff.flac", identity, ImportChoice{}};
    imported.import->matrix = ChannelMatrix{{{0.5f, 0, -1}, {1, 2, 3}}};
    imported.import->depth = ImportDepth::kRoundTo16;
    std::vector<std::pair<JournalRecord, std::size_t>> records;
    records.emplace_back(BaseRecord{.kind = BaseRecord::Kind::kFile, .file = imported, .frames = 9},
                         0);
    records.emplace_back(BaseRecord{.format = stereo, .markers = TwoMarkers(), .sampleBytes = 402},
                         402);
    records.emplace_back(NameRecord{"/x/y.wav", "y.wav", identity}, 0);
    records.emplace_back(NameRecord{"", "Sound 1", {}}, 0);
    records.emplace_back(ChangeRecord{.name = "Source Sample",
                                      .startByte = 1ull << 33,
                                      .bytesBefore = 5,
                                      .sampleBytes = 8,
                                      .format = stereo,
                                      .framesAfter = 4000000000u,
                                      .markers = TwoMarkers()},
                         8);
    records.emplace_back(StepRecord{StepRecord::Way::kRedo, stereo, 12}, 0);
    OriginRecord origin;
    origin.origin.description.kind = SoundFileKind::kFlac;
    origin.origin.description.format = "FLAC";
    origin.origin.description.rate = 96000;
    origin.origin.description.channels = 2;
    origin.origin.line = "FLAC, 96,000 Hz";
    origin.origin.taken = {"A picture is left out", ""};
    origin.origin.losses = ImportOrigin::Losses::kAccepted;
    origin.chunks = {{ChunkFamily::kAiff, 0x41424344, ChunkSide::kBeforeSound, {0, 255, 7}}};
    records.emplace_back(std::move(origin), 0);
    records.emplace_back(TagsRecord{{{"title", "\xf0\x9f\x8e\xb5"}, {"track", ""}}}, 0);
    return records;
}

class JournalTest : public ::testing::Test {
  protected:
    JournalTest() { budget_->limitBytes = 1 << 20; }

    std::filesystem::path Journal() const { return folder_ / "work/journal"; }
    std::shared_ptr<JournalFile> NewFile() {
        auto file = std::make_shared<JournalFile>(folder_ / "work", budget_);
        file->Begin();
        return file;
    }
    static void Append(JournalFile& file, const JournalRecord& record, std::size_t sampleBytes) {
        file.Append({TypeOf(record), PackRecord(record), Samples(sampleBytes)});
    }
    void WriteAll() {
        const auto file = NewFile();
        for (const auto& [record, bytes] : AllRecords()) Append(*file, record, bytes);
        EXPECT_EQ(file->Fault(), JournalFault::kNone);
    }
    std::size_t CountGood() const {
        JournalReader reader;
        EXPECT_TRUE(reader.Open(Journal()));
        while (reader.Next(JournalReader::Samples::kLoad)) {
        }
        return reader.RecordCount();
    }

    TemporaryFolder folder_;
    std::shared_ptr<DiskBudget> budget_ = std::make_shared<DiskBudget>();
};

TEST_F(JournalTest, GivesEveryKindOfRecordBack) {
    WriteAll();
    JournalReader reader;
    ASSERT_TRUE(reader.Open(Journal()));
    for (const auto& [record, bytes] : AllRecords()) {
        const auto read = reader.Next(JournalReader::Samples::kLoad);
        ASSERT_TRUE(read) << record.index();
        EXPECT_EQ(TypeOf(*read), TypeOf(record));
        // Every field of a record is in its bytes.
        EXPECT_EQ(PackRecord(*read), PackRecord(record)) << record.index();
        const SoundBuffer samples = reader.TakeSamples();
        ASSERT_EQ(samples.Size(), bytes);
        if (bytes > 0) {
            EXPECT_EQ(std::memcmp(samples.Data(), Samples(bytes).Data(), bytes), 0);
        }
    }
    EXPECT_FALSE(reader.Next(JournalReader::Samples::kLoad));
    EXPECT_TRUE(reader.IsWhole());
    struct stat status;
    ASSERT_EQ(stat((folder_ / "work").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(JournalTest, EndsAtWhatIsTorn) {
    WriteAll();
    const FileBytes whole = ReadFileBytes(Journal());
    std::size_t before = 0;
    for (std::size_t size = whole.size() % 3; size < whole.size(); size += 3) {
        WriteFileBytes(Journal(), {whole.begin(), whole.begin() + static_cast<long>(size)});
        const std::size_t good = CountGood();
        EXPECT_LT(good, AllRecords().size()) << size;
        EXPECT_GE(good, before) << size;
        before = good;
    }
    EXPECT_EQ(before, AllRecords().size() - 1);
}

TEST_F(JournalTest, EndsAtWhatIsFalse) {
    WriteAll();
    const FileBytes whole = ReadFileBytes(Journal());
    for (std::size_t at = 0; at < whole.size(); at += 7) {
        FileBytes bytes = whole;
        bytes[at] ^= static_cast<std::uint8_t>(1u << at % 8);
        WriteFileBytes(Journal(), bytes);
        EXPECT_LT(CountGood(), AllRecords().size()) << at;
        LookAtLeftWork(folder_ / "work");
    }
}

TEST(JournalRecordTest, RefusesWhatMakesNoSenseUnderAnyChecksum) {
    for (const auto& [record, ignored] : AllRecords()) {
        const std::vector<std::uint8_t> packed = PackRecord(record);
        for (std::size_t size = 0; size < packed.size(); ++size)
            EXPECT_FALSE(ParseRecord(TypeOf(record), std::span(packed).first(size)));
        for (std::size_t at = 0; at < packed.size(); ++at) {
            std::vector<std::uint8_t> other = packed;
            other[at] = 0xFF;
            ParseRecord(TypeOf(record), other);
        }
        EXPECT_FALSE(ParseRecord(99, packed));
    }
    ChangeRecord change{.sampleBytes = 1, .format = MakeSoundFormat(1, 8, 8000)};
    EXPECT_TRUE(ParseRecord(TypeOf(change), PackRecord(change)));
    change.sampleBytes = std::uint64_t{1} << 62;
    EXPECT_FALSE(ParseRecord(TypeOf(change), PackRecord(change)));
    change = {.format = MakeSoundFormat(3, 8, 8000)};
    EXPECT_FALSE(ParseRecord(TypeOf(change), PackRecord(change)));
}

TEST_F(JournalTest, KeepsWhatCameBeforeTheRoomWasUsedUp) {
    budget_->limitBytes = 2000;
    const auto file = NewFile();
    const JournalRecord record =
        ChangeRecord{.sampleBytes = 400, .format = MakeSoundFormat(1, 8, 8000), .framesAfter = 400};
    for (int i = 0; i < 10; ++i) Append(*file, record, 400);
    EXPECT_EQ(file->Fault(), JournalFault::kBudget);
    EXPECT_LE(budget_->usedBytes, 2000u);
    // What would fit again must not come behind the gap.
    Append(*file, NameRecord{"/a.wav", "a.wav", {}}, 0);
    EXPECT_EQ(CountGood(), 2000 / (kHeadBytes + PackRecord(record).size() + 400));
    file->Remove();
    EXPECT_FALSE(std::filesystem::exists(folder_ / "work"));
    EXPECT_EQ(budget_->usedBytes, 0u);
}

TEST_F(JournalTest, KeepsWhatCameBeforeTheDiskWasFull) {
    const auto file = NewFile();
    const JournalRecord record = ChangeRecord{
        .sampleBytes = 4000, .format = MakeSoundFormat(1, 8, 8000), .framesAfter = 4000};
    Append(*file, record, 4000);
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{6000, old.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    Append(*file, record, 4000);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_EQ(file->Fault(), JournalFault::kDisk);
    JournalReader reader;
    ASSERT_TRUE(reader.Open(Journal()));
    EXPECT_TRUE(reader.Next(JournalReader::Samples::kCheckOnly));
    EXPECT_TRUE(reader.IsWhole());
}

TEST_F(JournalTest, ListsNothingThatIsHeldOrNoWork) {
    std::filesystem::create_directories(folder_ / "empty");
    WriteFileBytes(folder_ / "file", sonavel::BytesOf("x"));
    auto file = NewFile();
    Append(*file, BaseRecord{.format = MakeSoundFormat(1, 8, 8000)}, 0);
    Append(*file, NameRecord{"/a/b.wav", "b.wav", {}}, 0);
    Append(*file, ChangeRecord{.format = MakeSoundFormat(1, 8, 11025), .framesAfter = 5}, 0);
    EXPECT_TRUE(ListLeftWork(folder_.Path()).empty());
    file.reset();
    const std::vector<LeftWork> left = ListLeftWork(folder_.Path());
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].path, "/a/b.wav");
    EXPECT_EQ(left[0].title, "b.wav");
    EXPECT_EQ(left[0].frames, 5u);
    EXPECT_EQ(left[0].samplesPerSecond, 11025u);
    EXPECT_EQ(left[0].edits, 1u);
    EXPECT_TRUE(DiscardLeftWork(left[0]));
    EXPECT_TRUE(ListLeftWork(folder_.Path()).empty());
}

// Whatever happened to its first record, the person sees what it was and can be rid of it.
TEST_F(JournalTest, ListsWorkWhoseBeginningIsDamagedByItsName) {
    const struct {
        const char* name;
        bool hasName;
        std::size_t samples;  // of the first record
    } cases[] = {{"a name behind it", true, 100},
                 {"a name far behind it", true, 3u << 20},
                 {"no name", false, 100}};
    budget_->limitBytes = 16 << 20;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto file = NewFile();
        Append(*file, BaseRecord{.format = MakeSoundFormat(1, 8, 8000), .sampleBytes = c.samples},
               c.samples);
        if (c.hasName) Append(*file, NameRecord{"/a/b.wav", "b.wav", {}}, 0);
        file.reset();
        FileBytes bytes = ReadFileBytes(Journal());
        bytes[40] ^= 1;
        WriteFileBytes(Journal(), bytes);
        const std::vector<LeftWork> left = ListLeftWork(folder_.Path());
        ASSERT_EQ(left.size(), 1u);
        EXPECT_FALSE(left[0].isReadable || left[0].isWhole);
        EXPECT_EQ(left[0].title, c.hasName ? "b.wav" : "work");
        EXPECT_EQ(left[0].frames + left[0].edits, 0u);
        EXPECT_TRUE(DiscardLeftWork(left[0]));
        EXPECT_TRUE(ListLeftWork(folder_.Path()).empty());
    }
}

TEST_F(JournalTest, ALargeRecordTellsHowFarItIsAndIsLeftWhereItIsCancelled) {
    constexpr std::size_t kLarge = std::size_t{5} << 20;
    budget_->limitBytes = 16 << 20;
    auto file = NewFile();
    Append(*file, BaseRecord{.format = MakeSoundFormat(1, 8, 8000), .sampleBytes = kLarge}, kLarge);
    file.reset();
    for (const auto samples : {JournalReader::Samples::kLoad, JournalReader::Samples::kCheckOnly}) {
        JournalReader reader;
        ASSERT_TRUE(reader.Open(Journal()));
        double share = 0;
        const auto stop = [&](double done) {
            return (share = done) > 0.5 ? Onward::kStop : Onward::kGoOn;
        };
        EXPECT_FALSE(reader.Next(samples, stop));
        EXPECT_LT(share, 0.9);
        EXPECT_FALSE(reader.LacksMemory() || reader.IsWhole());
        EXPECT_EQ(reader.RecordCount(), 0u);
        EXPECT_TRUE(reader.Next(samples));
        EXPECT_TRUE(reader.IsWhole());
        EXPECT_EQ(reader.ShareRead(), 1);
    }
}

TEST_F(JournalTest, AListThatIsCancelledEndsEarly) {
    auto file = NewFile();
    Append(*file, BaseRecord{.format = MakeSoundFormat(1, 8, 8000)}, 0);
    file.reset();
    EXPECT_EQ(ListLeftWork(folder_.Path(), true).size(), 0u);
    EXPECT_EQ(ListLeftWork(folder_.Path(), false).size(), 1u);
}

}  // namespace
}  // namespace sonavel::recovery
