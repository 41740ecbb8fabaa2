// What a keeper writes of documents, read back into others.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <random>
#include <thread>

#include "document/document_fixture.h"
#include "exchange/sound_export.h"
#include "platform/code_page_949.h"
#include "recovery/replay.h"
#include "recovery/work_keeper.h"
#include "sound/wav_file.h"
#include "support/sound_files.h"

namespace sonavel::recovery {
namespace {

using testing::Bytes;
using testing::BytesOf;
using testing::Format;
using testing::MakeClip;
using testing::MakeSound;
using testing::PatternBytes;

void ExpectSameState(CSoundDoc& expected, CSoundDoc& other) {
    EXPECT_EQ(BytesOf(other.Sound()), BytesOf(expected.Sound()));
    EXPECT_EQ(other.Sound().GetFormat(), expected.Sound().GetFormat());
    EXPECT_EQ(other.Sound().Markers(), expected.Sound().Markers());
}

void ExpectSameSteps(CSoundDoc& expected, CSoundDoc& other) {
    const UndoHistory& history = expected.History();
    ASSERT_EQ(other.History().Count(), history.Count());
    EXPECT_EQ(other.History().CurrentPosition(), history.CurrentPosition());
    for (std::size_t i = 0; i < history.Count(); ++i)
        EXPECT_EQ(other.History().StepAt(i).name, history.StepAt(i).name);
}

class DocumentJournalTest : public testing::DocumentTest {
  protected:
    DocumentJournalTest() { StartKeeper(); }

    // The keeper lets go of a document before it ends.
    using Watched = std::unique_ptr<CSoundDoc, std::function<void(CSoundDoc*)>>;
    Watched Own(std::unique_ptr<CSoundDoc> document) {
        return {document.release(), [this](CSoundDoc* ending) {
                    if (keeper_) keeper_->Leave(*ending);
                    delete ending;
                }};
    }

    void StartKeeper() {
        keeper_ = std::make_unique<WorkKeeper>(folder_ / "records", WorkKeeper::Keeping::kChanges);
    }
    // A WAV file with markers, opened.
    Watched Open(const Format& format, std::size_t bytes) {
        const auto path = folder_ / "sound.wav";
        Sound sound = MakeSound(format, PatternBytes(bytes, 1));
        sound.Markers().Add(10, "first", 0);
        EXPECT_TRUE(WriteWav(sound, path, MarkerSaving::kOn, {}));
        auto document = Own(MakeDocument());
        EXPECT_TRUE(document->OpenDocument(path));
        keeper_->Watch(*document);
        return document;
    }
    std::vector<std::filesystem::path> Folders() const {
        std::vector<std::filesystem::path> folders;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(folder_ / "records", error))
            if (entry.is_directory() && entry.path().filename() != "open")
                folders.push_back(entry.path());
        return folders;
    }
    // As a program that starts after a kill sees it, while the first one still runs.
    std::unique_ptr<CSoundDoc> Replayed() {
        EXPECT_TRUE(keeper_->Finish());
        EXPECT_EQ(Folders().size(), 1u);
        auto document = MakeDocument();
        const Result<Replay> replay = ReplayInto(*document, Folders().at(0));
        EXPECT_TRUE(replay) << replay.Reason();
        if (replay) {
            EXPECT_EQ(replay->word, "");
        }
        return document;
    }

    std::unique_ptr<WorkKeeper> keeper_;
};

class RandomEdits {
  public:
    RandomEdits(CSoundDoc& document, unsigned seed) : document_(document), random_(seed) {}

    void Do() {
        switch (Number(9)) {
            case 0:
                return static_cast<void>(edit::Delete(document_, Range()));
            case 1:
            case 2:
                return static_cast<void>(edit::Paste(document_, Clip(), Range()));
            case 3:
                return static_cast<void>(edit::PasteOverwrite(document_, Clip(), Range()));
            case 4:
                return static_cast<void>(edit::Mix(document_, Clip(), Range(), {0.5, 0.5}));
            case 5:
                return SetMarker();
            case 6:
                return static_cast<void>(document_.Redo());
            case 7:
                return document_.SetTag("title", std::to_string(Number(1000)));
            default:
                return static_cast<void>(document_.Undo());
        }
    }

