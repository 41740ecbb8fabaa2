#include "document/sound_doc.h"

#include <cmath>
#include <functional>

#include "document/untitled_titles.h"
#include "document_fixture.h"
#include "sound/wav_file.h"

namespace sonavel::testing {
namespace {

class SoundDocTest : public DocumentTest {
  protected:
    void SetMarkerSaving(bool on) {
        WriteOptions(std::string("SAVE UNDO REDO INFOMATION=1\n마커 저장=") + (on ? "1\n" : "0\n"));
    }
    // The temporary folder's path holds no dot.
    std::filesystem::path At(const std::string& name) { return folder_ / name; }
    void WriteWavFile(const std::string& name, const Format& format, const Bytes& bytes) {
        auto document = MakeDocument(format, bytes);
        document->SetSaveMarkers(true);
        ASSERT_TRUE(document->SaveDocument(At(name)));
    }
};

TEST_F(SoundDocTest, NewMakesAnEmptySoundOfTheChosenFormat) {
    auto document = MakeDocument();
    ASSERT_TRUE(document->NewDocument({.samplesPerSecond = 22050, .channels = 2, .bits = 16}));
    EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(2, 16, 22050));
    EXPECT_FALSE(document->Sound().HasData());
    EXPECT_FALSE(document->GetModified());
    EXPECT_FALSE(document->NewDocument({.samplesPerSecond = 0, .channels = 2, .bits = 16}));
}

TEST_F(SoundDocTest, NewAndOpenLeaveNothingOfTheSoundBefore) {
    WriteWavFile("a.wav", {1, 8}, PatternBytes(10, 1));
    const std::function<Outcome(CSoundDoc&)> ways[] = {
        [](CSoundDoc& document) {
            return document.NewDocument({.samplesPerSecond = 8000, .channels = 1, .bits = 8});
        },
        [&](CSoundDoc& document) { return document.OpenDocument(At("a.wav")); }};
    for (const auto& take : ways) {
        auto document = MakeDocument({1, 16}, PatternBytes(60000, 1));
        ASSERT_TRUE(edit::Delete(*document, {0, 10, 0}));
        ASSERT_TRUE(edit::Delete(*document, {0, 10, 0}));
        ASSERT_TRUE(document->Undo());
        MarkerList markers;
        markers.Add(5, "", 0);
        document->SetMarkers(markers, CSoundDoc::MarkerEditing::kGoesOn);
        ASSERT_TRUE(document->Sound().Play(0));
        NotingObserver observer;
        document->AddObserver(&observer);
        EXPECT_TRUE(take(*document));
        EXPECT_TRUE(document->Sound().IsStopped());
        EXPECT_EQ(observer.changes, std::vector<std::uint32_t>{0});
        EXPECT_FALSE(document->GetModified());
        document->EndMarkerEdit();
        EXPECT_EQ(document->History().Count(), 0u);
        EXPECT_FALSE(document->CanRedo());
    }
}

TEST_F(SoundDocTest, ObserversHearOfTitlesAndChangesUntilTheyAreLetGo) {
    SetMarkerSaving(true);
    auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
    NotingObserver observer;
    document->AddObserver(&observer);
    const std::function<void()> changes[] = {
        [&] { document->SetTitle("a"); }, [&] { document->SetModified(true); },
        [&] { document->NotifyChanged(3); },
        [&] { EXPECT_TRUE(document->SaveDocument(At("a.wav"))); }};
    for (const auto& change : changes) {
        observer.titles = 0;
        change();
        EXPECT_GT(observer.titles, 0);
    }
    EXPECT_EQ(observer.changes, std::vector<std::uint32_t>{3});
    document->RemoveObserver(&observer);
    for (const auto& change : changes) {
        observer.titles = 0;
        change();
        EXPECT_EQ(observer.titles, 0);
    }
}

TEST_F(SoundDocTest, SavedSoundsOpenAgainByTheirExtension) {
    SetMarkerSaving(true);
    const struct {
        const char* name;
        bool modifiedAfterSave;
    } cases[] = {{"a.wav", false}, {"b.WAV", false}, {"c.au", false},
                 {"d.Snd", false}, {"e.aiff", true}, {"f.AIF", true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto document = MakeDocument({2, 16, 10}, PatternBytes(40, 1));
        document->SetModified(true);
        ASSERT_TRUE(document->SaveDocument(At(c.name)));
        EXPECT_EQ(document->GetModified(), c.modifiedAfterSave);
        EXPECT_EQ(document->Title(), c.name);
        auto again = MakeDocument();
        ASSERT_TRUE(again->OpenDocument(At(c.name)));
        EXPECT_EQ(BytesOf(again->Sound()), PatternBytes(40, 1));
        EXPECT_EQ(again->Path(), At(c.name));
        EXPECT_FALSE(again->GetModified());
    }
}

TEST_F(SoundDocTest, ASoundOfWhichTheFileHoldsLessCountsAsModified) {
    auto document = MakeDocument({2, 16, 10}, PatternBytes(44, 1));
    document->SetModified(false);
    EXPECT_TRUE(document->SaveCutsSound(At("a.aiff")));
    EXPECT_FALSE(document->SaveCutsSound(At("a.wav")));
    ASSERT_TRUE(document->SaveDocument(At("a.aiff")));
    EXPECT_TRUE(document->GetModified());

    auto whole = MakeDocument({2, 16, 10}, PatternBytes(40, 1));
    whole->SetModified(false);
    ASSERT_TRUE(whole->SaveDocument(At("b.aiff")));
    EXPECT_FALSE(whole->GetModified());
}

TEST_F(SoundDocTest, FailuresLeaveTheDocumentAndSayWhy) {
    WriteWavFile("good.wav", {1, 8}, PatternBytes(10, 1));
    std::filesystem::create_directories(folder_ / "my.sounds");
    std::filesystem::copy_file(At("good.wav"), folder_ / "my.sounds" / "good.wav");
    std::ofstream(At("text.wav")) << "no sound at all, only text";
    Bytes alaw = ReadFileBytes(At("good.wav"));
    alaw[20] = 6;  // the format tag
    WriteFileBytes(At("alaw.wav"), alaw);
    for (const char* name : {"absent.wav", "text.wav", "alaw.wav", "good.xyz", "noextension",
                             "my.sounds/good.wav", "absent.au", "absent.aiff"}) {
        SCOPED_TRACE(name);
        auto document = MakeDocument({2, 16}, PatternBytes(8, 7));
        EXPECT_FALSE(document->OpenDocument(At(name)).Reason().empty());
        EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(8, 7));
        EXPECT_TRUE(document->Path().empty());
    }
}

TEST_F(SoundDocTest, AFailureNeverShowsTheReasonOfOneBefore) {
    WriteWavFile("alaw.wav", {1, 8}, PatternBytes(10, 1));
    Bytes alaw = ReadFileBytes(At("alaw.wav"));
    alaw[20] = 6;  // the format tag
    WriteFileBytes(At("alaw.wav"), alaw);
    SetMarkerSaving(false);
    const std::pair<std::function<Outcome(CSoundDoc&)>, const char*> cases[] = {
        {[&](CSoundDoc& d) { return d.OpenDocument(At("alaw.wav")); },
         "This format cannot be edited: A-Law"},
        {[&](CSoundDoc& d) { return d.SaveDocument(At("b.wav")); },
         "The sound was written without its markers."},
        {[&](CSoundDoc& d) {
             d.Sound().SetRecordDevice(kNoWaveDevice);
             return d.StartRecording();
         },
         "Recording could not be started."},
        {[&](CSoundDoc& d) {
             EXPECT_TRUE(d.StartRecording());
             d.Sound().SetLastError("stale");
             return d.StopRecording(0);
         },
         "Nothing was recorded."},
    };
    for (const auto& [attempt, reason] : cases) {
        auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
        document->Sound().SetLastError("stale");
        EXPECT_EQ(attempt(*document), Failed(reason));
    }
}

TEST_F(SoundDocTest, OpeningPlaysAlsoWhenReadingFailed) {
    WriteOptions("OPEN AND PLAY=1\n");
    auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
    EXPECT_FALSE(document->OpenDocument(At("noextension")));
    EXPECT_FALSE(document->Sound().IsPlaying());
    EXPECT_FALSE(document->OpenDocument(At("absent.wav")));
    EXPECT_TRUE(document->Sound().IsPlaying());
}

TEST_F(SoundDocTest, SaveWithMarkersOffWritesTheFileAndFails) {
    SetMarkerSaving(false);
    auto document = MakeDocument({1, 16}, PatternBytes(20, 1));
    EXPECT_FALSE(document->SaveWarning(At("a.wav")).empty());
    EXPECT_FALSE(document->SaveDocument(At("a.wav")).Reason().empty());
    EXPECT_EQ(std::filesystem::file_size(At("a.wav")), 64u);
    EXPECT_FALSE(document->SaveDocument(At("a.mp3")));
    document->SetSaveMarkers(true);
    EXPECT_EQ(document->SaveDocument(".wav"), Failed("The file name has no extension."));
    EXPECT_EQ(folder_.FileCount(), 2u) << "the sound and the options";
}

TEST_F(SoundDocTest, SaveAsConvertsAndAppendsTheExtension) {
    auto document = MakeDocument({2, 16}, PatternBytes(40, 1));
    document->SetTitle("Paste_1");
    EXPECT_EQ(document->QuestionOfSaveAs().proposedName, "Paste_1");
    EXPECT_FALSE(document->QuestionOfSaveAs().saveMarkers);
    ASSERT_TRUE(
        document->SaveAs({.path = At("mono"), .channels = 1, .bits = 8, .saveMarkers = true}));
    EXPECT_TRUE(std::filesystem::exists(At("mono.WAV")));
    EXPECT_EQ(document->Title(), "mono.WAV");
    EXPECT_EQ(document->Options().saveMarkers, 1);
    EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(1, 8, 8000));
    ASSERT_TRUE(document->Undo());
    EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(40, 1));
}

