#include "workspace/workspace.h"

#include <sys/inotify.h>

#include <functional>
#include <set>

#include "platform/file_descriptor.h"
#include "view/commands/transport.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

class WorkspaceTest : public OpenViewTest {
  protected:
    WorkspaceTest() { workspace.SetInitialViewSize(kWidth, kHeight); }

    void Open(sonavel::Sound&& sound) override {
        workspace.NewDocumentFromSound(std::move(sound), "Ramp_");
    }
    CSoundView& View() override { return *workspace.Active()->view; }
    SoundViewCommands& Commands() override { return *workspace.Active()->commands; }

    struct Log : WorkspaceObserver {
        std::vector<std::string> events;
        void OnDocumentAdded(OpenSound& s) override { Note("added", &s); }
        void OnDocumentClosing(OpenSound& s) override { Note("closing", &s); }
        void OnActivated(OpenSound* s) override { Note("active", s); }
        void Note(const std::string& event, OpenSound* s) {
            events.push_back(event + " " + (s ? s->document->Title() : "none"));
        }
    };

    std::vector<std::string> Titles() {
        std::vector<std::string> titles;
        for (std::size_t i = 0; i < workspace.Count(); ++i)
            titles.push_back(workspace.At(i).document->Title());
        return titles;
    }

    void Arrive(std::size_t bytes, std::uint8_t value) {
        devices.In().Arrive(FileBytes(bytes, value));
    }

    Workspace workspace{services};
};

TEST_F(WorkspaceTest, ClosingActivatesTheOneActiveBeforeAndMovesTheOthersUp) {
    Log log;
    workspace.SetObserver(&log);
    for (int i = 0; i < 4; ++i) ASSERT_TRUE(workspace.NewDocument(NewSoundChoice{}));
    workspace.Activate(1);
    workspace.Activate(2);
    log.events.clear();
    workspace.Close(2);
    EXPECT_EQ(workspace.ActiveIndex(), 1u);
    EXPECT_EQ(Titles(), (std::vector<std::string>{"Sound1", "Sound2", "Sound4"}));
    for (int i = 0; i < 3; ++i) {  // the first of them is not the active one
        EXPECT_EQ(workspace.ActiveIndex(), i == 0 ? 1u : 0u);
        workspace.Close(0);
    }
    EXPECT_FALSE(workspace.ActiveIndex());
    EXPECT_EQ(workspace.Active(), nullptr);
    EXPECT_EQ(log.events, (std::vector<std::string>{
                              "closing Sound3", "active Sound2", "closing Sound1", "closing Sound2",
                              "active Sound4", "closing Sound4", "active none"}));
    // Numbers are never given twice.
    ASSERT_TRUE(workspace.NewDocument(NewSoundChoice{}));
    EXPECT_EQ(Titles(), (std::vector<std::string>{"Sound5"}));
    workspace.SetObserver(nullptr);
}

// How often a file is opened from here on.
class OpeningsOf {
  public:
    explicit OpeningsOf(const std::filesystem::path& path)
        : events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        // Alike events that follow each other are told as one.
        EXPECT_GE(inotify_add_watch(events_.Get(), path.c_str(), IN_OPEN | IN_CLOSE), 0);
    }
    std::size_t Count() {
        inotify_event event;
        while (read(events_.Get(), &event, sizeof event) > 0)
            if (event.mask & IN_OPEN) ++count_;
        return count_;
    }

  private:
    FileDescriptor events_;
    std::size_t count_ = 0;
};

TEST_F(WorkspaceTest, OpeningReadsEachFileOfSettingsOnce) {
    ProfileFile display = folder.Display();
    ASSERT_TRUE(display.SetInteger("__SOUND_DISPLAY_ITEMS", "VERTICAL RULER", 1));
    OpeningsOf options(folder.Options().Path());
    OpeningsOf displayFile(display.Path());
    ASSERT_TRUE(workspace.NewDocument(NewSoundChoice{}));
    EXPECT_EQ(options.Count(), 1u);
    EXPECT_EQ(displayFile.Count(), 1u);
    View().ReloadSettings();
    EXPECT_EQ(options.Count(), 2u);
    EXPECT_EQ(displayFile.Count(), 2u);
}

