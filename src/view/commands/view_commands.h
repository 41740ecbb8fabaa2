// The command table of the view: playing, cursor, zoom, editing, history, markers, status format.
#pragma once

#include <span>
#include <string>

#include "platform/command_table.h"
#include "view/sound_view.h"

namespace sonavel {

namespace view_command {
enum Id : int {
    kPlay = 32771,
    kPlayLooped = 32772,
    kPlayToEnd = 32773,
    kStop = 32774,
    kPause = 32775,
    kRewind = 32776,
    kForward = 32777,
    kStart = 32778,
    kEnd = 32780,
    kZoomLevelIn = 32782,
    kZoomLevelOut = 32783,
    kZoomTimeIn = 32786,
    kZoomTimeOut = 32787,
    kZoomSelection = 32790,
    kDelete = 32792,
    kMix = 32794,
    kPasteNew = 32795,
    kPasteOverwrite = 32797,
    kPasteReplicate = 32798,
    kPasteBlockOverwrite = 32804,
    kPasteBlockCopy = 32805,
    kZoomUser = 32808,
    kZoomDefault = 32809,
    kStatusSample = 32835,
    kStatusTime = 32836,
    kStatusSecond = 32837,
    kPreviewCut = 32840,
    kPreRoll = 32841,
    kZoomTimeFull = 32870,
    kZoomLevelFull = 32871,
    kGoToCursor = 32873,
    kCrossfadeMix = 32914,
    kDropMarker = 32915,
    kMarkerDelete = 32916,
    kMarkerAdd = 32917,
    kMarkerEdit = 32918,
    kCopy = 57634,
    kCut = 57635,
    kPaste = 57637,
    kSelectAll = 57642,
    kUndo = 57643,
    kRedo = 57644,
    // Keys, and commands that came later.
    kClipboardContents = 33001,
    kCrop = 33220,
    kInsertSilence = 33221,
    kSpaceKey = 33010,
    kCursorLeft = 33011,
    kCursorRight = 33012,
    kExtendLeft = 33013,
    kExtendRight = 33014,
    kExtendLeftFar = 33015,
    kExtendRightFar = 33016,
    kSelectToStart = 33019,
    kSelectToEnd = 33020,
    kPreviousMarker = 33401,
    kNextMarker = 33402,
    kSelectToNextMarker = 33403,
    kLastSelection = 33404,
    kSnapToZero = 33405,
    kPreviousZoom = 33406,
    kNextZoom = 33407,
    kDropNamedMarker = 33408,
    kMarkerRename = 33409,
    kMarkerPlay = 33410,
    kMarkerSelect = 33411,
    kMarkerFromSelection = 33412,
    kMarkerRemove = 33413,
    kFindPauses = 33414,
    kShowWaveform = 33420,
    kShowSpectrogram = 33421,
    kShowBoth = 33422,
    kSpectrogramSettings = 33423,
    kOverview = 33424,
    kMarkerList = 33430,
    kPlayFollowsClicks = 33431,
};
}  // namespace view_command

// Rows with an empty menu text are keys that no menu shows. "Playback" and "Stop" both name the
// space bar; the row kSpaceKey is the one that the key runs, so a front end binds the space bar to
// it alone.
std::span<const Command<CSoundView>> ViewCommands();

// The view as menus and scripts see it. The commands that ask first (Go to Cursor, the markers,
// Paste Replicate, the mixes, Clipboard Contents, User Defined Zoom) are refused here; who asks,
// sees to it that they are offered, and hands the answer to their function.
class SoundViewCommands : public TableCommandTarget<CSoundView> {
  public:
    explicit SoundViewCommands(CSoundView& view);

    Outcome RunCommand(int id) override;
    // Fails where the command is not offered just now, and says why.
    Outcome Offered(int id) const override;

  protected:
    CSoundView& View() const { return view_; }

  private:
    CSoundView& view_;
};

}  // namespace sonavel
