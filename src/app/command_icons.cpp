#include "app/command_icons.h"

#include <QtGlobal>

#include "app/command_ids.h"
#include "platform/qt/palette_icon.h"
#include "spatial/ui/spatial_commands.h"
#include "view/commands/view_commands.h"

// Resources of a static library are linked in by a call from outside every namespace.
static void InitialiseResources() {
    Q_INIT_RESOURCE(sonavel);
}

namespace sonavel {

namespace {

struct IconName {
    int id;
    const char* name;
};

constexpr IconName kIcons[] = {
    {app_command::kNew, "new"},
    {app_command::kOpen, "open"},
    {app_command::kClose, "close"},
    {app_command::kSave, "save"},
    {app_command::kSaveAs, "save-as"},
    {app_command::kSaveAll, "save-all"},
    {app_command::kExit, "exit"},
    {app_command::kAbout, "about"},
    {app_command::kRecord, "record"},
    {app_command::kCascade, "cascade"},
    {app_command::kTileHorizontally, "tile-horizontal"},
    {app_command::kTileVertically, "tile-vertical"},
    {app_command::kTabs, "tabs"},
    {view_command::kPlay, "play"},
    {view_command::kPlayLooped, "play-looped"},
    {view_command::kPlayToEnd, "play-to-end"},
    {view_command::kStop, "stop"},
    {view_command::kPause, "pause"},
    {view_command::kRewind, "rewind"},
    {view_command::kForward, "forward"},
    {view_command::kStart, "start"},
    {view_command::kEnd, "end"},
    {view_command::kPreviewCut, "preview-cut"},
    {view_command::kPreRoll, "pre-roll"},
    {view_command::kZoomTimeIn, "zoom-time-in"},
    {view_command::kZoomTimeOut, "zoom-time-out"},
    {view_command::kZoomTimeFull, "zoom-time-full"},
    {view_command::kZoomLevelIn, "zoom-level-in"},
    {view_command::kZoomLevelOut, "zoom-level-out"},
    {view_command::kZoomLevelFull, "zoom-level-full"},
    {view_command::kZoomSelection, "zoom-selection"},
    {view_command::kZoomUser, "zoom-user"},
    {view_command::kZoomDefault, "zoom-default"},
    {view_command::kUndo, "undo"},
    {view_command::kRedo, "redo"},
    {view_command::kCut, "cut"},
    {view_command::kCopy, "copy"},
    {view_command::kPaste, "paste"},
    {view_command::kDelete, "delete"},
    {view_command::kMix, "mix"},
    {view_command::kSelectAll, "select-all"},
    {view_command::kGoToCursor, "go-to"},
    {view_command::kDropMarker, "marker"},
    {spatial_command::kSystemPositional, "3d-fixed-point"},
    {spatial_command::kUserPositional, "3d-own-point"},
    {spatial_command::kSystemMoving, "3d-fixed-path"},
    {spatial_command::kUserMoving, "3d-own-path"},
};

}  // namespace

QIcon CommandIcon(int commandId) {
    for (const IconName& icon : kIcons)
        if (icon.id == commandId)
            return PaletteIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(icon.name)));
    return {};
}

QIcon ProgramIcon() {
    // The picture uses none of the palette's stand-in colours.
    return PaletteIcon(QStringLiteral(":/icons/sonavel.svg"));
}

void LoadPictures() {
    InitialiseResources();
}

}  // namespace sonavel