TEST_F(WorkspaceTest, PasteNewOpensTheSelectionAsADocumentOfItsOwn) {
    OpenRamp(5000, 2);
    View().State().SetSelection(100, 110);
    // The second time nothing is selected: the clipboard as it is.
    for (const char* title : {"Paste_1", "Paste_2"}) {
        EXPECT_TRUE(Run(view_command::kPasteNew));
        EXPECT_EQ(Document().Title(), title);
        EXPECT_EQ(workspace.ActiveIndex(), workspace.Count() - 1);
        EXPECT_EQ(Sound().GetChannels(), 2u);
        EXPECT_EQ(View().Zoom().Horizontal().maximum, 10);
        EXPECT_EQ(Samples(0, 10),
                  (std::vector<int>{100, 101, 102, 103, 104, 105, 106, 107, 108, 109}));
    }
    EXPECT_EQ(workspace.Count(), 3u);
}

TEST_F(WorkspaceTest, AStatusFormatReachesEveryOpenView) {
    OpenRamp(6400);
    CSoundView& other = View();
    FakeWindow otherWindow;
    other.SetObserver(&otherWindow);
    other.Playing().OnPlayState("(Stopped) ", 1500);
    OpenRamp(100);
    Watch();
    ASSERT_TRUE(Run(view_command::kStatusSample));
    EXPECT_EQ(other.Settings().statusFormat, StatusFormat::kSample);
    EXPECT_EQ(other.Playing().StatusText(), "(Stopped) 1500 / 6400");
    EXPECT_EQ(otherWindow.texts.back(), other.Playing().StatusText());
    // Rulers, grids and panes show positions.
    for (const FakeWindow* shown : {&window, &otherWindow}) {
        EXPECT_EQ(shown->areas.back(), ViewArea::kAll);
        EXPECT_GE(shown->selectionChanges, 1);
    }
    ASSERT_TRUE(folder.Options().SetInteger("__SOUND_OPTIONS", "Status Format", 2));
    other.ReloadSettings();
    EXPECT_EQ(other.Playing().StatusText(), "(Stopped) 1.500 / 6.400");
}

TEST_F(WorkspaceTest, ADocumentStandsOnceInTheOrderOfActivation) {
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(workspace.NewDocument(NewSoundChoice{}));
    for (const std::size_t index : {0u, 1u, 0u, 1u}) workspace.Activate(index);
    for (const char* title : {"Sound1", "Sound3"}) {
        workspace.Close(*workspace.ActiveIndex());
        EXPECT_EQ(Document().Title(), title);
    }
}

TEST_F(WorkspaceTest, StoppingEveryActivityStopsTheSoundAndItsPreview) {
    OpenRamp(6400);
    const std::vector<float> samples(12800);
    ASSERT_TRUE(Document().MakePreview(samples, CSoundDoc::PreviewPlay::kYes, 0,
                                       CSoundDoc::PreviewFormat::kComputedStereo));
    ASSERT_TRUE(Sound().Play(0));
    EXPECT_TRUE(workspace.StopActivity(0));
    EXPECT_TRUE(Sound().IsStopped());
    EXPECT_TRUE(Document().Preview().IsStopped());
}

TEST_F(WorkspaceTest, AFailedDocumentLeavesTheOthersAlone) {
    OpenRamp(100);
    EXPECT_EQ(workspace.NewDocument({0, 2, 16}), Failed("This format cannot be edited."));
    EXPECT_FALSE(workspace.OpenDocument(temporary.Path() / "missing.wav").Reason().empty());
    EXPECT_EQ(workspace.NewDocumentFromClip(), Failed("There is no sound on the clipboard."));
    EXPECT_EQ(workspace.Count(), 1u);
    EXPECT_EQ(workspace.ActiveIndex(), 0u);
    for (const char* title : {"Sound1", "Sound2"}) {
        EXPECT_TRUE(workspace.NewDocument({8000, 2, 16}));
        EXPECT_EQ(Sound().GetSamplesPerSecond(), 8000u);
        EXPECT_EQ(Document().Title(), title) << "what came to nothing takes no number";
    }
}

TEST_F(WorkspaceTest, AnOpenedFileIsShownFitted) {
    OpenRamp(6400);
    const auto path = temporary.Path() / "a.wav";
    Document().SetSaveMarkers(true);
    ASSERT_TRUE(Document().SaveDocument(path));
    ASSERT_TRUE(workspace.OpenDocument(path));
    EXPECT_EQ(workspace.IndexOfPath(path), 0u) << "the saved document took the path first";
    EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth);
    EXPECT_EQ(View().Extremes().BlockCount(), 25u);
}

TEST_F(WorkspaceTest, FindsAnOpenFileByItsPath) {
    OpenRamp(100);  // of no file
    for (const char* name : {"a.wav", "b.wav"}) {
        OpenRamp(100);
        Document().SetSaveMarkers(true);
        ASSERT_TRUE(Document().SaveDocument(temporary.Path() / name));
    }
    EXPECT_EQ(workspace.IndexOfPath(temporary.Path() / "a.wav"), 1u);
    EXPECT_EQ(workspace.IndexOfPath(temporary.Path() / "." / "b.wav"), 2u);
    EXPECT_FALSE(workspace.IndexOfPath(temporary.Path() / "c.wav"));
}

