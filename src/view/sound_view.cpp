#include "view/sound_view.h"

#include <utility>

namespace sonavel {
namespace {

OpeningZoom OpeningOf(const DocumentOptions& options) {
    return options.openAndFullTimeZoom ? OpeningZoom::kFullTime : OpeningZoom::kFit;
}

}  // namespace

CSoundView::CSoundView(CSoundDoc& document, ViewHost& host) : document_(document), host_(host) {
    document_.AddObserver(this);
}

CSoundView::~CSoundView() {
    document_.RemoveObserver(this);
}

// --- Sizes and settings

void CSoundView::Show(int width, int height) {
    TakeSettings();
    pictures_.Choose(settings_.display.picture);
    extremes_.NoteChange(0);
    channels_ = Sound().GetChannels();
    state_.Show(GeometryOf(width, height), OpeningOf(document_.Options()));
}

void CSoundView::TakeSettings() {
    settings_.Load(document_.Services().folder.Display().Read(), document_.OptionsText());
    pictures_.TakeOverview(settings_.display.overview);
    repaint_.Window().OnColoursChanged();
}

GeometryRequest CSoundView::GeometryOf(int width, int height) const {
    return settings_.Geometry(width, height, pictures_.Now());
}

void CSoundView::Resize(int width, int height) {
    if (state_.IsShown()) state_.Resize(GeometryOf(width, height));
}

void CSoundView::ReloadSettings() {
    document_.ReloadOptions();
    TakeSettings();
    ShowChosen(settings_.statusFormat);
    Resize(state_.Client().Width(), state_.Client().Height());
}

Outcome CSoundView::SetStatusFormat(StatusFormat format) {
    host_.OnChosen(format);
    ProfileFile options = document_.Services().folder.Options();
    return DoneIf(WriteStatusFormat(options, format), "Options.ini cannot be written.");
}

void CSoundView::ShowChosen(const ViewChoice& choice) {
    settings_.Take(choice);
    pictures_.TakeOverview(settings_.display.overview);
    playing_.RefreshPlayState();
    repaint_.Area(ViewArea::kAll);
    repaint_.Window().OnSelectionChanged();
}

Outcome CSoundView::Turn(ViewSwitch which, Turned turned) {
    host_.OnChosen(SwitchChoice{which, turned});
    ProfileFile options = document_.Services().folder.Options();
    return DoneIf(WriteNumber(options, SettingOf(which), turned == Turned::kOn ? 1 : 0),
                  "Options.ini cannot be written.");
}

const BlockExtremes& CSoundView::Extremes() const {
    extremes_.Refresh(Sound());
    return extremes_;
}

// --- The document

void CSoundView::OnSoundChanged(std::uint32_t firstChangedFrame) {
    const unsigned channels = Sound().GetChannels();
    const bool otherLanes = std::exchange(channels_, channels) != channels;
    extremes_.NoteChange(otherLanes ? 0 : firstChangedFrame);
    pictures_.Tiles().NoteChange(otherLanes ? 0 : firstChangedFrame);
    state_.ClampToSound();
    playing_.RefreshPlayState();
    if (state_.IsShown())
        Zoom().FollowSound(otherLanes ? ViewZoom::Lanes::kOthers : ViewZoom::Lanes::kKept);
}

void CSoundView::OnWaiting(Waiting waiting) {
    using enum SoundViewObserver::WaitCursor;
    repaint_.Window().SetWaitCursor(waiting == Waiting::kBegins ? kShow : kHide);
}

void ZoomDefault(CSoundView& view) {
    view.Zoom().ToDefault(OpeningOf(view.Document().Options()));
}

Outcome ShowAs(CSoundView& view, SoundPicture picture) {
    view.Pictures().Choose(picture);
    view.Resize(view.State().Client().Width(), view.State().Client().Height());
    ProfileFile display = view.Document().Services().folder.Display();
    return DoneIf(WriteSoundPicture(display, picture), "Display.ini cannot be written.");
}

Outcome StoreOverview(CSoundView& view, OverviewOf overview) {
    view.Host().OnChosen(overview);
    ProfileFile display = view.Document().Services().folder.Display();
    return DoneIf(WriteOverview(display, overview), "Display.ini cannot be written.");
}

Outcome StoreSpectrogram(CSoundView& view, const SpectrogramSettings& settings) {
    view.Host().OnChosen(settings);
    ProfileFile display = view.Document().Services().folder.Display();
    return settings.Write(display);
}

}  // namespace sonavel
