#include "batch/scripted_dialogs.h"

#include <utility>

namespace sonavel::batch {

std::optional<NewSoundChoice> ScriptedDialogs::AskNewSound(const NewSoundChoice&) {
    return std::nullopt;
}

std::optional<SaveAsChoice> ScriptedDialogs::AskSaveAs(const SaveAsRequest& request) {
    const std::optional<SaveAsWords> words = std::exchange(words_.saveAs, std::nullopt);
    if (!words) return std::nullopt;
    return SaveAsChoice{.path = words->path,
                        .channels = words->channels.value_or(request.channels),
                        .bits = words->bits.value_or(request.bits),
                        .saveMarkers = words->saveMarkers.value_or(request.saveMarkers)};
}

std::optional<UserZoom> ScriptedDialogs::AskUserZoom(const UserZoom&) {
    return std::nullopt;
}

std::optional<MixChoice> ScriptedDialogs::AskMix(const MixRange&, const MixChoice&) {
    return std::exchange(words_.mix, std::nullopt);
}

std::optional<CrossfadeChoice> ScriptedDialogs::AskCrossfade(const MixRange&,
                                                             const CrossfadeChoice&) {
    return std::exchange(words_.crossfade, std::nullopt);
}

std::optional<int> ScriptedDialogs::AskReplicateCount(int) {
    return std::exchange(words_.replicateCount, std::nullopt);
}

std::optional<GoToChoice> ScriptedDialogs::AskGoTo(const GoToRequest&) {
    return std::nullopt;
}

std::optional<std::vector<MarkerEdit>> ScriptedDialogs::EditMarkers(const MarkerDialogRequest&) {
    return std::nullopt;
}

void ScriptedDialogs::ShowClipboardContents(const ClipboardContents&, ClipboardPreview&) {}

std::optional<RecordChoice> ScriptedDialogs::AskRecord(const RecordRequest&) {
    return std::nullopt;
}

}  // namespace sonavel::batch