TEST_F(WorkspaceTest, StoppingEveryActivityEndsADragOfMarkers) {
    OpenRamp(100);
    for (const std::uint32_t frame : {10u, 20u}) {
        MarkerList markers;
        markers.Add(frame, "dragged", 0);
        Document().SetMarkers(markers, CSoundDoc::MarkerEditing::kGoesOn);
        EXPECT_TRUE(workspace.StopActivity(0));
    }
    EXPECT_EQ(Document().History().Count(), 2u);
    ASSERT_TRUE(Document().CanUndo());
    ASSERT_TRUE(workspace.Record({RecordChoice::Target::kActiveDocument, {}, true, 0}));
    EXPECT_FALSE(Document().CanUndo() || Document().Undo());
}

TEST_F(WorkspaceTest, OpenAndFullTimeZoomShowsAFrameAPixel) {
    SetOption("__SOUND_GENERAL_OPTIONS", "OPEN AND FULL TIME ZOOM", 1);
    OpenRamp(6400);
    EXPECT_EQ(View().Zoom().TimeRatio(), 1);
}

TEST_F(WorkspaceTest, RecordingIntoNewDocumentsCountsTheirTitles) {
    const RecordChoice record{RecordChoice::Target::kNewDocument, {8000, 1, 8}, false, 40000};
    for (const char* title : {"Recorder_1", "Recorder_2"}) {
        ASSERT_TRUE(workspace.Record(record));
        EXPECT_EQ(Document().Title(), title);
        EXPECT_TRUE(Sound().IsRecording());
        Arrive(300, 77);
        EXPECT_NE(View().Playing().StatusText().find("(Recording)"), std::string::npos);
        EXPECT_TRUE(StopTransport(View()));
        EXPECT_EQ(View().FrameCount(), 300u);
        EXPECT_EQ(Sound().Bytes()[299], 77);
        EXPECT_EQ(View().Zoom().Horizontal().maximum, 300) << "fitted";
        EXPECT_EQ(Document().History().Count(), 0u);
    }
    // The waiting setting is kept, within its bounds, for the next time.
    const Result<RecordRequest> next = workspace.QuestionOfRecord();
    ASSERT_TRUE(next);
    EXPECT_FALSE(next->initial.waiting);
    EXPECT_EQ(next->initial.waitingTenths, kHighestWaitingTenths);
}

TEST_F(WorkspaceTest, ARecordingThatDoesNotStartSaysWhy) {
    RecordChoice record{RecordChoice::Target::kNewDocument, {0, 1, 8}, true, -3};
    EXPECT_EQ(workspace.Record(record).Reason(), "This format cannot be edited.");
    EXPECT_EQ(workspace.Count(), 0u);
    const Result<RecordRequest> next = workspace.QuestionOfRecord();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->initial.target, RecordChoice::Target::kNewDocument);
    EXPECT_EQ(next->initial.waitingTenths, 0);
    record.format = {8000, 1, 8};
    devices.In().failures["open"] = kWaveAllocated;
    const Outcome started = workspace.Record(record);
    EXPECT_EQ(started, Failed(prompts.messages.back()));
}

TEST_F(WorkspaceTest, RecordingIntoTheActiveDocumentInsertsAtTheCursor) {
    OpenRamp(1000, 1, 16, 8000);
    View().State().SetCursor(500);
    const RecordChoice record{RecordChoice::Target::kActiveDocument, {11025, 2, 8}, true, 5};
    const Result<RecordRequest> asked = workspace.QuestionOfRecord();
    ASSERT_TRUE(asked && asked->documentFormat);
    EXPECT_EQ(asked->initial.format.samplesPerSecond, 8000u);
    EXPECT_EQ(asked->initial.format.bits, 16u);
    EXPECT_EQ(asked->documentFormat->samplesPerSecond, 8000u);
    EXPECT_EQ(asked->initial.target, RecordChoice::Target::kActiveDocument);
    Watch();
    ASSERT_TRUE(workspace.Record(record));
    EXPECT_EQ(window.transportChanges, 1);
    EXPECT_FALSE(workspace.QuestionOfRecord()) << "already recording";
    for (const int command : {view_command::kPlay, view_command::kUndo}) EXPECT_FALSE(Run(command));
    Arrive(400, 0);
    EXPECT_TRUE(Run(view_command::kSpaceKey));
    EXPECT_EQ(View().FrameCount(), 1200u);
    EXPECT_EQ(Samples(499, 2), (std::vector<int>{499, 0}));
    EXPECT_EQ(Samples(699, 2), (std::vector<int>{0, 500}));
    EXPECT_EQ(View().Extremes().BlockCount(), 5u);
    EXPECT_TRUE(Run(view_command::kUndo));
    EXPECT_EQ(View().FrameCount(), 1000u);
}

