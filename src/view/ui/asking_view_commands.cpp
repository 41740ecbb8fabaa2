#include "view/ui/asking_view_commands.h"

#include <QInputDialog>

#include <algorithm>
#include <iterator>
#include <limits>

#include "sound/time_text.h"
#include "view/commands/edit_commands.h"
#include "view/commands/marker_commands.h"
#include "view/input/cursor_moves.h"
#include "view/ui/clipboard_contents_dialog.h"
#include "view/ui/go_to_dialog.h"
#include "view/ui/level_dialogs.h"
#include "view/ui/marker_dialog.h"
#include "view/ui/pauses_dialog.h"
#include "view/ui/spectrogram_dialog.h"
#include "view/ui/user_zoom_dialog.h"

namespace sonavel {

namespace {

bool IsAccepted(QDialog& dialog) {
    return dialog.exec() == QDialog::Accepted;
}

Outcome AskUserZoom(CSoundView& view, QWidget* parent) {
    const Result<UserZoom> shown = QuestionOfUserZoom(view);
    if (!shown) return shown.Ended();
    UserZoomDialog dialog(*shown, parent);
    if (!IsAccepted(dialog)) return Cancelled();
    view.Zoom().Apply(dialog.Choice());
    return Done();
}

Outcome AskGoTo(CSoundView& view, QWidget* parent) {
    const Result<GoToRequest> shown = QuestionOfGoTo(view);
    if (!shown) return shown.Ended();
    GoToDialog dialog(*shown, parent);
    return IsAccepted(dialog) ? GoToCursor(view, dialog.Choice()) : Cancelled();
}

using MarkerStart = MarkerDialogRequest::Start;

Outcome AskMarkers(CSoundView& view, MarkerStart start, std::uint32_t id, QWidget* parent) {
    const Result<MarkerDialogRequest> shown = QuestionOfMarkers(view, start, id);
    if (!shown) return shown.Ended();
    MarkerDialog dialog(*shown, parent);
    return IsAccepted(dialog) ? EditMarkers(view, dialog.Edits()) : Cancelled();
}

Outcome AskNewMarker(CSoundView& view, QWidget* parent) {
    return AskMarkers(view, MarkerStart::kAdd, 0, parent);
}

template <MarkerStart start>
Outcome AskFromNearestMarker(CSoundView& view, QWidget* parent) {
    return AskMarkers(view, start, NearestMarkerId(view, view.State().Cursor()), parent);
}

Outcome AskReplicateCount(CSoundView& view, QWidget* parent) {
    if (Outcome ready = PrepareClip(view); !ready) return ready;
    PasteReplicateDialog dialog(1, parent);
    return IsAccepted(dialog) ? PasteReplicate(view, dialog.Count()) : Cancelled();
}

Outcome AskSilence(CSoundView& view, QWidget* parent) {
    bool accepted = false;
    const QString text = QInputDialog::getText(parent, QObject::tr("Insert Silence"),
                                               QObject::tr("Length (1.5, 250ms, 1:02, 441000#):"),
                                               QLineEdit::Normal, QStringLiteral("1.0"), &accepted);
    if (!accepted) return Cancelled();
    const auto time =
        ParseTime(text.toStdString(), view.Sound().GetSamplesPerSecond(), BareNumber::kSeconds);
    const bool fits = time && time->from == TimeFrom::kStart && time->frames > 0 &&
                      time->frames <= std::numeric_limits<std::uint32_t>::max();
    if (!fits) return Failed("This is no length of time.");
    return InsertSilence(view, static_cast<std::uint32_t>(time->frames));
}

Outcome AskMix(CSoundView& view, QWidget* parent) {
    const Result<MixQuestion> shown = PrepareMix(view);
    if (!shown) return shown.Ended();
    MixDialog dialog(*shown, {}, parent);
    return IsAccepted(dialog) ? MixClipboard(view, dialog.Choice()) : Cancelled();
}

Outcome AskCrossfade(CSoundView& view, QWidget* parent) {
    const Result<MixQuestion> shown = PrepareMix(view);
    if (!shown) return shown.Ended();
    CrossfadeDialog dialog(*shown, {}, parent);
    return IsAccepted(dialog) ? CrossfadeMixClipboard(view, dialog.Choice()) : Cancelled();
}

Outcome ShowClipboardContents(CSoundView& view, QWidget* parent) {
    const Result<ClipboardContents> contents = ReadClipboardContents(view);
    if (!contents) return contents.Ended();
    const std::unique_ptr<ClipboardPreview> preview = MakeClipPlayer(view);
    ClipboardContentsDialog(*contents, *preview, parent).exec();
    return Done();
}

Outcome AskPauses(CSoundView& view, QWidget* parent) {
    PausesDialog dialog(view, parent);
    return IsAccepted(dialog) ? dialog.Apply() : Cancelled();
}

Outcome AskSpectrogram(CSoundView& view, QWidget* parent) {
    const SpectrogramSettings before = view.Settings().spectrogram;
    SpectrogramDialog dialog(before, parent);
    QObject::connect(&dialog, &SpectrogramDialog::Changed, &dialog,
                     [&] { view.ShowChosen(dialog.Choice()); });
    if (IsAccepted(dialog)) return StoreSpectrogram(view, dialog.Choice());
    view.ShowChosen(before);
    return Cancelled();
}

struct Question {
    int id;
    Outcome (*ask)(CSoundView& view, QWidget* parent);
};

constexpr Question kQuestions[] = {
    {view_command::kGoToCursor, AskGoTo},
    {view_command::kMarkerAdd, AskNewMarker},
    {view_command::kMarkerEdit, AskFromNearestMarker<MarkerStart::kEdit>},
    {view_command::kMarkerDelete, AskFromNearestMarker<MarkerStart::kList>},
    {view_command::kMarkerList, AskFromNearestMarker<MarkerStart::kList>},
    {view_command::kFindPauses, AskPauses},
    {view_command::kPasteReplicate, AskReplicateCount},
    {view_command::kInsertSilence, AskSilence},
    {view_command::kMix, AskMix},
    {view_command::kCrossfadeMix, AskCrossfade},
    {view_command::kClipboardContents, ShowClipboardContents},
    {view_command::kZoomUser, AskUserZoom},
    {view_command::kSpectrogramSettings, AskSpectrogram},
};

}  // namespace

Outcome AskingViewCommands::RunCommand(int id) {
    const auto* const question = std::ranges::find(kQuestions, id, &Question::id);
    if (question == std::end(kQuestions)) return SoundViewCommands::RunCommand(id);
    if (Outcome offered = Offered(id); !offered) return offered;
    return question->ask(View(), parent_);
}

Outcome AskAboutMarker(CSoundView& view, std::uint32_t markerId, QWidget* parent) {
    return AskMarkers(view, MarkerStart::kEdit, markerId, parent);
}

}  // namespace sonavel
