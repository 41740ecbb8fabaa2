// A cancel while a decoder delivers frames: nothing of the work is left, and what was open stays.
#include "codec_fixture.h"
#include "platform/headless/memory_clipboard.h"
#include "support/fake_wave_devices.h"
#include "support/recording_prompts.h"
#include "workspace/workspace.h"

namespace sonavel {
namespace {

// A person who cancels once something has come.
class ImpatientProgress : public ProgressFactory {
  public:
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view) override {
        ++openWindows;
        return std::make_unique<Window>(*this);
    }

    int last = 0;
    int openWindows = 0;

  private:
    class Window : public ProgressWindow {
      public:
        explicit Window(ImpatientProgress& owner) : owner_(owner) {}
        ~Window() override { --owner_.openWindows; }

        void SetRange(int, int) override {}
        void SetPosition(int position) override { owner_.last = position; }
        bool Poll() override { return owner_.last > 0; }

      private:
        ImpatientProgress& owner_;
    };
};

class CancelledImportTest : public CodecTest {
  protected:
    // Compressed sound of some minutes, which no pipe holds at once.
    void EncodeLong(SoundFileKind kind) {
        EncodeRequest request;
        request.kind = kind;
        request.rate = 48000;
        request.channels = 2;
        request.frames = 48000 * 120;
        BytesSource source(FileBytes(request.frames * request.BytesPerFrame()));
        const Outcome encoded = codecs.Encode(path, request, source);
        ASSERT_TRUE(encoded) << encoded.Reason();
    }

    std::filesystem::path path = folder / "long";
    RecordingPrompts prompts;
    ImpatientProgress progress;
    MemoryClipboard clipboard;
    FakeWaveDevices devices;
    TemporaryFolder ownFolder;
    ProgramFolder programFolder{ownFolder.Path()};
};

TEST_F(CancelledImportTest, LeavesNoDocumentNoFileAndNoChild) {
    CodecSetup setup = BuiltPrograms();
    setup.limits.slice = std::chrono::milliseconds(1);
    const ChildCodecs watching{setup};
    Workspace workspace({prompts, progress, clipboard, devices, programFolder, &watching});
    ASSERT_TRUE(workspace.NewDocument(NewSoundChoice{}));
    for (const SoundFileKind kind : {SoundFileKind::kFlac, SoundFileKind::kOggVorbis}) {
        EncodeLong(kind);
        progress.last = 0;
        EXPECT_TRUE(workspace.ImportDocument(path, {}).IsCancelled());
        EXPECT_LT(progress.last, 100) << "others were to come";
        EXPECT_EQ(progress.openWindows, 0);
        EXPECT_EQ(workspace.Count(), 1u);
        EXPECT_EQ(workspace.Active()->document->Title(), "Sound1");
        EXPECT_EQ(folder.FileCount(), 1u);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
    }
}

}  // namespace
}  // namespace sonavel
