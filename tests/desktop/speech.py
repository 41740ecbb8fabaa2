"""Every window and dialog that the menus open says to screen readers what each of its controls is and does,
and what can be heard of waveform, meter and scene is what is there."""

import pathlib

import spoken
from editor_driver import DriveError, Editor, key, wait_for

SAMPLE = pathlib.Path(__file__).resolve().parents[2] / "samples" / "welcome.wav"
# Commands that open a window although no dots say so.
QUIET_OPENERS = {"Zoom User Define", "Paste Replicate", "Sample File Database", "Manual", "What's New"}
FEWEST_WINDOWS = 38
EXPLAINED = {"push button", "check box", "radio button", "slider", "spin button", "combo box", "text"}


def opens_a_window(name, menus):
    dots = name.rstrip().endswith(("...", "…"))
    return dots or name in QUIET_OPENERS or (menus[-1] == "Marker" and name in ("Add", "Edit"))


def commands(bar):
    """The menus' commands that can be given, with the names of the menus on the way."""
    for item, above in bar.walk():
        if item.role == "menu item" and not item.children() and item.has("ENABLED"):
            yield item, [it.name for it in above if it.role == "menu item"]


def unexplained(window):
    """The controls of a dialog without a tool tip."""
    found = []
    for item, above in window.walk():
        is_part = any(it.role in spoken.OWNERS_OF_PARTS | {"page tab list"} for it in above)
        if item.role in EXPLAINED and item.has("FOCUSABLE") and not is_part and not item.description:
            found.append(f"no tool tip: {item.role} {item.name!r}")
    return found


def heard_in(window):
    found = []
    tabs = [it for it, _ in window.walk() if it.role == "page tab"]
    for tab in tabs or [None]:
        if tab:
            tab.press()
        found += spoken.complaints(window)
        if window.role == "dialog":
            found += unexplained(window)
    return found


def close(app, window, others):
    def gone():
        if len(spoken.windows_of(app)) <= others:
            return True
        key("Escape" if window.role == "dialog" or "Manual" in window.name else "alt+F4")
        return False

    wait_for(f"{window.name!r} to close", gone)


def walk_all(app, bar):
    found, seen = [], 0
    openers = [it for it, menus in list(commands(bar)) if opens_a_window(it.name, menus)]
    for opener in openers:
        others = len(spoken.windows_of(app))
        opener.press()
        wait_for(f"the window of {opener.name!r}", lambda: len(spoken.windows_of(app)) > others)
        window = spoken.windows_of(app)[-1]
        found += [f"{window.name}: {what}" for what in heard_in(window)]
        close(app, window, others)
        seen += 1
    assert seen >= FEWEST_WINDOWS, f"only {seen} windows were opened"
    return found


def hear_places(frame):
    """The waveform, its markers and the meters, while the cursor moves and the sound plays."""
    wave = frame.find("canvas", "welcome.wav")
    markers = [it.name for it in wave.children() if it.role == "list item"]
    assert len(markers) == 4 and all(name.startswith("Marker ") for name in markers), markers
    key("ctrl+End")
    wait_for("the cursor at the end to be told", lambda: "cursor 00:00:09.000" in wave.description)
    key("ctrl+a")
    wait_for("the selection to be told", lambda: "selected 00:00:00.000" in wave.description)
    meter = frame.find("progress bar", "Sound play left meter")
    assert meter.value() == 0 and "Inf" in meter.description, meter.description
    key("ctrl+space")
    wait_for("the meter to tell a level", lambda: meter.value() > 0 and "dB" in meter.description)
    key("space")


def hear_scene(app, bar):
    """The points of the 3D scene are a list, and can be chosen there."""
    others = len(spoken.windows_of(app))
    bar.find("menu item", "System Defined Positional Sound…").press()
    wait_for("the editor of places", lambda: len(spoken.windows_of(app)) > others)
    window = spoken.windows_of(app)[-1]
    scene = next(it for it, _ in window.walk() if it.name == "Scene")
    points = [it for it in scene.children() if it.name.startswith("Point ")]
    assert len(points) == 52, len(points)
    assert "azimuth 90°, elevation 0°" in points[10].description, points[10].description
    points[10].press()
    wait_for("the point to be chosen", lambda: points[10].name == "Point 10, selected")
    assert "point 10, selected" in scene.description, scene.description
    close(app, window, others)


def main():
    with Editor(SAMPLE) as editor:
        app = spoken.program()
        frame = next(it for it in spoken.windows_of(app) if "welcome.wav" in it.name)
        bar = next(it for it in frame.children() if it.role == "menu bar")
        hear_places(frame)
        bar.find("menu item", "Select All").press()
        bar.find("menu item", "Copy").press()
        wait_for("something to paste", lambda: bar.find("menu item", "Paste New").has("ENABLED"))
        found = spoken.complaints(frame) + walk_all(app, bar)
        if found:
            raise DriveError("\n".join(["what cannot be heard:", *found]))
        hear_scene(app, bar)
        assert editor.quit() == 0


main()
