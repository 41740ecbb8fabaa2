// Sounds for the 3D editors, over fakes of everything else.
#pragma once

#include "spatial/ui/spatial_memory.h"
#include "support/recording_prompts.h"
#include "ui/live_devices.h"
#include "ui/view_fixture.h"

namespace sonavel {

// Notes the captions of the questions too.
class CaptionPrompts : public RecordingPrompts {
  public:
    bool AskYesNo(std::string_view text, std::string_view caption) override {
        captions.emplace_back(caption);
        return RecordingPrompts::AskYesNo(text, caption);
    }
    std::vector<std::string> captions;
};

class SpatialFixture : public ::testing::Test {
  protected:
    SpatialFixture() {
        TestApplication();
        EXPECT_TRUE(folder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS",
                                                 "SAVE UNDO REDO INFOMATION", 1));
        workspace_ = std::make_unique<Workspace>(services_);
        workspace_->SetInitialViewSize(400, 200);
    }

    // A square wave of 441 Hz in the first channel.
    void Open(unsigned channels, unsigned bits, std::uint32_t frames) {
        Sound copy;
        ASSERT_TRUE(copy.Create(channels, bits, 44100, frames));
        workspace_->NewDocumentFromSound(std::move(copy), "Test");
        for (std::uint32_t i = 0; i < frames; ++i)
            Document().Sound().SetSample(0, i, i / 50 % 2 ? 90 : -90);
        Document().SetModified(false);
    }

    CSoundDoc& Document() { return *workspace_->Active()->document; }
    CSoundView& View() { return *workspace_->Active()->view; }

    QTemporaryDir directory_;
    ProgramFolder folder_{directory_.path().toStdString()};
    CaptionPrompts prompts_;
    FakeProgress progress_;
    MemoryClipboard clipboard_;
    LiveTestDevices devices_{WavePace::kAsFastAsAsked};
    HostServices services_{prompts_, progress_, clipboard_, devices_, folder_};
    std::unique_ptr<Workspace> workspace_;
    SpatialMemory memory_;
};

}  // namespace sonavel
