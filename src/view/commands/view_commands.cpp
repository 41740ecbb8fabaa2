#include "view/commands/view_commands.h"

#include "view/commands/edit_commands.h"
#include "view/commands/marker_commands.h"
#include "view/commands/place_commands.h"
#include "view/commands/transport.h"
#include "view/commands/view_conditions.h"
#include "view/commands/view_words.h"
#include "view/input/cursor_moves.h"

namespace sonavel {
namespace {

using namespace view_command;
using namespace view_condition;

template <Condition condition>
CommandState When(const CSoundView& view) {
    return {condition(view) == nullptr, false};
}

using StateFunction = CommandState (*)(const CSoundView&);

struct NamedCondition {
    StateFunction state;
    Condition condition;
};

constexpr NamedCondition kConditions[] = {
    {When<IsIdle>, IsIdle},
    {When<HasSound>, HasSound},
    {When<HasSelection>, HasSelection},
    {When<HasClip>, HasClip},
    {When<CanPlay>, CanPlay},
    {When<CanStop>, CanStop},
    {When<CanPause>, CanPause},
    {When<CanUseSpace>, CanUseSpace},
    {When<CanRemove>, CanRemove},
    {When<CanPaste>, CanPaste},
    {When<CanOverwrite>, CanOverwrite},
    {When<CanPasteNew>, CanPasteNew},
    {When<CanUndo>, CanUndo},
    {When<CanRedo>, CanRedo},
    {When<HasMarkers>, HasMarkers},
    {When<CanDelete>, CanDelete},
    {When<HadSelection>, HadSelection},
    {When<HasZoomBack>, HasZoomBack},
    {When<HasZoomForward>, HasZoomForward},
    {When<CanMakeRegion>, CanMakeRegion},
};

template <StatusFormat format>
CommandState Shows(const CSoundView& view) {
    return {true, view.Settings().statusFormat == format};
}

template <ViewSwitch which>
CommandState IsOn(const CSoundView& view) {
    return {true, view.Settings().IsOn(which)};
}

template <SoundPicture picture>
CommandState Pictures(const CSoundView& view) {
    return {true, view.Pictures().Now() == picture};
}

CommandState HasOverview(const CSoundView& view) {
    return {true, view.Pictures().ShowsOverview()};
}

// --- Handlers of fixed arguments

template <auto move, int pixels, MoveMode mode>
Outcome Moved(CSoundView& view) {
    return move(view, pixels, mode);
}

template <ZoomFunction zoom>
Outcome ZoomedTime(CSoundView& view) {
    view.Zoom().Time(zoom);
    return Done();
}

template <ZoomFunction zoom>
Outcome ZoomedLevel(CSoundView& view) {
    view.Zoom().Level(zoom);
    return Done();
}

Outcome ZoomedDefault(CSoundView& view) {
    ZoomDefault(view);
    return Done();
}

template <StatusFormat format>
Outcome Format(CSoundView& view) {
    return view.SetStatusFormat(format);
}

template <SoundPicture picture>
Outcome ShownAs(CSoundView& view) {
    return ShowAs(view, picture);
}

template <ViewSwitch which>
Outcome Turns(CSoundView& view) {
    return TurnRound(view, which);
}

std::string UndoText(const CSoundView& view) {
    return view.Document().History().UndoMenuText(UndoHistory::MenuPass::kSecond);
}

std::string RedoText(const CSoundView& view) {
    return view.Document().History().RedoMenuText();
}

// --- The table

using Row = Command<CSoundView>;

constexpr decltype(Row::run) kAsksFirst = nullptr;

using enum WhileWorking;

constexpr Row kTable[] = {
    // Playing
    {{kPlay, "", "&Playback", "Space", "Play the selection, or from the cursor on", kOnFreeSounds},
     Playback,
     When<CanPlay>},
    {{kPlayLooped, "", "Play &Looped", "Shift+Space", "Play again and again", kOnFreeSounds},
     PlayLooped,
     When<CanPlay>},
    {{kPlayToEnd, "", "Play to &End", "Ctrl+Space", "Play the whole sound", kOnFreeSounds},
     PlayToEnd,
     When<CanPlay>},
    {{kStop, "", "&Stop", "Space", "Stop playing or recording", kOnFreeSounds},
     StopTransport,
     When<CanStop>},
    {{kPause, "", "P&ause", "Return; Enter", "Pause, or go on playing", kOnFreeSounds},
     PauseTransport,
     When<CanPause>},
    {{kSpaceKey, "", "", "Space", "Play or stop", kOnFreeSounds}, PressSpace, When<CanUseSpace>},
    {{kPreviewCut, "", "Preview cut/cursor", "", "Play what surrounds the selection or the cursor",
      kOnFreeSounds},
     PreviewCut,
     When<CanPlay>},
    {{kPreRoll, "", "Pre-roll to Cursor", "", "Play up to the cursor", kOnFreeSounds},
     PreRollToCursor,
     When<CanPlay>},
    {{kPlayFollowsClicks, "", "Play Follows &Clicks", "",
      "While it is played, let a click in the waveform have it go on there", kOnFreeSounds},
     Turns<ViewSwitch::kPlayFollowsClicks>,
     IsOn<ViewSwitch::kPlayFollowsClicks>},

    // Cursor and selection
    {{kStart, "cursor-start", "Start", "Ctrl+Home; Home", "Go to the start of the sound",
      kOnFreeSounds},
     MoveCursorToStart,
     When<HasSound>},
    {{kEnd, "cursor-end", "End", "Ctrl+End; End", "Go to the end of the sound", kOnFreeSounds},
     MoveCursorToEnd,
     When<HasSound>},
    {{kRewind, "", "Rewind", "Ctrl+Left", "Move the cursor back", kOnFreeSounds},
     Moved<MoveCursorLeft, kFarMovePixels, MoveMode::kCollapse>,
     When<HasSound>},
    {{kForward, "", "Forward", "Ctrl+Right", "Move the cursor forward", kOnFreeSounds},
     Moved<MoveCursorRight, kFarMovePixels, MoveMode::kCollapse>,
     When<HasSound>},
    {{kCursorLeft, "", "", "Left", "Move the cursor back by a pixel", kOnFreeSounds},
     Moved<MoveCursorLeft, 1, MoveMode::kCollapse>,
     When<HasSound>},
    {{kCursorRight, "", "", "Right", "Move the cursor forward by a pixel", kOnFreeSounds},
     Moved<MoveCursorRight, 1, MoveMode::kCollapse>,
     When<HasSound>},
    {{kExtendLeft, "", "", "Shift+Left", "Extend the selection back by a pixel", kOnFreeSounds},
     Moved<MoveCursorLeft, 1, MoveMode::kExtend>,
     When<HasSound>},
    {{kExtendRight, "", "", "Shift+Right", "Extend the selection forward by a pixel",
      kOnFreeSounds},
     Moved<MoveCursorRight, 1, MoveMode::kExtend>,
     When<HasSound>},
    {{kExtendLeftFar, "", "", "Ctrl+Shift+Left", "Extend the selection back", kOnFreeSounds},
     Moved<MoveCursorLeft, kFarMovePixels, MoveMode::kExtend>,
     When<HasSound>},
    {{kExtendRightFar, "", "", "Ctrl+Shift+Right", "Extend the selection forward", kOnFreeSounds},
     Moved<MoveCursorRight, kFarMovePixels, MoveMode::kExtend>,
     When<HasSound>},
    {{kSelectToStart, "", "", "Shift+Home; Ctrl+Shift+Home", "Select to the start", kOnFreeSounds},
     SelectToStart,
     When<HasSound>},
    {{kSelectToEnd, "", "", "Shift+End; Ctrl+Shift+End", "Select to the end", kOnFreeSounds},
     SelectToEnd,
     When<HasSound>},
    {{kSelectAll, "select-all", "Select &All", "Ctrl+A", "Select the whole sound", kOnFreeSounds},
     SelectAll,
     When<HasSound>},
    {{kGoToCursor, "", "&Go to Cursor...\tCtrl+G", "Ctrl+G", "Set the cursor to a frame or a time"},
     kAsksFirst,
     When<HasSound>},
    {{kSelectToNextMarker, "", "Select to &Next Marker", "Alt+Shift+Down",
      "Select from here to the next marker", kOnFreeSounds},
     SelectToNextMarker,
     When<HasSound>},
    {{kLastSelection, "", "&Last Selection", "Ctrl+Alt+Z",
      "Bring the selection back that was there before", kOnFreeSounds},
     SelectLastAgain,
     When<HadSelection>},
    {{kSnapToZero, "", "Snap to &Zero Crossings", "Z",
      "Let the mouse select where the sound passes through zero; Shift while dragging turns it "
      "round",
      kOnFreeSounds},
     Turns<ViewSwitch::kSnapping>,
     IsOn<ViewSwitch::kSnapping>},

    // Markers
    {{kDropNamedMarker, "", "Drop and Na&me", "Shift+M",
      "Set a marker at the cursor, or where it plays, and type its name"},
     AskNameOfNewMarker,
     When<HasSound>},
    {{kMarkerRename, "", "&Rename", "F2", "Type another name for the chosen marker"},
     AskNameOfMarker,
     When<HasMarkers>},
    {{kNextMarker, "", "&Next", "Alt+Down", "Go to the next marker", kOnFreeSounds},
     GoToNextMarker,
     When<HasMarkers>},
    {{kPreviousMarker, "", "&Previous", "Alt+Up", "Go to the marker before", kOnFreeSounds},
     GoToPreviousMarker,
     When<HasMarkers>},
    {{kMarkerPlay, "", "&Play Region", "", "Play the marker's region, or up to the next marker",
      kOnFreeSounds},
     PlayMarkerRegion,
     When<HasMarkers>},
    {{kMarkerSelect, "", "&Select Region", "",
      "Select the marker's region, or up to the next marker", kOnFreeSounds},
     SelectMarkerRegion,
     When<HasMarkers>},
    {{kMarkerFromSelection, "", "Make Region from Se&lection", "",
      "Let the marker stand for what is selected"},
     MakeRegionFromSelection,
     When<CanMakeRegion>},
    {{kMarkerRemove, "", "De&lete Marker", "", "Delete the chosen marker"},
     RemoveChosenMarker,
     When<HasMarkers>},
    {{kFindPauses, "", "&Find Pauses...", "", "Mark pauses, or the sound between them"},
     kAsksFirst,
     When<HasSound>},
    {{kDropMarker, "", "Drop Marker", "M", "Set a marker at the cursor"},
     DropMarker,
     When<HasSound>},
    {{kMarkerAdd, "", "Add", "", "Add a marker"}, kAsksFirst, When<HasSound>},
    {{kMarkerEdit, "", "Edit", "", "Edit the marker nearest to the cursor"},
     kAsksFirst,
     When<HasMarkers>},
    {{kMarkerDelete, "", "Delete", "", "Delete markers"}, kAsksFirst, When<HasMarkers>},
    {{kMarkerList, "", "Lis&t...", "Alt+Shift+M",
      "Show all markers by their places, to be renamed, moved and deleted"},
     kAsksFirst,
     When<HasMarkers>},

    // History
    {{kUndo, "undo", "&Undo", "Ctrl+Z", "Take the last edit back"},
     UndoEdit,
     When<CanUndo>,
     UndoText},
    {{kRedo, "redo", "&Redo", "Ctrl+Y", "Bring an edit back that was undone"},
     RedoEdit,
     When<CanRedo>,
     RedoText},

    // Clipboard
    {{kCut, "cut", "Cu&t", "Ctrl+X", "Move the selection to the clipboard"},
     CutSelection,
     When<CanRemove>},
    {{kCopy, "copy", "&Copy", "Ctrl+C", "Copy the selection to the clipboard"},
     CopySelection,
     When<HasSelection>},
    {{kDelete, "delete", "&Delete", "Del", "Block Delete ..."}, DeleteChosen, When<CanDelete>},
    {{kCrop, "crop", "C&rop to Selection", "", "Remove what lies outside the selection"},
     CropToSelection,
     When<CanRemove>},
    {{kInsertSilence, "", "Insert &Silence...", "", "Make room at the cursor or in the selection"},
     kAsksFirst,
     When<IsIdle>},
    {{kPaste, "paste", "Pa&ste", "Ctrl+V", "Insert the clipboard at the cursor"},
     Paste,
     When<CanPaste>},
    {{kPasteOverwrite, "paste-overwrite", "Paste overwrite..", "",
      "Write the clipboard over the selection once"},
     PasteOverwrite,
     When<CanOverwrite>},
    {{kPasteBlockOverwrite, "paste-block-overwrite", "Paste Block Overwrite", "",
      "Fill the selection with the clipboard"},
     PasteBlockOverwrite,
     When<CanOverwrite>},
    {{kPasteBlockCopy, "paste-block-copy", "Paste Block Copy", "",
      "Write as many whole copies of the clipboard over the selection as fit"},
     PasteBlockCopy,
     When<CanOverwrite>},
    {{kPasteReplicate, "", "Paste Rep&licate", "Ctrl+L", "Insert the clipboard several times"},
     kAsksFirst,
     When<CanPaste>},
    {{kPasteNew, "paste-new", "Paste N&ew", "Ctrl+E",
      "Open the selection or the clipboard as a new document"},
     PasteNew,
     When<CanPasteNew>},
    {{kMix, "", "Mix...", "Ctrl+M", "Insert Mix Clipboard contents"}, kAsksFirst, When<CanPaste>},
    {{kCrossfadeMix, "", "Crosfade Mix...", "Ctrl+S", "Mix the clipboard in with fading levels"},
     kAsksFirst,
     When<CanPaste>},
    {{kClipboardContents, "", "Clipboard C&ontents...", "", "Show what the clipboard holds"},
     kAsksFirst,
     When<HasClip>},

    // Zoom
    {{kZoomTimeIn, "zoom-time-in", "Zoom In\tUp", "Up", "Show less time, larger", kOnFreeSounds},
     ZoomedTime<TimeZoomIn>},
    {{kZoomTimeOut, "zoom-time-out", "Zoom Out\tDown", "Down", "Show more time", kOnFreeSounds},
     ZoomedTime<TimeZoomOut>},
    {{kZoomTimeFull, "zoom-time-full", "Zoom In Full", "", "Show every frame as a pixel",
      kOnFreeSounds},
     ZoomedTime<TimeZoomFull>},
    {{kZoomLevelIn, "zoom-level-in", "Zoom In\tShift+Up", "Shift+Up", "Show levels larger",
      kOnFreeSounds},
     ZoomedLevel<LevelZoomIn>},
    {{kZoomLevelOut, "zoom-level-out", "Zoom Out\tShift+Down", "Shift+Down", "Show levels smaller",
      kOnFreeSounds},
     ZoomedLevel<LevelZoomOut>},
    {{kZoomLevelFull, "zoom-level-full", "Zoom In Full", "", "Show levels as large as possible",
      kOnFreeSounds},
     ZoomedLevel<LevelZoomFull>},
    {{kZoomSelection, "zoom-selection", "Zoom In Selection", "",
      "Fill the window with the selection", kOnFreeSounds},
     ZoomSelection,
     When<HasSelection>},
    {{kZoomUser, "", "Zoom User Define", "", "Choose what to show in numbers"},
     kAsksFirst,
     When<HasSound>},
    {{kZoomDefault, "zoom-default", "Zoom Default\tCtrl+0", "Ctrl+0", "Go back to the first zoom",
      kOnFreeSounds},
     ZoomedDefault},

    {{kPreviousZoom, "", "Pre&vious Zoom", "Alt+Left", "Go back to what was in sight before",
      kOnFreeSounds},
     GoToPreviousZoom,
     When<HasZoomBack>},
    {{kNextZoom, "", "&Next Zoom", "Alt+Right", "Go forward again", kOnFreeSounds},
     GoToNextZoom,
     When<HasZoomForward>},

    // What is shown
    {{kShowWaveform, "", "W&aveform", "Ctrl+Alt+1", "Show the sound as a waveform", kOnFreeSounds},
     ShownAs<SoundPicture::kWaveform>,
     Pictures<SoundPicture::kWaveform>},
    {{kShowSpectrogram, "", "Spectro&gram", "Ctrl+Alt+2",
      "Show how loud the sound is at which frequency", kOnFreeSounds},
     ShownAs<SoundPicture::kSpectrogram>,
     Pictures<SoundPicture::kSpectrogram>},
    {{kShowBoth, "", "&Both", "Ctrl+Alt+3", "Show the waveform with the spectrogram below it",
      kOnFreeSounds},
     ShownAs<SoundPicture::kBoth>,
     Pictures<SoundPicture::kBoth>},
    {{kSpectrogramSettings, "", "Spe&ctrogram Settings...", "",
      "Choose window, frequencies, range and colors of the spectrogram"},
     kAsksFirst},
    {{kOverview, "", "Overview", "", "Show the whole sound in a strip over the waveform",
      kOnFreeSounds},
     SwitchOverview,
     HasOverview},

    // Status format
    {{kStatusSample, "", "&Sample", "", "Show positions as sample numbers", kOnFreeSounds},
     Format<StatusFormat::kSample>,
     Shows<StatusFormat::kSample>},
    {{kStatusTime, "", "&Time", "", "Show positions as hours, minutes and seconds", kOnFreeSounds},
     Format<StatusFormat::kTime>,
     Shows<StatusFormat::kTime>},
    {{kStatusSecond, "", "Se&cond", "", "Show positions in seconds", kOnFreeSounds},
     Format<StatusFormat::kSecond>,
     Shows<StatusFormat::kSecond>},
};

const Row* FindRow(int id) {
    for (const Row& row : kTable)
        if (row.info.id == id) return &row;
    return nullptr;
}

}  // namespace

std::span<const Command<CSoundView>> ViewCommands() {
    return kTable;
}

SoundViewCommands::SoundViewCommands(CSoundView& view)
    : TableCommandTarget<CSoundView>(view, kTable), view_(view) {}

Outcome SoundViewCommands::RunCommand(int id) {
    if (Outcome offered = Offered(id); !offered) return offered;
    const Row* row = FindRow(id);
    const DescribedStep step(view_.Document().Steps(), WordsOf(view_, row ? row->info.name : ""));
    return TableCommandTarget<CSoundView>::RunCommand(id);
}

Outcome SoundViewCommands::Offered(int id) const {
    const Row* row = FindRow(id);
    for (const NamedCondition& named : kConditions)
        if (row && named.state == row->state)
            if (const char* reason = named.condition(view_)) return Failed(reason);
    return Done();
}

}  // namespace sonavel