TEST_F(SoundDocTest, SaveAsWhileRecordingKeepsTheFormatAndSaysWhy) {
    auto document = MakeDocument({2, 16}, PatternBytes(40, 1));
    ASSERT_TRUE(document->StartRecording());
    for (const auto& [channels, bits] : {std::pair{1u, 16u}, std::pair{2u, 8u}}) {
        EXPECT_EQ(document->SaveAs({.path = At("a.wav"), .channels = channels, .bits = bits}),
                  Failed("The sound cannot be changed while recording."));
        EXPECT_EQ(document->Options().saveMarkers, 0) << "cancelled with the rest";
    }
    EXPECT_FALSE(std::filesystem::exists(At("a.wav")));
    EXPECT_TRUE(document->SaveAs({.path = At("a.wav"), .channels = 2, .bits = 16}));
    EXPECT_TRUE(document->Sound().IsRecording());
}

TEST_F(SoundDocTest, SaveWarnsOfWhatTheFileWouldLose) {
    const struct {
        const char* file;
        Format format;
        std::size_t frames;
        std::vector<std::string> markers;
        std::uint32_t markerLength;
        bool warns;
    } cases[] = {
        {"a.wav", {2, 16, 10}, 50, {"even", "even"}, 0, false},
        {"a.wav", {2, 16, 10}, 50, {"even", "odd"}, 0, false},
        {"a.wav", {2, 16, 10}, 50, {"odd", "even"}, 0, true},
        {"a.wav", {2, 16, 10}, 50, {"even"}, 5, true},
        {"a.wav", {1, 8, 10}, 51, {"even"}, 0, true},
        {"a.wav", {1, 16, 10}, 51, {"even"}, 0, false},
        {"a.wav", {2, 16, 10}, 51, {"even"}, 0, false},
        {"a.wav", {1, 8, 10}, 51, {}, 0, false},
        {"a.aiff", {2, 16, 10}, 10, {}, 0, false},
        {"a.aiff", {2, 16, 10}, 11, {}, 0, true},
        {"a.aif", {2, 8, 10}, 11, {}, 0, false},
        {"a.aif", {2, 8, 10}, 11, {"even"}, 0, true},
        {"a.au", {2, 16, 10}, 11, {}, 0, false},
        {"a.snd", {2, 16, 10}, 11, {"even"}, 0, true},
    };
    for (const auto& c : cases) {
        const unsigned align = c.format.channels * c.format.bits / 8;
        auto document = MakeDocument(c.format, PatternBytes(c.frames * align, 1));
        document->SetSaveMarkers(true);
        for (const std::string& name : c.markers)
            document->Sound().Markers().Add(1, name, c.markerLength);
        EXPECT_EQ(!document->SaveWarning(At(c.file)).empty(), c.warns)
            << c.file << ": " << document->SaveWarning(At(c.file));
    }
    auto document = MakeDocument({2, 16, 10}, PatternBytes(200, 1));
    document->SetSaveMarkers(true);
    for (const char* name : {"odd", "even"}) document->Sound().Markers().Add(1, name, 5);
    EXPECT_EQ(document->SaveWarning(At("a.wav")),
              "Marker names behind one with an odd number of bytes will not be read again. "
              "The lengths of markers will not be read again.");
}