  private:
    std::uint32_t Number(std::uint32_t below) {
        return std::uniform_int_distribution<std::uint32_t>(0, below - 1)(random_);
    }
    EditSelection Range() {
        const std::uint32_t start = Number(document_.Sound().GetFrameCount() + 1);
        return {start, start + Number(50), start};
    }
    ClipRecord Clip() {
        const CWave& sound = document_.Sound();
        const Format format{sound.GetChannels(), sound.GetBits(), sound.GetSamplesPerSecond()};
        return MakeClip(format, PatternBytes(sound.GetBlockAlign() * (1 + Number(40)), Number(99)));
    }
    void SetMarker() {
        MarkerList markers = document_.Sound().Markers();
        markers.Add(Number(500), "m" + std::to_string(Number(10)), Number(5));
        document_.SetMarkers(std::move(markers));
    }

    CSoundDoc& document_;
    std::mt19937 random_;
};

TEST_F(DocumentJournalTest, GivesBackSoundMarkersTagsAndHistoryAtEveryMoment) {
    for (const Format& format : testing::kFormats) {
        SCOPED_TRACE(testing::NameOf(format));
        auto document = Open(format, 4000);
        RandomEdits edits(*document, 7);
        for (int i = 0; i < 40; ++i) {
            for (int k = 0; k < 5; ++k) edits.Do();
            auto replayed = Replayed();
            ExpectSameState(*document, *replayed);
            ExpectSameSteps(*document, *replayed);
            EXPECT_EQ(replayed->Tags(), document->Tags());
            EXPECT_EQ(replayed->Title(), "sound.wav");
            EXPECT_EQ(replayed->Path(), document->Path());
            EXPECT_TRUE(replayed->GetModified());
        }
        auto replayed = Replayed();
        while (document->CanUndo()) {
            EXPECT_TRUE(document->Undo());
            EXPECT_TRUE(replayed->Undo());
            ExpectSameState(*document, *replayed);
        }
        keeper_->Discard(*document);
        EXPECT_TRUE(keeper_->Finish());
        EXPECT_TRUE(Folders().empty());
    }
}

// So large that they are still being copied when the next edit begins.
TEST_F(DocumentJournalTest, KeepsLargeChangesThatTheNextEditOverwritesAtOnce) {
    constexpr std::uint32_t kFrames = 12u << 20;
    auto document = Open({1, 8}, kFrames);
    for (unsigned seed = 2; seed < 6; ++seed) {
        SCOPED_TRACE(seed);
        const ClipRecord clip = MakeClip({1, 8}, PatternBytes(300'000, seed));
        ASSERT_TRUE(edit::PasteBlockOverwrite(*document, clip, {seed, kFrames - seed, 0}));
        ASSERT_TRUE(edit::Delete(*document, {0, 700'000, 0}));
        ASSERT_TRUE(edit::PasteBlockOverwrite(*document, clip, {0, kFrames / 2, 0}));
        ASSERT_TRUE(document->Undo());
        ASSERT_TRUE(edit::Paste(*document, clip, {0, 600'000, 0}, 3));
        const auto back = Replayed();
        ExpectSameState(*document, *back);
    }
}

// Behind a save the records begin with the sound itself, which says nothing of where it came from.
TEST_F(DocumentJournalTest, AnImportedSoundThatWasSavedComesBackAsImported) {
    const auto path = folder_ / "sound.aiff";
    {
        const Sound sound = MakeSound({1, 16}, PatternBytes(4000, 1));
        ExportChoice choice;
        choice.kind = SoundFileKind::kAiff;
        choice.depth = EncodedDepth::k16;
        choice.frames = {0, 2000};
        SoundExtras extras;
        extras.tags = {{"title", "a"}};
        ASSERT_TRUE(ExportSound(path, sound, extras, choice, nullptr, {}));
    }
    auto document = Own(MakeDocument());
    ASSERT_TRUE(document->ImportDocument(path, {}));
    ASSERT_TRUE(document->IsImported());
    keeper_->Watch(*document);
    ASSERT_TRUE(edit::Delete(*document, {0, 100, 0}));
    ASSERT_TRUE(document->SaveDocument(path));
    ASSERT_TRUE(edit::Delete(*document, {0, 50, 0}));
    const auto back = Replayed();
    ExpectSameState(*document, *back);
    ASSERT_TRUE(back->IsImported());
    EXPECT_EQ(*back->Origin(), *document->Origin());
    EXPECT_EQ(back->OriginLine(), document->OriginLine());
    EXPECT_EQ(back->Extras().chunks, document->Extras().chunks);
    EXPECT_EQ(back->Tags(), document->Tags());
    EXPECT_TRUE(back->SaveDocument(path)) << "in the format that it came in";
}

TEST_F(DocumentJournalTest, NotesTheFolderOfAnExportThatIsKilled) {
    auto document = Open({1, 8}, 5000);
    document->NoteWriting(folder_ / "elsewhere" / "copy.wav");
    ASSERT_TRUE(keeper_->Finish());
    const auto log = folder_ / "records" / ("saves-" + std::to_string(getpid()));
    const FileBytes noted = ReadFileBytes(log);
    const std::string text(noted.begin(), noted.end());
    EXPECT_NE(text.find((folder_ / "elsewhere").string()), std::string::npos);
}

TEST_F(DocumentJournalTest, ARecoveryThatIsCancelledLeavesTheWorkAsItWas) {
    auto document = Open({1, 8}, 5000);
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(edit::Delete(*document, {0, 100, 0}));
    ASSERT_TRUE(keeper_->Finish());
    for (int poll = 0; poll < 6; ++poll) {
        SCOPED_TRACE(poll);
        auto other = MakeDocument();
        progress_.cancelAtPoll = progress_.polls + poll;
        EXPECT_TRUE(ReplayInto(*other, Folders().at(0)).Ended().IsCancelled());
        progress_.cancelAtPoll.reset();
        EXPECT_EQ(progress_.openWindows, 0);
    }
    ExpectSameState(*document, *Replayed());
}

TEST_F(DocumentJournalTest, ALargeDocumentMayEndWhileItsLastChangeIsBeingCopied) {
    auto document = Open({1, 8}, 12u << 20);
    const ClipRecord clip = MakeClip({1, 8}, PatternBytes(1000, 2));
    ASSERT_TRUE(edit::PasteBlockOverwrite(*document, clip, {0, 12u << 20, 0}));
    const Bytes expected = BytesOf(document->Sound());
    document.reset();
    EXPECT_EQ(BytesOf(Replayed()->Sound()), expected);
}

TEST_F(DocumentJournalTest, KeepsDocumentsThatHaveNoFile) {
    auto document = Own(MakeDocument());
    EXPECT_TRUE(document->NewDocument({.samplesPerSecond = 8000, .channels = 2, .bits = 16}));
    document->SetTitle("Sound 1");
    keeper_->Watch(*document);
    EXPECT_TRUE(Folders().empty());
    const ClipRecord clip = MakeClip({2, 16, 8000}, PatternBytes(400, 3));
    EXPECT_TRUE(edit::Paste(*document, clip, {}));
    EXPECT_TRUE(edit::Delete(*document, {2, 9, 2}));
    auto replayed = Replayed();
    ExpectSameState(*document, *replayed);
    ExpectSameSteps(*document, *replayed);
    EXPECT_EQ(replayed->Title(), "Sound 1");
    EXPECT_TRUE(replayed->Path().empty());
}

TEST_F(DocumentJournalTest, KeepsWhatIsModifiedFromTheStart) {
    auto document = Own(MakeDocument({1, 8}, PatternBytes(300, 5)));
    document->NotifyChanged(0);
    keeper_->Watch(*document);
    ExpectSameState(*document, *Replayed());
}

TEST_F(DocumentJournalTest, RemovesItsFolderWhenTheDocumentIsSavedAndBeginsAnew) {
    auto document = Open({1, 16}, 2000);
    EXPECT_TRUE(edit::Delete(*document, {0, 5, 0}));
    document->SetSaveMarkers(true);
    EXPECT_TRUE(document->SaveDocument(document->Path()));
    EXPECT_TRUE(keeper_->Finish());
    EXPECT_TRUE(Folders().empty());
    // Steps of before the save are in no record; the sound that they lead to is.
    EXPECT_TRUE(document->Undo());
    ExpectSameState(*document, *Replayed());
    EXPECT_TRUE(document->Redo());
    EXPECT_TRUE(edit::Delete(*document, {3, 30, 3}));
    ExpectSameState(*document, *Replayed());
}

TEST_F(DocumentJournalTest, StandsTheLossOfTheFileThatItBeganWith) {
    for (const bool copied : {true, false}) {
        SCOPED_TRACE(copied);
        auto document = Open({1, 16}, 200000);
        EXPECT_TRUE(edit::Delete(*document, {100, 500, 100}));
        EXPECT_TRUE(keeper_->Finish());
        const auto copy = Folders().at(0) / "base.wav";
        for (int i = 0; i < 500 && !std::filesystem::exists(copy); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        ASSERT_TRUE(std::filesystem::exists(copy));
        if (!copied) std::filesystem::remove(copy);
        WriteFileBytes(folder_ / "sound.wav", testing::BytesOf(document->Sound()));
        auto other = MakeDocument();
        const Result<Replay> replay = ReplayInto(*other, Folders().at(0));
        if (copied) {
            ExpectSameState(*document, *other);
        } else {
            EXPECT_FALSE(replay);
            EXPECT_NE(replay.Reason().find("changed or removed"), std::string::npos);
        }
        keeper_->Discard(*document);
        EXPECT_TRUE(keeper_->Finish());
    }
}

TEST_F(DocumentJournalTest, GoesOnWithRecordsThatWereRecovered) {
    auto document = Open({1, 16}, 3000);
    EXPECT_TRUE(edit::Delete(*document, {100, 200, 100}));
    keeper_->Leave(*document);
    StartKeeper();
    const std::vector<LeftWork> left = ListLeftWork(folder_ / "records");
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].frames, document->Sound().GetFrameCount());
    auto second = Own(MakeDocument());
    const auto word = keeper_->Recover(left[0], *second);
    ASSERT_TRUE(word);
    EXPECT_EQ(*word, "");
    EXPECT_TRUE(ListLeftWork(folder_ / "records").empty());
    EXPECT_TRUE(second->Undo());
    EXPECT_TRUE(second->Redo());
    EXPECT_TRUE(edit::Delete(*second, {5, 20, 5}));
    auto third = Replayed();
    ExpectSameState(*second, *third);
    ExpectSameSteps(*second, *third);
    EXPECT_EQ(third->History().Count(), 2u);
    second->SetSaveMarkers(true);
    EXPECT_TRUE(second->SaveDocument(second->Path()));
    EXPECT_TRUE(keeper_->Finish());
    EXPECT_TRUE(Folders().empty());
}

TEST_F(DocumentJournalTest, RecoversWhatStandsBeforeATornRecord) {
    auto document = Open({1, 16}, 3000);
    EXPECT_TRUE(edit::Delete(*document, {100, 200, 100}));
    const Bytes first = BytesOf(document->Sound());
    EXPECT_TRUE(edit::Delete(*document, {100, 200, 100}));
    keeper_->Leave(*document);
    StartKeeper();
    const auto journal = Folders().at(0) / "journal";
    std::filesystem::resize_file(journal, std::filesystem::file_size(journal) - 1);
    const std::vector<LeftWork> left = ListLeftWork(folder_ / "records");
    ASSERT_EQ(left.size(), 1u);
    EXPECT_FALSE(left[0].isWhole);
    EXPECT_EQ(left[0].edits, 1u);
    auto second = Own(MakeDocument());
    const auto word = keeper_->Recover(left[0], *second);
    ASSERT_TRUE(word);
    EXPECT_NE(word->find("damaged"), std::string::npos);
    EXPECT_EQ(BytesOf(second->Sound()), first);
    // What comes next takes the place of the torn one.
    EXPECT_TRUE(edit::Delete(*second, {0, 50, 0}));
    ExpectSameState(*second, *Replayed());
}

TEST_F(DocumentJournalTest, KeepsARecordingWhileItIsTaped) {
    auto document = Open({1, 16}, 3000);
    const Bytes before = BytesOf(document->Sound());
    const Bytes taped = PatternBytes(40000, 9);
    ASSERT_TRUE(document->StartRecording());
    devices_.In().Arrive(taped);
    EXPECT_TRUE(keeper_->Finish());
    const auto path = Folders().at(0) / kTakeName;
    // Any program can play it: its header is true.
    const Result<Sound> played = ReadWav(path, {});
    ASSERT_TRUE(played);
    const Bytes heard = BytesOf(*played);
    ASSERT_GT(heard.size(), 10000u);
    EXPECT_TRUE(std::equal(heard.begin(), heard.end(), taped.begin()));
    // What a kill leaves of a take goes behind the sound.
    const auto left = LookAtLeftWork(Folders().at(0));
    ASSERT_TRUE(left);
    EXPECT_EQ(left->frames, (before.size() + heard.size()) / 2);
    auto replayed = Replayed();
    EXPECT_TRUE(ReplayTake(*replayed, Folders().at(0)));
    Bytes expected = before;
    expected.insert(expected.end(), heard.begin(), heard.end());
    EXPECT_EQ(BytesOf(replayed->Sound()), expected);
    EXPECT_TRUE(replayed->Undo());
    EXPECT_EQ(BytesOf(replayed->Sound()), before);

    EXPECT_TRUE(document->StopRecording(10));
    ExpectSameState(*document, *Replayed());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DocumentJournalTest, SaysThatAnotherEditorShowsTheFile) {
    auto document = Open({1, 16}, 3000);
    auto second = Own(MakeDocument());
    ASSERT_TRUE(second->OpenDocument(document->Path()));
    EXPECT_EQ(keeper_->Watch(*second), "");
    {
        WorkKeeper other(folder_ / "records", WorkKeeper::Keeping::kChanges);
        auto third = MakeDocument();
        ASSERT_TRUE(third->OpenDocument(document->Path()));
        EXPECT_NE(other.Watch(*third).find("another editor"), std::string::npos);
        other.Discard(*third);
        keeper_->Discard(*document);
        EXPECT_NE(other.Watch(*third), "") << "one of the first editor's two is still there";
        other.Discard(*third);
        keeper_->Discard(*second);
        EXPECT_EQ(other.Watch(*third), "");
        other.Discard(*third);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "records/open"));
}

TEST_F(DocumentJournalTest, RemovesWhatKilledSavesLeftAndNothingElse) {
    const auto place = [&](const std::string& name) {
        WriteFileBytes(folder_ / name, testing::PatternBytes(9, 1));
        return folder_ / name;
    };
    const auto left = place(".sonavel-123456789-0.tmp");
    const auto linked = place(".sonavel-123456789-1.tmp");
    std::filesystem::create_hard_link(linked, folder_ / "precious");
    const auto others = place(".sonavel-1234567890-0.tmp");
    const auto named = place("sonavel-123456789-0.tmp");
    std::filesystem::create_directories(folder_ / "records");
    const std::string log = folder_.Path().string() + '\0' + "/no/such/folder" + '\0' + "/torn";
    WriteFileBytes(folder_ / "records/saves-123456789", {log.begin(), log.end()});
    StartKeeper();
    EXPECT_TRUE(keeper_->Finish());
    EXPECT_FALSE(std::filesystem::exists(left));
    for (const auto& kept : {linked, others, named}) EXPECT_TRUE(std::filesystem::exists(kept));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "records/saves-123456789"));

    // A save is noted before it begins, and the log of a program that ends goes.
    auto document = Open({1, 16}, 300);
    document->SetSaveMarkers(true);
    EXPECT_TRUE(document->SaveDocument(document->Path()));
    EXPECT_TRUE(keeper_->Finish());
    const auto own = folder_ / ("records/saves-" + std::to_string(getpid()));
    EXPECT_EQ(ReadFileBytes(own).size(), folder_.Path().string().size() + 1);
    keeper_->Discard(*document);
    keeper_.reset();
    EXPECT_FALSE(std::filesystem::exists(own));
}

TEST_F(DocumentJournalTest, SaysOnceThatNothingIsKeptAnyMore) {
    auto document = Open({1, 16}, 3000);
    keeper_->SetLimit(100);
    EXPECT_TRUE(edit::Delete(*document, {100, 200, 100}));
    EXPECT_TRUE(keeper_->Finish());
    keeper_->TellFaults();
    keeper_->TellFaults();
    ASSERT_EQ(prompts_.statusTexts.size(), 1u);
    EXPECT_NE(prompts_.statusTexts[0].find("room"), std::string::npos);
}

TEST_F(DocumentJournalTest, EditsGoOnWhereNothingCanBeWritten) {
    WriteFileBytes(folder_ / "records", {});
    auto document = Open({1, 16}, 3000);
    EXPECT_TRUE(edit::Delete(*document, {100, 200, 100}));
    EXPECT_TRUE(keeper_->Finish());
    keeper_->TellFaults();
    EXPECT_EQ(document->Sound().GetFrameCount(), 1400u);
    ASSERT_EQ(prompts_.statusTexts.size(), 1u);
    EXPECT_NE(prompts_.statusTexts[0].find("cannot be written"), std::string::npos);
}

}  // namespace
}  // namespace sonavel::recovery
