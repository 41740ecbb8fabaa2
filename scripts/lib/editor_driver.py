"""Drives the real editor by keys and mouse on the display that scripts/lib/desktop.sh started.

Everything waits by polling for what a person would see (windows, titles, pictures), with a limit.
"""

import contextlib
import os
import pathlib
import re
import subprocess
import tempfile
import time

WAIT_SECONDS = 20.0
# The logo goes by itself after 3 s.
LOGO_SAFE_SECONDS = 1.5


class DriveError(Exception):
    """Something that was waited for did not come."""


def wait_for(what, condition, seconds=WAIT_SECONDS):
    """The first true value of condition(), asked again and again; DriveError after the limit."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise DriveError(f"waited {seconds:g} s in vain for {what}")
        time.sleep(0.03)


def repeat_until(what, act, seen, seconds=3.0):
    """Acts until seen() is true, again whenever a busy display has let the keys or the mouse go by."""
    def acted():
        act()
        try:
            return wait_for(what, seen, seconds)
        except DriveError:
            return None

    return wait_for(what, acted)


def bounded(*command):
    """A command that ends with this process, however that ends."""
    return ["setpriv", "--pdeathsig", "KILL", *map(str, command)]


def xdotool(*words):
    """What xdotool prints; nothing when it fails, as it does when a window has just gone."""
    done = subprocess.run(
        ["xdotool", *map(str, words)], capture_output=True, text=True, check=False, timeout=30
    )
    return done.stdout.strip() if done.returncode == 0 else ""


def key(*keys):
    """Presses keys one after the other, in the window that has the focus."""
    xdotool("key", "--delay", "30", "--clearmodifiers", *keys)


def type_text(text):
    xdotool("type", "--delay", "8", "--clearmodifiers", text)


def title_of(window):
    return xdotool("getwindowname", window)


def place_of(window):
    """x, y, width and height of a window's inside, in device pixels of the screen."""
    shown = subprocess.run(["xwininfo", "-id", str(window)], capture_output=True, text=True,
                           check=True).stdout
    fields = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
    return tuple(int(re.search(rf"{field}: +(-?\d+)", shown)[1]) for field in fields)


def active_window():
    return xdotool("getactivewindow")


def property_of(window, name):
    shown = subprocess.run(["xprop", "-id", str(window), name], capture_output=True, text=True,
                           check=False, timeout=30).stdout
    return shown.partition("=")[2].strip()


def is_dialog(window):
    return "_NET_WM_WINDOW_TYPE_DIALOG" in property_of(window, "_NET_WM_WINDOW_TYPE")


def frame_extents(window):
    """What the window manager's frame adds at the left, the right, the top and the bottom."""
    numbers = re.findall(r"\d+", property_of(window, "_NET_FRAME_EXTENTS"))
    return tuple(map(int, numbers)) if len(numbers) == 4 else (0, 0, 0, 0)


def drag(start, end, hold=0.0):
    """A drag with the left button between two places of the screen, with steps between, held there for
    some seconds before the button is let go."""
    xdotool("mousemove", *start, "mousedown", 1)
    for step in range(1, 9):
        place = [round(a + (b - a) * step / 8) for a, b in zip(start, end)]
        xdotool("mousemove", *place)
        time.sleep(0.02)
    time.sleep(hold)
    xdotool("mouseup", 1)


def pixels_of(window, area=None):
    """The window as it stands on the screen: raw RGB bytes, of an area "WxH+X+Y" when given."""
    return pixels_of_screen(window, area)


def pixels_of_screen(window, area):
    crop = ["-crop", area, "+repage"] if area else []
    done = subprocess.run(
        ["import", "-silent", "-window", str(window), *crop, "-depth", "8", "rgb:-"],
        capture_output=True, check=False, timeout=30,
    )
    return done.stdout


def settled_pixels(window, area=None):
    """The window's pixels once two pictures in a row are the same."""
    last = b""

    def settled():
        nonlocal last
        before, last = last, pixels_of(window, area)
        return last if last and last == before else None

    return wait_for("the window to come to rest", settled)


def count_pixels(pixels, colour):
    """How many of raw RGB pixels have exactly this colour, an (r, g, b)."""
    wanted = bytes(colour)
    return sum(pixels[place:place + 3] == wanted for place in range(0, len(pixels), 3))


def keep_failure_picture():
    """The screen as it stands, where SONAVEL_FAILURE_PICTURE asks for it."""
    path = os.environ.get("SONAVEL_FAILURE_PICTURE")
    if path:
        subprocess.run(["import", "-silent", "-window", "root", path], check=False, timeout=30)
        print(f"the screen at the failure: {path}")


