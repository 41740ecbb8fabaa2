#include "view/ui/qt_view_dialogs.h"

#include "view/ui/clipboard_contents_dialog.h"
#include "view/ui/go_to_dialog.h"
#include "view/ui/level_dialogs.h"
#include "view/ui/marker_dialog.h"
#include "view/ui/record_dialog.h"
#include "view/ui/user_zoom_dialog.h"

namespace sonavel {

std::optional<UserZoom> QtViewDialogs::AskUserZoom(const UserZoom& initial) {
    UserZoomDialog dialog(initial, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

std::optional<MixChoice> QtViewDialogs::AskMix(const MixRange& range, const MixChoice& initial) {
    MixDialog dialog(range, initial, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

std::optional<CrossfadeChoice> QtViewDialogs::AskCrossfade(const MixRange& range,
                                                           const CrossfadeChoice& initial) {
    CrossfadeDialog dialog(range, initial, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

std::optional<int> QtViewDialogs::AskReplicateCount(int initial) {
    PasteReplicateDialog dialog(initial, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Count();
}

std::optional<GoToChoice> QtViewDialogs::AskGoTo(const GoToRequest& request) {
    GoToDialog dialog(request, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

std::optional<std::vector<MarkerEdit>> QtViewDialogs::EditMarkers(
    const MarkerDialogRequest& request) {
    MarkerDialog dialog(request, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Edits();
}

void QtViewDialogs::ShowClipboardContents(const ClipboardContents& contents,
                                          ClipboardPreview& preview) {
    ClipboardContentsDialog(contents, preview, parent_).exec();
}

std::optional<RecordChoice> QtViewDialogs::AskRecord(const RecordRequest& request) {
    CRecordDlg dialog(request, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

}  // namespace sonavel
