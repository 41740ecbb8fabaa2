#include "app/main_menu.h"

#include "app/command_ids.h"
#include "effects/ui/effect_command_target.h"
#include "meter/ui/play_meter_bar.h"
#include "spatial/ui/spatial_commands.h"
#include "view/commands/view_commands.h"

namespace sonavel {

namespace {

constexpr MenuEntry C(int id) {
    return MenuEntry::Command(id);
}
constexpr MenuEntry kLine = MenuEntry::Separator();
constexpr MenuEntry Sub(const char* title) {
    return MenuEntry::Begin(title);
}
constexpr MenuEntry kBack = MenuEntry::End();

constexpr MenuEntry kFile[] = {
    C(app_command::kNew),
    C(app_command::kOpen),
    C(app_command::kImport),
    C(app_command::kClose),
    kLine,
    C(app_command::kSave),
    C(app_command::kSaveAs),
    C(app_command::kSaveAll),
    C(app_command::kReadAgain),
    kLine,
    C(app_command::kExport),
    C(app_command::kSaveCopy),
    C(app_command::kExportSelection),
    C(app_command::kExportRegions),
    kLine,
    C(app_command::kFileProperties),
    kLine,
    C(app_command::kExit),
};

constexpr MenuEntry kEdit[] = {
    C(view_command::kUndo),
    C(view_command::kRedo),
    kLine,
    C(view_command::kCut),
    C(view_command::kCopy),
    C(view_command::kPaste),
    Sub("Paste Sp&ecial"),
    C(view_command::kPasteOverwrite),
    C(view_command::kPasteBlockOverwrite),
    C(view_command::kPasteBlockCopy),
    C(view_command::kPasteReplicate),
    C(view_command::kPasteNew),
    kBack,
    C(view_command::kDelete),
    kLine,
    C(view_command::kMix),
    C(view_command::kCrossfadeMix),
    kLine,
    C(view_command::kSelectAll),
    C(view_command::kSelectToNextMarker),
    C(view_command::kLastSelection),
    C(view_command::kSnapToZero),
    C(view_command::kGoToCursor),
    Sub("Mar&ker"),
    C(view_command::kDropMarker),
    C(view_command::kDropNamedMarker),
    C(view_command::kMarkerRename),
    C(view_command::kPreviousMarker),
    C(view_command::kNextMarker),
    kLine,
    C(view_command::kMarkerAdd),
    C(view_command::kMarkerEdit),
    C(view_command::kMarkerDelete),
    C(view_command::kMarkerList),
    kLine,
    C(view_command::kFindPauses),
    C(app_command::kImportMarkers),
    C(app_command::kExportMarkers),
    kBack,
    kLine,
    C(view_command::kClipboardContents),
    kLine,
    C(app_command::kRunScript),
    C(app_command::kCopyAsScript),
    kLine,
    C(app_command::kPalette),
    C(app_command::kKeys),
    C(app_command::kPreferences),
};

constexpr MenuEntry kView[] = {
    Sub("Zoom &Time"),
    C(view_command::kZoomTimeIn),
    C(view_command::kZoomTimeOut),
    C(view_command::kZoomTimeFull),
    kBack,
    Sub("Zoom &Level"),
    C(view_command::kZoomLevelIn),
    C(view_command::kZoomLevelOut),
    C(view_command::kZoomLevelFull),
    kBack,
    C(view_command::kZoomSelection),
    C(view_command::kZoomUser),
    C(view_command::kZoomDefault),
    C(view_command::kPreviousZoom),
    C(view_command::kNextZoom),
    kLine,
    C(view_command::kShowWaveform),
    C(view_command::kShowSpectrogram),
    C(view_command::kShowBoth),
    C(view_command::kSpectrogramSettings),
    C(view_command::kOverview),
    kLine,
    Sub("Status &Format"),
    C(view_command::kStatusSample),
    C(view_command::kStatusTime),
    C(view_command::kStatusSecond),
    kBack,
    Sub("Play &Meter"),
    C(meter_command::kThirtyDb),
    C(meter_command::kSixtyDb),
    C(meter_command::kNinetyDb),
    C(meter_command::kAbsolute),
    kLine,
    C(meter_command::kShowLevel),
    kBack,
    kLine,
    C(app_command::kOriginLine),
    C(app_command::kStatusBar),
};

constexpr MenuEntry kControl[] = {
    C(view_command::kPlay),
    C(view_command::kPlayLooped),
    C(view_command::kPlayToEnd),
    C(view_command::kPause),
    C(view_command::kStop),
    C(app_command::kRecord),
    kLine,
    C(view_command::kStart),
    C(view_command::kRewind),
    C(view_command::kForward),
    C(view_command::kEnd),
    kLine,
    C(view_command::kPreviewCut),
    C(view_command::kPreRoll),
    kLine,
    C(view_command::kPlayFollowsClicks),
};

constexpr MenuEntry kEffects[] = {
    Sub("&Level"),
    C(effect_command::kFadeIn),
    C(effect_command::kFadeOut),
    C(effect_command::kFadeInAtOnce),
    C(effect_command::kFadeOutAtOnce),
    C(effect_command::kNormalise),
    C(effect_command::kMute),
    C(effect_command::kInvert),
    C(effect_command::kRemoveOffset),
    kBack,
    Sub("&Time"),
    C(effect_command::kTempo),
    C(effect_command::kPitch),
    C(effect_command::kReverse),
    C(view_command::kCrop),
    C(view_command::kInsertSilence),
    kBack,
    Sub("&Sound"),
    C(effect_command::kEcho),
    C(effect_command::kLearnNoise),
    C(effect_command::kReduceNoise),
    C(effect_command::kConvert),
    kBack,
    kLine,
    C(effect_command::kVolume),
    C(effect_command::kPanpot),
    C(effect_command::kDynamics),
    C(effect_command::kEqualizer),
    kLine,
    C(effect_command::kReverb),
    C(effect_command::kFlanger),
    C(effect_command::kModulator),
    kLine,
    C(effect_command::kLiveAtOnce),
    C(effect_command::kOpenPreview),
};

constexpr MenuEntry kSpatial[] = {
    C(spatial_command::kSystemPositional),
    C(spatial_command::kUserPositional),
    kLine,
    C(spatial_command::kSystemMoving),
    C(spatial_command::kUserMoving),
    kLine,
    C(spatial_command::kScene),
    C(spatial_command::kPlaceMany),
    C(spatial_command::kCrosstalk),
    kLine,
    C(spatial_command::kLiveAtOnce),
};

constexpr MenuEntry kWindow[] = {
    C(app_command::kCascade),
    C(app_command::kTileHorizontally),
    C(app_command::kTileVertically),
    C(app_command::kTabs),
    kLine,
    C(app_command::kNextWindow),
    C(app_command::kPreviousWindow),
    C(app_command::kCloseOthers),
    C(app_command::kCloseAll),
    kLine,
    C(app_command::kSampleDatabase),
};

constexpr MenuEntry kHelp[] = {
    C(app_command::kManual), C(app_command::kManualKeys), C(app_command::kWhatsNew), kLine,
    C(app_command::kAbout),
};

constexpr MenuLayout kMenus[] = {
    {"&File", kFile},       {"&Edit", kEdit},        {"&View", kView},     {"&Control", kControl},
    {"Effec&ts", kEffects}, {"3&D Sound", kSpatial}, {"&Window", kWindow}, {"&Help", kHelp},
};

}  // namespace

std::span<const MenuLayout> MainMenuLayout() {
    return kMenus;
}

}  // namespace sonavel