TEST_F(SoundDocTest, SaveWarnsWhereAConversionWrapsTheLoudestSamples) {
    const struct {
        unsigned bits;
        std::uint8_t byte;
        unsigned savedBits;
        bool warns;
    } cases[] = {{8, 0, 16, true}, {8, 1, 16, false},  {8, 255, 16, false},
                 {8, 0, 8, false}, {16, 0, 16, false}, {16, 0, 8, false}};
    for (const auto& c : cases) {
        const auto document = MakeDocument({1, c.bits}, Bytes(10, c.byte));
        for (const char* file : {"a.wav", "a.aiff", "a.au"})
            EXPECT_EQ(!document->SaveWarning({At(file), 1, c.savedBits, true}).empty(), c.warns)
                << c.bits << ' ' << int{c.byte} << ' ' << file;
    }
}

TEST_F(SoundDocTest, MissingAndSenselessOptionsLeaveTheDefaultBlock) {
    const std::pair<const char*, int> cases[] = {
        {"", 0},
        {"PLAYBACK BUFFER SIZE=127\n", 0},
        {"PLAYBACK BUFFER SIZE=32768\n", 0},
        {"PLAYBACK DEVICE ID=3\nPLAYBACK BUFFER SIZE=-5\n", 3},
        {"PLAYBACK DEVICE ID=4\nRECORD DEVICE ID=4\n", 4}};
    for (const auto& [options, device] : cases) {
        WriteOptions("", options);
        auto document = MakeDocument({1, 8}, PatternBytes(100000, 1));
        EXPECT_EQ(document->Options().saveUndo, 0);
        ASSERT_TRUE(document->Sound().Play(0));
        EXPECT_EQ(devices_.Out().queue.front()->data.size(), 1024u) << options;
        EXPECT_EQ(devices_.Out().deviceId, device) << options;
        ASSERT_TRUE(document->StartRecording());
        EXPECT_EQ(devices_.In().deviceId, device == 4 ? 4 : 0) << options;
    }
}