class Editor:
    """One running program. Used in a with statement, it is ended whatever happens."""

    def __init__(self, *files, options=("--separate",), environment=None):
        program = pathlib.Path(os.environ["SONAVEL_BIN"]) / "sonavel"
        self._started = time.monotonic()
        # What a test leaves unsaved is none of the next editor's business, unless it is asked for.
        state = {"XDG_STATE_HOME": tempfile.mkdtemp(prefix="state-")}
        self.process = subprocess.Popen(
            bounded(program, *options, *files), env={**os.environ, **state, **(environment or {})}
        )
        self.window = None

    def __enter__(self):
        try:
            self._wait_until_shown()
        except BaseException:
            keep_failure_picture()
            self.kill()
            raise
        return self

    def __exit__(self, failure, *_):
        if failure:
            keep_failure_picture()
        self.kill()

    def _wait_until_shown(self):
        logo, frame = wait_for("the main frame", self._logo_and_frame)
        if logo:
            # A click hides the logo, but a late one would hit what lies under it.
            if time.monotonic() - self._started < LOGO_SAFE_SECONDS:
                x, y, width, height = place_of(logo)
                xdotool("mousemove", x + width // 2, y + height // 2, "click", 1)
            wait_for("the logo to go", lambda: logo not in self.windows())
        self.window = frame
        self.activate()

    def _logo_and_frame(self):
        if self.process.poll() is not None:
            raise DriveError(f"the editor ended with status {self.process.returncode}")
        windows = self.windows()
        logos = [window for window in windows if is_dialog(window)]
        frames = [window for window in windows if window not in logos and any(frame_extents(window))]
        return (logos[0] if logos else None, frames[0]) if frames else None

    def windows(self, name="."):
        """The editor's visible windows whose titles match."""
        return xdotool(
            "search", "--all", "--onlyvisible", "--pid", self.process.pid, "--name", name
        ).split()

    def activate(self, window=None):
        window = window or self.window

        def active():
            if xdotool("getactivewindow") == window and xdotool("getwindowfocus") == window:
                return True
            xdotool("windowactivate", window)
            return False

        wait_for("the window to have the focus", active)

    def title(self):
        return title_of(self.window)

    def wait_title(self, wanted):
        wait_for(f"the title {wanted!r} (it is {self.title()!r})", lambda: self.title() == wanted)

    def _dialog(self, name):
        found = [window for window in self.windows(name) if window != self.window]
        return found[0] if found and active_window() == found[0] else None

    def wait_dialog(self, name):
        """The window of that title once it has the focus."""
        return wait_for(f"a window named {name!r}", lambda: self._dialog(name))

    def call_dialog(self, keys, name):
        """The window of that title, which these keys of the main window open and which takes no notice of them."""
        self.activate()
        return repeat_until(f"a window named {name!r}", lambda: key(keys), lambda: self._dialog(name), seconds=6)

    def wait_dialog_gone(self, window, over=None):
        """Until the keyboard is the editor's again, or that of the dialog which it stood over."""
        wait_for("a dialog to close", lambda: window not in self.windows())
        self.activate(over)

    def save_as(self, path):
        """Saves the active document under a path typed into the dialog."""
        dialog = self.call_dialog("F12", "^Save As$")
        key("ctrl+a")
        type_text(str(path))
        key("Return")
        self.wait_dialog_gone(dialog)
        self.wait_title(f"Sonavel - {pathlib.Path(path).name}")

    def open(self, path):
        """Opens a file through the Open dialog; says nothing on whether it could be opened."""
        dialog = self.call_dialog("ctrl+o", "^Open$")
        type_text(str(path))
        key("Return")
        wait_for("the Open dialog to close", lambda: dialog not in self.windows())

    def quit(self):
        """Leaves by key, without saving, and gives the exit status."""
        self.activate()
        key("ctrl+q")

        def ended():
            if self.process.poll() is not None:
                return True
            asking = [window for window in self.windows("^Sonavel$") if window != self.window]
            if asking and active_window() == asking[0]:
                key("alt+d")  # Discard
            return False

        wait_for("the editor to end", ended)
        return self.process.returncode

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        with contextlib.suppress(subprocess.TimeoutExpired):
            self.process.wait(timeout=10)


SESSION_RECORDING = ("parec", "--raw", "--rate=44100", "--channels=2", "--format=s16le", "--latency-msec=20",
                     "--device=sonavel.monitor")


class Monitor:
    """Records what a null sink plays while it is open, in stereo at 44.1 kHz: the session's in 16 bits, unless
    another command records."""

    def __init__(self, path, command=SESSION_RECORDING, environment=None):
        self.path = pathlib.Path(path)
        self._command = command
        self._environment = {**os.environ, **(environment or {})}
        self.path.write_bytes(b"")

    def __enter__(self):
        with self.path.open("wb") as file:
            self._process = subprocess.Popen(
                bounded(*self._command), stdout=file, env=self._environment)
        wait_for("the monitor's first bytes", lambda: self.size() > 0)
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait(timeout=10)

    def size(self):
        return self.path.stat().st_size

    def heard(self):
        return self.path.read_bytes()


if os.environ.get("SONAVEL_DESKTOP") == "wayland":
    import wayland_windows  # noqa: E402,F401  (it replaces what asks the X server)
