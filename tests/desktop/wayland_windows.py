"""How the driver knows windows where no X server does: by what the program says of them to assistive programs.

The main window is made to fill the screen, so that its place is known; nobody knows where dialogs are. Keys and
mouse come from the display below the compositor. Importing this replaces the driver's own functions.
"""

import os
import re

import editor_driver
import spoken
from editor_driver import DriveError, Editor, key, wait_for, xdotool

SCREEN = (1600, 1000)


class Window:
    """A window of the editor; two of them are the same when the program says so."""

    def __init__(self, item):
        self.item = item

    def __eq__(self, other):
        return isinstance(other, Window) and self.item.path == other.item.path

    def __hash__(self):
        return hash(self.item.path)

    def __str__(self):
        return self.item.name


def title_of(window):
    return window.item.name


def place_of(window):
    if not fills_screen(window):
        raise DriveError(f"nobody knows where {window} is")
    return (0, 0, *SCREEN)


def fills_screen(window):
    return window.item.area()[2:] == SCREEN


def is_dialog(window):
    return window.item.role == "dialog"


def active_window():
    for item in spoken.programs():
        for window in spoken.windows_of(item):
            if window.has("ACTIVE"):
                return Window(window)
    return None


def pixels_of(window, area=None):
    x, y, width, height = place_of(window)
    if area:
        size, left, top = area.split("+")
        width, height = (int(side) for side in size.split("x"))
        x, y = x + int(left), y + int(top)
    return editor_driver.pixels_of_screen("root", f"{width}x{height}+{x}+{y}")


def windows(self, name="."):
    found = [item for item in spoken.programs() if item.process() == self.process.pid]
    return [Window(it) for item in found for it in spoken.windows_of(item) if re.search(name, it.name)]


def logo_and_frame(self):
    if self.process.poll() is not None:
        raise DriveError(f"the editor ended with status {self.process.returncode}")
    shown = self.windows()
    frames = [window for window in shown if not is_dialog(window)]
    logos = [window for window in shown if is_dialog(window)]
    return (logos[0] if logos else None, frames[0]) if frames else None


def activate(self, window=None):
    wanted = window or self.window

    def has_keyboard():
        if active_window() == wanted:
            return True
        xdotool("windowfocus", os.environ["SONAVEL_COMPOSITOR"])
        return False

    try:
        wait_for("the window to have the focus", has_keyboard, seconds=3)
    except DriveError:
        # The compositor has given the keyboard to another window or to none; it passes it on by this key.
        editor_driver.repeat_until("the window to have the focus", lambda: key("super+Tab"), has_keyboard)


def wait_until_shown(self):
    _, frame = wait_for("the main frame", self._logo_and_frame)
    self.window = frame
    # It stands in the main window, and goes in its time.
    wait_for("the logo to go", lambda: not holds_logo(frame))
    self.activate()
    if not fills_screen(frame):
        editor_driver.repeat_until("the main window to fill the screen", lambda: key("super+shift+f"),
                                   lambda: fills_screen(frame), seconds=8)
    meet_pointers()
    # The program knows its size before the compositor shows it.
    editor_driver.settled_pixels(frame)


def holds_logo(frame):
    return any(it.role == "dialog" and it.has("SHOWING") for it in frame.item.children())


def meet_pointers():
    """The compositor follows the display's pointer by steps, at times from another place than where that one is;
    in a corner, where neither goes on, both meet."""
    right, bottom = (side - 1 for side in SCREEN)
    for place in ((right, bottom), (0, 0), (right // 2, bottom // 2)):
        xdotool("mousemove", *place)


for name in ("title_of", "place_of", "is_dialog", "active_window", "pixels_of"):
    setattr(editor_driver, name, globals()[name])
Editor.windows = windows
Editor.activate = activate
Editor._logo_and_frame = logo_and_frame
Editor._wait_until_shown = wait_until_shown
