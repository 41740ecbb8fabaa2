// The engine's dialogs as a script fills them: a command leaves its values here before it runs the
// menu command that asks for them. A dialog without values is cancelled.
#pragma once

#include <optional>

#include "document/document_dialogs.h"
#include "view/commands/view_dialogs.h"

namespace sonavel::batch {

// What the command save-as changes of what the dialog shows at first.
struct SaveAsWords {
    std::filesystem::path path;
    std::optional<unsigned> channels;
    std::optional<unsigned> bits;
    std::optional<bool> saveMarkers{};
};

// What the dialogs are filled with; each is used once.
struct DialogWords {
    std::optional<SaveAsWords> saveAs;
    std::optional<MixChoice> mix;
    std::optional<CrossfadeChoice> crossfade;
    std::optional<int> replicateCount;
};

class ScriptedDialogs : public DocumentDialogs, public ViewDialogs {
  public:
    DialogWords& Words() { return words_; }

    std::optional<NewSoundChoice> AskNewSound(const NewSoundChoice& initial) override;
    std::optional<SaveAsChoice> AskSaveAs(const SaveAsRequest& request) override;

    std::optional<UserZoom> AskUserZoom(const UserZoom& initial) override;
    std::optional<MixChoice> AskMix(const MixRange& range, const MixChoice& initial) override;
    std::optional<CrossfadeChoice> AskCrossfade(const MixRange& range,
                                                const CrossfadeChoice& initial) override;
    std::optional<int> AskReplicateCount(int initial) override;
    std::optional<GoToChoice> AskGoTo(const GoToRequest& request) override;
    std::optional<std::vector<MarkerEdit>> EditMarkers(const MarkerDialogRequest& request) override;
    void ShowClipboardContents(const ClipboardContents& contents,
                               ClipboardPreview& preview) override;
    std::optional<RecordChoice> AskRecord(const RecordRequest& request) override;

  private:
    DialogWords words_;
};

}  // namespace sonavel::batch