TEST_F(SoundDocTest, PreviewTruncatesSamplesIntoItsFormat) {
    auto document = MakeDocument({1, 8}, PatternBytes(4, 1));
    const float samples[] = {1.9f, -1.9f, 100, NAN};
    ASSERT_TRUE(document->MakePreview(samples, CSoundDoc::PreviewPlay::kNo, 0,
                                      CSoundDoc::PreviewFormat::kOfTheSound));
    EXPECT_EQ(BytesOf(document->Preview()), (Bytes{127, 129, 28, 128}));
    // Two channels halve the length, whatever the sound has.
    ASSERT_TRUE(document->MakePreview(samples, CSoundDoc::PreviewPlay::kYes, 5,
                                      CSoundDoc::PreviewFormat::kComputedStereo));
    EXPECT_EQ(document->Preview().GetFormat(), MakePcmFormat(2, 16, 8000));
    EXPECT_EQ(document->Preview().GetFrameCount(), 2u);
    EXPECT_EQ(document->Preview().GetSample(1, 0), -1);
    EXPECT_EQ(document->Preview().GetSample(0, 1), 100);
    EXPECT_TRUE(document->Preview().IsPlaying());
}

TEST_F(SoundDocTest, APreviewHoldsWhatItHasRoomForAndSilenceBehindWhatThereIs) {
    using enum CSoundDoc::PreviewFormat;
    const struct {
        CSoundDoc::PreviewFormat format;
        std::uint32_t lengthBytes;
        std::vector<float> samples;
        Bytes expected;
    } cases[] = {{kOfTheSound, 4, {1, 2}, {127, 126, 128, 128}},
                 {kOfTheSound, 2, {1, 2, 3, 4}, {127, 126}},
                 {kComputedStereo, 4, {1}, {1, 0, 0, 0, 0, 0, 0, 0}},
                 {kComputedStereo, 2, {1, 2, 3, 4}, {1, 0, 2, 0}}};
    for (const auto& c : cases) {
        auto document = MakeDocument({1, 8}, PatternBytes(4, 1));
        // Memory that held something else before, and a preview that plays.
        const std::vector<float> earlier(50000, 7);
        ASSERT_TRUE(document->MakePreview(earlier, CSoundDoc::PreviewPlay::kYes, 50000, c.format));
        ASSERT_TRUE(document->Preview().IsPlaying());
        ASSERT_TRUE(
            document->MakePreview(c.samples, CSoundDoc::PreviewPlay::kNo, c.lengthBytes, c.format));
        EXPECT_EQ(BytesOf(document->Preview()), c.expected);
        EXPECT_TRUE(document->Preview().IsStopped());
    }
}