TEST_F(WorkspaceTest, EveryWayToStopARecordingShowsTheWaitCursorAndFitsTheWindow) {
    const RecordChoice record{RecordChoice::Target::kActiveDocument, {}, true, 0};
    const std::function<bool()> ways[] = {
        [&] { return Run(view_command::kStop); }, [&] { return Run(view_command::kSpaceKey); },
        [&] { return workspace.StopActivity(0) && !Sound().IsRecording(); }};
    using enum SoundViewObserver::WaitCursor;
    OpenRamp(6400);
    for (const auto& stop : ways) {
        Watch();
        ASSERT_TRUE(workspace.Record(record));
        Arrive(400, 0);
        View().Zoom().Time(TimeZoomFull);
        window.waitCursors.clear();
        EXPECT_TRUE(stop());
        EXPECT_EQ(window.waitCursors, (std::vector{kShow, kHide}));
        EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth);
    }
    ASSERT_TRUE(workspace.Record(record));
    EXPECT_FALSE(Run(view_command::kStop));
    EXPECT_EQ(ended.Reason(), "Nothing was recorded.");
    EXPECT_EQ(window.waitCursors.back(), kHide);
}

TEST_F(WorkspaceTest, ARecordingThatLosesItsDeviceIsInsertedAtTheCursorBeforeTheErrorIsShown) {
    const RecordChoice record{RecordChoice::Target::kActiveDocument, {}, true, 0};
    const struct {
        std::size_t bytes;  // that arrive
        std::uint32_t frames;
    } cases[] = {{400, 1200}, {0, 1000}};
    for (const auto& c : cases) {
        OpenRamp(1000, 1, 16, 8000);
        View().State().SetCursor(500);
        Watch();
        prompts.messages.clear();
        ASSERT_TRUE(workspace.Record(record));
        Arrive(c.bytes, 0);
        devices.In().Lose(kWaveNoDriver);
        EXPECT_TRUE(Sound().IsStopped());
        EXPECT_EQ(prompts.messages, std::vector<std::string>{"no device driver present"});
        EXPECT_EQ(window.texts.back().rfind("(Stopped) ", 0), 0u);
        ASSERT_EQ(View().FrameCount(), c.frames);
        EXPECT_EQ(Samples(c.frames - 500, 2), (std::vector<int>{500, 501}));
        EXPECT_EQ(View().Extremes().BlockCount(), (c.frames + 255) / 256);
        EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth) << "fitted";
        EXPECT_EQ(Document().GetModified(), c.bytes > 0);
        EXPECT_EQ(Document().History().Count(), c.bytes > 0 ? 1u : 0u);
    }
}

TEST_F(WorkspaceTest, ClosingKeepsWhatWasRecorded) {
    const RecordChoice record{RecordChoice::Target::kNewDocument, {8000, 1, 8}, true, 0};
    ASSERT_TRUE(workspace.Record(record));
    Arrive(256, 5);
    EXPECT_TRUE(workspace.StopActivity(0));
    EXPECT_EQ(View().FrameCount(), 256u);
    EXPECT_TRUE(Document().GetModified()) << "so that closing asks";
    ASSERT_TRUE(Sound().Play(0));
    workspace.Close(0);
    EXPECT_FALSE(devices.Out().open);
}

TEST_F(WorkspaceTest, CommandIdsAndKeysAreUniqueButForTheSpaceBar) {
    std::set<int> ids;
    std::set<std::string> names;
    std::multiset<std::string> keys;
    for (const auto& row : ViewCommands()) {
        EXPECT_TRUE(ids.insert(row.info.id).second) << row.info.id;
        const bool newName = !*row.info.name || names.insert(row.info.name).second;
        EXPECT_TRUE(newName) << row.info.name;
        if (*row.info.shortcut) keys.insert(row.info.shortcut);
        EXPECT_NE(*row.info.prompt, '\0') << row.info.id;
    }
    for (const std::string& key : keys) EXPECT_EQ(keys.count(key), key == "Space" ? 3u : 1u) << key;
}

}  // namespace
}  // namespace sonavel
