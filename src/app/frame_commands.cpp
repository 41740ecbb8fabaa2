#include "app/frame_commands.h"

#include "app/command_ids.h"
#include "app/main_frame.h"

namespace sonavel {

namespace {

template <bool (MainFrame::*operation)()>
bool Do(MainFrame& frame) {
    return (frame.*operation)();
}

CommandState WithChildren(const MainFrame& frame) {
    return {frame.HasChildren(), false};
}

CommandState WithOthers(const MainFrame& frame) {
    return {frame.HasOthers(), false};
}

CommandState InWindows(const MainFrame& frame) {
    return {frame.HasChildren() && !frame.ShowsTabs(), false};
}

CommandState TabsState(const MainFrame& frame) {
    return {true, frame.ShowsTabs()};
}

CommandState StatusBarState(const MainFrame& frame) {
    return {true, frame.ShowsStatusBar()};
}

constexpr Command<MainFrame> kCommands[] = {
    {{app_command::kRecord, "", "&Record...", "Ctrl+R", "Record into this sound or a new one"},
     Do<&MainFrame::Record>},
    {{app_command::kClose, "close", "&Close", "Ctrl+W; Ctrl+F4", "Close the active sound"},
     Do<&MainFrame::CloseActive>,
     WithChildren},
    {{app_command::kCascade, "", "&Cascade", "", "Arrange the windows so that they overlap"},
     Do<&MainFrame::Cascade>,
     InWindows},
    {{app_command::kTileHorizontally, "", "Tile &Horizontally", "",
      "Arrange the windows above each other"},
     Do<&MainFrame::TileHorizontally>,
     InWindows},
    {{app_command::kTileVertically, "", "Tile &Vertically", "",
      "Arrange the windows beside each other"},
     Do<&MainFrame::TileVertically>,
     InWindows},
    {{app_command::kTabs, "", "Show as &Tabs", "", "Show one sound at a time, with a tab for each"},
     Do<&MainFrame::SwitchTabs>,
     TabsState},
    {{app_command::kNextWindow, "", "&Next", "Ctrl+F6", "Go to the next sound"},
     Do<&MainFrame::NextWindow>,
     WithChildren},
    {{app_command::kPreviousWindow, "", "&Previous", "Ctrl+Shift+F6", "Go to the previous sound"},
     Do<&MainFrame::PreviousWindow>,
     WithChildren},
    {{app_command::kCloseOthers, "", "Close &Others", "", "Close every sound but the active one"},
     Do<&MainFrame::CloseOthers>,
     WithOthers},
    {{app_command::kCloseAll, "", "C&lose All", "Ctrl+Shift+W", "Close every sound"},
     Do<&MainFrame::CloseAll>,
     WithChildren},
    {{app_command::kStatusBar, "", "&Status Bar", "", "Show or hide the status bar"},
     Do<&MainFrame::SwitchStatusBar>,
     StatusBarState},
};

}  // namespace

std::span<const Command<MainFrame>> FrameCommands() {
    return kCommands;
}

}  // namespace sonavel
