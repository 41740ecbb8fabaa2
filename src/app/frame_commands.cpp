#include "app/frame_commands.h"

#include "app/command_ids.h"
#include "app/main_frame.h"

namespace sonavel {

namespace {

template <void (ChildWindows::*operation)()>
Outcome Arrange(CMainFrame& frame) {
    (frame.Area().*operation)();
    return Done();
}

template <Outcome (SoundCloser::*close)()>
Outcome CloseBy(CMainFrame& frame) {
    return (frame.Closer().*close)();
}

CommandState WithChildren(const CMainFrame& frame) {
    return {frame.Area().HasAny(), false};
}

CommandState WithOthers(const CMainFrame& frame) {
    return {frame.Closer().HasOthers(), false};
}

CommandState InWindows(const CMainFrame& frame) {
    return {frame.Area().HasAny() && !frame.Area().ShowsTabs(), false};
}

CommandState TabsState(const CMainFrame& frame) {
    return {true, frame.Area().ShowsTabs()};
}

CommandState StatusBarState(const CMainFrame& frame) {
    return {true, frame.ShowsStatusBar()};
}

CommandState OriginLineState(const CMainFrame& frame) {
    return {frame.HasOriginLine(), frame.ShowsOriginLine()};
}

using enum WhileWorking;

constexpr Command<CMainFrame> kCommands[] = {
    {{app_command::kRecord, "", "&Record...", "Ctrl+R", "Record into this sound or a new one"},
     Call<CMainFrame, &CMainFrame::Record>},
    {{app_command::kClose, "close", "&Close", "Ctrl+W; Ctrl+F4", "Close the active sound"},
     CloseBy<&SoundCloser::CloseActive>,
     WithChildren},
    {{app_command::kCascade, "", "&Cascade", "", "Arrange the windows so that they overlap",
      kAlways},
     Arrange<&ChildWindows::Cascade>,
     InWindows},
    {{app_command::kTileHorizontally, "", "Tile &Horizontally", "",
      "Arrange the windows above each other", kAlways},
     Arrange<&ChildWindows::TileHorizontally>,
     InWindows},
    {{app_command::kTileVertically, "", "Tile &Vertically", "",
      "Arrange the windows beside each other", kAlways},
     Arrange<&ChildWindows::TileVertically>,
     InWindows},
    {{app_command::kTabs, "", "Show as &Tabs", "", "Show one sound at a time, with a tab for each",
      kAlways},
     Arrange<&ChildWindows::SwitchTabs>,
     TabsState},
    {{app_command::kNextWindow, "", "&Next", "Ctrl+F6", "Go to the next sound", kAlways},
     Arrange<&ChildWindows::Next>,
     WithChildren},
    {{app_command::kPreviousWindow, "", "&Previous", "Ctrl+Shift+F6", "Go to the previous sound",
      kAlways},
     Arrange<&ChildWindows::Previous>,
     WithChildren},
    {{app_command::kCloseOthers, "", "Close &Others", "", "Close every sound but the active one"},
     CloseBy<&SoundCloser::CloseOthers>,
     WithOthers},
    {{app_command::kCloseAll, "", "C&lose All", "Ctrl+Shift+W", "Close every sound"},
     CloseBy<&SoundCloser::CloseAll>,
     WithChildren},
    {{app_command::kOriginLine, "", "Imp&ort Line", "",
      "Show or hide the line that says what the imported file held", kAlways},
     Call<CMainFrame, &CMainFrame::SwitchOriginLine>,
     OriginLineState},
    {{app_command::kPalette, "", "&Find Command...", "Ctrl+K",
      "Find any command by a few letters of its name"},
     Call<CMainFrame, &CMainFrame::OpenPalette>},
    {{app_command::kKeys, "", "Ke&ys...", "",
      "Change the keys of any command, or take another set"},
     Call<CMainFrame, &CMainFrame::ChangeKeys>},
    {{app_command::kStatusBar, "", "&Status Bar", "", "Show or hide the status bar", kAlways},
     Call<CMainFrame, &CMainFrame::SwitchStatusBar>,
     StatusBarState},
};

}  // namespace

std::span<const Command<CMainFrame>> FrameCommands() {
    return kCommands;
}

}  // namespace sonavel