TEST_F(SoundDocTest, RecordingGoesInAtTheCursorAsOneUndoStep) {
    auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
    ASSERT_TRUE(document->StartRecording());
    EXPECT_FALSE(edit::Delete(*document, {0, 5, 0})) << "no edits while recording";
    EXPECT_FALSE(document->Undo());
    devices_.In().Arrive(Bytes{1, 2, 3});
    NotingObserver observer;
    document->AddObserver(&observer);
    ASSERT_TRUE(document->StopRecording(4));
    Bytes expected = PatternBytes(10, 1);
    expected.insert(expected.begin() + 4, {1, 2, 3});
    EXPECT_EQ(BytesOf(document->Sound()), expected);
    EXPECT_EQ(observer.changes, std::vector<std::uint32_t>{4});
    ASSERT_TRUE(document->Undo());
    EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(10, 1));
}

TEST_F(SoundDocTest, RecordingNothingLeavesNoStep) {
    auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
    ASSERT_TRUE(document->StartRecording());
    EXPECT_FALSE(document->StopRecording(4));
    EXPECT_FALSE(document->CanUndo());
    EXPECT_FALSE(document->StopRecording(0)) << "nothing is being recorded any more";
    document->Sound().SetRecordDevice(kNoWaveDevice);
    EXPECT_FALSE(document->StartRecording());
    EXPECT_FALSE(document->CanUndo());
    auto empty = MakeDocument({1, 8}, {});
    ASSERT_TRUE(empty->StartRecording());
    devices_.In().Arrive(Bytes{1, 2, 3});
    ASSERT_TRUE(empty->StopRecording(0));
    EXPECT_EQ(empty->Sound().GetFrameCount(), 3u);
    EXPECT_EQ(empty->History().Count(), 0u) << "an empty sound is no state to go back to";
}

TEST(UntitledTitles, CountPerPrefix) {
    UntitledTitles titles;
    EXPECT_EQ(titles.Next(untitled_prefix::kRecorder), "Recorder_1");
    EXPECT_EQ(titles.Next(untitled_prefix::kRecorder), "Recorder_2");
    EXPECT_EQ(titles.Next(untitled_prefix::kPaste), "Paste_1");
}

TEST_F(DocumentTest, AsksBeforeItOverwritesWhatAnotherProgramWrote) {
    const auto path = folder_ / "shared.wav";
    const auto write = [&](std::size_t bytes) {
        EXPECT_TRUE(
            WriteWav(MakeSound({1, 16}, PatternBytes(bytes, 1)), path, MarkerSaving::kOn, {}));
    };
    write(100);
    auto document = MakeDocument();
    EXPECT_EQ(document->StateOfFile(), FileState::kNone);
    ASSERT_TRUE(document->OpenDocument(path));
    document->SetSaveMarkers(true);
    EXPECT_EQ(document->StateOfFile(), FileState::kAsItWas);
    EXPECT_TRUE(document->SaveDocument(path));
    EXPECT_TRUE(prompts_.questions.empty());

    write(200);
    EXPECT_EQ(document->StateOfFile(), FileState::kChanged);
    prompts_.answers = {false};
    EXPECT_TRUE(document->SaveDocument(path).IsCancelled());
    EXPECT_EQ(std::filesystem::file_size(path), 244u);
    ASSERT_EQ(prompts_.questions.size(), 1u);
    EXPECT_EQ(prompts_.questions[0],
              "The file was changed by another program. Overwrite, Save As, Cancel");
    // Another name is nobody else's, and a file that is gone cannot be overwritten.
    EXPECT_TRUE(document->SaveDocument(folder_ / "other.wav"));
    ASSERT_TRUE(document->OpenDocument(path));
    write(100);
    EXPECT_TRUE(document->SaveDocument(path, CSoundDoc::OtherWriters::kAccepted));
    std::filesystem::remove(path);
    EXPECT_EQ(document->StateOfFile(), FileState::kGone);
    EXPECT_TRUE(document->SaveDocument(path));
    EXPECT_EQ(document->StateOfFile(), FileState::kAsItWas);
    EXPECT_EQ(prompts_.questions.size(), 1u);
}

}  // namespace
}  // namespace sonavel::testing
